// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "reference/ConfigReference.h"

#include <QtCore/QList>

#include <string>

namespace reference {

QStringList linesOf(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast(); // what follows the last line end is no line
    for (QString &line : lines)
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    return lines;
}

// ---- Loading -----------------------------------------------------------------------------------

bool readHeader(QStringList &lines, QMap<QString, Section> &sections)
{
    const auto store = [&](const char *key, const QString &value) {
        sections[QStringLiteral("head")].replace(QString::fromLatin1(key), value);
    };
    bool result = true;
    if (!lines.isEmpty()) {
        const QString line = lines.takeFirst();
        result = line.startsWith(QLatin1String("#:"));
        if (result)
            store("File Version", line.mid(2).section(QLatin1Char('='), 0, 0));
    }
    if (!lines.isEmpty()) {
        const QString line = lines.takeFirst();
        if (line.startsWith(QLatin1String("#:")))
            store("Software Version", line.mid(2));
        else
            result = false;
    }
    while (!lines.isEmpty()) {
        const QString line = lines.takeFirst();
        if (line.isEmpty())
            break;
        const int phrase = line.indexOf(QLatin1String("Configuration of"));
        if (line.startsWith(QLatin1String("# Camera IP: ")))
            store("Factory IP", line.mid(13));
        else if (phrase > 0)
            store("Factory IP", line.mid(phrase + 17).trimmed());
    }
    return result;
}

namespace {

/** Fills @p sections; gives the error that ends the reading, or nothing. */
QString readSections(const QStringList &lines, QMap<QString, Section> &sections)
{
    QString open;
    for (const QString &line : lines) {
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        if (line.startsWith(QLatin1String("SECTION"))) {
            if (!open.isEmpty())
                return QLatin1String("Unexpected ") + line;
            open = line.mid(8);
        } else if (line.startsWith(QLatin1String("ENDSECTION"))) {
            if (open.isEmpty())
                return QLatin1String("SECTION expected before ") + line;
            if (line.mid(11) != open)
                return line + QLatin1String(" does not match SECTION");
            open.clear();
        } else if (!open.isEmpty()) {
            const int equals = line.indexOf(QLatin1Char('='));
            sections[open].insert(equals < 0 ? line : line.left(equals),
                                  equals < 0 ? QString() : line.mid(equals + 1));
        }
    }
    return open.isEmpty() ? QString()
                          : QLatin1String("ENDSECTION ") + open + QLatin1String(" expected");
}

} // namespace

Configuration loaded(const QString &text, bool hasHeader)
{
    Configuration result;
    QStringList lines = linesOf(text);
    const bool isComplete = hasHeader && readHeader(lines, result.sections);
    result.error = readSections(lines, result.sections);
    result.isComplete = isComplete && result.error.isEmpty();
    return result;
}

// ---- Editing -----------------------------------------------------------------------------------

namespace {

constexpr auto kNone = std::u16string::npos;

struct Range
{
    std::size_t start; // kNone where the text lacks the section
    std::size_t end;
};

Range find(const std::u16string &text, const std::u16string &name)
{
    const std::u16string endMarker = u"ENDSECTION " + name;
    const std::size_t end = text.find(endMarker);
    return {text.find(u"SECTION " + name), end == kNone ? text.size() : end + endMarker.size()};
}

std::u16string replaced(const std::u16string &target, const std::u16string &source,
                        const std::u16string &name)
{
    const Range old = find(target, name);
    const Range wanted = find(source, name);
    if (wanted.start == kNone)
        return old.start == kNone ? target : target.substr(0, old.start) + target.substr(old.end);
    // An end before the start means everything from the start on.
    const std::u16string section =
        source.substr(wanted.start, wanted.end < wanted.start ? kNone : wanted.end - wanted.start);
    if (old.start == kNone)
        return target + u"\n\n" + section + u"\n";
    return target.substr(0, old.start) + u"\n\n" + section + u"\n\n" + target.substr(old.end);
}

} // namespace

QString replaceSection(const QString &target, const QString &source, const QString &section)
{
    return QString::fromStdU16String(
        replaced(target.toStdU16String(), source.toStdU16String(), section.toStdU16String()));
}

QString removeSections(const QString &text, const QStringList &sections, bool dropOuterComments,
                       bool dropSectionComments, bool dropEmptyLines)
{
    bool isInside = false;  // of a section, its first and last line included
    bool isRemoved = false; // that section is in the list
    QString result;
    const QStringList lines = linesOf(text);
    for (const QString &line : lines) {
        bool isKept = true;
        bool isEnd = false;
        if (line.startsWith(QLatin1String("SECTION"))) {
            isInside = true;
            isRemoved = sections.contains(line.mid(8));
        } else if (line.startsWith(QLatin1String("ENDSECTION"))) {
            isEnd = true;
        } else if (line.startsWith(QLatin1Char('#'))) {
            isKept = isInside ? !dropSectionComments : !dropOuterComments;
        } else if (line.isEmpty()) {
            isKept = !dropEmptyLines;
        } else {
            isKept = isInside;
        }
        if (isKept && !isRemoved)
            result += line + QLatin1Char('\n');
        if (isEnd)
            isInside = isRemoved = false;
    }
    return result;
}

} // namespace reference
