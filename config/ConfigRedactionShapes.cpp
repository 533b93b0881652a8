// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigRedactionShapes_p.h"

#include <algorithm>

namespace vn::internal {

namespace {

using Reason = ConfigRedaction::Reason;

bool isOneOf(QChar character, const char *characters)
{
    for (; *characters; ++characters)
        if (character == QLatin1Char(*characters))
            return true;
    return false;
}

bool isBlank(QChar character)
{
    return character.isSpace();
}

bool isQuote(QChar character)
{
    return isOneOf(character, "\"'");
}

bool isWord(QChar character)
{
    return character.isLetterOrNumber() || isOneOf(character, "_-.");
}

/** The first position from @p from on where @p stops holds, or the end of the line. */
template <typename Stops>
qsizetype findFirst(QStringView line, qsizetype from, Stops stops)
{
    while (from < line.size() && !stops(line[from]))
        ++from;
    return from;
}

/** The first position behind the characters before @p to for which @p holds holds. */
template <typename Holds>
qsizetype skipBack(QStringView line, qsizetype to, Holds holds)
{
    while (to > 0 && holds(line[to - 1]))
        --to;
    return to;
}

/** Whether @p name is @p pattern, in which "*" stands for any characters. */
bool isLike(QStringView name, QStringView pattern)
{
    qsizetype n = 0;
    qsizetype p = 0;
    qsizetype star = -1;
    qsizetype starN = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == QLatin1Char('*')) {
            star = p++;
            starN = n;
        } else if (p < pattern.size() && pattern[p] == name[n]) {
            ++p;
            ++n;
        } else if (star >= 0) {
            p = star + 1;
            n = ++starN;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == QLatin1Char('*'))
        ++p;
    return p == pattern.size();
}

/** The word that ends before @p end, which a quote and blanks may part from there. */
QStringView wordBefore(QStringView line, qsizetype end)
{
    end = skipBack(line, end, isBlank);
    if (end > 0 && isQuote(line[end - 1]))
        --end;
    const qsizetype begin = skipBack(line, end, isWord);
    return line.mid(begin, end - begin);
}

/** Whether `name=` with a value stands at @p at. What ends in "=", such as Base64, has none. */
bool isNextName(QStringView line, qsizetype at)
{
    const bool isQuoted = at < line.size() && isQuote(line[at]);
    const qsizetype name = isQuoted ? at + 1 : at;
    // A name may have been replaced before.
    qsizetype sign =
        findFirst(line, name, [](QChar c) { return !isWord(c) && c != QLatin1Char('*'); });
    if (sign == name)
        return false;
    if (isQuoted && sign < line.size() && isQuote(line[sign]))
        ++sign;
    sign = findFirst(line, sign, [](QChar c) { return !isBlank(c); });
    if (sign + 1 >= line.size() || !isOneOf(line[sign], "=:"))
        return false;
    const QChar first = line[sign + 1];
    return isQuoted || (!isBlank(first) && !isOneOf(first, "=;&|"));
}

/** Where a value that begins at @p begin ends: at a separator, or before blanks or commas with the
 * next `name=` behind them. */
qsizetype endOfValue(QStringView line, qsizetype begin)
{
    const auto isGap = [](QChar c) { return isBlank(c) || c == QLatin1Char(','); };
    qsizetype at = begin;
    while (at < line.size() && !isOneOf(line[at], ";&|")) {
        if (!isGap(line[at])) {
            ++at;
            continue;
        }
        const qsizetype next = findFirst(line, at, [&](QChar c) { return !isGap(c); });
        if (isNextName(line, next))
            return at;
        at = next;
    }
    return at;
}

/** Where a URL that begins at @p begin ends at the latest: where a separator and the scheme of
 * another one, which @p mark ends, follow; else the line's end. */
qsizetype endBeforeNextUrl(QStringView line, qsizetype begin, QLatin1String mark)
{
    const qsizetype next = line.indexOf(mark, begin);
    if (next < 0)
        return line.size();
    const qsizetype scheme =
        skipBack(line, next, [](QChar c) { return c.isLetterOrNumber() || isOneOf(c, "+-."); });
    const bool isAnother = scheme > begin && scheme < next && isOneOf(line[scheme - 1], ",;|");
    return isAnother ? scheme - 1 : line.size();
}

/** Whether the sign at @p at parts the host of a URL, which the word before it is, from a port.
 * @p userEnd is where the "@" before the host stands. */
bool isBeforePort(QStringView line, QStringView word, qsizetype at, qsizetype userEnd)
{
    const QStringView before = line.left(word.begin() - line.begin());
    const qsizetype end = findFirst(line, at + 1, [](QChar c) { return !c.isDigit(); });
    return word.end() == line.begin() + at && line[at] == QLatin1Char(':') && end > at + 1 &&
           (end == line.size() || !isWord(line[end])) &&
           (before.endsWith(QLatin1String("://")) || before.size() == userEnd + 1);
}

} // namespace

SecretNames::SecretNames(const QStringList &names)
{
    for (const QString &name : names)
        m_names += name.toLower();
}

bool SecretNames::contain(QStringView name) const
{
    const QString whole = name.toString().toLower();
    QString letters;
    std::copy_if(whole.begin(), whole.end(), std::back_inserter(letters),
                 [](QChar character) { return character.isLetter(); });
    return std::any_of(m_names.begin(), m_names.end(), [&](const QString &pattern) {
        return isLike(whole, pattern) || (!letters.isEmpty() && isLike(letters, pattern));
    });
}

