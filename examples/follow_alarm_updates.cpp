// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// follow_alarm_updates SCRIPT TEXT…: evaluates a script over each alarm update, which the script
// knows as "update", and prints what it gives.

#include "alarm/AlarmUpdateParser.h"
#include "base/Exceptions.h"

#include <QtCore/QCoreApplication>
#include <QtScript/QScriptEngine>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc < 3)
        qFatal("follow_alarm_updates SCRIPT TEXT...");

    //! [follow alarm updates]
    QScriptEngine engine; // outlives the parser and its values
    vn::AlarmUpdateParser parser(&engine);
    int failures = 0;
    for (int i = 2; i < argc; ++i) {
        try {
            engine.globalObject().setProperty("update", parser.parse(QString(argv[i])));
            std::printf("%s\n", qPrintable(engine.evaluate(argv[1]).toString()));
        } catch (const vn::ParseException &e) {
            std::fprintf(stderr, "bytes %d to %d: %s\n", e.startColumn(), e.endColumn(), e.what());
            ++failures;
        }
    }
    //! [follow alarm updates]
    return failures == 0 ? 0 : 1;
}
