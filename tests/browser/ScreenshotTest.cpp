// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QtGui/QScreen>

#include <algorithm>
#include <utility>

namespace {

/** The picture in its 256 most frequent colours, which makes a small file. */
QImage withFewColors(const QImage &picture)
{
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    QVector<QRgb> colors = counts.keys().toVector();
    std::sort(colors.begin(), colors.end(), [&](QRgb a, QRgb b) {
        return std::make_pair(-counts.value(a), a) < std::make_pair(-counts.value(b), b);
    });
    colors.resize(std::min(colors.size(), 256));
    return image.convertToFormat(QImage::Format_Indexed8, colors, Qt::ThresholdDither);
}

/** With VANTERO_SCREENSHOT, the path of a picture, the window is shown in its best light. */
class Screenshot : public WindowTest
{
};

TEST_F(Screenshot, isTakenOnDemand)
{
    const QString picture = qEnvironmentVariable("VANTERO_SCREENSHOT");
    if (picture.isEmpty())
        GTEST_SKIP() << "VANTERO_SCREENSHOT names no file";

    // A copy with a plain name, of which an edit is shown that nobody saves.
    QDir site("/tmp/site"_q);
    ASSERT_FALSE(site.exists()) << "a test made it and was stopped: remove it";
    ASSERT_TRUE(site.mkpath("."_q));
    for (const char *name :
         {"gate.cfg", "gate-factory.cfg", "entrance.cfg", "dock.cfg", "cameras.zip", "gate.alarms"})
        writeFile(site.filePath(QLatin1String(name)), readFile(example(name)));
    const QByteArray archive = readFile(example("cameras.zip"));
    writeFile(site.filePath("cameras-2011-02.zip"_q), archive.left(archive.size() / 2));
    open({site.path()});
    ASSERT_TRUE(site.removeRecursively());

    const QAbstractItemModel *cameras = table("cameras")->model();
    for (int row = 0; row < cameras->rowCount(); ++row)
        if (cameras->index(row, 3).data() == "gate.cfg"_q)
            selectCameras({row});
    edit("ethernet"_q, "HOSTNAME"_q, "gate-2"_q);
    // No row is cut at the lower end of the table.
    const QTableView *values = table("values");
    window().resize(window().width(),
                    window().height() - values->viewport()->height() % values->rowHeight(0));
    QTest::qWait(200); // for the X server to draw it
    const QImage image = window().screen()->grabWindow(window().winId()).toImage();
    ASSERT_TRUE(withFewColors(image).save(picture, "PNG"));
}

} // namespace
