// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_SETTINGS_H
#define BROWSER_SETTINGS_H

/** @file What the program remembers from one start to the next. */

#include <QtCore/QStringList>

class QMainWindow;

namespace browser::settings {

/** Where the window was, and its columns, splitters and tabs, by the names of the widgets. */
void saveLayout(const QMainWindow &window);
void restoreLayout(QMainWindow &window);

/** The folder that a file dialog begins in. */
QString lastFolder();
void setLastFolderOf(const QString &path);

/** What was opened, latest first; what is no longer there is left out. */
QStringList recentPaths();
void addRecentPaths(const QStringList &paths);
void clearRecentPaths();

} // namespace browser::settings

#endif // BROWSER_SETTINGS_H
