// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/AlarmFindings_p.h"

#include "alarm/Bytes_p.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace vn::internal {

namespace {

bool isBeyondAscii(char byte)
{
    return static_cast<unsigned char>(byte) >= 0x80;
}

/** The digits of a number that tell one from another: without sign, point and exponent, and without
 * the zeros around. */
std::string significantDigits(const char *begin, const char *end)
{
    std::string digits;
    for (const char *c = begin; c != end && *c != 'e' && *c != 'E'; ++c)
        if (is(Digit, *c) && (*c != '0' || !digits.empty()))
            digits += *c;
    while (!digits.empty() && digits.back() == '0')
        digits.pop_back();
    return digits;
}

/** More digits than any double has. */
constexpr std::size_t kMaxDigits = 767;
/** As many digits are always kept. */
constexpr std::size_t kKeptDigits = 15;

/** Whether a double can hold the number without changing a digit of it. */
bool isKept(const char *begin, const char *end)
{
    const std::string digits = significantDigits(begin, end);
    double value = 0;
    if (std::from_chars(begin, end, value).ec != std::errc())
        return false;                 // beyond the largest, or nearer to zero than the smallest
    if (digits.size() <= kKeptDigits) // of the smallest numbers, fewer are kept
        return digits.empty() || std::abs(value) >= std::numeric_limits<double>::min();
    if (digits.size() > kMaxDigits)
        return false;
    char shown[kMaxDigits + 16];
    const auto [last, error] =
        std::to_chars(shown, shown + sizeof shown, value, std::chars_format::scientific,
                      static_cast<int>(digits.size()) - 1);
    return error == std::errc() && significantDigits(shown, last) == digits;
}

} // namespace

// ---- Findings ----------------------------------------------------------------------------------

AlarmFindings::AlarmFindings(const QByteArray &text)
    : m_text(text)
    , m_places(text)
{
}

void AlarmFindings::add(Finding::Severity severity, const char *code, const QString &message,
                        ByteRange bytes)
{
    m_entries.push_back({{severity, QString::fromLatin1(code), message, {}}, bytes});
}

void AlarmFindings::error(const char *code, const QString &message, ByteRange bytes)
{
    add(Finding::Severity::Error, code, message, bytes);
}

void AlarmFindings::warning(const char *code, const QString &message, ByteRange bytes)
{
    add(Finding::Severity::Warning, code, message, bytes);
}

void AlarmFindings::note(const char *code, const QString &message, ByteRange bytes)
{
    add(Finding::Severity::Note, code, message, bytes);
}

bool AlarmFindings::holdsUtf8(ByteRange bytes) const
{
    return m_places.isUtf8() &&
           std::any_of(m_text.begin() + bytes.start, m_text.begin() + bytes.end, isBeyondAscii);
}

void AlarmFindings::lookAtText(ByteRange bytes)
{
    if (holdsUtf8(bytes))
        warning("utf8-read-as-latin1",
                QString::fromLatin1("the text is UTF-8 and is read as Latin-1, as %1")
                    .arg(quotedBytes(m_text, bytes)),
                bytes);
}

void AlarmFindings::lookAtNumber(ByteRange bytes)
{
    const char *const text = m_text.constData();
    if (!isKept(text + bytes.start, text + bytes.end))
        warning("number-not-kept",
                QString::fromLatin1("the number %1 is rounded: 15 digits are kept, and sizes from "
                                    "1e-307 to 1e308")
                    .arg(quotedBytes(m_text, bytes)),
                bytes);
}

void AlarmFindings::restIsNotRead(int start)
{
    const int length = m_text.size() - start;
    warning(
        "rest-not-read",
        QString::fromLatin1("%1 ends the text: what follows from here on (%2 bytes) is not read")
            .arg(quotedBytes(m_text, {start, start + 1}))
            .arg(length),
        {start, m_text.size()});
}

Findings AlarmFindings::take(const std::optional<ParseException> &refusal, const QString &exhausted)
{
    const auto isError = [](const Entry &entry) {
        return entry.finding.severity == Finding::Severity::Error;
    };
    const auto first = std::find_if(m_entries.begin(), m_entries.end(), isError);
    if (refusal) {
        const ByteRange place = {refusal->startColumn(), refusal->endColumn()};
        const QString published = QString::fromLatin1(" (%1)").arg(refusal->message());
        if (!exhausted.isNull())
            error("too-long-or-deep", exhausted + published, place);
        else if (first == m_entries.end())
            error("refused", QString::fromLatin1("the text is refused") + published, place);
        else {
            first->finding.message += published;
            first->bytes = place;
        }
    } else {
        m_entries.erase(std::remove_if(first, m_entries.end(), isError), m_entries.end());
    }
    std::stable_sort(m_entries.begin(), m_entries.end(),
                     [](const Entry &a, const Entry &b) { return a.bytes.start < b.bytes.start; });

    Findings findings;
    findings.reserve(static_cast<int>(m_entries.size()));
    for (Entry &entry : m_entries) {
        entry.finding.range = m_places.range(entry.bytes);
        findings.append(std::move(entry.finding));
    }
    return findings;
}

// ---- Words -------------------------------------------------------------------------------------

QString quotedBytes(const QByteArray &text, ByteRange bytes)
{
    constexpr int kLongest = 24;
    const int length = std::min(bytes.end - bytes.start, kLongest);
    QString shown;
    for (const char byte : text.mid(bytes.start, length)) {
        const auto code = static_cast<unsigned char>(byte);
        if (code < 0x20 || (code >= 0x7f && code < 0xa0))
            shown += QString::fromLatin1("\\x%1").arg(code, 2, 16, QLatin1Char('0'));
        else
            shown += QLatin1Char(byte);
    }
    if (bytes.end - bytes.start > kLongest)
        shown += QString::fromLatin1("...");
    return QLatin1Char('"') + shown + QLatin1Char('"');
}

QString whereExpected(const QString &found, const char *expected)
{
    return QString::fromLatin1("%1 where %2 was expected")
        .arg(found, QString::fromLatin1(expected));
}

} // namespace vn::internal
