// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigRedaction.h"

#include "base/Exceptions.h"
#include "config/ConfigRedactionShapes_p.h"
#include "config/ConfigSyntax_p.h"

#include <algorithm>

namespace vn {

namespace {

using internal::SecretNames;
using internal::SecretSpan;
using internal::SecretSpans;
using Reason = ConfigRedaction::Reason;

constexpr char kMark[] = "***";

/** The piece of a line that must stay for the text to be read as before. */
struct Kept
{
    qsizetype begin;
    qsizetype end;
};

/** Goes through a text line by line, as its reader does, and replaces what is secret in each. */
class Redactor
{
public:
    Redactor(const QString &text, const ConfigRedactionRules &rules)
        : m_text(text)
        , m_names(rules.keys)
        , m_patterns(rules.patterns)
    {
    }

    RedactedConfig run()
    {
        internal::MemoryLines lines(m_text);
        QStringView line;
        while (lines.readLine(line)) {
            ++m_line;
            redactLine(line);
        }
        m_result.text = m_result.replaced.isEmpty() ? m_text : m_out + m_text.mid(m_copied);
        return std::move(m_result);
    }

private:
    void redactLine(QStringView line)
    {
        if (m_line > internal::kVersionLines && line.isEmpty())
            m_inHeader = false;
        const internal::LineKind kind = internal::kindOf(line);
        const bool isStart = kind == internal::LineKind::SectionStart;
        const bool isEnd = kind == internal::LineKind::SectionEnd;
        if (isStart || isEnd) {
            m_section = isStart ? internal::toText(internal::nameOfStart(line)) : QString();
            m_isSecretSection = isStart && m_names.contain(m_section);
            m_inPem = false;
        }
        const bool isComment = kind == internal::LineKind::Comment;
        const bool isEntry = !isStart && !isEnd && !isComment;
        const qsizetype equals = isEntry ? line.indexOf(internal::kValueMark) : -1;
        m_key = isEntry ? line.left(equals < 0 ? line.size() : equals).toString() : QString();

        // Lines of a PEM block have "=" at their end only.
        if (m_inPem && equals >= 0 && std::any_of(line.begin() + equals, line.end(), [](QChar c) {
                return c != QLatin1Char('=');
            }))
            m_inPem = false;

        SecretSpans spans;
        if (isEntry && equals >= 0) {
            if (m_names.contain(m_key))
                spans.push_back({equals + 1, line.size(), Reason::Key});
            else if (m_isSecretSection)
                spans.push_back({equals + 1, line.size(), Reason::Section});
        } else if (isComment) {
            findCommentedEntry(line, spans);
        }
        internal::findPem(line, m_inPem, spans);
        internal::findUrls(line, spans);
        internal::findAssignments(line, m_names, spans);
        internal::findShapes(line, spans);
        findPatterns(line, spans);

        const qsizetype keyEnd = isComment ? 0 : equals >= 0 ? equals + 1 : line.size();
        replace(line, merged(std::move(spans)), keyEnd,
                isComment ? Kept{0, commentStart(line)} : Kept{0, keyEnd}, addressPhrase(line));
    }

    /** An entry that was commented out, or a remark such as "# Password: …": all that follows. */
    void findCommentedEntry(QStringView line, SecretSpans &spans) const
    {
        const auto *const sign = std::find_if(line.begin(), line.end(), [](QChar c) {
            return c == QLatin1Char('=') || c == QLatin1Char(':');
        });
        if (sign == line.end())
            return;
        const qsizetype at = sign - line.begin();
        const QStringView name = line.mid(1, at - 1).trimmed();
        if (!name.isEmpty() && m_names.contain(name))
            spans.push_back({at + 1, line.size(), Reason::Assignment});
    }

    void findPatterns(QStringView line, SecretSpans &spans) const
    {
        if (m_patterns.isEmpty())
            return;
        const QString text = line.toString();
        for (const QRegularExpression &pattern : m_patterns) {
            const int group = pattern.captureCount() > 0 ? 1 : 0;
            bool isAtEnd = false; // behind an empty match at the end there is nothing to match
            auto it = pattern.globalMatch(text);
            while (it.isValid() && it.hasNext()) {
                const QRegularExpressionMatch match = it.next();
                spans.push_back(
                    {match.capturedStart(group), match.capturedEnd(group), Reason::Pattern});
                isAtEnd = match.capturedStart() == text.size();
            }
            if (!it.isValid() && !isAtEnd) // matching was given up: what is there cannot be told
                spans.push_back({0, line.size(), Reason::Pattern});
        }
    }

    /** How much of a comment must stay: the sign, and what the header is known by. */
    qsizetype commentStart(QStringView line) const
    {
        using internal::kAddressMark;
        using internal::kVersionMark;
        if (m_line <= internal::kVersionLines && internal::beginsWith(line, kVersionMark))
            return qsizetype(std::size(kVersionMark)) - 1;
        return m_inHeader && internal::beginsWith(line, kAddressMark)
                   ? qsizetype(std::size(kAddressMark)) - 1
                   : 1;
    }

