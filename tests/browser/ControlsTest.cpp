// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include "ArchiveDialog.h"
#include "BulkEditDialog.h"
#include "FolderDialog.h"
#include "MessageBar.h"
#include "PasswordDialog.h"
#include "ValueDialog.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QAccessible>
#include <QtGui/QClipboard>
#include <QtWidgets/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTreeView>

namespace {

using Rows = QList<QStringList>;

/** All controls of all windows, and what can be done without a mouse. */
class Controls : public WindowTest
{
protected:
    /** Calls @p look with the window, and with each of its dialogs. */
    void forEachWindow(const std::function<void(QWidget *)> &look)
    {
        open({example("gate.cfg"), example("dock.cfg"), example("gate.alarms"), path("none"_q)});
        look(&window());
        FolderDialog folders;
        look(&folders);
        BulkEditDialog bulk({});
        look(&bulk);
        ArchiveDialog archive(2);
        look(&archive);
        ValueDialog value({"ethernet"_q}, "ethernet"_q, QString());
        look(&value);
        auto *password = new PasswordDialog("site.zip"_q, true); // deletes itself
        look(password);
        password->close();
        for (const char *help : {"Keyboard Shortcuts", "About"}) {
            answerDialog([&look](QDialog *dialog) {
                look(dialog);
                dialog->reject();
            });
            choose(QLatin1String(help));
        }
    }

    void choose(const QString &text)
    {
        const auto actions = window().findChildren<QAction *>();
        for (QAction *action : actions)
            if (action->text().remove(QLatin1Char('&')) == text)
                return action->trigger();
        ADD_FAILURE() << "no action " << qPrintable(text);
    }

    static QWidget *focused()
    {
        QWidget *focused = QApplication::focusWidget();
        return focused ? focused : QApplication::activeWindow();
    }
    /** A key as it comes from the keyboard: for the widget that has the focus. */
    static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(focused(), key, modifiers);
        QCoreApplication::processEvents();
    }
    static void type(const QString &text) { QTest::keyClicks(focused(), text); }
    static void paste(const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        key(Qt::Key_A, Qt::ControlModifier);
        key(Qt::Key_V, Qt::ControlModifier);
    }
    /** Without a window manager, the focus goes where it is sent, and late. */
    static void activate(QWidget *top)
    {
        constexpr int kLateMs = 100;
        ASSERT_TRUE(QTest::qWaitFor(
            [top] {
                top->activateWindow();
                QTest::qWait(kLateMs);
                return top->isActiveWindow() && top->isAncestorOf(QApplication::focusWidget());
            },
            kPatienceMs));
    }
    /** Has @p answer called with the next dialog, which has the focus then. */
    void answerByKeys(const std::function<void(QDialog *)> &answer)
    {
        answerDialog([answer](QDialog *dialog) {
            activate(dialog);
            answer(dialog);
        });
    }

    /** What is no control of its own: a part of a combo box, or of a message that is not shown. */
    static bool isPartOfAnother(const QWidget &widget)
    {
        for (const QWidget *each = &widget; each; each = each->parentWidget()) {
            if (each != &widget && qobject_cast<const QComboBox *>(each))
                return true;
            if (qobject_cast<const browser::MessageBar *>(each))
                return each->isHidden() || widget.isHidden();
        }
        return false;
    }

    /** How a person tells a control: its name for programs that use it, its label, or what stands
     * on it. */
    static QString nameOf(QWidget *widget)
    {
        if (!widget->accessibleName().isEmpty())
            return widget->accessibleName();
        const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
        if (interface && !interface->relations(QAccessible::Label).isEmpty())
            return interface->relations(QAccessible::Label).first().first->text(QAccessible::Name);
        return interface ? interface->text(QAccessible::Name) : QString();
    }

    /** The names of what Tab leads to, from @p first on until that comes again. */
    QStringList tabOrder(QWidget *first)
    {
        first->setFocus(Qt::TabFocusReason);
        QStringList names;
        constexpr int kMost = 40;
        for (int i = 0; i < kMost; ++i) {
            names += nameOf(QApplication::focusWidget()).remove(QLatin1Char('&'));
            key(Qt::Key_Tab);
            if (QApplication::focusWidget() == first)
                break;
        }
        return names;
    }

