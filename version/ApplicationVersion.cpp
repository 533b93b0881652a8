// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QStringList>

namespace vn {

namespace {

/** What a dotted build version reads as; empty where its stage is unknown. */
QString readable(const QString &version)
{
    QStringList parts = version.split(QLatin1Char('.'));
    if (parts.size() == 3)
        parts.insert(2, QStringLiteral("3")); // without a stage it is a release
    if (parts.size() < 4)
        return {};

    const QString &major = parts.at(0);
    const QString &minor = parts.at(1);
    const QString &stage = parts.at(2);
    const QString &build = parts.at(3);

    // Kept on purpose: one substitution after the other, each of the lowest place marker that is
    // left, so a part that holds a marker itself is filled by the next one.
    const auto fill = [&](QLatin1String format) {
        return QString(format).arg(major).arg(minor).arg(build);
    };
    if (stage == QLatin1String("3") && build == QLatin1String("0"))
        return QStringLiteral("%1.%2").arg(major).arg(minor);
    if (stage == QLatin1String("3"))
        return fill(QLatin1String("%1.%2.0.%4")); // a release shows 0, not its stage code
    if (stage == QLatin1String("0"))
        return fill(QLatin1String("%1.%2 alpha %4"));
    if (stage == QLatin1String("1"))
        return fill(QLatin1String("%1.%2 beta %4"));
    if (stage == QLatin1String("2"))
        return fill(QLatin1String("%1.%2 rc %4"));
    return {};
}

} // namespace

QString VanteroSoftwareVersion::applicationVersion(const QString &version, const QString &revision,
                                                   short debug)
{
    QString text = readable(version);
    if (text.isEmpty())
        text = version;

    if (!revision.isEmpty() && revision != QLatin1String("?")) {
        // Kept on purpose: a colon at the very beginning separates nothing.
        const int colon = revision.indexOf(QLatin1Char(':'));
        text += QLatin1String(", revision ") + (colon > 0 ? revision.mid(colon + 1) : revision);
    }
    if (debug > 0)
        text += QLatin1String(", debug");
    return text;
}

} // namespace vn
