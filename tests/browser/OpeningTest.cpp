// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QProgressBar>

namespace {

using Rows = QList<QStringList>;

/** Camera @p number of a site that a test makes up. */
QByteArray camera(int number)
{
    return "#:1.3====\n#:VN-3.0.6.29\n# Camera IP: 10.0." + QByteArray::number(number / 250) + '.' +
           QByteArray::number(number % 250) + "\n\nSECTION ethernet\nHOSTNAME=cam" +
           QByteArray::number(number) + "\nENDSECTION ethernet\n";
}

class Opening : public WindowTest
{
protected:
    Rows cameras() { return cells(table("cameras")->model()); }
    Rows problems() { return cells(table("problems")->model()); }

    void enterPassword(const QString &password)
    {
        QDialog *dialog = waitForDialog();
        QTest::keyClicks(dialog->findChild<QLineEdit *>("password"_q), password);
        click(dialog, "Open"_q);
    }
};

TEST_F(Opening, archive_isListedByAddress)
{
    open({example("cameras.zip")});
    EXPECT_EQ(cameras(), (Rows{{"10.14.7.21"_q, "gate-south"_q, "VN-3.0.6.29"_q,
                                "cameras.zip › gate-2011-03-09.cfg"_q},
                               {"10.14.7.34"_q, "entrance"_q, "R16-2.2.1.10"_q,
                                "cameras.zip › entrance-2011-03-09.cfg"_q},
                               {"10.14.7.52"_q, "dock"_q, "R8-1.9.4.2"_q,
                                "cameras.zip › older/dock-2011-03-09.CFG"_q}}));
    EXPECT_EQ(labelText("summary"), "Configurations: 3"_q);
    EXPECT_EQ(problems(), Rows());
    EXPECT_FALSE(table("problems")->isVisible());
    // The first one is shown at once.
    EXPECT_EQ(labelText("valuesTitle"), "10.14.7.21 (gate-south)"_q);
}

TEST_F(Opening, folder_withAllThatIsInIt_wrongPasswordThenRightOne)
{
    window().open({QStringLiteral(VANTERO_EXAMPLE_DATA)});
    QPointer<QDialog> first = waitForDialog();
    EXPECT_EQ(first->findChild<QWidget *>("passwordMessage"_q)->isVisible(), false);
    enterPassword("guessed"_q);
    ASSERT_TRUE(QTest::qWaitFor([&] { return first.isNull(); }, kPatienceMs));
    EXPECT_TRUE(waitForDialog()->findChild<QWidget *>("passwordMessage"_q)->isVisible());
    EXPECT_EQ(cameras().size(), 8); // all but the encrypted ones
    enterPassword("open-demo-7"_q);
    waitUntilLoaded();

    QStringList sources;
    for (const QStringList &row : cameras())
        sources += row.at(0) + QLatin1Char(' ') + row.at(3);
    sources.sort();
    EXPECT_EQ(sources,
              (QStringList{"10.14.7.21 cameras-encrypted.zip › gate-2011-03-09.cfg"_q,
                           "10.14.7.21 cameras.zip › gate-2011-03-09.cfg"_q,
                           "10.14.7.21 gate-factory.cfg"_q, "10.14.7.21 gate.cfg"_q,
                           "10.14.7.34 cameras-encrypted.zip › entrance-2011-03-09.cfg"_q,
                           "10.14.7.34 cameras.zip › entrance-2011-03-09.cfg"_q,
                           "10.14.7.34 entrance.cfg"_q,
                           "10.14.7.52 cameras-encrypted.zip › older/dock-2011-03-09.CFG"_q,
                           "10.14.7.52 cameras.zip › older/dock-2011-03-09.CFG"_q,
                           "10.14.7.52 dock.cfg"_q, "unknown gate.jpg"_q}));
    EXPECT_EQ(problems(), Rows());
    EXPECT_EQ(labelText("summary"), "Configurations: 11"_q);
}

TEST_F(Opening, archiveThatIsSkipped_isAProblem)
{
    window().open({example("cameras-encrypted.zip"), example("dock.cfg")});
    click(waitForDialog(), "Skip the Archive"_q);
    waitUntilLoaded();
    EXPECT_EQ(cameras().size(), 1);
    EXPECT_EQ(problems(), (Rows{{"cameras-encrypted.zip"_q, "entrance-2011-03-09.cfg"_q,
                                 "encrypted, and there is no password"_q}}));
    EXPECT_TRUE(table("problems")->isVisible());
    EXPECT_EQ(labelText("problemsTitle"), "Problems: 1"_q);
}

TEST_F(Opening, problems_areListedWithFilePlaceAndReason)
{
    const QString note = fileWith("no configuration\n", "note.txt"_q);
    const QString bad =
        fileWith("#:1.3\n#:VN-3.0.6.29\n\nSECTION a\nk=v\nENDSECTION b\n", "bad.cfg"_q);
    QByteArray bytes = readFile(example("cameras.zip"));
    const QString cut = fileWith(bytes.left(bytes.size() / 2), "cut.zip"_q);
    // One byte of the first entry's data, which follows its name.
    const int data = bytes.indexOf("gate-2011-03-09.cfg") + 60;
    bytes[data] = char(bytes[data] ^ 0x55);
    const QString damaged = fileWith(bytes, "damaged.zip"_q);
    const QString list = fileWith("{\n  gate: }\n", "gate.alarms"_q);
    open({path("none.cfg"_q), note, bad, cut, damaged, list});

    const Rows found = problems();
    ASSERT_EQ(found.size(), 6);
    EXPECT_EQ(found.at(0), (QStringList{"none.cfg"_q, ""_q, "No such file or directory"_q}));
    EXPECT_EQ(found.at(1),
              (QStringList{"note.txt"_q, ""_q,
                           "no configuration: the first two lines do not tell the versions"_q}));
    EXPECT_EQ(found.at(2).mid(0, 2), (QStringList{"bad.cfg"_q, ""_q}));
    EXPECT_TRUE(found.at(2).at(2).contains("ENDSECTION"_q)) << qPrintable(found.at(2).at(2));
    EXPECT_EQ(found.at(3).mid(0, 2), (QStringList{"cut.zip"_q, ""_q}));
    EXPECT_FALSE(found.at(3).at(2).isEmpty());
    EXPECT_EQ(found.at(4).mid(0, 2), (QStringList{"damaged.zip"_q, "gate-2011-03-09.cfg"_q}));
    EXPECT_FALSE(found.at(4).at(2).isEmpty());
    EXPECT_EQ(found.at(5), (QStringList{"gate.alarms"_q, "line 2, column 9"_q,
                                        "syntax error, unexpected '}'"_q}));

    // What could be read is there: the beginning of one, and the other entries of the archive.
    EXPECT_EQ(cameras().size(), 3);
}

TEST_F(Opening, sameFileAgain_isListedOnce)
{
    open({example("gate.cfg"), example("cameras.zip")});
    open({example("cameras.zip"), example("gate.cfg")});
    EXPECT_EQ(cameras().size(), 4);
}

TEST_F(Opening, addressesAndVersions_areSortedAsNumbers)
{
    for (const int number : {121, 21, 3})
        fileWith(camera(number), "%1.cfg"_q.arg(number));
    open({dir().path()});
    QStringList addresses;
    for (const QStringList &row : cameras())
        addresses += row.at(0);
    EXPECT_EQ(addresses, (QStringList{"10.0.0.3"_q, "10.0.0.21"_q, "10.0.0.121"_q}));
}

TEST_F(Opening, droppedFiles_areOpened)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(example("cameras.zip")),
                  QUrl("https://example.invalid/cameras.zip"_q)});
    QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &drop);
    waitUntilLoaded();
    EXPECT_EQ(cameras().size(), 3);
}