    using FolderDialog = browser::FolderDialog;
    using BulkEditDialog = browser::BulkEditDialog;
    using ArchiveDialog = browser::ArchiveDialog;
    using ValueDialog = browser::ValueDialog;
    using PasswordDialog = browser::PasswordDialog;
};

TEST_F(Controls, haveNames)
{
    int controls = 0;
    forEachWindow([&](QWidget *top) {
        const auto widgets = top->findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            if (widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() ||
                isPartOfAnother(*widget))
                continue;
            ++controls;
            EXPECT_FALSE(nameOf(widget).isEmpty())
                << widget->metaObject()->className() << ' ' << qPrintable(widget->objectName())
                << " in " << top->metaObject()->className();
        }
    });
    EXPECT_GT(controls, 50);
}

TEST_F(Controls, tablesAndTreesAreSorted_andHaveTheirFirstOrderAgain)
{
    int views = 0;
    forEachWindow([&](QWidget *top) {
        const auto all = top->findChildren<QAbstractItemView *>();
        for (QAbstractItemView *view : all) {
            const auto *table = qobject_cast<QTableView *>(view);
            const auto *tree = qobject_cast<QTreeView *>(view);
            if (!table && !tree)
                continue;
            ++views;
            const QHeaderView *header = table ? table->horizontalHeader() : tree->header();
            EXPECT_TRUE(table ? table->isSortingEnabled() : tree->isSortingEnabled())
                << qPrintable(view->objectName());
            ASSERT_EQ(header->actions().size(), 1) << qPrintable(view->objectName());
            header->actions().first()->trigger();
            const auto *sorted = qobject_cast<const QSortFilterProxyModel *>(view->model());
            ASSERT_NE(sorted, nullptr) << qPrintable(view->objectName());
            EXPECT_EQ(sorted->sortColumn(), -1);
        }
    });
    EXPECT_EQ(views, 12);
}

TEST_F(Controls, alarmTreeAndProblems_areSortedByAClick)
{
    open({example("gate.alarms"), path("none 10"_q), path("none 9"_q)});
    auto *tree = find<QTreeView>("alarms");
    const auto click = [](QHeaderView *header) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(header->sectionViewportPosition(0) + 20, header->height() / 2));
    };
    const auto firsts = [](const QAbstractItemModel *model) {
        QStringList texts;
        for (const QStringList &row : cells(model))
            texts += row.first();
        return texts;
    };
    click(tree->header());
    click(tree->header());
    EXPECT_EQ(firsts(tree->model()),
              (QStringList{"serial"_q, "schedule"_q, "recipient"_q, "recipient"_q, "camera"_q,
                           "armed"_q, "alarms"_q}));
    const QAbstractItemModel *problems = table("problems")->model();
    EXPECT_EQ(firsts(problems), (QStringList{"none 10"_q, "none 9"_q}));
    click(table("problems")->horizontalHeader());
    EXPECT_EQ(firsts(problems), (QStringList{"none 9"_q, "none 10"_q}));
}

TEST_F(Controls, findingsAreSortedByHowBadTheyAre)
{
    open({fileWith("#:1=\n#:VN-3.0\n\nSECTION a\nno value\nk=1\nENDSECTION a\n"
                   "SECTION b\nENDSECTION c\n",
                   "bad.cfg"_q)});
    showTab(2);
    QTableView *findings = table("textFindings");
    findings->sortByColumn(0, Qt::AscendingOrder);
    QStringList severities;
    for (const QStringList &row : cells(findings->model()))
        severities += row.first();
    ASSERT_NE(severities.first(), severities.last());
    EXPECT_EQ(severities.first(), "Error"_q);
    QStringList expected;
    for (const char *severity : {"Error", "Warning", "Note"})
        for (int i = severities.count(QLatin1String(severity)); i > 0; --i)
            expected += QLatin1String(severity);
    EXPECT_EQ(severities, expected);
}