    /** The words of the header before the camera's address. */
    Kept addressPhrase(QStringView line) const
    {
        const QLatin1String phrase(internal::kTitleMark);
        const qsizetype at = m_inHeader ? line.indexOf(phrase) : -1;
        return at < 0 ? Kept{0, 0} : Kept{at, std::min(at + phrase.size() + 1, line.size())};
    }

    /** The spans in order, those that overlap as one; the first one's reason counts. */
    static SecretSpans merged(SecretSpans spans)
    {
        std::stable_sort(spans.begin(), spans.end(), [](const SecretSpan &a, const SecretSpan &b) {
            return a.begin < b.begin;
        });
        SecretSpans result;
        for (const SecretSpan &span : spans) {
            if (span.begin >= span.end)
                continue;
            if (!result.empty() && span.begin < result.back().end)
                result.back().end = std::max(result.back().end, span.end);
            else
                result.push_back(span);
        }
        return result;
    }

    /** Replaces the spans but for what must stay, and tells of what stays as it is read as a key,
     * up to @p keyEnd. Patterns are often written with the key in front. */
    void replace(QStringView line, const SecretSpans &spans, qsizetype keyEnd, Kept start,
                 Kept phrase)
    {
        for (const SecretSpan &span : spans) {
            const SecretSpans pieces = without(without({span}, start), phrase);
            if (span.begin < keyEnd && (pieces.empty() || span.reason != Reason::Pattern))
                m_result.left +=
                    described(line, {span.begin, std::min(span.end, keyEnd), span.reason});
            for (const SecretSpan &piece : pieces)
                replacePiece(line, piece);
        }
    }

    static SecretSpans without(const SecretSpans &spans, Kept kept)
    {
        SecretSpans result;
        for (const SecretSpan &span : spans) {
            const SecretSpan before = {span.begin, std::min(span.end, kept.begin), span.reason};
            const SecretSpan behind = {std::max(span.begin, kept.end), span.end, span.reason};
            for (const SecretSpan &piece : {before, behind})
                if (piece.begin < piece.end)
                    result.push_back(piece);
        }
        return result;
    }

    void replacePiece(QStringView line, const SecretSpan &piece)
    {
        const QStringView secret = line.mid(piece.begin, piece.end - piece.begin);
        if (secret == QLatin1String(kMark))
            return;
        const ConfigRedaction redaction = described(line, piece);
        const auto begin = static_cast<int>(redaction.range.offset);
        m_out += QStringView(m_text).mid(m_copied, begin - m_copied);
        m_out += QLatin1String(kMark);
        m_copied = begin + static_cast<int>(secret.size());
        m_result.replaced += redaction;
    }

    ConfigRedaction described(QStringView line, const SecretSpan &span) const
    {
        TextRange range;
        range.line = range.endLine = m_line;
        range.column = static_cast<int>(span.begin) + 1;
        range.endColumn = static_cast<int>(span.end) + 1;
        range.offset = line.begin() - QStringView(m_text).begin() + span.begin;
        range.length = span.end - span.begin;
        return {span.reason, range, m_section, m_key};
    }

    const QString &m_text;
    const SecretNames m_names;
    const QList<QRegularExpression> &m_patterns;

    int m_line = 0; // the one at hand, from 1
    bool m_inHeader = true;
    bool m_inPem = false;
    QString m_section;
    bool m_isSecretSection = false;
    QString m_key;

    QString m_out;
    int m_copied = 0; // how much of the text is in m_out, replaced or not
    RedactedConfig m_result;
};

} // namespace

QStringList secretKeys()
{
    static constexpr const char *names[] = {
        // passwords
        "*passw*",
        "*passphrase*",
        "*passcode*",
        "*pass",
        "*pwd*",
        "*pw",
        "pin",
        "*pincode",
        // user names
        "*user",
        "*users",
        "*username*",
        "*userid",
        "*login",
        "*loginname",
        "account",
        // tokens and what goes for one
        "*token*",
        "*secret*",
        "*credential*",
        "*authorization*",
        "*bearer*",
        "*cookie*",
        "*sessionid",
        // community strings
        "*community*",
        // keys
        "*key",
        "*keys",
        "*apikey*",
        "*privatekey*",
        "*privkey*",
        "*sharedkey*",
        "*psk",
        // certificates
        "*cert",
        "*certs",
        "*certificate*",
        "*pem",
    };
    QStringList result;
    for (const char *name : names)
        result += QString::fromLatin1(name);
    return result;
}

RedactedConfig redactConfig(const QString &text, const ConfigRedactionRules &rules)
{
    for (const QRegularExpression &pattern : rules.patterns)
        if (!pattern.isValid())
            throw ParseException(QLatin1String("\"") + pattern.pattern() +
                                     QLatin1String("\" is no pattern: ") + pattern.errorString(),
                                 -1, -1, -1, -1);
    return Redactor(text, rules).run();
}

} // namespace vn
