// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QComboBox>

namespace {

class Undo : public WindowTest
{
protected:
    QString openCopyOf(const char *name)
    {
        const QString copy = fileWith(readFile(example(name)), QLatin1String(name));
        open({copy});
        return copy;
    }

    void undo() { press(Qt::Key_Z, Qt::ControlModifier); }
    void redo() { press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
    void save() { press(Qt::Key_S, Qt::ControlModifier); }

    void pressInTable(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(table("values"), key, modifiers);
        QCoreApplication::processEvents();
    }

    /** Triggers an entry of the menu that has no keys. */
    void choose(const QString &text)
    {
        const auto actions = window().findChildren<QAction *>();
        for (QAction *action : actions)
            if (action->text().remove(QLatin1Char('&')) == text) {
                ASSERT_TRUE(action->isEnabled()) << qPrintable(text);
                return action->trigger();
            }
        ADD_FAILURE() << "no action " << qPrintable(text);
    }

    void answerWithText(const QString &text)
    {
        answerDialog([text](QDialog *dialog) {
            auto *line = dialog->findChild<QLineEdit *>();
            line->setText(text);
            QTest::keyClick(line, Qt::Key_Return);
        });
    }
};

TEST_F(Undo, editsOfSeveralCameras_goBackAndForth)
{
    const QString gate = openCopyOf("gate.cfg");
    const QString dock = openCopyOf("dock.cfg");
    edit("image"_q, "quality"_q, "85"_q);
    selectCameras({1});
    edit("text"_q, "name"_q, "Dock 2"_q);
    undo();
    undo();
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_EQ(labelText("valuesTitle"), "10.14.7.21 (gate-south)"_q) << "undone elsewhere";
    redo();
    EXPECT_EQ(valueOf("image"_q, "quality"_q).data(), "85"_q);
    redo();
    EXPECT_EQ(labelText("valuesTitle"), "10.14.7.52 (dock) – edited"_q);
    EXPECT_EQ(valueOf("text"_q, "name"_q).data(), "Dock 2"_q);
    press(Qt::Key_S, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_TRUE(readFile(gate).contains("\nquality=85\n"));
    EXPECT_TRUE(readFile(dock).contains("\nname=Dock 2\r\n"));
}

TEST_F(Undo, backBehindASave_isAnEditOfTheFile)
{
    const QString file = openCopyOf("gate.cfg");
    edit("image"_q, "quality"_q, "85"_q);
    save();
    EXPECT_FALSE(window().isWindowModified());
    undo();
    EXPECT_TRUE(window().isWindowModified());
    save();
    EXPECT_EQ(readFile(file), readFile(example("gate.cfg")));
}

TEST_F(Undo, reload_canBeUndone)
{
    const QString file = openCopyOf("gate.cfg");
    edit("image"_q, "quality"_q, "85"_q);
    QByteArray other = readFile(file);
    other.replace("level=62", "level=63");
    writeFile(file, other);
    answerDialog([](QDialog *dialog) { click(dialog, "Yes"_q); });
    press(Qt::Key_F5);
    EXPECT_EQ(valueOf("audio"_q, "level"_q).data(), "63"_q);
    EXPECT_FALSE(window().isWindowModified());
    undo();
    EXPECT_EQ(valueOf("audio"_q, "level"_q).data(), "62"_q);
    EXPECT_EQ(valueOf("image"_q, "quality"_q).data(), "85"_q);
    EXPECT_TRUE(window().isWindowModified());
    undo();
    save();
    EXPECT_EQ(readFile(file), readFile(example("gate.cfg")));
}

TEST_F(Undo, value_isAddedAndRemoved)
{
    const QString file = openCopyOf("gate.cfg");
    selectValue("ethernet"_q, "NTP"_q);
    answerDialog([](QDialog *dialog) {
        EXPECT_EQ(dialog->findChild<QComboBox *>("newSection"_q)->currentText(), "ethernet"_q);
        QTest::keyClicks(dialog->findChild<QLineEdit *>("newKey"_q), "DNS"_q);
        QTest::keyClicks(dialog->findChild<QLineEdit *>("newValue"_q), "10.14.0.4"_q);
        click(dialog, "Add"_q);
    });
    pressInTable(Qt::Key_Insert);
    EXPECT_EQ(labelText("valuesCount"), "45 of 45, 1 selected"_q);
    EXPECT_EQ(table("values")->currentIndex().data(), "10.14.0.4"_q);
    save();
    QByteArray expected = readFile(example("gate.cfg"));
    expected.replace("DHCP=0\nENDSECTION ethernet", "DHCP=0\nDNS=10.14.0.4\nENDSECTION ethernet");
    EXPECT_EQ(readFile(file), expected);

    selectValue("ethernet"_q, "DNS"_q, 1);
    pressInTable(Qt::Key_Delete);
    save();
    expected.replace("DNS=10.14.0.3\n", "");
    EXPECT_EQ(readFile(file), expected);
    undo();
    undo();
    save();
    EXPECT_EQ(readFile(file), readFile(example("gate.cfg")));
}

TEST_F(Undo, severalValues_areRemovedInOneStep)
{
    const QString file = openCopyOf("gate.cfg");
    selectValue("ethernet"_q, "DNS"_q);
    QTest::keyClick(table("values"), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(table("values"), Qt::Key_Down, Qt::ShiftModifier);
    pressInTable(Qt::Key_Delete);
    save();
    QByteArray expected = readFile(example("gate.cfg"));
    expected.replace("DNS=10.14.0.2\nDNS=10.14.0.3\nNTP=ntp.site.example\n", "");
    EXPECT_EQ(readFile(file), expected);
    undo();
    EXPECT_EQ(labelText("valuesCount").left(8), "44 of 44"_q);
}

TEST_F(Undo, repeatedValues_areMoved)
{
    const QString file = openCopyOf("gate.cfg");
    selectValue("ethernet"_q, "DNS"_q);
    pressInTable(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(table("values")->currentIndex().data(), "10.14.0.2"_q) << "it stays selected";
    save();
    EXPECT_TRUE(readFile(file).contains("\nDNS=10.14.0.3\nDNS=10.14.0.2\n"));
    pressInTable(Qt::Key_Up, Qt::AltModifier);
    save();
    EXPECT_EQ(readFile(file), readFile(example("gate.cfg")));
}

TEST_F(Undo, keysAndSections_areRenamedAddedAndRemoved)
{
    const QString file = openCopyOf("gate.cfg");
    QByteArray expected = readFile(file);
    selectValue("ethernet"_q, "NTP"_q);
    answerWithText("TIMESERVER"_q);
    pressInTable(Qt::Key_F2, Qt::ShiftModifier);
    expected.replace("\nNTP=", "\nTIMESERVER=");
    save();
    EXPECT_EQ(readFile(file), expected);

    answerWithText("DHCP"_q);
    pressInTable(Qt::Key_F2, Qt::ShiftModifier);
    EXPECT_EQ(message("valuesError"), "Not changed: there is a key DHCP already."_q);

    answerWithText("network"_q);
    choose("Rename the Section…"_q);
    expected.replace("SECTION ethernet", "SECTION network");
    save();
    EXPECT_EQ(readFile(file), expected);

    answerWithText("empty"_q);
    choose("Add a Section…"_q);
    EXPECT_EQ(cells(table("values")->model()).last(),
              (QStringList{"empty"_q, "(no values)"_q, ""_q}));
    selectValue("audio"_q, "level"_q);
    choose("Remove the Section"_q);
    save();
    EXPECT_FALSE(readFile(file).contains("SECTION audio"));
    for (int i = 0; i < 4; ++i)
        undo();
    save();
    EXPECT_EQ(readFile(file), readFile(example("gate.cfg")));
}

TEST_F(Undo, menuNamesTheStep)
{
    openCopyOf("gate.cfg");
    edit("image"_q, "quality"_q, "85"_q);
    choose("Undo: Change of quality"_q);
    EXPECT_FALSE(window().isWindowModified());
    choose("Redo: Change of quality"_q);
    EXPECT_TRUE(window().isWindowModified());
}

} // namespace
