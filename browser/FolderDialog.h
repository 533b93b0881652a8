// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_FOLDERDIALOG_H
#define BROWSER_FOLDERDIALOG_H

#include "ComparedModel.h"
#include "TableLook.h"

#include <QtWidgets/QDialog>

#include <memory>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace browser {

class DifferencesView;

/** What differs between the cameras of two folders, by address. */
class FolderDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FolderDialog(QWidget *parent = nullptr);
    ~FolderDialog() override;

private:
    QLineEdit *makeFolder(QGridLayout *layout, int row, const QString &label, const QString &name);
    void compare();
    void showResult();
    void showCamera();

    std::unique_ptr<FolderComparison> m_comparison;
    ComparedModel m_model;
    NaturalOrder m_sorted;
    QLineEdit *m_first;
    QLineEdit *m_second;
    QPushButton *m_compare;
    QLabel *m_summary;
    QTableView *m_table;
    DifferencesView *m_differences;
};

} // namespace browser

#endif // BROWSER_FOLDERDIALOG_H
