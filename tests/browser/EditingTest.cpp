// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMessageBox>

#include <unistd.h>

namespace {

using Rows = QList<QStringList>;

class Editing : public WindowTest
{
protected:
    /** Opens a copy of a file of examples/data, and returns its path. */
    QString openCopyOf(const char *name)
    {
        const QString copy = fileWith(readFile(example(name)), QLatin1String(name));
        open({copy});
        return copy;
    }

    Rows values() { return cells(table("values")->model()); }
    void save() { press(Qt::Key_S, Qt::ControlModifier); }

    /** Answers the question whether a file is to be replaced, which comes next. */
    void answerOverwriting()
    {
        answerDialog([](QDialog *dialog) {
            ASSERT_NE(qobject_cast<QMessageBox *>(dialog), nullptr);
            click(dialog, "Yes"_q);
        });
    }

    /** Closes the window and answers its question. */
    bool closeWith(const QString &button)
    {
        bool wasAsked = false;
        answerDialog([&](QDialog *dialog) {
            wasAsked = true;
            click(dialog, button);
        });
        const bool isClosed = window().close();
        EXPECT_TRUE(wasAsked);
        return isClosed;
    }
};

TEST_F(Editing, filter_looksIntoSectionsKeysAndValues)
{
    open({example("gate.cfg")});
    EXPECT_EQ(labelText("valuesCount"), "44 of 44"_q);
    press(Qt::Key_F, Qt::ControlModifier);
    QWidget *filter = QApplication::focusWidget();
    ASSERT_EQ(filter->objectName(), "filter"_q);
    QTest::keyClicks(filter, "dns"_q);
    const Rows dns = {{"ethernet"_q, "DNS"_q, "10.14.0.2"_q},
                      {"ethernet"_q, "DNS"_q, "10.14.0.3"_q}};
    EXPECT_EQ(values(), dns);
    EXPECT_EQ(labelText("valuesCount"), "2 of 44"_q);

    auto *where = find<QComboBox>("filterColumn");
    where->setCurrentText("In values"_q);
    EXPECT_EQ(values(), Rows());
    where->setCurrentText("In keys"_q);
    EXPECT_EQ(values(), dns);
    where->setCurrentText("In sections"_q);
    EXPECT_EQ(values(), Rows());
    QTest::keyClick(filter, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(filter, "AUDIO"_q);
    EXPECT_EQ(values().size(), 3);
}

TEST_F(Editing, savedValue_changesNothingElseOfTheFile)
{
    const QString file = openCopyOf("gate.cfg");
    QByteArray expected = readFile(file);
    edit("eventdlite"_q, "motioncheck"_q, "0"_q);
    EXPECT_TRUE(window().isWindowModified());
    EXPECT_EQ(labelText("valuesTitle"), "10.14.7.21 (gate-south) – edited"_q);
    EXPECT_EQ(readFile(file), expected) << "written before it was saved";
    save();

    expected.replace("\nmotioncheck=1\n", "\nmotioncheck=0\n");
    EXPECT_EQ(readFile(file), expected);
    EXPECT_EQ(names(), QStringList{"gate.cfg"_q}) << "a temporary file was left";
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_EQ(labelText("summary"), "Saved gate.cfg"_q);
    EXPECT_EQ(labelText("valuesTitle"), "10.14.7.21 (gate-south)"_q);
}

TEST_F(Editing, repeatedKeys_keepTheirOrder)
{
    const QString file = openCopyOf("gate.cfg");
    edit("ethernet"_q, "DNS"_q, "10.14.0.9"_q); // the first one
    save();
    EXPECT_TRUE(readFile(file).contains("\nDNS=10.14.0.9\nDNS=10.14.0.3\n"));
    EXPECT_FALSE(readFile(file).contains("10.14.0.2"));
}

TEST_F(Editing, valueThatIsSetBack_isNoEdit)
{
    const QString file = openCopyOf("gate.cfg");
    edit("image"_q, "quality"_q, "85"_q);
    edit("image"_q, "quality"_q, "70"_q);
    ASSERT_FALSE(window().isWindowModified());
    EXPECT_TRUE(window().close());
    EXPECT_EQ(readFile(file), readFile(example("gate.cfg")));
}

TEST_F(Editing, latin1_staysLatin1)
{
    const QString file = openCopyOf("entrance.cfg");
    edit("text"_q, "name"_q, "Eingang Süd – Tür 4"_q); // the dash is no Latin-1
    save();
    EXPECT_EQ(message("valuesError"),
              "Not saved. The file is Latin-1, which cannot hold all of the text. Save a copy, "
              "which will be UTF-8."_q);
    EXPECT_EQ(readFile(file), readFile(example("entrance.cfg")));

    edit("text"_q, "name"_q, "Eingang Süd, Tür 4"_q);
    save();
    QByteArray expected = readFile(example("entrance.cfg"));
    expected.replace("Eingang S\xFC\x64 - T\xFCr 3", "Eingang S\xFC\x64, T\xFCr 4");
    EXPECT_EQ(readFile(file), expected);
    EXPECT_EQ(message("valuesError"), QString());
}

TEST_F(Editing, carriageReturns_stay)
{
    const QString file = openCopyOf("dock.cfg");
    edit("text"_q, "name"_q, "Dock 2"_q);
    save();
    QByteArray expected = readFile(example("dock.cfg"));
    expected.replace("name=Loading dock\r\n", "name=Dock 2\r\n");
    EXPECT_EQ(readFile(file), expected);
}

TEST_F(Editing, sectionInTwoBlocks_isEditedInBoth)
{
    const QString file = openCopyOf("dock.cfg");
    edit("eventdlite"_q, "motiondef"_q, "0"_q, 1); // stands in the second block
    edit("eventdlite"_q, "motioncheck"_q, "0"_q);  // stands in the first one
    save();
    QByteArray expected = readFile(example("dock.cfg"));
    expected.replace("\nmotioncheck=1\r\n", "\nmotioncheck=0\r\n");
    expected.replace("\nmotiondef=0,0,96,320,144,sensitivity=15\r\n", "\nmotiondef=0\r\n");
    EXPECT_EQ(readFile(file), expected);
}

TEST_F(Editing, valueThatTheFormatCannotHold_isRefused)
{
    const QString file = openCopyOf("gate.cfg");
    auto *model = table("values")->model();
    const QModelIndexList found =
        model->match(model->index(0, 1), Qt::DisplayRole, "HOSTNAME"_q, 1, Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1);
    const QModelIndex value = found.first().siblingAtColumn(2);
    EXPECT_FALSE(model->setData(value, "two\nlines"_q, Qt::EditRole));
    EXPECT_EQ(message("valuesError"), "Not changed: a value cannot hold a line break."_q);
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_EQ(value.data(), "gate-south"_q);
}

TEST_F(Editing, fileThatChangedOnTheDisk_isNotOverwritten)
{
    const QString file = openCopyOf("gate.cfg");
    edit("image"_q, "quality"_q, "85"_q);
    const QByteArray other = readFile(file) + "# another program was here\n";
    writeFile(file, other);
    save();
    EXPECT_EQ(message("valuesError"),
              "Not saved. The file has changed on the disk since it was read. Reload it, or save a "
              "copy of what you have."_q);
    EXPECT_EQ(readFile(file), other);
    EXPECT_TRUE(window().isWindowModified());

    answerDialog([](QDialog *dialog) { click(dialog, "Yes"_q); });
    press(Qt::Key_F5);
    EXPECT_FALSE(window().isWindowModified());
    edit("image"_q, "quality"_q, "90"_q);
    save();
    EXPECT_TRUE(readFile(file).contains("\nquality=90\n"));
    EXPECT_TRUE(readFile(file).endsWith("# another program was here\n"));
}

TEST_F(Editing, whatAFileCannotKeep_isSaid)
{
    const QString file = openCopyOf("gate.cfg");
    const QString other = path("other.cfg"_q);
    ASSERT_EQ(link(qPrintable(file), qPrintable(other)), 0);
    edit("image"_q, "quality"_q, "85"_q);
    save();
    EXPECT_EQ(labelText("summary"), "Saved gate.cfg"_q);
    const Rows told = {
        {"gate.cfg"_q, ""_q, "written, but other hard links keep the old content"_q}};
    EXPECT_EQ(cells(table("problems")->model()), told);
    EXPECT_TRUE(table("problems")->isVisible());
    EXPECT_EQ(readFile(other), readFile(example("gate.cfg")));
    edit("image"_q, "quality"_q, "86"_q);
    save();
    EXPECT_EQ(cells(table("problems")->model()), told) << "nothing was lost this time";

    // A copy and a table take the place of files, too.
    ASSERT_EQ(link(qPrintable(other), qPrintable(path("third.cfg"_q))), 0);
    answerDialog([this, other](QDialog *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit"_q)->setText(other);
        answerOverwriting();
        click(dialog, "Save"_q);
    });
    press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(labelText("problemsTitle"), "Problems: 2"_q);
}

TEST_F(Editing, fileThatCannotBeWritten_isSaid)
{
    const QString file = openCopyOf("gate.cfg");
    edit("image"_q, "quality"_q, "85"_q);
    ASSERT_TRUE(QFile::remove(file));
    ASSERT_TRUE(dir().mkdir("gate.cfg"_q));
    save();
    EXPECT_TRUE(message("valuesError").startsWith("Not saved. "_q));
    EXPECT_TRUE(window().isWindowModified());
}

TEST_F(Editing, fullDisk_leavesTheFileAsItWas)
{
    const QString file = openCopyOf("gate.cfg");
    edit("image"_q, "quality"_q, "85"_q);
    {
        const FileSizeLimit limit(100);
        save();
    }
    EXPECT_TRUE(message("valuesError").startsWith("Not saved. "_q));
    EXPECT_EQ(readFile(file), readFile(example("gate.cfg")));
    EXPECT_EQ(names(), QStringList{"gate.cfg"_q});
    EXPECT_TRUE(window().isWindowModified());
}

TEST_F(Editing, closing_asksForWhatIsEdited)
{
    const QString file = openCopyOf("gate.cfg");
    const QByteArray before = readFile(file);
    edit("image"_q, "quality"_q, "85"_q);
    EXPECT_FALSE(closeWith("Cancel"_q));
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(readFile(file), before);
    EXPECT_TRUE(closeWith("Discard"_q));
    EXPECT_EQ(readFile(file), before);
}

TEST_F(Editing, closing_saves)
{
    const QString file = openCopyOf("gate.cfg");
    edit("image"_q, "quality"_q, "85"_q);
    EXPECT_TRUE(closeWith("Save"_q));
    EXPECT_TRUE(readFile(file).contains("\nquality=85\n"));
}

TEST_F(Editing, closing_isPutOffWhenSavingFails)
{
    const QString file = openCopyOf("gate.cfg");
    edit("image"_q, "quality"_q, "85"_q);
    writeFile(file, "other");
    EXPECT_FALSE(closeWith("Save"_q));
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(message("valuesError").startsWith("Not saved. The file has changed"_q));
    EXPECT_EQ(readFile(file), "other");
}

TEST_F(Editing, archiveEntry_isReadOnlyButCanBeCopied)
{
    open({example("cameras.zip")});
    EXPECT_EQ(message("valuesNote"),
              "An entry of an archive cannot be edited. Save a copy of it to edit that."_q);
    const QAbstractItemModel *model = table("values")->model();
    for (int row = 0; row < model->rowCount(); ++row)
        EXPECT_FALSE(model->index(row, 2).flags() & Qt::ItemIsEditable);

    const QString copy = path("copy.cfg"_q);
    answerFileDialog(copy, "Save"_q);
    press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(readFile(copy), readFile(example("gate.cfg")));
}

TEST_F(Editing, header_isReadOnly)
{
    open({example("gate.cfg")});
    const QAbstractItemModel *model = table("values")->model();
    int headers = 0;
    for (int row = 0; row < model->rowCount(); ++row) {
        const bool isHeader = model->index(row, 0).data() == "head"_q;
        headers += isHeader;
        EXPECT_EQ(bool(model->index(row, 2).flags() & Qt::ItemIsEditable), !isHeader);
    }
    EXPECT_EQ(headers, 3);
}

TEST_F(Editing, textWithAnError_isReadOnly)
{
    open(
        {fileWith("#:1.3\n#:VN-3.0.6.29\n\nSECTION a\nk=v\nENDSECTION a\nSECTION b\n", "a.cfg"_q)});
    EXPECT_TRUE(message("valuesNote").startsWith("Only the sections before an error"_q));
    EXPECT_TRUE(values().contains({"a"_q, "k"_q, "v"_q}));
}

} // namespace
