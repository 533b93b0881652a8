// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// show_alarm_list TEXT: prints an alarm list as a tree.

#include "alarm/AlarmListParser.h"
#include "base/Exceptions.h"

#include <cstdio>

namespace {

//! [read an alarm list]
void show(const QVariant &value, const QString &indent)
{
    if (value.type() == QVariant::Map) {
        const QVariantMap members = value.toMap();
        for (auto it = members.begin(); it != members.end(); ++it) {
            std::printf("%s%s:\n", qPrintable(indent), qPrintable(it.key()));
            show(it.value(), indent + "  ");
        }
    } else if (value.type() == QVariant::List) {
        // The tree has the last value of the text first.
        const QVariantList values = value.toList();
        for (auto it = values.rbegin(); it != values.rend(); ++it)
            show(*it, indent + "- ");
    } else {
        const QString text = value.isValid() ? value.toString() : QString("nothing");
        std::printf("%s%s\n", qPrintable(indent), qPrintable(text));
    }
}
//! [read an alarm list]

} // namespace

int main(int argc, char **argv)
try {
    if (argc != 2)
        qFatal("show_alarm_list TEXT");
    //! [parse an alarm list]
    vn::AlarmListParser parser;
    show(parser.parse(QString(argv[1])), QString());
    //! [parse an alarm list]
    return 0;
} catch (const vn::ParseException &e) {
    std::fprintf(stderr, "bytes %d to %d: %s\n", e.startColumn(), e.endColumn(), e.what());
    return 1;
}
