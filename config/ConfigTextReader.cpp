// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigTextReader_p.h"

#include "base/Exceptions.h"

namespace vn {
namespace configError {

namespace {

[[noreturn]] void parseError(const QString &message)
{
    throw ParseException(message, -1, -1, -1, -1); // the text carries no position
}

} // namespace

void readPastEnd()
{
    throw IOException(QStringLiteral("Read past EOF"));
}

void sectionInsideSection(QStringView line)
{
    parseError(QStringLiteral("Unexpected ") + line.toString());
}

void endWithoutSection(QStringView line)
{
    parseError(QStringLiteral("SECTION expected before ") + line.toString());
}

void endOfAnotherSection(QStringView line)
{
    parseError(line.toString() + QLatin1String(" does not match SECTION"));
}

void entryOutsideSection(QStringView line)
{
    parseError(QStringLiteral("Unexpected input: ") + line.toString());
}

void endMissing(const QString &section)
{
    parseError(QStringLiteral("ENDSECTION ") + section + QLatin1String(" expected"));
}

} // namespace configError
} // namespace vn
