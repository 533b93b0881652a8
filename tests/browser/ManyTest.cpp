// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include "base/ZipReader.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>

namespace {

using Rows = QList<QStringList>;

/** Several cameras at once, and what leaves the program. */
class Many : public WindowTest
{
protected:
    void openThree()
    {
        for (const char *name : {"gate.cfg", "dock.cfg", "entrance.cfg"})
            fileWith(readFile(example(name)), QLatin1String(name));
        open({dir().path()});
        QTest::keyClick(table("cameras"), Qt::Key_A, Qt::ControlModifier);
    }
};

TEST_F(Many, valueIsChangedInAll_afterAPreview_andBackInOneStep)
{
    openThree();
    EXPECT_EQ(labelText("camerasCount"), "3 of 3, 3 selected"_q);
    const QByteArray gate = readFile(path("gate.cfg"_q));
    answerDialog([this](QDialog *dialog) {
        QTest::keyClicks(dialog->findChild<QLineEdit *>("bulkSection"_q), "ethernet"_q);
        QTest::keyClicks(dialog->findChild<QLineEdit *>("bulkKey"_q), "NTP"_q);
        QTest::keyClicks(dialog->findChild<QLineEdit *>("bulkValue"_q), "t.example"_q);
        auto *counts = dialog->findChild<QLabel *>("bulkCounts"_q);
        ASSERT_TRUE(QTest::qWaitFor([&] { return counts->text().startsWith("Cameras that"_q); },
                                    kPatienceMs));
        const Rows rows = cells(dialog->findChild<QTableView *>("bulkChanges"_q)->model());
        ASSERT_EQ(rows.size(), 3);
        EXPECT_TRUE(rows.contains(
            QStringList{"10.14.7.21 (gate-south)"_q, "ntp.site.example"_q, "t.example"_q, ""_q}));
        EXPECT_FALSE(window().isWindowModified()) << "done before it was agreed to";
        click(dialog, "Change"_q);
    });
    press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(labelText("summary"), "Changed, not saved yet: 3"_q);
    EXPECT_EQ(readFile(path("gate.cfg"_q)), gate) << "written before it was saved";
    press(Qt::Key_S, Qt::ControlModifier | Qt::AltModifier);
    QByteArray expected = gate;
    expected.replace("NTP=ntp.site.example", "NTP=t.example");
    EXPECT_EQ(readFile(path("gate.cfg"_q)), expected);
    EXPECT_TRUE(readFile(path("dock.cfg"_q)).contains("\r\nNTP=t.example\r\n"));
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_S, Qt::ControlModifier | Qt::AltModifier);
    for (const char *name : {"gate.cfg", "dock.cfg", "entrance.cfg"})
        EXPECT_EQ(readFile(path(QLatin1String(name))), readFile(example(name))) << name;
}

