// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "HelpDialogs.h"

#include "Application.h"
#include "TableLook.h"

#include <QtGui/QStandardItemModel>
#include <QtWidgets/QAction>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

namespace browser {

namespace {

QString plain(QString text)
{
    return text.remove(QLatin1Char('&')).remove(QChar(0x2026));
}

QStandardItem *cell(const QString &text)
{
    auto *item = new QStandardItem(text);
    item->setEditable(false);
    return item;
}

void addActions(QStandardItemModel &model, const QMenu &menu)
{
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions) {
        if (action->menu())
            addActions(model, *action->menu());
        else if (!action->shortcut().isEmpty())
            model.appendRow({cell(plain(menu.title())), cell(plain(action->text())),
                             cell(action->shortcut().toString(QKeySequence::NativeText))});
    }
}

} // namespace

void showShortcuts(QMainWindow &window)
{
    QDialog dialog(&window);
    dialog.setWindowTitle(QDialog::tr("Keyboard Shortcuts"));
    QStandardItemModel model;
    model.setHorizontalHeaderLabels(
        {QDialog::tr("Menu"), QDialog::tr("Action"), QDialog::tr("Keys")});
    const QList<QAction *> menus = window.menuBar()->actions();
    for (const QAction *menu : menus)
        addActions(model, *menu->menu());
    auto *table = new QTableView;
    table->setObjectName(QStringLiteral("shortcuts"));
    table->setAccessibleName(QDialog::tr("Keyboard shortcuts"));
    NaturalOrder sorted;
    sorted.setSourceModel(&model);
    table->setModel(&sorted);
    setUpTable(table);
    setUpSorting(table);
    setColumnWidths(table, {12, 34});
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto *layout = new QVBoxLayout(&dialog);
    layout->addWidget(table);
    layout->addWidget(buttons);
    dialog.resize(560, 520);
    dialog.exec();
}

void showAbout(QMainWindow &window)
{
    QMessageBox::about(
        &window, QMessageBox::tr("About Camera Configurations"),
        QMessageBox::tr("<h3>Camera Configurations %1</h3>"
                        "<p>Shows, compares and edits the configurations of Vantero cameras, "
                        "judges updates, and shows alarm lists.</p>"
                        "<p>Built with Qt %2, runs with Qt %3.</p>"
                        "<p>© 2026 The FileFormatsVantero authors, MIT licence.</p>")
            .arg(programVersion(), QStringLiteral(QT_VERSION_STR),
                 QString::fromLatin1(qVersion())));
}

} // namespace browser
