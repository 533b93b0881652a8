// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include "Settings.h"

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

QPalette darkPalette()
{
    QPalette dark(QColor(53, 53, 57), QColor(40, 40, 43));
    dark.setColor(QPalette::Base, QColor(28, 28, 30));
    dark.setColor(QPalette::AlternateBase, QColor(36, 36, 39));
    dark.setColor(QPalette::Highlight, QColor(42, 100, 170));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText,
          QPalette::ToolTipText})
        dark.setColor(role, QColor(230, 230, 230));
    dark.setColor(QPalette::Disabled, QPalette::Text, QColor(130, 130, 130));
    dark.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(130, 130, 130));
    dark.setColor(QPalette::Disabled, QPalette::WindowText, QColor(130, 130, 130));
    return dark;
}

/** With VANTERO_SCREENSHOTS, a folder, the window is shown in its best light; in dark colours, and
 * values only, where VANTERO_DARK is set. */
class Screenshot : public WindowTest
{
protected:
    void take(const QString &name)
    {
        QTest::qWait(300); // for the X server to draw it
        const QImage image = window().screen()->grabWindow(window().winId()).toImage();
        ASSERT_TRUE(withFewColors(image).save(
            QDir(qEnvironmentVariable("VANTERO_SCREENSHOTS")).filePath(name), "PNG"));
    }

    /** Selects the cameras of these sources. */
    void selectSources(const QStringList &sources)
    {
        QList<int> rows;
        const QAbstractItemModel *cameras = table("cameras")->model();
        for (int row = 0; row < cameras->rowCount(); ++row)
            if (sources.contains(cameras->index(row, 3).data().toString()))
                rows += row;
        ASSERT_EQ(rows.size(), sources.size());
        selectCameras(rows);
    }
};

TEST_F(Screenshot, areTakenOnDemand)
{
    if (qEnvironmentVariable("VANTERO_SCREENSHOTS").isEmpty())
        GTEST_SKIP() << "VANTERO_SCREENSHOTS names no folder";
    const bool isDark = qEnvironmentVariableIsSet("VANTERO_DARK");
    if (isDark)
        QApplication::setPalette(darkPalette());

    // A folder with a plain name; an edit is shown that nobody saves.
    QDir site("/tmp/site"_q);
    ASSERT_FALSE(site.exists()) << "a test made it and was stopped: remove it";
    ASSERT_TRUE(site.mkpath("."_q));
    for (const char *name :
         {"gate.cfg", "gate-factory.cfg", "entrance.cfg", "dock.cfg", "cameras.zip"})
        writeFile(site.filePath(QLatin1String(name)), readFile(example(name)));
    const QByteArray archive = readFile(example("cameras.zip"));
    writeFile(site.filePath("cameras-2011-02.zip"_q), archive.left(archive.size() / 2));
    QByteArray broken = readFile(example("gate.cfg"));
    broken.replace("ENDSECTION audio", "ENDSECTION radio");
    broken.replace("10.14.7.21", "10.14.7.66");
    writeFile(site.filePath("broken.cfg"_q), broken);
    QByteArray annex = readFile(example("gate.cfg"));
    annex.replace("VN-3.0.6.29", "VN-3.0.3.7");
    annex.replace("10.14.7.21", "10.14.7.77");
    annex.replace("gate-south", "annex");
    writeFile(site.filePath("annex.cfg"_q), annex);
    QByteArray alarms = readFile(example("gate.alarms"));
    alarms.replace("10.23", "10.23000000000000001");
    writeFile(site.filePath("gate.alarms"_q), alarms);
    if (!isDark) {
        browser::settings::addRecentPaths({site.filePath("cameras.zip"_q), site.path()});
        m_window = std::make_unique<browser::MainWindow>();
        m_window->show();
        m_window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get(), kPatienceMs));
        take("first-window.png"_q);
    }
    open({site.path()});

    selectSources({"gate.cfg"_q});
    edit("ethernet"_q, "HOSTNAME"_q, "gate-2"_q);
    take(isDark ? "dark-192dpi.png"_q : "values.png"_q);
    if (!isDark) {
        press(Qt::Key_Z, Qt::ControlModifier);
        selectSources({"broken.cfg"_q});
        showTab(2);
        take("findings.png"_q);
        showTab(3);
        selectSources({"gate.cfg"_q, "gate-factory.cfg"_q});
        press(Qt::Key_F8);
        QTest::qWait(250); // the button is pressed for a moment
        take("differences.png"_q);
        showTab(4);
        fileWith("10.14.7.21;K40D\n10.14.7.34;D24M\n10.14.7.77;K40D\n", "models.csv"_q);
        answerFileDialog(path("models.csv"_q), "Open"_q);
        const auto buttons = window().findChildren<QAbstractButton *>();
        for (QAbstractButton *button : buttons)
            if (button->text() == "Models from &CSV…"_q)
                QTest::mouseClick(button, Qt::LeftButton);
        selectSources({"annex.cfg"_q});
        find<QLineEdit>("target")->setText("VN-3.0.6.2"_q);
        take("update.png"_q);
        showTab(5);
        take("alarm-list.png"_q);
    }
    ASSERT_TRUE(site.removeRecursively());
}

} // namespace
