// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "Settings.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtGui/QScreen>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>

namespace browser::settings {

namespace {

constexpr int kLayoutVersion = 1; // another arrangement of widgets must not get old states
constexpr int kMostRecent = 8;
constexpr int kDefaultWidth = 1240;
constexpr int kDefaultHeight = 800;

QString keyOf(const QWidget *widget)
{
    return QStringLiteral("layout/") + widget->objectName();
}

/** Calls @p use with each widget of that kind that has a name. */
template <typename Widget, typename Use>
void forEach(const QMainWindow &window, Use use)
{
    const auto widgets = window.findChildren<Widget *>();
    for (Widget *widget : widgets)
        if (!widget->objectName().isEmpty() &&
            !widget->objectName().startsWith(QLatin1String("qt_")))
            use(widget);
}

} // namespace

void saveLayout(const QMainWindow &window)
{
    QSettings settings;
    settings.setValue(QStringLiteral("layout/version"), kLayoutVersion);
    settings.setValue(QStringLiteral("layout/geometry"), window.saveGeometry());
    forEach<QTableView>(window, [&](const QTableView *table) {
        settings.setValue(keyOf(table), table->horizontalHeader()->saveState());
    });
    forEach<QSplitter>(window, [&](const QSplitter *splitter) {
        settings.setValue(keyOf(splitter), splitter->saveState());
    });
}

void restoreLayout(QMainWindow &window)
{
    const QSize room = window.screen()->availableSize();
    window.resize(QSize(kDefaultWidth, kDefaultHeight).boundedTo(room));
    const QSettings settings;
    if (settings.value(QStringLiteral("layout/version")).toInt() != kLayoutVersion)
        return;
    window.restoreGeometry(settings.value(QStringLiteral("layout/geometry")).toByteArray());
    forEach<QTableView>(window, [&](QTableView *table) {
        table->horizontalHeader()->restoreState(settings.value(keyOf(table)).toByteArray());
    });
    forEach<QSplitter>(window, [&](QSplitter *splitter) {
        splitter->restoreState(settings.value(keyOf(splitter)).toByteArray());
    });
}

QString lastFolder()
{
    return QSettings().value(QStringLiteral("lastFolder")).toString();
}

void setLastFolderOf(const QString &path)
{
    const QFileInfo info(path);
    QSettings().setValue(QStringLiteral("lastFolder"),
                         info.isDir() ? info.absoluteFilePath() : info.absolutePath());
}

QStringList recentPaths()
{
    QStringList paths;
    const QStringList kept = QSettings().value(QStringLiteral("recent")).toStringList();
    for (const QString &path : kept)
        if (QFileInfo::exists(path))
            paths += path;
    return paths;
}

void addRecentPaths(const QStringList &paths)
{
    QStringList recent = recentPaths();
    for (const QString &path : paths) {
        const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
        if (!QFileInfo::exists(absolute))
            continue;
        recent.removeAll(absolute);
        recent.prepend(absolute);
    }
    QSettings().setValue(QStringLiteral("recent"), QStringList(recent.mid(0, kMostRecent)));
}

void clearRecentPaths()
{
    QSettings().remove(QStringLiteral("recent"));
}

} // namespace browser::settings