TEST_F(Controls, tabLeadsThroughTheWindow)
{
    const auto buttons = window().findChildren<QAbstractButton *>();
    QAbstractButton *first = nullptr;
    for (QAbstractButton *button : buttons)
        if (button->isVisible() && button->text() == "&Open Files…"_q &&
            button->focusPolicy() != Qt::NoFocus)
            first = button;
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(tabOrder(first), (QStringList{"Open Files…"_q, "Open Folder…"_q}));

    open({example("gate.cfg"), example("dock.cfg")});
    EXPECT_EQ(tabOrder(find<QLineEdit>("cameraFilter")),
              (QStringList{"Filter of the cameras"_q, "Cameras"_q, "Values"_q,
                           "Filter of the values"_q, "What is filtered"_q, "Values"_q}));
    QTest::keyClick(table("cameras"), Qt::Key_A, Qt::ControlModifier);
    showTab(3);
    EXPECT_EQ(
        tabOrder(find<QLineEdit>("cameraFilter")),
        (QStringList{"Filter of the cameras"_q, "Cameras"_q, "Differences"_q, "All keys"_q,
                     "Previous"_q, "Next"_q, "Differences"_q, "Whole value of the first camera"_q,
                     "Whole value of the second camera"_q}));
    showTab(4);
    EXPECT_EQ(
        tabOrder(find<QLineEdit>("cameraFilter")),
        (QStringList{"Filter of the cameras"_q, "Cameras"_q, "Update"_q, "Update to version:"_q,
                     "From package…"_q, "Models from CSV…"_q, "Verdicts for all cameras"_q}));
}

TEST_F(Controls, tabLeadsThroughDialogs)
{
    answerByKeys([this](QDialog *dialog) {
        dialog->findChild<QLineEdit *>("firstFolder"_q)->setText(path("a"_q));
        dialog->findChild<QLineEdit *>("secondFolder"_q)->setText(path("b"_q));
        EXPECT_EQ(tabOrder(dialog->findChild<QLineEdit *>("firstFolder"_q)),
                  (QStringList{"First folder:"_q, "Choose…"_q, "Second folder:"_q, "Choose…"_q,
                               "Compare"_q, "Cameras of both folders"_q, "All keys"_q, "Previous"_q,
                               "Next"_q, "Differences"_q, "Whole value of the first camera"_q,
                               "Whole value of the second camera"_q, "Close"_q}));
        dialog->reject();
    });
    key(Qt::Key_D, Qt::ControlModifier);
    open({example("gate.cfg")});
    activate(&window());
    answerByKeys([this](QDialog *dialog) {
        EXPECT_EQ(nameOf(QApplication::focusWidget()), "Section:"_q);
        EXPECT_EQ(tabOrder(dialog->findChild<QComboBox *>("bulkKind"_q)),
                  (QStringList{"What to do:"_q, "Section:"_q, "Key:"_q, "Value:"_q,
                               "What would change"_q, "Cancel"_q}));
        dialog->reject();
    });
    key(Qt::Key_B, Qt::ControlModifier);
}

