// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_VANTEROCONFIGTEXTFINDINGS_P_H
#define VN_CONFIG_VANTEROCONFIGTEXTFINDINGS_P_H

/** @file What VanteroConfigText::findings() is made of: a list, and a check a topic. */

#include "config/ConfigSyntax_p.h"
#include "config/TextPlaces_p.h"

#include <QtCore/QStringBuilder>

#include <algorithm>
#include <vector>

namespace vn::internal {

/** What has been found. The texts are on the heap, so that they outlive the library. */
class FindingList
{
public:
    explicit FindingList(QStringView text)
        : m_places(text)
    {
    }

    const TextPlaces &places() const { return m_places; }

    void add(Finding::Severity severity, const char *code, const QString &message,
             QStringView where)
    {
        m_findings += {severity, QString::fromLatin1(code), message, m_places.rangeOf(where)};
    }
    void warn(const char *code, const QString &message, QStringView where)
    {
        add(Finding::Severity::Warning, code, message, where);
    }
    void note(const char *code, const QString &message, QStringView where)
    {
        add(Finding::Severity::Note, code, message, where);
    }

    QString lineOf(QStringView part) const { return QString::number(m_places.rangeOf(part).line); }

    /** All in the order of their places. */
    Findings take()
    {
        std::stable_sort(
            m_findings.begin(), m_findings.end(),
            [](const Finding &a, const Finding &b) { return a.range.offset < b.range.offset; });
        return std::move(m_findings);
    }

private:
    TextPlaces m_places;
    Findings m_findings;
};

inline QString quoted(QStringView text)
{
    // As a string: Qt copies from a null view, which sanitizers do not like.
    return QLatin1Char('"') % text.toString() % QLatin1Char('"');
}

inline bool hasBlanksAround(QStringView text)
{
    return text.size() != text.trimmed().size();
}

/** From the one to the other, both included. */
inline QStringView from(QStringView begin, QStringView end)
{
    return {begin.begin(), end.end()};
}

/** Tells what a file, a screen or an archive would not show as it is. */
void findCharacters(QStringView text, FindingList &findings);

/** The lines of a header, and what is not read of them. */
class HeaderCheck
{
public:
    explicit HeaderCheck(FindingList &findings)
        : m_findings(findings)
    {
    }

    void line(QStringView line);
    void value(HeaderField field, QStringView value);

    /** All lines have been told. */
    void end();

private:
    struct Lost
    {
        QStringView where;   // from the first to the last line
        QStringView section; // the first line of a section
    };

    /** The lines that would say something elsewhere; entries in the place of the version lines are
     * told otherwise where there is a header. */
    Lost findLost(bool hasHeader) const;
    void checkFileVersion(QStringView line, QStringView value);
    void checkTitle(QStringView line);
    bool isTitleAtStart(std::size_t line) const;
    static bool looksLikeAddress(QStringView line);
    void warnOfUnreadAddress(QStringView line);

    /** A line that looks as if it said an address. */
    void checkUnread(std::size_t line);

    FindingList &m_findings;
    std::vector<QStringView> m_lines;
    std::vector<bool> m_hasValue;
    QStringView m_address; // the line of the last one
};

} // namespace vn::internal

#endif // VN_CONFIG_VANTEROCONFIGTEXTFINDINGS_P_H