TEST_F(Many, shownCameras_areExportedAsCsv)
{
    open({example("gate.cfg"),
          fileWith("#:1=\n#:VN-3.0\n# Camera IP: 10.0.0.9\n\nSECTION ethernet\nHOSTNAME=a, \"b\"\n"
                   "ENDSECTION ethernet\n",
                   "b.cfg"_q)});
    answerFileDialog(path("out.csv"_q), "Save"_q);
    press(Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(readFile(path("out.csv"_q)), "Factory address,Host name,Firmware,Source\r\n"
                                           "10.0.0.9,\"a, \"\"b\"\"\",VN-3.0,b.cfg\r\n"
                                           "10.14.7.21,gate-south,VN-3.0.6.29,gate.cfg\r\n");
    EXPECT_EQ(labelText("summary"), "Exported rows: 2"_q);
}

TEST_F(Many, selection_goesIntoAnEncryptedArchive_withWhatWasEdited)
{
    openThree();
    selectCameras({0});
    edit("image"_q, "quality"_q, "85"_q);
    QTest::keyClick(table("cameras"), Qt::Key_A, Qt::ControlModifier);
    answerDialog([this](QDialog *dialog) {
        dialog->findChild<QCheckBox *>("archiveEncrypted"_q)->click();
        QTest::keyClicks(dialog->findChild<QLineEdit *>("archivePassword"_q), "open-7"_q);
        QTest::keyClicks(dialog->findChild<QLineEdit *>("archivePasswordAgain"_q), "open-7"_q);
        answerFileDialog(path("site.zip"_q), "Save"_q);
        click(dialog, "Choose a File…"_q);
    });
    press(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(labelText("summary"), "Put into site.zip: 3"_q);

    vn::ZipReader zip(path("site.zip"_q), "open-7");
    zip.open(QIODevice::ReadOnly);
    QStringList listed = zip.fileListBySuffix("cfg"_q);
    listed.sort();
    EXPECT_EQ(listed, (QStringList{"dock.cfg"_q, "entrance.cfg"_q, "gate.cfg"_q}));
    zip.openFile("gate.cfg"_q);
    EXPECT_TRUE(zip.readAll().contains("\nquality=85\n"));
}

TEST_F(Many, foldersAreComparedByAddress)
{
    const QByteArray head = "#:1=\n#:VN-3.0\n# Camera IP: 10.0.0.";
    ASSERT_TRUE(dir().mkpath("a/deep"_q) && dir().mkpath("b"_q));
    fileWith(head + "1\n\nSECTION s\nk=1\nENDSECTION s\n", "a/1.cfg"_q);
    fileWith(head + "2\n\nSECTION s\nk=1\nENDSECTION s\n", "a/deep/2.cfg"_q);
    fileWith(head + "3\n\nSECTION s\nk=1\nENDSECTION s\n", "a/3.cfg"_q);
    fileWith(head + "1\n\nSECTION s\nk=1\nENDSECTION s\n", "b/other-name.cfg"_q);
    fileWith(head + "2\n\nSECTION s\nk=2\nENDSECTION s\n", "b/2.cfg"_q);
    fileWith(head + "4\n\nSECTION s\nk=1\nENDSECTION s\n", "b/4.cfg"_q);
    answerDialog([this](QDialog *dialog) {
        dialog->findChild<QLineEdit *>("firstFolder"_q)->setText(path("a"_q));
        dialog->findChild<QLineEdit *>("secondFolder"_q)->setText(path("b"_q));
        click(dialog, "Compare"_q);
        auto *folders = dialog->findChild<QTableView *>("folders"_q);
        EXPECT_TRUE(QTest::qWaitFor([&] { return folders->model()->rowCount() > 0; }, kPatienceMs));
        EXPECT_EQ(cells(folders->model()), (Rows{{"10.0.0.1"_q, "same"_q, ""_q},
                                                 {"10.0.0.2"_q, "different"_q, "1"_q},
                                                 {"10.0.0.3"_q, "only in the first"_q, ""_q},
                                                 {"10.0.0.4"_q, "only in the second"_q, ""_q}}));
        QTest::keyClick(folders, Qt::Key_Down);
        const Rows keys = cells(dialog->findChild<QTableView *>("folderDifferences"_q)->model());
        EXPECT_TRUE(keys.contains(QStringList{"s"_q, "k"_q, "1"_q, "2"_q}));
        click(dialog, "Close"_q);
    });
    press(Qt::Key_D, Qt::ControlModifier);
}

TEST_F(Many, differences_allKeys_nextAndPrevious_wholeValues)
{
    open({example("gate.cfg"), example("gate-factory.cfg")});
    showTab(3);
    selectCameras({0, 1});
    QTableView *differences = table("differences");
    const int differing = differences->model()->rowCount();
    ASSERT_GT(differing, 2);
    find<QCheckBox>("differencesAll")->click();
    EXPECT_GT(differences->model()->rowCount(), differing);
    press(Qt::Key_F8);
    QTest::qWait(250); // the button is pressed for a moment
    const int first = differences->currentIndex().row();
    ASSERT_GE(first, 0);
    press(Qt::Key_F8);
    QTest::qWait(250); // the button is pressed for a moment
    EXPECT_GT(differences->currentIndex().row(), first);
    press(Qt::Key_F8, Qt::ShiftModifier);
    QTest::qWait(250);
    EXPECT_EQ(differences->currentIndex().row(), first);
    EXPECT_FALSE(find<QPlainTextEdit>("differencesFirst")->toPlainText().isEmpty() &&
                 find<QPlainTextEdit>("differencesSecond")->toPlainText().isEmpty());
    EXPECT_FALSE(differences->horizontalScrollBar()->isVisible()) << "both columns are in view";
}

TEST_F(Many, findings_leadToTheirLine)
{
    open({fileWith("#:1=\n#:VN-3.0\n\nSECTION a\nno value\nk=1\nENDSECTION b\n", "bad.cfg"_q)});
    showTab(2);
    QTableView *findings = table("textFindings");
    ASSERT_GT(findings->model()->rowCount(), 0);
    int row = 0;
    while (row < findings->model()->rowCount() &&
           findings->model()->index(row, 0).data() != "Error"_q)
        ++row;
    ASSERT_LT(row, findings->model()->rowCount());
    findings->selectRow(row);
    auto *text = find<QPlainTextEdit>("textSource");
    EXPECT_EQ(text->textCursor().blockNumber() + 1,
              findings->model()->index(row, 1).data().toInt());
    EXPECT_GT(text->extraSelections().size(), 0);
    EXPECT_TRUE(labelText("textExcerpt").contains("^"_q));
}

TEST_F(Many, imageWithSettings_isReadOnly)
{
    open({example("gate.jpg")});
    ASSERT_EQ(table("cameras")->model()->rowCount(), 1);
    EXPECT_GT(table("values")->model()->rowCount(), 0);
    EXPECT_EQ(message("valuesNote"),
              "These are the settings in the comment of an image, which cannot be edited."_q);
}

TEST_F(Many, modelsComeFromATable_andAreRemembered)
{
    const QString csv =
        fileWith("address;model\r\n10.14.7.21;\"K40D\";x\n10.14.7.52\tH30\n", "m.csv"_q);
    open({example("gate.cfg"), example("dock.cfg")});
    showTab(4);
    answerFileDialog(csv, "Open"_q);
    const auto buttons = window().findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons)
        if (button->text() == "Models from &CSV…"_q)
            QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(message("updateMessage"), "Models that were read: 2"_q);
    const auto models = [this] {
        QStringList found;
        for (const QStringList &row : cells(table("updates")->model()))
            found += row.at(1);
        return found;
    };
    EXPECT_EQ(models(), (QStringList{"K40D"_q, "H30"_q}));
    m_window->close();
    m_window = std::make_unique<browser::MainWindow>();
    m_window->show();
    open({example("gate.cfg"), example("dock.cfg")});
    EXPECT_EQ(models(), (QStringList{"K40D"_q, "H30"_q}));
}

TEST_F(Many, fileThatChangesWhileItIsShown_isNoticed)
{
    const QString file = fileWith(readFile(example("gate.cfg")), "gate.cfg"_q);
    open({file});
    EXPECT_EQ(message("valuesDisk"), QString());
    QByteArray other = readFile(file);
    other.replace("level=62", "level=63");
    writeFile(file, other);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !message("valuesDisk").isEmpty(); }, kPatienceMs));
    EXPECT_EQ(message("valuesDisk"), "Another program has changed the file."_q);
    const auto buttons = find<QWidget>("valuesDisk")->findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons)
        if (button->text() == "Reload"_q)
            QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(valueOf("audio"_q, "level"_q).data(), "63"_q);
    EXPECT_EQ(message("valuesDisk"), QString());
}

} // namespace
