// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The display text of an application's version against its description, format for format.

#include "Support.h"

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace {

QString formatFor(const QString &stage, const QString &build)
{
    if (stage == QLatin1String("3"))
        return build == QLatin1String("0") ? QStringLiteral("%1.%2") : QStringLiteral("%1.%2.0.%4");
    if (stage == QLatin1String("0"))
        return QStringLiteral("%1.%2 alpha %4");
    if (stage == QLatin1String("1"))
        return QStringLiteral("%1.%2 beta %4");
    if (stage == QLatin1String("2"))
        return QStringLiteral("%1.%2 rc %4");
    return QString();
}

QString displayText(const QString &version, const QString &revision, short debug)
{
    QStringList parts = version.split(QLatin1Char('.'));
    if (parts.size() == 3)
        parts.insert(2, QStringLiteral("3"));
    QString result;
    if (parts.size() >= 3) {
        result = formatFor(parts.at(2), parts.at(3));
        if (!result.isEmpty()) {
            const bool hasBuild = result.contains(QLatin1String("%4"));
            result = result.arg(parts.at(0), 0, QLatin1Char(' '));
            result = result.arg(parts.at(1), 0, QLatin1Char(' '));
            if (hasBuild)
                result = result.arg(parts.at(3), 0, QLatin1Char(' '));
        }
    }
    if (result.isEmpty())
        result = version;
    if (!revision.isEmpty() && revision != QLatin1String("?")) {
        const int colon = revision.indexOf(QLatin1Char(':'));
        result += QLatin1String(", revision ") + (colon > 0 ? revision.mid(colon + 1) : revision);
    }
    if (debug > 0)
        result += QLatin1String(", debug");
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const auto debug = static_cast<short>((input.byte() - '0') << 8 | input.byte());
    const QString version = input.text();
    // A place for a value that a value itself brings ("%4" as the first part) is filled, too, and
    // one that is left over makes Qt complain on standard error; both are Qt's own ways.
    const QString revision = input.text();
    FUZZ_EQUAL(vn::VanteroSoftwareVersion::applicationVersion(version, revision, debug),
               displayText(version, revision, debug));
    return 0;
}
