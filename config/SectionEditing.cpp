// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigSyntax_p.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>
#include <QtCore/QSet>
#include <QtCore/QStringBuilder>
#include <QtCore/QStringView>

#include <algorithm>
#include <utility>

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
    const QString startMarker = QLatin1String(internal::kStartOfLine) % section;
    const QString endMarker = QLatin1String(internal::kEndOfLine) % section;

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

/** Collects lines of a text, each with "\n" behind it; those that follow each other in one piece.
 */
class LineCollector
{
public:
    explicit LineCollector(const QString &source)
        : m_text(source.size() + 1, Qt::Uninitialized) // a last line without line end gets one
        , m_end(m_text.data())
    {
    }

    void add(QStringView line)
    {
        if (!m_begun || line.begin() != m_run.end() + 1) {
            write();
            m_run = line;
            m_begun = true;
        } else {
            m_run = QStringView(m_run.begin(), line.end());
        }
    }

    QString take()
    {
        write();
        m_text.truncate(static_cast<int>(m_end - m_text.constData()));
        return std::move(m_text);
    }

private:
    void write()
    {
        if (!m_begun)
            return;
        m_end = std::copy(m_run.begin(), m_run.end(), m_end);
        *m_end++ = u'\n';
    }

    QString m_text;
    QChar *m_end;      // of what has been written
    QStringView m_run; // lines that have not been, with single line feeds between them
    bool m_begun = false;
};

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
    QSet<QStringView> removed;
    for (const QString &section : sections)
        removed.insert(section);

    LineCollector kept(text);
    bool inSection = false;
    bool inRemoved = false;
    QStringView line;
    for (internal::MemoryLines lines(text); lines.readLine(line);) {
        bool keep = !inRemoved;
        switch (internal::kindOf(line)) {
        case internal::LineKind::Empty:
            keep = keep && !dropEmptyLines;
            break;
        case internal::LineKind::Comment:
            keep = keep && !(inSection ? dropSectionComments : dropOuterComments);
            break;
        case internal::LineKind::SectionStart:
            inSection = true;
            inRemoved = removed.contains(internal::nameOfStart(line));
            keep = !inRemoved;
            break;
        case internal::LineKind::SectionEnd: // belongs to the section that it closes
            inSection = false;
            inRemoved = false;
            break;
        case internal::LineKind::Entry:
            keep = keep && inSection;
            break;
        }
        if (keep)
            kept.add(line);
    }
    return kept.take();
}

void VanteroConfigFile::setSection(const QString &section,
                                   const QMultiMap<QString, QString> &content)
{
    const QMutexLocker lock(m_lock.get());
    m_map.replaceSection(section, content);
}

} // namespace vn
