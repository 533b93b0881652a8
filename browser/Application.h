// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_APPLICATION_H
#define BROWSER_APPLICATION_H

/** @file What the program and its tests set up alike, before there is a window. */

#include <QtCore/QString>

class QApplication;

namespace browser {

/** To be called before there is an application: pixels that follow the screen's density. */
void prepareApplication();

/** Names the application, after which settings are filed. */
void nameApplication();

/** Has all texts come in the language of the system's locale, where there is a translation. */
void translateApplication(QApplication &application);

/** "1.0.0" */
QString programVersion();

} // namespace browser

#endif // BROWSER_APPLICATION_H
