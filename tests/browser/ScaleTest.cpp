// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QtCore/QElapsedTimer>

#include <cstdio>

namespace {

constexpr int kCameras = 20000;
constexpr int kSize = 8000;

/** A configuration of the usual size that is packed to about a quarter. */
QByteArray configuration(int number)
{
    quint32 seed = quint32(number);
    QByteArray text = "#:1.3===\n#:VN-3.0.6." + QByteArray::number(number % 40) +
                      "\n# Camera IP: 10.0." + QByteArray::number(number / 250) + '.' +
                      QByteArray::number(number % 250) + "\n\nSECTION ethernet\nNTP=10.14.0." +
                      QByteArray::number(number % 5) + "\nENDSECTION ethernet\nSECTION motion\n";
    while (text.size() < kSize - 40) {
        seed = seed * 1664525U + 1013904223U;
        text += "motion_area" + QByteArray::number(seed >> 24) + '=' +
                QByteArray::number(seed >> 16) + '\n';
    }
    return text + "ENDSECTION motion\n";
}

/** What /proc tells of this process, in MiB. */
int memory(const char *name)
{
    const QList<QByteArray> lines = readFile(QStringLiteral("/proc/self/status")).split('\n');
    for (const QByteArray &line : lines)
        if (line.startsWith(name))
            return line.simplified().split(' ').at(1).toInt() / 1024;
    return -1;
}

/** A site with many cameras; with VANTERO_SCALE set, as it takes its time, and holds for builds as
 * shipped only. */
class Scale : public WindowTest
{
};

TEST_F(Scale, opensASite_andFindsAValueInIt)
{
    if (!qEnvironmentVariableIsSet("VANTERO_SCALE"))
        GTEST_SKIP() << "VANTERO_SCALE is not set";
    for (int i = 0; i < kCameras; ++i)
        fileWith(configuration(i), QStringLiteral("%1.cfg").arg(i, 5, 10, QLatin1Char('0')));

    QElapsedTimer clock;
    clock.start();
    const QAbstractItemModel *cameras = table("cameras")->model();
    window().open({dir().path()});
    ASSERT_TRUE(QTest::qWaitFor([&] { return cameras->rowCount() > 0; }, kPatienceMs));
    const qint64 first = clock.elapsed();
    waitUntilLoaded();
    const qint64 all = clock.elapsed();
    EXPECT_EQ(cameras->rowCount(), kCameras);
    const int loaded = memory("VmHWM:");

    clock.restart();
    find<QLineEdit>("cameraFilter")->setText("NTP=10.14.0.3"_q);
    ASSERT_TRUE(QTest::qWaitFor([&] { return cameras->rowCount() == kCameras / 5; }, kPatienceMs));
    const qint64 found = clock.elapsed();
    clock.restart();
    find<QLineEdit>("cameraFilter")->clear();
    QTest::keyClick(table("cameras"), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(labelText("camerasCount"), "20,000 of 20,000, 20,000 selected"_q);
    const qint64 selected = clock.elapsed();
    std::printf("first rows %lld ms, all %lld ms, most memory %d MiB, a value found in %lld ms, "
                "all selected in %lld ms\n",
                static_cast<long long>(first), static_cast<long long>(all), loaded,
                static_cast<long long>(found), static_cast<long long>(selected));
    EXPECT_LT(first, 1000);
    EXPECT_LT(all, 10000);
    EXPECT_LT(loaded, 250);
}

} // namespace
