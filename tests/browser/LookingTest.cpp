// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTreeView>

#include <set>

namespace {

using Rows = QList<QStringList>;

class Looking : public WindowTest
{
};

TEST_F(Looking, differencesOfTwoSelectedCameras)
{
    const QByteArray header = "#:1.3=\n#:VN-3.0.6.29\n# Camera IP: 10.0.0.";
    fileWith(header +
                 "1\n\nSECTION ethernet\nDNS=1\nDNS=2\nHOSTNAME=a\nNTP=n\nENDSECTION ethernet\n",
             "1.cfg"_q);
    fileWith(header + "2\n\nSECTION ethernet\nDNS=2\nDNS=1\nHOSTNAME=a\nENDSECTION ethernet\n"
                      "SECTION image\nquality=70\nENDSECTION image\n",
             "2.cfg"_q);
    open({dir().path()});
    showTab(3);
    QTableView *differences = table("differences");
    EXPECT_FALSE(differences->isVisible());
    selectCameras({0, 1});
    EXPECT_TRUE(differences->isVisible());
    EXPECT_EQ(cells(differences->model()),
              (Rows{{"ethernet"_q, "DNS"_q, "1  |  2"_q, "2  |  1"_q},
                    {"ethernet"_q, "NTP"_q, "n"_q, "(missing)"_q},
                    {"head"_q, "Factory IP"_q, "10.0.0.1"_q, "10.0.0.2"_q},
                    {"image"_q, "quality"_q, "(missing)"_q, "70"_q}}));
    EXPECT_EQ(differences->model()->headerData(2, Qt::Horizontal).toString(), "10.0.0.1 (a)"_q);
    EXPECT_EQ(labelText("differencesSummary"), "Keys that differ: 4"_q);
    selectCameras({1});
    EXPECT_FALSE(differences->isVisible());
}

TEST_F(Looking, sameTextsHaveNoDifferences)
{
    open({example("gate.cfg"), example("cameras.zip")});
    showTab(3);
    selectCameras({0, 1}); // both of 10.14.7.21
    EXPECT_FALSE(table("differences")->isVisible());
    EXPECT_EQ(cells(table("differences")->model()), Rows());
}

TEST_F(Looking, updates_areJudgedForAllCameras)
{
    open({example("cameras.zip")});
    showTab(4);
    EXPECT_EQ(labelText("answer"), "Unknown"_q);
    QTest::keyClicks(find<QLineEdit>("target"), "VN-3.0.6.29"_q);
    // Without a model there is no yes: W40 and ?50 cameras refuse it.
    EXPECT_EQ(labelText("answer"), "Depends on the model: VN-3.0.6.29 → VN-3.0.6.29"_q);
    EXPECT_EQ(labelText("reason"),
              "10.14.7.21 (gate-south), same version. W40 cameras on VN may only be updated to "
              "VN-3.4.5.4 or later (rule \"w40-minimum\")."_q);
    const QString platform = "Cameras must stay on their platform"_q;
    EXPECT_EQ(
        cells(table("updates")->model()),
        (Rows{
            {"10.14.7.21"_q, "not known"_q, "VN-3.0.6.29"_q, "same version"_q,
             "Depends on the model"_q,
             "W40 cameras on VN may only be updated to VN-3.4.5.4 or later"_q},
            {"10.14.7.34"_q, "not known"_q, "R16-2.2.1.10"_q, "upgrade"_q, "Not safe"_q, platform},
            {"10.14.7.52"_q, "not known"_q, "R8-1.9.4.2"_q, "upgrade"_q, "Not safe"_q, platform}}));
    selectCameras({1});
    EXPECT_EQ(labelText("answer"), "Not safe: R16-2.2.1.10 → VN-3.0.6.29"_q);
    EXPECT_EQ(labelText("wayOut"),
              "No other version leads there; the camera takes a version of platform R16."_q);
}

TEST_F(Looking, model_decidesWhereRulesAskForIt)
{
    open({fileWith("#:1.3=\n#:VN-3.0.3.7\n# Camera IP: 10.0.0.1\n\n", "k.cfg"_q)});
    showTab(4);
    QTest::keyClicks(find<QLineEdit>("target"), "VN-3.0.6.2"_q);
    EXPECT_EQ(labelText("answer"), "Depends on the model: VN-3.0.3.7 → VN-3.0.6.2"_q);
    EXPECT_FALSE(find<QLabel>("wayOut")->isVisible());

    QTableView *updates = table("updates");
    const auto enterModel = [&](const QString &model) {
        const QPoint cell = updates->visualRect(updates->model()->index(0, 1)).center();
        QTest::mouseClick(updates->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
        QTest::mouseDClick(updates->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
        auto *editor = updates->viewport()->findChild<QLineEdit *>();
        ASSERT_NE(editor, nullptr);
        enter(editor, model);
    };
    enterModel("k40"_q);
    EXPECT_EQ(labelText("answer"), "Unknown"_q);
    EXPECT_EQ(labelText("reason"), "model k40: did you mean K40?"_q);
    enterModel("D24M"_q);
    EXPECT_EQ(labelText("answer"), "Safe: VN-3.0.3.7 → VN-3.0.6.2"_q);
    enterModel("K40D"_q);
    EXPECT_EQ(labelText("answer"), "Not safe: VN-3.0.3.7 → VN-3.0.6.2"_q);
    EXPECT_EQ(labelText("wayOut"), "Way out: install VN-3.0.6.29 first (VN-3.0.6.29 or later)."_q);
    EXPECT_TRUE(labelText("reason").contains("K40 cameras on VN-3.0.3.* must first be updated to "
                                             "VN-3.0.6.29 or later"_q));
}

TEST_F(Looking, version_isTakenFromAPackage)
{
    open({example("gate.cfg")});
    showTab(4);
    const auto choose = [this](const QString &package) {
        answerFileDialog(package, "Open"_q);
        const auto buttons = window().findChildren<QAbstractButton *>();
        for (QAbstractButton *button : buttons)
            if (button->text() == "From &package…"_q)
                QTest::mouseClick(button, Qt::LeftButton);
    };
    choose(example("gate.fwp"));
    EXPECT_EQ(find<QLineEdit>("target")->text(), "VN-3.0.6.29"_q);
    choose(example("gate.jpg"));
    EXPECT_EQ(message("updateMessage"), "gate.jpg cannot be read, or names no version."_q);
    EXPECT_EQ(find<QLineEdit>("target")->text(), "VN-3.0.6.29"_q);
}

TEST_F(Looking, unknownVersions_haveNoVerdict)
{
    open(
        {example("gate.cfg"),
         fileWith("#:1.3=\n#:\n# Camera IP: 10.0.0.9\n\nSECTION a\nENDSECTION a\n", "none.cfg"_q)});
    showTab(4);
    QTest::keyClicks(find<QLineEdit>("target"), "3.0"_q);
    EXPECT_EQ(labelText("reason"), "The configuration does not tell the firmware."_q);
    selectCameras({1});
    EXPECT_EQ(labelText("answer"), "Unknown"_q);
    EXPECT_EQ(labelText("reason"), "\"3.0\" names no known platform."_q);
}

TEST_F(Looking, alarmList_isATree)
{
    open({example("gate.alarms")});
    EXPECT_EQ(find<QTabWidget>("tabs")->currentIndex(), 4);
    const QAbstractItemModel *model = find<QTreeView>("alarms")->model();
    EXPECT_EQ(cells(model), (Rows{{"alarms"_q, ""_q},
                                  {"armed"_q, "true"_q},
                                  {"camera"_q, "South gate"_q},
                                  {"recipient"_q, "guard@10.14.0.5"_q},
                                  {"recipient"_q, "watch@10.14.0.6"_q},
                                  {"schedule"_q, ""_q},
                                  {"serial"_q, "10.23"_q}}));
    const QModelIndex alarms = model->index(0, 0);
    EXPECT_EQ(cells(model, alarms),
              (Rows{{"item 1"_q, ""_q}, {"item 2"_q, ""_q}, {"item 3"_q, ""_q}}));
    EXPECT_EQ(cells(model, model->index(0, 0, alarms)), (Rows{{"active"_q, "true"_q},
                                                              {"id"_q, "17"_q},
                                                              {"level"_q, "0.75"_q},
                                                              {"type"_q, "motion"_q},
                                                              {"zone"_q, "Drive way"_q}}));
    EXPECT_EQ(cells(model, model->index(2, 0, alarms)).first(),
              (QStringList{"active"_q, "null"_q}));
    EXPECT_EQ(model->parent(model->index(0, 0, alarms)), alarms);
}

TEST_F(Looking, alarmListWithAnError_isShownWithItsPlace)
{
    open({example("gate.alarms"), fileWith("{\r\n  a: 1,\r\n  gate: }\r\n", "broken.alarms"_q)});
    showTab(5);
    EXPECT_EQ(message("alarmError"),
              "No alarm list: line 3, column 9, syntax error, unexpected '}'."_q);
    auto *shown = find<QPlainTextEdit>("alarmSource");
    EXPECT_TRUE(shown->isVisible());
    ASSERT_EQ(shown->extraSelections().size(), 1);
    EXPECT_EQ(shown->extraSelections().first().cursor.selectedText(), "}"_q);
}

TEST_F(Looking, alarmLists_endInACommentOrHoldNothing)
{
    open({fileWith("{a: 1} /* *", "open.alarms"_q), fileWith("", "empty.alarms"_q),
          fileWith("[]", "list.alarms"_q)});
    // A "*" at the very end of a comment is one that programs have to look out for.
    EXPECT_EQ(cells(table("problems")->model()),
              (Rows{{"empty.alarms"_q, "line 1, column 1"_q,
                     "syntax error, unexpected $end, expecting '{' or '['"_q}}));
    EXPECT_EQ(cells(find<QTreeView>("alarms")->model()), (Rows{{""_q, "[]"_q}}));
}

TEST_F(Looking, window_isOnTheScreen)
{
    open({example("cameras.zip")});
    QApplication::processEvents();
    const QImage image = window()
                             .screen()
                             ->grabWindow(window().winId())
                             .toImage()
                             .convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(image.size(), window().size() * window().devicePixelRatioF());
    std::set<QRgb> colors;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    EXPECT_GT(colors.size(), 20U) << "nothing was drawn";
}

} // namespace
