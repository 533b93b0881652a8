// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QtCore/QSettings>
#include <QtGui/QScreen>
#include <QtWidgets/QAction>
#include <QtWidgets/QPushButton>

namespace {

class Start : public WindowTest
{
protected:
    /** A window as the next start shows it. */
    void startAgain()
    {
        m_window->close();
        m_window = std::make_unique<browser::MainWindow>();
        m_window->show();
        m_window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get(), kPatienceMs));
    }

    QStringList recent()
    {
        QStringList paths;
        const auto buttons = window().findChildren<QPushButton *>("recent"_q);
        for (const QPushButton *button : buttons)
            if (button->isVisible())
                paths += button->toolTip();
        return paths;
    }
};

TEST_F(Start, firstWindowInvites)
{
    EXPECT_TRUE(find<QLabel>("startTitle")->isVisible());
    EXPECT_EQ(recent(), QStringList());
    const auto buttons = window().findChildren<QPushButton *>();
    QStringList texts;
    for (const QPushButton *button : buttons)
        if (button->isVisible())
            texts += button->text().remove(QLatin1Char('&'));
    EXPECT_EQ(texts, (QStringList{"Open Files…"_q, "Open Folder…"_q}));

    answerFileDialog(example("gate.cfg"), "Open"_q);
    for (QPushButton *button : buttons)
        if (button->isVisible() && button->text().contains("Files"_q))
            QTest::mouseClick(button, Qt::LeftButton);
    waitUntilLoaded();
    EXPECT_FALSE(find<QLabel>("startTitle")->isVisible());
    EXPECT_TRUE(table("cameras")->isVisible());
}

TEST_F(Start, rememberWhatWasOpened)
{
    const QString file = fileWith(readFile(example("gate.cfg")), "a & b.cfg"_q);
    open({example("cameras.zip")});
    open({file});
    startAgain();
    EXPECT_EQ(recent(), (QStringList{file, example("cameras.zip")}));
    const auto buttons = window().findChildren<QPushButton *>("recent"_q);
    QTest::mouseClick(buttons.first(), Qt::LeftButton);
    waitUntilLoaded();
    EXPECT_EQ(labelText("valuesTitle"), "10.14.7.21 (gate-south)"_q);
    ASSERT_TRUE(QFile::remove(file));
    startAgain();
    EXPECT_EQ(recent(), QStringList{example("cameras.zip")});
}

TEST_F(Start, rememberWindowAndColumns)
{
    open({example("cameras.zip")});
    table("cameras")->setColumnWidth(1, 211);
    window().resize(1003, 701);
    QCoreApplication::processEvents();
    startAgain();
    EXPECT_EQ(table("cameras")->columnWidth(1), 211);
    EXPECT_EQ(window().size(), QSize(1003, 701));
}

TEST_F(Start, titleTellsTheCamera_andTheProgramOnce)
{
    // Qt adds the name of the program by itself.
    EXPECT_EQ(window().windowTitle(), "[*]"_q);
    open({example("gate.cfg")});
    EXPECT_EQ(window().windowTitle(), "10.14.7.21 (gate-south)[*]"_q);
}

TEST_F(Start, helpListsTheKeys_andAboutTheVersions)
{
    answerDialog([](QDialog *dialog) {
        const auto rows = cells(dialog->findChild<QTableView *>("shortcuts"_q)->model());
        EXPECT_TRUE(rows.contains(QStringList{"File"_q, "Open Files"_q, "Ctrl+O"_q}));
        EXPECT_TRUE(rows.contains(QStringList{"Edit"_q, "Move Value Up"_q, "Alt+Up"_q}));
        click(dialog, "Close"_q);
    });
    press(Qt::Key_F1);
    answerDialog([](QDialog *dialog) {
        QString words;
        const auto labels = dialog->findChildren<QLabel *>();
        for (const QLabel *label : labels)
            words += label->text();
        EXPECT_TRUE(words.contains(QApplication::applicationVersion())) << qPrintable(words);
        EXPECT_TRUE(words.contains("runs with Qt "_q + QString::fromLatin1(qVersion())));
        click(dialog, "OK"_q);
    });
    const auto actions = window().findChildren<QAction *>();
    for (QAction *action : actions)
        if (action->text() == "&About"_q)
            action->trigger();
}

/** On a display of 192 dots for an inch. */
class LargeDots : public WindowTest
{
};

TEST_F(LargeDots, allIsTwiceAsLarge_andColumnsAreInView)
{
    EXPECT_EQ(window().devicePixelRatioF(), 2);
    EXPECT_LE(window().frameGeometry().width(), window().screen()->availableSize().width());
    open({example("cameras.zip"), example("gate.cfg")});
    for (const char *name : {"cameras", "values"}) {
        const QTableView *shown = table(name);
        const int width = shown->viewport()->width();
        const int last = shown->model()->columnCount() - 1;
        EXPECT_LE(shown->columnViewportPosition(last) + shown->columnWidth(last), width) << name;
        EXPECT_GE(shown->columnWidth(last), 80) << name;
        for (int column = 0; column < last; ++column)
            EXPECT_GE(shown->columnWidth(column),
                      shown->fontMetrics().horizontalAdvance(
                          shown->model()->headerData(column, Qt::Horizontal).toString()))
                << name << column;
    }
}

} // namespace
