// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_HELPDIALOGS_H
#define BROWSER_HELPDIALOGS_H

class QMainWindow;

namespace browser {

/** Lists the actions of the menus with their keys. */
void showShortcuts(QMainWindow &window);

/** Tells versions and licence. */
void showAbout(QMainWindow &window);

} // namespace browser

#endif // BROWSER_HELPDIALOGS_H
