// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_UPDATEPANE_H
#define BROWSER_UPDATEPANE_H

#include "TableLook.h"
#include "UpdateModel.h"

#include <QtCore/QSet>
#include <QtWidgets/QWidget>

class QFrame;
class QLabel;
class QLineEdit;
class QTableView;

namespace browser {

class EmptyState;
class MessageBar;

/** All rows of a table, or some, in natural order. */
class ChosenRows : public NaturalOrder
{
    Q_OBJECT

public:
    using NaturalOrder::NaturalOrder;

    /** Rows of the source model; none means all. */
    void choose(const QList<int> &rows);
    bool isChoice() const { return !m_rows.isEmpty(); }

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    QSet<int> m_rows;
};

/** Whether the cameras may be updated to a version that is chosen here, and
 * why. */
class UpdatePane : public QWidget
{
    Q_OBJECT

public:
    /** @p cameras must outlive this pane. */
    explicit UpdatePane(const CameraModel &cameras, QWidget *parent = nullptr);

    /** Says in large letters what is so for the camera in the row @p current, -1 for none, and
     * lists those of @p selected if they are several, all if not. */
    void setSelection(int current, const QList<int> &selected);

    /** Takes the version from a firmware package; it is at hand then. */
    void readPackage(const QString &path);
    /** Takes models from a CSV table. */
    void readModels(const QString &path);

private:
    QLayout *makeTargetRow();
    QLayout *makeModelRow();
    QWidget *makeCard();
    void choosePackages();
    void chooseModels();
    void update();

    const CameraModel &m_cameras;
    UpdateModel m_model;
    ChosenRows m_sorted;
    int m_row = -1;
    EmptyState *m_pages;
    QLineEdit *m_target;
    MessageBar *m_message;
    QFrame *m_card;
    QLabel *m_answer;
    QLabel *m_reason;
    QLabel *m_wayOut;
    QLabel *m_available;
    QLabel *m_scope;
    QTableView *m_table;
};

} // namespace browser

#endif // BROWSER_UPDATEPANE_H
