// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_BULKEDITDIALOG_H
#define BROWSER_BULKEDITDIALOG_H

#include "BulkEditModel.h"
#include "TableLook.h"

#include <QtWidgets/QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace browser {

/** One edit of many cameras: what it would change in each is shown before it is done. */
class BulkEditDialog : public QDialog
{
    Q_OBJECT

public:
    BulkEditDialog(std::vector<Document *> documents, QWidget *parent = nullptr);

    /** Does what was shown, once the dialog was accepted. Returns how many cameras have changed. */
    int apply() { return m_model.apply(); }
    QString name() const { return change().name(); }

private:
    BulkEditModel::Change change() const;
    void preview();
    void showCounts();

    BulkEditModel m_model;
    NaturalOrder m_sorted;
    QComboBox *m_kind;
    QLineEdit *m_section;
    QLineEdit *m_key;
    QLineEdit *m_value;
    QLabel *m_counts;
    QPushButton *m_apply;
};

} // namespace browser

#endif // BROWSER_BULKEDITDIALOG_H
