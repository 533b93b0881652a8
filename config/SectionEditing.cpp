// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/TextLines_p.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>
#include <QtCore/QSet>
#include <QtCore/QStringBuilder>
#include <QtCore/QStringView>

#include <algorithm>

namespace vn {

namespace {

/** QStringView::indexOf() for a word whose first letter is rare in the text, which is faster. */
qsizetype indexOfWord(QStringView text, QStringView word, qsizetype from)
{
    for (;;) {
        const qsizetype at = text.indexOf(word.front(), from);
        if (at < 0 || text.mid(at).startsWith(word))
            return at;
        from = at + 1;
    }
}

// ---- One section, from one text to another ---------------------------------------------------

/** Where a text holds a section, in code units. */
struct SectionRange
{
    int start; // of the start marker; negative where there is none
    int end;   // behind the end marker, or behind the text where there is none
};

SectionRange findSection(const QString &text, const QString &section)
{
    // Kept on purpose: the words are searched, not lines. A longer name, a comment and the end
    // marker, which holds the start marker, match, too.
    const QString startMarker = QLatin1String("SECTION ") % section;
    const QString endMarker = QLatin1String("END") % startMarker;

    const auto start = static_cast<int>(indexOfWord(text, startMarker, 0));
    if (start < 0)
        return {start, text.size()}; // without a start marker there is no end marker either

    // For the same reason the first end marker begins at most its "END" before the start marker,
    // and the end is always behind the start.
    const int lead = endMarker.size() - startMarker.size();
    const auto end = static_cast<int>(indexOfWord(text, endMarker, std::max(0, start - lead)));
    return {start, end < 0 ? text.size() : end + endMarker.size()};
}

// ---- A text without some of its lines --------------------------------------------------------

/** Which lines go besides those of the removed sections. */
struct DroppedLines
{
    bool comments;
    bool empty;
    bool others;
};

/** Where the first line of @p text begins that opens or closes a section; its end without one. */
qsizetype findMarkerLine(QStringView text)
{
    const auto beginsLine = [&](qsizetype at) {
        return at == 0 || (at > 0 && text.at(at - 1) == u'\n');
    };
    for (qsizetype at = 0; (at = indexOfWord(text, u"SECTION", at)) >= 0; ++at) {
        if (beginsLine(at))
            return at;
        if (beginsLine(at - 3) && beginsWith(text.mid(at - 3), u"ENDSECTION"))
            return at - 3;
    }
    return text.size();
}

void append(QStringView text, QString &result)
{
    result.append(text.data(), static_cast<int>(text.size()));
}

void appendLine(QStringView line, QString &result)
{
    append(line, result);
    result.append(u'\n');
}

/** Appends all of @p lines, in as few pieces as their line ends allow. */
void appendLines(QStringView lines, QString &result)
{
    if (lines.isEmpty())
        return;
    const bool closed = lines.endsWith(u'\n');
    if (lines.endsWith(u'\r'))
        lines.chop(1);
    for (;;) {
        const qsizetype lineEnd = indexOfWord(lines, u"\r\n", 0);
        if (lineEnd < 0)
            break;
        append(lines.left(lineEnd), result);
        lines = lines.mid(lineEnd + 1);
    }
    append(lines, result);
    if (!closed)
        result.append(u'\n');
}

/** Appends those of @p lines that are not @p dropped. */
void appendLines(QStringView lines, const DroppedLines &dropped, QString &result)
{
    if (!dropped.comments && !dropped.empty && !dropped.others)
        return appendLines(lines, result);

    const QChar *keptFrom = nullptr; // the lines from there on are kept and not yet appended
    QStringView line;
    for (MemoryLines reader(lines); reader.readLine(line);) {
        const bool drop = line.isEmpty()         ? dropped.empty
                          : line.front() == u'#' ? dropped.comments
                                                 : dropped.others;
        if (drop && keptFrom)
            appendLines(QStringView(keptFrom, line.begin()), result);
        if (drop)
            keptFrom = nullptr;
        else if (!keptFrom)
            keptFrom = line.begin();
    }
    if (keptFrom)
        appendLines(QStringView(keptFrom, lines.end()), result);
}

} // namespace

QString VanteroConfigFile::replaceSection(const QString &target, const QString &source,
                                          const QString &section)
{
    const SectionRange from = findSection(source, section);
    const SectionRange to = findSection(target, section);
    if (from.start < 0 && to.start < 0)
        return target;
    if (from.start < 0)
        return target.leftRef(to.start) % target.midRef(to.end);

    const QStringRef content = source.midRef(from.start, from.end - from.start);
    if (to.start < 0)
        return target % QLatin1String("\n\n") % content % QLatin1Char('\n');

    // Kept on purpose: the line breaks around the old section stay, so the text grows by four.
    return target.leftRef(to.start) % QLatin1String("\n\n") % content % QLatin1String("\n\n") %
           target.midRef(to.end);
}

QString VanteroConfigFile::removeSections(const QString &text, const QStringList &sections,
                                          bool dropOuterComments, bool dropSectionComments,
                                          bool dropEmptyLines)
{
    const DroppedLines droppedOutside = {dropOuterComments, dropEmptyLines, true};
    const DroppedLines droppedInside = {dropSectionComments, dropEmptyLines, false};

    QSet<QStringView> removed;
    for (const QString &section : sections)
        removed.insert(section);

    QString result;
    result.reserve(text.size() + 1); // a last line without line end gets one
    bool inSection = false;
    bool inRemoved = false;
    for (QStringView rest = text; !rest.isEmpty();) {
        const qsizetype markerLine = findMarkerLine(rest);
        if (!inRemoved)
            appendLines(rest.left(markerLine), inSection ? droppedInside : droppedOutside, result);

        MemoryLines reader(rest.mid(markerLine));
        QStringView marker;
        if (!reader.readLine(marker))
            break;
        const bool opens = beginsWith(marker, u"SECTION");
        if (opens)
            inRemoved = removed.contains(textFrom(marker, 8));
        if (!inRemoved)
            appendLine(marker, result);
        inRemoved = inRemoved && opens; // the line that closes a section belongs to it
        inSection = opens;
        rest = reader.rest();
    }
    return result;
}

void VanteroConfigFile::setSection(const QString &section,
                                   const QMultiMap<QString, QString> &content)
{
    const QMutexLocker lock(m_lock.get());
    m_map.replaceSection(section, content);
}

} // namespace vn
