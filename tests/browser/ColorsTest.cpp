// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include "Colors.h"

#include <QtCore/QLibraryInfo>
#include <QtGui/QScreen>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyleFactory>

#include <cmath>

namespace {

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

QPalette darkPalette()
{
    QPalette dark(QColor(45, 45, 48), QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Base, QColor(25, 25, 25));
    return dark;
}

QPalette highContrastPalette()
{
    QPalette highContrast(Qt::black, Qt::black);
    highContrast.setColor(QPalette::WindowText, Qt::white);
    highContrast.setColor(QPalette::Text, Qt::white);
    highContrast.setColor(QPalette::Base, Qt::black);
    return highContrast;
}

/** Whether words can be read, whatever colours a desktop has. */
class Colors : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        m_style = QApplication::style()->objectName();
        m_palette = QApplication::palette();
    }
    void TearDown() override
    {
        WindowTest::TearDown();
        QApplication::setStyle(m_style);
        QApplication::setPalette(m_palette);
    }

    /** The best contrast of a pixel with what is behind it, where @p widget is on the screen. */
    double contrastOnScreen(const QWidget &widget)
    {
        const QImage screen = window().screen()->grabWindow(window().winId()).toImage();
        const double scale = screen.width() / double(window().width());
        const QPoint corner = widget.mapTo(&window(), QPoint(0, 0)) * scale;
        const QImage image = screen.copy(QRect(corner, widget.size() * scale));
        QHash<QRgb, int> counts;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                ++counts[image.pixel(x, y)];
        QRgb behind = 0;
        for (auto it = counts.cbegin(); it != counts.cend(); ++it)
            if (it.value() > counts.value(behind))
                behind = it.key();
        double best = 0;
        for (auto it = counts.cbegin(); it != counts.cend(); ++it)
            best = std::max(best, contrast(QColor(it.key()), QColor(behind)));
        return best;
    }

    /** A first window as it comes up now: its words and buttons are on the screen. */
    void expectInvitation()
    {
        m_window = std::make_unique<browser::MainWindow>();
        m_window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get(), kPatienceMs));
        QTest::qWait(200); // for the X server to draw it
        for (const char *name : {"startTitle", "startWords"})
            EXPECT_GE(contrastOnScreen(*find<QLabel>(name)), 4.5) << name;
        const auto buttons = window().findChildren<QPushButton *>();
        for (const QPushButton *button : buttons) {
            if (!button->isVisible())
                continue;
            EXPECT_GE(contrastOnScreen(*button), 4.5) << qPrintable(button->text());
        }
    }

    /** What is behind @p label: the window, and the tints of what it stands in. */
    static QColor behind(const QLabel &label)
    {
        QColor color = QApplication::palette().color(QPalette::Window);
        for (const QWidget *each = label.parentWidget(); each; each = each->parentWidget())
            if (each->autoFillBackground())
                return over(each->palette().color(QPalette::Window), color);
        return color;
    }

private:
    QString m_style;
    QPalette m_palette;
};

TEST_F(Colors, wordsCanBeRead_inEveryStyleAndPalette)
{
    for (const QString &style : {"Fusion"_q, "Windows"_q}) {
        QApplication::setStyle(style);
        for (const QPalette &palette :
             {QApplication::style()->standardPalette(), darkPalette(), highContrastPalette()}) {
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
}

TEST_F(Colors, labelsOfAllPanesCanBeRead)
{
    for (const QPalette &palette : {darkPalette(), highContrastPalette()}) {
        QApplication::setPalette(palette);
        open({example("gate.jpg"), example("gate.cfg"), example("gate.alarms"), path("none"_q),
              fileWith("[ }", "bad.alarms"_q)});
        int labels = 0;
        for (int tab = 1; tab <= 5; ++tab) {
            showTab(tab);
            find<QLineEdit>("target")->setText("VN-3.0.6.2"_q);
            const auto all = window().findChildren<QLabel *>();
            for (const QLabel *label : all) {
                if (!label->isVisible() || label->text().isEmpty())
                    continue;
                ++labels;
                EXPECT_GE(contrast(label->palette().color(QPalette::WindowText), behind(*label)),
                          4.5)
                    << tab << ' ' << qPrintable(label->text());
            }
        }
        EXPECT_GT(labels, 20);
    }
}

TEST_F(Colors, invitationIsOnTheScreen_inEveryStyle)
{
    for (const QString &style : {"Fusion"_q, "Windows"_q}) {
        SCOPED_TRACE(qPrintable(style));
        QApplication::setStyle(style);
        QApplication::setPalette(QApplication::style()->standardPalette());
        expectInvitation();
        QApplication::setPalette(darkPalette());
        expectInvitation();
    }
}

/** With the platform theme of GTK, which decides on style, colours and fonts. */
class GtkTheme : public Colors
{
};

TEST_F(GtkTheme, invitationIsOnTheScreen)
{
    const QString plugin = QLibraryInfo::location(QLibraryInfo::PluginsPath) +
                           QLatin1String("/platformthemes/libqgtk3.so");
    if (!QFile::exists(plugin))
        GTEST_SKIP() << "qt5-gtk-platformtheme is not installed";
    if (qgetenv("QT_QPA_PLATFORMTHEME") != "gtk3")
        GTEST_SKIP() << "QT_QPA_PLATFORMTHEME is not gtk3";
    ASSERT_TRUE(readFile("/proc/self/maps"_q).contains("libqgtk3.so")) << "another theme is used";
    expectInvitation();
    for (const QString &style : QStyleFactory::keys()) {
        SCOPED_TRACE(qPrintable(style));
        QApplication::setStyle(style);
        expectInvitation();
    }
}

} // namespace
