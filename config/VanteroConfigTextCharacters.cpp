// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigTextFindings_p.h"

namespace vn::internal {

namespace {

/** What a file, a screen or an archive would not show as it is. */
class CharacterCheck
{
public:
    CharacterCheck(QStringView text, FindingList &findings)
        : m_text(text)
        , m_findings(findings)
    {
    }

    void run()
    {
        for (qsizetype begin = 0; begin < m_text.size();) {
            const qsizetype lineFeed = m_text.indexOf(QLatin1Char('\n'), begin);
            qsizetype end = lineFeed < 0 ? m_text.size() : lineFeed;
            if (lineFeed > begin && m_text.at(lineFeed - 1) == QLatin1Char('\r'))
                --end;
            checkLine(m_text.mid(begin, end - begin));
            if (lineFeed < 0)
                break;
            checkLineEnd(m_text.mid(end, lineFeed + 1 - end));
            begin = lineFeed + 1;
        }
    }

private:
    void checkLine(QStringView line)
    {
        QStringView hidden; // from the first to the last of them
        uint firstHidden = 0;
        QStringView notLatin1;
        for (qsizetype i = 0; i < line.size(); ++i) {
            const ushort unit = line.at(i).unicode();
            if ((unit >= 0x20 && unit < 0x7f) || unit == '\t')
                continue;
            const bool isPair = i + 1 < line.size() && line.at(i).isHighSurrogate() &&
                                line.at(i + 1).isLowSurrogate();
            const QStringView character = line.mid(i, isPair ? 2 : 1);
            const uint code =
                isPair ? QChar::surrogateToUcs4(line.at(i), line.at(i + 1)) : uint(unit);
            if (isHidden(code)) {
                firstHidden = hidden.isNull() ? code : firstHidden;
                hidden = hidden.isNull() ? character : from(hidden, character);
            }
            if (code > 0xff)
                notLatin1 = notLatin1.isNull() ? character : from(notLatin1, character);
            i += character.size() - 1;
        }
        if (!hidden.isNull())
            m_findings.warn(
                "hidden-character",
                QLatin1String("a character that does not show: U+") %
                    QString::number(firstHidden, 16).toUpper().rightJustified(4, QLatin1Char('0')),
                hidden);
        if (!notLatin1.isNull())
            m_findings.note("not-latin1",
                            QLatin1String("an archive entry would have \"?\" for ") %
                                quoted(notLatin1),
                            notLatin1);
    }

    static bool isHidden(uint code)
    {
        switch (QChar::category(code)) {
        case QChar::Other_Control:
        case QChar::Other_Format:
        case QChar::Other_Surrogate:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            return true;
        default:
            return false;
        }
    }

    void checkLineEnd(QStringView lineEnd)
    {
        if (m_lineEnd.isNull())
            m_lineEnd = lineEnd;
        else if (!m_isMixed && lineEnd.size() != m_lineEnd.size()) {
            m_isMixed = true;
            m_findings.note("mixed-line-ends",
                            QString::fromLatin1("this line does not end as the first one does"),
                            lineEnd);
        }
    }

    QStringView m_text;
    FindingList &m_findings;
    QStringView m_lineEnd; // the first one
    bool m_isMixed = false;
};

} // namespace

void findCharacters(QStringView text, FindingList &findings)
{
    CharacterCheck(text, findings).run();
}

} // namespace vn::internal
