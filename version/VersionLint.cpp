// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VersionLint.h"

#include "version/Platforms_p.h"
#include "version/VanteroSoftwareVersion.h"
#include "version/VersionText_p.h"

#include <algorithm>
#include <limits>

namespace vn {

namespace {

using internal::isSeparator;
using internal::kMajorComponent;
using internal::kPlatformComponent;
using internal::kPreReleaseComponent;
using internal::kVersionComponents;

constexpr auto kWarning = Finding::Severity::Warning;
constexpr auto kNote = Finding::Severity::Note;

/** Looks at a text part by part. */
class Checker
{
public:
    explicit Checker(const QString &text)
        : m_text(text)
    {
    }

    Findings check()
    {
        checkBlankBefore();
        int begin = 0;
        for (int index = 0;; ++index) {
            const int end = endOfPart(begin);
            checkPart(index, begin, end);
            if (end == m_text.size() || index == kVersionComponents)
                break; // all that follows is ignored
            begin = endOfSeparators(end);
            if (begin - end > 1 && begin != m_text.size() && end != 0)
                add(kNote, "separators", end, begin, "\"%1\" separates like one character");
        }
        checkBlankBehind();
        std::stable_sort(
            m_findings.begin(), m_findings.end(),
            [](const Finding &a, const Finding &b) { return a.range.offset < b.range.offset; });
        return m_findings;
    }

private:
    int endOfPart(int from) const
    {
        while (from < m_text.size() && !isSeparator(m_text.at(from)))
            ++from;
        return from;
    }

    int endOfSeparators(int from) const
    {
        while (from < m_text.size() && isSeparator(m_text.at(from)))
            ++from;
        return from;
    }

    void checkPart(int index, int begin, int end)
    {
        const QStringView part = QStringView(m_text).mid(begin, end - begin);
        if (index == kPlatformComponent) {
            checkPlatform(begin, end);
        } else if (index < kPreReleaseComponent) {
            // One "V" before the major number is its sign.
            const bool sign = index == kMajorComponent && part.startsWith(QLatin1Char('V'));
            checkNumber(index, sign ? part.mid(1) : part, begin, end);
        } else if (index == kPreReleaseComponent) {
            checkPreRelease(part, begin, end);
        } else if (index == kVersionComponents) {
            add(kWarning, "parts-ignored", begin, m_text.size(),
                "\"%1\" is ignored, as a version has six parts");
        }
        if (index < kPreReleaseComponent &&
            std::any_of(part.begin(), part.end(), [](QChar c) { return isForeignDigit(c); }))
            add(kWarning, "foreign-digits", begin, end,
                "\"%1\" has digits other than 0 to 9, which are none here");
    }

    void checkPlatform(int begin, int end)
    {
        const QString name = m_text.mid(begin, end - begin);
        if (name == QLatin1String("*"))
            return;
        QString meant;
        for (const internal::Platform &platform : internal::kPlatforms) {
            if (name == QLatin1String(platform.name))
                return;
            if (name.compare(QLatin1String(platform.name), Qt::CaseInsensitive) == 0)
                meant = QLatin1String(platform.name);
        }
        const char *message = name.isEmpty()    ? "there is no platform"
                              : meant.isEmpty() ? "\"%1\" is no known platform"
                                                : "\"%1\" is no known platform, but %2 is";
        add(kWarning, "platform-unknown", begin, end, message, meant);
    }

    void checkNumber(int index, QStringView number, int begin, int end)
    {
        if (number == QLatin1String("*")) {
            add(kNote, "wildcard-limit", begin, end, "\"%1\" covers the numbers from 0 to 99");
            if (end == m_text.size() && index < kPreReleaseComponent - 1)
                add(kNote, "wildcard-alone", begin, end,
                    "\"%1\" covers one number; the missing ones behind it are 0");
            return;
        }
        if (begin == end) {
            add(kNote, "separator-at-end", begin, end, "what is missing behind the separator is 0");
            return;
        }
        const bool isNumber =
            !number.isEmpty() && std::all_of(number.begin(), number.end(), [](QChar c) {
                return c >= QLatin1Char('0') && c <= QLatin1Char('9');
            });
        if (!isNumber) {
            add(kWarning, "number-unreadable", begin, end, "\"%1\" is no number and is read as 0");
            return;
        }
        const VanteroSoftwareVersion version(m_text);
        bool fits = false;
        const int value = number.toInt(&fits);
        if (!fits)
            add(kWarning, "number-too-large", begin, end,
                "\"%1\" has more than 32 bits and is read as 0");
        else if (value > std::numeric_limits<qint16>::max())
            add(kWarning, "number-cut", begin, end,
                "\"%1\" has more than 16 bits and is read as %2", QString::number(version[index]));
    }

    void checkPreRelease(QStringView part, int begin, int end)
    {
        if (part == QLatin1String("pre") || part == QLatin1String("*"))
            return;
        if (part.isEmpty())
            add(kWarning, "pre-release-open", begin, end,
                "the separator at the end stands for any pre-release and none");
        else
            add(kWarning, "pre-release-unknown", begin, end,
                "\"%1\" stands for any pre-release and none; only pre is one");
    }

    void checkBlankBefore()
    {
        int end = 0;
        while (end < m_text.size() && m_text.at(end).isSpace())
            ++end;
        if (end != 0)
            add(kWarning, "blank-at-end", 0, end,
                "the blank before the version makes all parts move on by one");
    }

    void checkBlankBehind()
    {
        int begin = m_text.size();
        while (begin > 0 && m_text.at(begin - 1).isSpace())
            --begin;
        if (begin != m_text.size() && begin != 0)
            add(kWarning, "blank-at-end", begin, m_text.size(),
                "the blank behind the version is the beginning of one more part");
    }

    static bool isForeignDigit(QChar c) { return c.isDigit() && c.unicode() > '9'; }

    /** Adds a finding; in its message "%1" is the text in question, "%2" is @p value. */
    void add(Finding::Severity severity, const char *code, int begin, int end, const char *format,
             const QString &value = QString())
    {
        QString message = QString::fromLatin1(format);
        const QString text = m_text.mid(begin, end - begin);
        if (message.contains(QLatin1String("%2")))
            message = message.arg(text, value);
        else if (message.contains(QLatin1String("%1")))
            message = message.arg(text);
        m_findings.append({severity, QString::fromLatin1(code), message, range(begin, end)});
    }

    TextRange range(int begin, int end) const
    {
        TextRange range;
        locate(begin, range.line, range.column);
        locate(end, range.endLine, range.endColumn);
        range.offset = begin;
        range.length = end - begin;
        return range;
    }

    void locate(int offset, int &line, int &column) const
    {
        const QStringView before = QStringView(m_text).left(offset);
        line = 1 + static_cast<int>(std::count(before.begin(), before.end(), QLatin1Char('\n')));
        column = offset - m_text.left(offset).lastIndexOf(QLatin1Char('\n'));
    }

    const QString &m_text;
    Findings m_findings;
};

} // namespace

Findings VersionLint::check(const QString &text)
{
    return Checker(text).check();
}

} // namespace vn
