// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QtGui/QScreen>
#include <QtWidgets/QSplitter>

namespace {

/** With VANTERO_SCREENSHOT, the path of a picture, the window is shown in its best light. */
class Screenshot : public WindowTest
{
};

TEST_F(Screenshot, isTakenOnDemand)
{
    const QString picture = qEnvironmentVariable("VANTERO_SCREENSHOT");
    if (picture.isEmpty())
        GTEST_SKIP() << "VANTERO_SCREENSHOT names no file";

    // A folder of its own, so that an edit is shown that nobody saves.
    for (const char *name :
         {"gate.cfg", "gate-factory.cfg", "entrance.cfg", "dock.cfg", "cameras.zip", "gate.alarms"})
        fileWith(readFile(example(name)), QLatin1String(name));
    const QByteArray archive = readFile(example("cameras.zip"));
    fileWith(archive.left(archive.size() / 2), "cameras-2011-02.zip"_q);
    open({dir().path()});
    selectCameras({0});
    QTableView *cameras = table("cameras");
    for (int row = 0; row < cameras->model()->rowCount(); ++row)
        if (cameras->model()->index(row, 3).data() == "gate.cfg"_q)
            selectCameras({row});
    edit("ethernet"_q, "HOSTNAME"_q, "gate-2"_q);
    table("values")->clearSelection();
    QTest::qWait(200);
    const QImage image = window().screen()->grabWindow(window().winId()).toImage();
    // Few colours are enough, and make a small file.
    ASSERT_TRUE(image.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither)
                    .save(picture, "PNG", 0));
}

} // namespace
