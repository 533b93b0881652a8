// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "SectionText.h"

#include <QtCore/QHash>
#include <QtCore/QStringList>

namespace browser {

namespace {

/** @p line with @p value in place of what it had. A key without "=" has a null value. */
QString withValue(const QString &line, const QString &value)
{
    const int equals = line.indexOf(QLatin1Char('='));
    const QString lineEnd = line.endsWith(QLatin1Char('\r')) ? QStringLiteral("\r") : QString();
    const int contentSize = line.size() - lineEnd.size();
    if (equals < 0 && value.isEmpty())
        return line;
    const QString key = line.left(equals < 0 ? contentSize : equals);
    return key + QLatin1Char('=') + value + lineEnd;
}

QString keyOf(const QString &line)
{
    const QString content = line.endsWith(QLatin1Char('\r')) ? line.chopped(1) : line;
    return content.left(content.indexOf(QLatin1Char('='))); // all of it where there is none
}

} // namespace

QString sectionText(const QString &text, const QString &section,
                    const vn::VanteroConfigMap::Section &content)
{
    const QString start = QStringLiteral("SECTION ") + section;
    const QString end = QStringLiteral("ENDSECTION ") + section;
    QStringList block;
    QHash<QString, int> found; // how many entries of a key
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QString whole = line.endsWith(QLatin1Char('\r')) ? line.chopped(1) : line;
        if (block.isEmpty() && whole != start)
            continue;
        if (whole == end) {
            block += line;
            break;
        }
        const bool isEntry =
            !block.isEmpty() && !whole.isEmpty() && !whole.startsWith(QLatin1Char('#'));
        if (!isEntry) {
            block += line;
            continue;
        }
        // The text has the oldest value of a key first, the section the newest.
        const QString key = keyOf(line);
        const QStringList values = content.values(key);
        const int index = values.size() - 1 - found[key]++;
        block += index < 0 ? line : withValue(line, values.at(index));
    }
    return block.join(QLatin1Char('\n'));
}

} // namespace browser
