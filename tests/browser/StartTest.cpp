// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include "Colors.h"

#include <QtCore/QSettings>
#include <QtWidgets/QAction>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyleFactory>

#include <cmath>

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

double luminance(const QColor &color)
{
    const auto linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor over(const QColor &tint, const QColor &behind)
{
    const double a = tint.alphaF();
    return QColor::fromRgbF(tint.redF() * a + behind.redF() * (1 - a),
                            tint.greenF() * a + behind.greenF() * (1 - a),
                            tint.blueF() * a + behind.blueF() * (1 - a));
}

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

TEST_F(Start, wordsCanBeRead_inEveryStyleAndPalette)
{
    QPalette dark(QColor(45, 45, 48), QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Base, QColor(25, 25, 25));
    QPalette highContrast(Qt::black, Qt::black);
    highContrast.setColor(QPalette::WindowText, Qt::white);
    highContrast.setColor(QPalette::Text, Qt::white);
    highContrast.setColor(QPalette::Base, Qt::black);
    const QPalette before = QApplication::palette();
    for (const QString &style : {"Fusion"_q, "Windows"_q}) {
        QApplication::setStyle(style);
        for (const QPalette &palette :
             {QApplication::style()->standardPalette(), dark, highContrast}) {
            QApplication::setPalette(palette);
            QCoreApplication::processEvents();
            for (const char *name : {"startTitle", "startWords"}) {
                const QPalette shown = find<QLabel>(name)->palette();
                EXPECT_EQ(shown.brush(QPalette::WindowText).style(), Qt::SolidPattern);
                EXPECT_GE(
                    contrast(shown.color(QPalette::WindowText), palette.color(QPalette::Window)),
                    4.5)
                    << name << ' ' << qPrintable(style);
            }
            for (const QColor &tint :
                 {browser::colors::good(), browser::colors::bad(), browser::colors::notice()})
                EXPECT_GE(contrast(palette.color(QPalette::Text),
                                   over(tint, palette.color(QPalette::Base))),
                          4.5);
        }
    }
    QApplication::setStyle("Fusion"_q);
    QApplication::setPalette(before);
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

} // namespace