TEST_F(Controls, keyboardIsEnough)
{
    const QString gate = fileWith(readFile(example("gate.cfg")), "gate.cfg"_q);
    const QString dock = fileWith(readFile(example("dock.cfg")), "dock.cfg"_q);
    const QByteArray original = readFile(gate);

    // Open
    answerByKeys([&](QDialog *) {
        paste("\"%1\" \"%2\""_q.arg(gate, dock));
        key(Qt::Key_Return);
    });
    key(Qt::Key_O, Qt::ControlModifier);
    waitUntilLoaded();
    ASSERT_EQ(table("cameras")->model()->rowCount(), 2);
    activate(&window());

    // Search
    key(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    type("NTP=site"_q);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return table("cameras")->model()->rowCount() == 1; }, kPatienceMs));
    key(Qt::Key_Tab);
    EXPECT_EQ(nameOf(QApplication::focusWidget()), "Cameras"_q);
    key(Qt::Key_Home);
    EXPECT_EQ(labelText("valuesTitle"), "10.14.7.21 (gate-south)"_q);

    // Edit
    key(Qt::Key_F, Qt::ControlModifier);
    type("quality"_q);
    EXPECT_EQ(find<QLineEdit>("filter")->text(), "quality"_q);
    EXPECT_EQ(nameOf(QApplication::focusWidget()), "Filter of the values"_q);
    key(Qt::Key_Tab);
    EXPECT_EQ(nameOf(QApplication::focusWidget()), "What is filtered"_q);
    key(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), table("values"));
    key(Qt::Key_F2);
    key(Qt::Key_A, Qt::ControlModifier);
    type("85"_q);
    key(Qt::Key_Return);
    EXPECT_EQ(valueOf("image"_q, "quality"_q).data(), "85"_q);

    // Undo, redo, save
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(window().isWindowModified());
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_S, Qt::ControlModifier);
    QByteArray expected = original;
    expected.replace("quality=70", "quality=85");
    EXPECT_EQ(readFile(gate), expected);

    // Differences
    key(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    key(Qt::Key_Delete);
    key(Qt::Key_Tab);
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_3, Qt::AltModifier);
    key(Qt::Key_F8);
    QTest::qWait(250); // the button is pressed for a moment
    EXPECT_TRUE(table("differences")->isVisible());
    EXPECT_EQ(table("differences")->currentIndex().row(), 0);

    // Change both
    answerByKeys([](QDialog *dialog) {
        type("ethernet"_q);
        key(Qt::Key_Tab);
        type("NTP"_q);
        key(Qt::Key_Tab);
        type("t.example"_q);
        auto *counts = dialog->findChild<QLabel *>("bulkCounts"_q);
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return counts->text().startsWith("Cameras that change: 2."_q); }, kPatienceMs));
        key(Qt::Key_H, Qt::AltModifier);
    });
    key(Qt::Key_B, Qt::ControlModifier);
    activate(&window());
    EXPECT_EQ(labelText("summary"), "Changed, not saved yet: 2"_q);
    key(Qt::Key_S, Qt::ControlModifier | Qt::AltModifier);
    expected.replace("NTP=ntp.site.example", "NTP=t.example");
    EXPECT_EQ(readFile(gate), expected);
    EXPECT_TRUE(readFile(dock).contains("\r\nNTP=t.example\r\n"));

    // A model
    key(Qt::Key_4, Qt::AltModifier);
    table("updates")->setFocus(Qt::TabFocusReason);
    key(Qt::Key_Home);
    key(Qt::Key_F2);
    type("K40D"_q);
    key(Qt::Key_Return);
    EXPECT_EQ(cells(table("updates")->model()).first().at(1), "K40D"_q);

    // Export
    answerByKeys([this](QDialog *) {
        paste(path("out.csv"_q));
        key(Qt::Key_Return);
    });
    key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(readFile(path("out.csv"_q)).count("\r\n"), 3);
}

TEST_F(Controls, selectionCountsInAllPanes)
{
    open({example("cameras.zip"), example("entrance.cfg")});
    EXPECT_FALSE(find<QLabel>("valuesSelectedCount")->isVisible());
    EXPECT_EQ(table("updates")->model()->rowCount(), 4);
    selectCameras({0, 3});
    EXPECT_EQ(labelText("camerasCount"), "4 of 4, 2 selected"_q);
    EXPECT_TRUE(find<QLabel>("valuesSelectedCount")->isVisible());
    EXPECT_EQ(labelText("valuesSelectedCount"),
              "One of the selected cameras: 2. Ctrl+B changes all of them."_q);
    showTab(4);
    QStringList judged;
    for (const QStringList &row : cells(table("updates")->model()))
        judged += row.first();
    EXPECT_EQ(judged, (QStringList{"10.14.7.21"_q, "10.14.7.52"_q}));
    EXPECT_EQ(labelText("updatesCount"), "2 of 4"_q);
    EXPECT_TRUE(labelText("updatesScope").startsWith("The same update for the selected"_q));
    showTab(3);
    EXPECT_TRUE(table("differences")->isVisible());
    selectCameras({0, 1, 3});
    EXPECT_FALSE(table("differences")->isVisible());
    const auto labels = find<QTabWidget>("tabs")->currentWidget()->findChildren<QLabel *>();
    bool isSaid = false;
    for (const QLabel *label : labels)
        isSaid |= label->isVisible() && label->text().startsWith("Selected cameras: 3. "_q);
    EXPECT_TRUE(isSaid);
}

} // namespace
