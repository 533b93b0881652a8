// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigTextFindings_p.h"

namespace vn::internal {

void HeaderCheck::line(QStringView line)
{
    m_lines.push_back(line);
    m_hasValue.push_back(false);
}

void HeaderCheck::value(HeaderField field, QStringView value)
{
    const QStringView line = m_lines.back();
    m_hasValue.back() = true;
    switch (field) {
    case HeaderField::FileVersion:
        checkFileVersion(line, value);
        break;
    case HeaderField::SoftwareVersion:
        break;
    case HeaderField::FactoryIp:
        if (!m_address.isNull())
            m_findings.warn("address-repeated",
                            QLatin1String("the address in line ") % m_findings.lineOf(line) %
                                QLatin1String(" counts, not this one"),
                            m_address);
        m_address = line;
        if (!beginsWith(line, kAddressMark)) {
            checkTitle(line);
            return;
        }
        break;
    }
    if (hasBlanksAround(value))
        m_findings.warn("blanks-around-value",
                        QString::fromLatin1("blanks at the ends belong to the value"), value);
}

void HeaderCheck::end()
{
    if (m_lines.empty())
        return;
    const bool hasSecond = m_lines.size() >= kVersionLines;
    const bool hasNone = !m_hasValue[0] && !(hasSecond && m_hasValue[1]);
    if (hasNone) {
        const Lost lost = findLost(false);
        const QStringView first = m_lines[0];
        m_findings.warn(
            "no-header",
            QString::fromLatin1(!lost.section.isNull() ? "no header: the first section is lost"
                                : lost.where.isNull()  ? "no header"
                                                       : "no header: the first lines are lost"),
            lost.where.isNull() ? first : from(first, lost.where));
    } else {
        if (!m_hasValue[0])
            m_findings.warn("incomplete-header",
                            QString::fromLatin1("no file version in the first line"), m_lines[0]);
        if (hasSecond && m_lines[1].isEmpty())
            m_findings.warn(
                "empty-second-line",
                QString::fromLatin1("no software version in the second line; as it is empty, the "
                                    "header goes on to the next empty line"),
                m_lines[1]);
        else if (hasSecond && !m_hasValue[1])
            m_findings.warn("incomplete-header",
                            QString::fromLatin1("no software version in the second line"),
                            m_lines[1]);
        const Lost lost = findLost(true);
        if (!lost.where.isNull())
            m_findings.warn(
                "lost-in-header",
                lost.section.isNull()
                    ? QString::fromLatin1("a line of the header that is no comment is lost")
                    : QLatin1String("the header goes on to the next empty line, and section ") %
                          quoted(nameOfStart(lost.section)) % QLatin1String(" is lost"),
                lost.where);
    }
    for (std::size_t i = kVersionLines; i < m_lines.size(); ++i)
        checkUnread(i);
}

HeaderCheck::Lost HeaderCheck::findLost(bool hasHeader) const
{
    Lost lost;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const QStringView line = m_lines[i];
        const LineKind kind = kindOf(line);
        const bool isTold = m_hasValue[i] || isTitleAtStart(i) || (hasHeader && i < kVersionLines);
        if (kind == LineKind::Empty || kind == LineKind::Comment ||
            (kind == LineKind::Entry && isTold))
            continue;
        lost.where = lost.where.isNull() ? line : from(lost.where, line);
        if (kind == LineKind::SectionStart && lost.section.isNull())
            lost.section = line;
    }
    return lost;
}

void HeaderCheck::checkFileVersion(QStringView line, QStringView value)
{
    const QStringView rest(value.end(), line.end());
    const bool isRuleOnly =
        std::all_of(rest.begin(), rest.end(), [](QChar c) { return c == kValueMark; });
    if (!isRuleOnly)
        m_findings.warn(
            "text-behind-version",
            QString::fromLatin1("the file version ends at the first \"=\"; what follows is lost"),
            rest);
}

void HeaderCheck::checkTitle(QStringView line)
{
    const QLatin1String title(kTitleMark);
    const qsizetype at = line.indexOf(title);
    if (looksLikeAddress(line.left(at)))
        warnOfUnreadAddress(line);
    const QStringView rest = line.mid(at + title.size());
    if (!rest.isEmpty() && !rest.front().isSpace())
        m_findings.warn("no-blank-in-title",
                        QString::fromLatin1("the character behind \"Configuration of\" is lost"),
                        rest.left(1));
    if (hasBlanksAround(rest.mid(std::min<qsizetype>(1, rest.size()))))
        m_findings.warn("blanks-around-address",
                        QString::fromLatin1("blanks at the ends of the address are lost"), rest);
}

bool HeaderCheck::isTitleAtStart(std::size_t line) const
{
    return line >= kVersionLines && !m_hasValue[line] && beginsWith(m_lines[line], kTitleMark);
}

bool HeaderCheck::looksLikeAddress(QStringView line)
{
    return line.contains(QLatin1String("Camera IP"), Qt::CaseInsensitive) ||
           line.contains(QLatin1String(kTitleMark), Qt::CaseInsensitive);
}

void HeaderCheck::warnOfUnreadAddress(QStringView line)
{
    m_findings.warn("address-not-read",
                    QString::fromLatin1(
                        "an address must stand behind \"# Camera IP: \" at the start of a line"),
                    line);
}

void HeaderCheck::checkUnread(std::size_t line)
{
    if (isTitleAtStart(line))
        m_findings.warn("title-at-start",
                        QString::fromLatin1("a title at the very start of a line has no address"),
                        m_lines[line]);
    else if (!m_hasValue[line] && looksLikeAddress(m_lines[line]))
        warnOfUnreadAddress(m_lines[line]);
}

} // namespace vn::internal
