// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// vantero-config-browser [PATH…]: looks into the configurations of cameras, and edits them.

#include "Application.h"
#include "MainWindow.h"

#include <QtCore/QCommandLineParser>
#include <QtGui/QIcon>
#include <QtWidgets/QApplication>

#include <cstdio>

namespace {

/** The version needs no display. */
int printVersion()
{
    std::printf("vantero-config-browser %s\n", qPrintable(browser::programVersion()));
    return std::fflush(stdout) == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && (qstrcmp(argv[1], "--version") == 0 || qstrcmp(argv[1], "-v") == 0))
        return printVersion();

    browser::prepareApplication();
    QApplication application(argc, argv);
    browser::translateApplication(application);
    browser::nameApplication();
    QApplication::setWindowIcon(
        QIcon::fromTheme(QStringLiteral("vantero-config-browser"),
                         QIcon(QStringLiteral(":/icons/vantero-config-browser.png"))));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QApplication::tr("Shows, compares and edits the configurations of cameras, judges updates, "
                         "and shows alarm lists."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("path"),
                                 QApplication::tr("Files, folders and archives to open."),
                                 QStringLiteral("[path...]"));
    parser.process(application);

    browser::MainWindow window;
    window.show();
    window.open(parser.positionalArguments());
    return QApplication::exec();
}
