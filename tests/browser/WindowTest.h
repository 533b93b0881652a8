// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_BROWSER_WINDOWTEST_H
#define VN_TESTS_BROWSER_WINDOWTEST_H

/** @file Tests that use the window as a user does: by keyboard and mouse, reading what it shows. */

#include "MainWindow.h"

#include "support/Files.h"

#include <QtTest/QtTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>

#include <functional>
#include <memory>

constexpr int kPatienceMs = 60000; // a watchdog: nothing is expected to take long

/** The path of a file of examples/data. */
inline QString example(const char *name)
{
    return QStringLiteral(VANTERO_EXAMPLE_DATA "/") + QLatin1String(name);
}

/** What a table or the top of a tree shows: a list of cells for each row. */
QList<QStringList> cells(const QAbstractItemModel *model, const QModelIndex &parent = {});

class WindowTest : public FolderTest
{
protected:
    void SetUp() override;
    void TearDown() override;

    browser::MainWindow &window() { return *m_window; }

    /** The widget of that name; a failure where there is none. */
    template <typename Widget>
    Widget *find(const char *name)
    {
        auto *widget = m_window->findChild<Widget *>(QLatin1String(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    QTableView *table(const char *name) { return find<QTableView>(name); }
    QString labelText(const char *name) { return find<QLabel>(name)->text(); }
    /** The words of a MessageBar; empty while it is hidden. */
    QString message(const char *name);

    void open(const QStringList &paths);
    void waitUntilLoaded();
    /** The dialog that is in front, once there is one. */
    QDialog *waitForDialog();
    /** Has @p answer called with the dialog that the next action brings up, which runs in a loop of
     * its own. */
    void answerDialog(const std::function<void(QDialog *)> &answer);
    /** The same for a dialog that asks for a file. */
    void answerFileDialog(const QString &path, const QString &button);
    static void click(QDialog *dialog, const QString &button);

    /** Selects the rows of the table of cameras, with Ctrl held from the second on. */
    void selectCameras(const QList<int> &rows);
    void showTab(int number);
    /** Enters a value for the row that shows @p key, @p repeated ones later, by the keyboard. */
    void edit(const QString &section, const QString &key, const QString &value, int repeated = 0);
    /** Selects that row by a click. */
    void selectValue(const QString &section, const QString &key, int repeated = 0);
    QModelIndex valueOf(const QString &section, const QString &key, int repeated = 0);
    /** Replaces the text of an editor and leaves it by the Return key. */
    static void enter(QLineEdit *editor, const QString &value);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    std::unique_ptr<browser::MainWindow> m_window;
};

#endif // VN_TESTS_BROWSER_WINDOWTEST_H
