// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_UPDATEPANE_H
#define BROWSER_UPDATEPANE_H

#include "TableLook.h"
#include "UpdateModel.h"

#include <QtWidgets/QWidget>

class QFrame;
class QLabel;
class QLineEdit;
class QTableView;

namespace browser {

class EmptyState;
class MessageBar;

/** Whether the cameras may be updated to a version that is chosen here, and
 * why. */
class UpdatePane : public QWidget
{
    Q_OBJECT

public:
    /** @p cameras must outlive this pane. */
    explicit UpdatePane(const CameraModel &cameras, QWidget *parent = nullptr);

    /** Says in large letters what is so for the camera in @p row; -1 for none. */
    void setCurrentRow(int row);

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
    NaturalOrder m_sorted;
    int m_row = -1;
    EmptyState *m_pages;
    QLineEdit *m_target;
    MessageBar *m_message;
    QFrame *m_card;
    QLabel *m_answer;
    QLabel *m_reason;
    QLabel *m_wayOut;
    QLabel *m_available;
    QTableView *m_table;
};

} // namespace browser

#endif // BROWSER_UPDATEPANE_H
