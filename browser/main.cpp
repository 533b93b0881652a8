// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// vantero-config-browser [PATH…]: looks into the configurations of cameras.

#include "MainWindow.h"

#include <QtCore/QCommandLineParser>
#include <QtWidgets/QApplication>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vantero-config-browser"));
    QApplication::setApplicationDisplayName(QApplication::tr("Camera Configurations"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QApplication::tr("Shows, compares and edits the configurations of cameras, judges updates, "
                         "and shows alarm lists."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("path"),
                                 QApplication::tr("Files, folders and archives to open."),
                                 QStringLiteral("[path...]"));
    parser.process(application);

    browser::MainWindow window;
    window.show();
    window.open(parser.positionalArguments());
    return QApplication::exec();
}
