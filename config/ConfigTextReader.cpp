// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigTextReader_p.h"

#include "base/Exceptions.h"

#include <QtCore/QStringBuilder>

namespace vn::internal {

QString textOf(ConfigFault fault, QStringView where)
{
    switch (fault) {
    case ConfigFault::SectionInsideSection:
        return QLatin1String("Unexpected ") % where;
    case ConfigFault::EndWithoutSection:
        return QLatin1String("SECTION expected before ") % where;
    case ConfigFault::EndOfAnotherSection:
        return where % QLatin1String(" does not match SECTION");
    case ConfigFault::EntryOutsideSection:
        return QLatin1String("Unexpected input: ") % where;
    case ConfigFault::EndMissing:
        break;
    }
    return QLatin1String(kEndOfLine) % where % QLatin1String(" expected");
}

void raise(ConfigFault fault, QStringView where)
{
    throw ParseException(textOf(fault, where), -1, -1, -1, -1); // the text carries no position
}

void raiseReadPastEnd()
{
    throw IOException(QString::fromLatin1("Read past EOF"));
}

} // namespace vn::internal