TEST_F(Opening, stop_keepsWhatWasRead)
{
    constexpr int kCameras = 2000;
    for (int i = 0; i < kCameras; ++i)
        fileWith(camera(i), "%1.cfg"_q.arg(i));
    window().open({dir().path()});
    // The loader waits for the window, so it cannot be far ahead when it is stopped.
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return table("cameras")->model()->rowCount() > 0; }, kPatienceMs));
    EXPECT_TRUE(window().findChild<QProgressBar *>()->isVisible());
    QTest::mouseClick(find<QAbstractButton>("stop"), Qt::LeftButton);
    waitUntilLoaded();
    const int read = cameras().size();
    EXPECT_GT(read, 0);
    EXPECT_LT(read, kCameras);
    EXPECT_EQ(labelText("summary"), "Stopped. Configurations so far: %1"_q.arg(read));
    EXPECT_FALSE(window().findChild<QProgressBar *>()->isVisible());

    // The rest can be opened later.
    open({dir().path()});
    EXPECT_EQ(cameras().size(), kCameras);
}

TEST_F(Opening, window_mayBeClosedWhileItLoads)
{
    for (int i = 0; i < 500; ++i)
        fileWith(camera(i), "%1.cfg"_q.arg(i));
    window().open({dir().path()});
    EXPECT_TRUE(window().close());
    m_window.reset();
}

TEST_F(Opening, closeAll_startsAnew)
{
    open({QStringLiteral(VANTERO_EXAMPLE_DATA "/cameras.zip"), example("gate.alarms"),
          path("none"_q)});
    press(Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(cameras(), Rows());
    EXPECT_EQ(problems(), Rows());
    open({example("cameras.zip")});
    EXPECT_EQ(cameras().size(), 3);
}

/** The program itself, which has an application of its own. */
class Program : public FolderTest
{
protected:
    static QImage screen() { return QGuiApplication::primaryScreen()->grabWindow(0).toImage(); }
};

TEST_F(Program, opensWhatTheCommandLineNames)
{
    const QImage before = screen();
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(QStringLiteral(VANTERO_CONFIG_BROWSER), {example("cameras.zip")});
    ASSERT_TRUE(program.waitForStarted(kPatienceMs));
    EXPECT_TRUE(QTest::qWaitFor([&] { return screen() != before; }, kPatienceMs))
        << "no window came up";
    EXPECT_EQ(program.state(), QProcess::Running);
    program.kill();
    EXPECT_TRUE(program.waitForFinished(kPatienceMs));
}

TEST_F(Program, tellsHowItIsCalled)
{
    QProcess program;
    program.start(QStringLiteral(VANTERO_CONFIG_BROWSER), {"--help"_q});
    ASSERT_TRUE(program.waitForFinished(kPatienceMs));
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(program.readAllStandardOutput().contains("[path...]"));
    program.start(QStringLiteral(VANTERO_CONFIG_BROWSER), {"--no-such-option"_q});
    ASSERT_TRUE(program.waitForFinished(kPatienceMs));
    EXPECT_EQ(program.exitCode(), 1);
}

} // namespace
