// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_ALARMMODEL_H
#define BROWSER_ALARMMODEL_H

#include <QtCore/QAbstractItemModel>
#include <QtCore/QVariant>

#include <memory>
#include <vector>

namespace browser {

/** The tree of an alarm list. Lists stand as in the text; objects have their keys in order. */
class AlarmModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column { Name, Value, ColumnCount };

    explicit AlarmModel(QObject *parent = nullptr);
    ~AlarmModel() override;

    /** Shows what AlarmListParser made of a text. */
    void setTree(const QVariant &tree);

    QModelIndex index(int row, int column,
                      const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Node
    {
        QString name;
        QString value; // empty where there are children
        Node *parent = nullptr;
        int row = 0;
        std::vector<std::unique_ptr<Node>> children;
    };

    static std::unique_ptr<Node> makeNode(const QString &name, const QVariant &value);
    static void addChild(Node &node, std::unique_ptr<Node> child);
    const Node *nodeAt(const QModelIndex &index) const;

    std::unique_ptr<Node> m_root; // not shown; has one child for a text that is one value
};

} // namespace browser

#endif // BROWSER_ALARMMODEL_H
