// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "Application.h"

#include <QtCore/QLibraryInfo>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>
#include <QtGui/QIcon>
#include <QtWidgets/QApplication>

/** What stands in a static library is linked in for that. */
static void initResources()
{
    Q_INIT_RESOURCE(browser);
}

namespace browser {

void prepareApplication()
{
    initResources();
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}

void nameApplication()
{
    QApplication::setOrganizationName(QStringLiteral("Vantero"));
    QApplication::setApplicationName(QStringLiteral("vantero-config-browser"));
    QApplication::setApplicationVersion(programVersion());
    QApplication::setDesktopFileName(QStringLiteral("vantero-config-browser"));
    QApplication::setApplicationDisplayName(QApplication::tr("Camera Configurations"));
}

void translateApplication(QApplication &application)
{
    const auto install = [&](const QString &name, const QString &folder) {
        auto *translator = new QTranslator(&application);
        if (translator->load(QLocale(), name, QStringLiteral("_"), folder))
            QApplication::installTranslator(translator);
        else
            delete translator;
    };
    install(QStringLiteral("qtbase"), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install(QStringLiteral("vantero-config-browser"), QStringLiteral(":/translations"));
}

QString programVersion()
{
    return QStringLiteral(BROWSER_VERSION);
}

} // namespace browser