void findAssignments(QStringView line, const SecretNames &names, SecretSpans &spans)
{
    SecretSpans urls; // user names and passwords, in the order of the line
    std::copy_if(spans.begin(), spans.end(), std::back_inserter(urls),
                 [](const SecretSpan &span) { return span.reason == Reason::Url; });
    auto url = urls.cbegin();
    qsizetype userEnd = -1; // of the last URL before
    qsizetype at = 0;
    for (;;) {
        at = findFirst(line, at, [](QChar c) { return isOneOf(c, "=:>"); });
        if (at == line.size())
            return;
        for (; url != urls.cend() && url->end < at; ++url)
            userEnd = url->end;
        if (url != urls.cend() && url->begin <= at) { // "user:" is no name there
            ++at;
            continue;
        }
        const QStringView word = wordBefore(line, at);
        const bool isElement = line[at] == QLatin1Char('>');
        ++at;
        if (word.isEmpty() ||
            (isElement && (word.begin() == line.begin() || word.begin()[-1] != QLatin1Char('<'))) ||
            !names.contain(word) || isBeforePort(line, word, at - 1, userEnd))
            continue;
        qsizetype begin = findFirst(line, at, [](QChar c) { return !isBlank(c); });
        qsizetype end = begin;
        if (isElement) {
            end = findFirst(line, begin, [](QChar c) { return c == QLatin1Char('<'); });
        } else if (begin < line.size() && isQuote(line[begin])) {
            const QChar quote = line[begin++];
            end = findFirst(line, begin, [=](QChar c) { return c == quote; });
        } else {
            end = endOfValue(line, begin);
        }
        spans.push_back({begin, end, Reason::Assignment});
        at = end;
    }
}

void findUrls(QStringView line, SecretSpans &spans)
{
    const QLatin1String mark("://");
    const auto isOutside = [](QChar c) { return isBlank(c) || isOneOf(c, "\"'<>"); };
    qsizetype withoutAt = 0; // up to here there is no "@" any more
    for (qsizetype at = line.indexOf(mark); at >= 0; at = line.indexOf(mark, at)) {
        const qsizetype begin = at + mark.size();
        at = begin;
        const QStringView url = line.left(endBeforeNextUrl(line, begin, mark));
        const qsizetype pathBegin =
            findFirst(url, begin, [&](QChar c) { return isOutside(c) || isOneOf(c, "/?#"); });
        const QStringView authority = url.mid(begin, pathBegin - begin);
        qsizetype userEnd = authority.lastIndexOf(QLatin1Char('@'));
        const qsizetype colon = authority.indexOf(QLatin1Char(':'));
        if (userEnd >= 0) {
            userEnd += begin;
        } else {
            // A password may hold "/", where it should not; a port is none.
            const bool isPort = std::all_of(authority.begin() + colon + 1, authority.end(),
                                            [](QChar c) { return c.isDigit(); });
            if (colon < 0 || isPort || authority.startsWith(QLatin1Char('[')) ||
                pathBegin < withoutAt)
                continue;
            userEnd = findFirst(url, pathBegin,
                                [&](QChar c) { return isOutside(c) || c == QLatin1Char('@'); });
            if (userEnd == url.size() || url[userEnd] != QLatin1Char('@')) {
                withoutAt = userEnd;
                continue;
            }
        }
        const qsizetype nameEnd =
            findFirst(line.left(userEnd), begin, [](QChar c) { return c == QLatin1Char(':'); });
        spans.push_back({begin, nameEnd, Reason::Url});
        if (nameEnd < userEnd)
            spans.push_back({nameEnd + 1, userEnd, Reason::Url});
        at = userEnd;
    }
}

void findShapes(QStringView line, SecretSpans &spans)
{
    struct Shape
    {
        const char *start;
        bool isShown; // whether the start stays: what follows it is the secret
        int least;    // characters of the whole
    };
    static constexpr Shape shapes[] = {
        {"Bearer ", true, 8},       {"eyJ", false, 20},          {"AAAAB3NzaC1", false, 20},
        {"AAAAC3NzaC1", false, 20}, {"AAAAE2VjZHNh", false, 20}, {"$1$", false, 10},
        {"$2a$", false, 20},        {"$2b$", false, 20},         {"$2y$", false, 20},
        {"$5$", false, 20},         {"$6$", false, 20},          {"$y$", false, 20},
        {"$apr1$", false, 10},      {"$argon2", false, 20},
    };
    for (const Shape &shape : shapes) {
        const QLatin1String start(shape.start);
        for (qsizetype at = line.indexOf(start); at >= 0; at = line.indexOf(start, at)) {
            const qsizetype begin = shape.isShown ? at + start.size() : at;
            const qsizetype end = findFirst(line, at + start.size(), [](QChar c) {
                return isBlank(c) || isOneOf(c, ";:|&\"'<>");
            });
            if (end - begin >= shape.least && (at == 0 || !line[at - 1].isLetterOrNumber()))
                spans.push_back({begin, end, Reason::Shape});
            at = end;
        }
    }
}

void findPem(QStringView line, bool &inside, SecretSpans &spans)
{
    const QLatin1String beginMark("-----BEGIN ");
    const QLatin1String endMark("-----END ");
    const QLatin1String dashes("-----");
    qsizetype at = 0;
    while (at < line.size()) {
        const qsizetype begin = inside ? at : line.indexOf(beginMark, at);
        if (begin < 0)
            return;
        qsizetype end = line.indexOf(endMark, begin);
        inside = end < 0;
        if (end >= 0)
            end = line.indexOf(dashes, end + endMark.size());
        end = end < 0 ? line.size() : end + dashes.size();
        spans.push_back({begin, end, Reason::Shape});
        at = end;
    }
}

} // namespace vn::internal
