// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "AlarmModel.h"

#include <QtCore/QLocale>

namespace browser {

AlarmModel::AlarmModel(QObject *parent)
    : QAbstractItemModel(parent)
    , m_root(std::make_unique<Node>())
{
}

AlarmModel::~AlarmModel() = default;

void AlarmModel::setTree(const QVariant &tree)
{
    beginResetModel();
    m_root = makeNode(QString(), tree);
    if (m_root->children.empty()) {
        auto root = std::make_unique<Node>();
        addChild(*root, std::move(m_root));
        m_root = std::move(root);
    }
    endResetModel();
}

std::unique_ptr<AlarmModel::Node> AlarmModel::makeNode(const QString &name, const QVariant &value)
{
    auto node = std::make_unique<Node>();
    node->name = name;
    switch (static_cast<int>(value.type())) {
    case QVariant::Map: {
        const QVariantMap members = value.toMap();
        for (auto it = members.begin(); it != members.end(); ++it)
            addChild(*node, makeNode(it.key(), it.value()));
        if (members.isEmpty())
            node->value = QStringLiteral("{}");
        break;
    }
    case QVariant::List: {
        // The tree has the last value of the text first.
        const QVariantList values = value.toList();
        for (int i = values.size() - 1; i >= 0; --i)
            addChild(*node, makeNode(tr("item %1").arg(values.size() - i), values.at(i)));
        if (values.isEmpty())
            node->value = QStringLiteral("[]");
        break;
    }
    case QVariant::Double:
        node->value = QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
        break;
    case QVariant::Invalid:
        node->value = QStringLiteral("null");
        break;
    default:
        node->value = value.toString();
    }
    return node;
}

void AlarmModel::addChild(Node &node, std::unique_ptr<Node> child)
{
    child->parent = &node;
    child->row = int(node.children.size());
    node.children.push_back(std::move(child));
}

const AlarmModel::Node *AlarmModel::nodeAt(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<const Node *>(index.internalPointer()) : m_root.get();
}

QModelIndex AlarmModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, nodeAt(parent)->children[std::size_t(row)].get());
}

QModelIndex AlarmModel::parent(const QModelIndex &index) const
{
    Node *parent = index.isValid() ? nodeAt(index)->parent : nullptr;
    return parent && parent->parent ? createIndex(parent->row, 0, parent) : QModelIndex();
}

int AlarmModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : int(nodeAt(parent)->children.size());
}

int AlarmModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

QVariant AlarmModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const Node *node = nodeAt(index);
    return index.column() == Name ? node->name : node->value;
}

QVariant AlarmModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole)
        return {};
    return section == Name ? tr("Name") : tr("Value");
}

} // namespace browser
