// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigTextReader_p.h"
#include "config/TextPlaces_p.h"
#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigTextData_p.h"
#include "config/VanteroConfigTextNames_p.h"

#include <QtCore/QHash>
#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QStringBuilder>

#include <algorithm>
#include <vector>

namespace vn {

namespace {

using internal::ConfigFault;
using internal::HeaderField;
using internal::LineKind;
using internal::NamedSection;
using internal::TextPlaces;
using Severity = Finding::Severity;

/** What has been found. The texts are on the heap, so that they outlive the library. */
class FindingList
{
public:
    explicit FindingList(QStringView text)
        : m_places(text)
    {
    }

    const TextPlaces &places() const { return m_places; }

    void add(Severity severity, const char *code, const QString &message, QStringView where)
    {
        m_findings += {severity, QString::fromLatin1(code), message, m_places.rangeOf(where)};
    }
    void warn(const char *code, const QString &message, QStringView where)
    {
        add(Severity::Warning, code, message, where);
    }
    void note(const char *code, const QString &message, QStringView where)
    {
        add(Severity::Note, code, message, where);
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

QString quoted(QStringView text)
{
    // As a string: Qt copies from a null view, which sanitizers do not like.
    return QLatin1Char('"') % text.toString() % QLatin1Char('"');
}

bool hasBlanksAround(QStringView text)
{
    return text.size() != text.trimmed().size();
}

QStringView from(QStringView begin, QStringView end)
{
    return {begin.begin(), end.end()};
}

// ---- Characters --------------------------------------------------------------------------------

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

// ---- The header --------------------------------------------------------------------------------

/** The lines of a header, and what is not read of them. */
class HeaderCheck
{
public:
    explicit HeaderCheck(FindingList &findings)
        : m_findings(findings)
    {
    }

    void line(QStringView line)
    {
        m_lines.push_back(line);
        m_hasValue.push_back(false);
    }

    void value(HeaderField field, QStringView value)
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
            if (!beginsWith(line, internal::kAddressMark)) {
                checkTitle(line);
                return;
            }
            break;
        }
        if (hasBlanksAround(value))
            m_findings.warn("blanks-around-value",
                            QString::fromLatin1("blanks at the ends belong to the value"), value);
    }

    /** All lines have been told. */
    void end()
    {
        if (m_lines.empty())
            return;
        const bool hasSecond = m_lines.size() >= internal::kVersionLines;
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
                                QString::fromLatin1("no file version in the first line"),
                                m_lines[0]);
            if (hasSecond && m_lines[1].isEmpty())
                m_findings.warn("empty-second-line",
                                QString::fromLatin1(
                                    "no software version in the second line; as it is empty, the "
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
                              quoted(internal::nameOfStart(lost.section)) %
                              QLatin1String(" is lost"),
                    lost.where);
        }
        for (std::size_t i = internal::kVersionLines; i < m_lines.size(); ++i)
            checkUnread(i);
    }

private:
    struct Lost
    {
        QStringView where;   // from the first to the last line
        QStringView section; // the first line of a section
    };

    /** The lines that would say something elsewhere; entries in the place of the version lines are
     * told otherwise where there is a header. */
    Lost findLost(bool hasHeader) const
    {
        Lost lost;
        for (std::size_t i = 0; i < m_lines.size(); ++i) {
            const QStringView line = m_lines[i];
            const LineKind kind = internal::kindOf(line);
            const bool isTold =
                m_hasValue[i] || isTitleAtStart(i) || (hasHeader && i < internal::kVersionLines);
            if (kind == LineKind::Empty || kind == LineKind::Comment ||
                (kind == LineKind::Entry && isTold))
                continue;
            lost.where = lost.where.isNull() ? line : from(lost.where, line);
            if (kind == LineKind::SectionStart && lost.section.isNull())
                lost.section = line;
        }
        return lost;
    }

    void checkFileVersion(QStringView line, QStringView value)
    {
        const QStringView rest(value.end(), line.end());
        const bool isRuleOnly = std::all_of(rest.begin(), rest.end(),
                                            [](QChar c) { return c == internal::kValueMark; });
        if (!isRuleOnly)
            m_findings.warn("text-behind-version",
                            QString::fromLatin1(
                                "the file version ends at the first \"=\"; what follows is lost"),
                            rest);
    }

    void checkTitle(QStringView line)
    {
        const QLatin1String title(internal::kTitleMark);
        const qsizetype at = line.indexOf(title);
        if (looksLikeAddress(line.left(at)))
            warnOfUnreadAddress(line);
        const QStringView rest = line.mid(at + title.size());
        if (!rest.isEmpty() && !rest.front().isSpace())
            m_findings.warn(
                "no-blank-in-title",
                QString::fromLatin1("the character behind \"Configuration of\" is lost"),
                rest.left(1));
        if (hasBlanksAround(rest.mid(std::min<qsizetype>(1, rest.size()))))
            m_findings.warn("blanks-around-address",
                            QString::fromLatin1("blanks at the ends of the address are lost"),
                            rest);
    }

    bool isTitleAtStart(std::size_t line) const
    {
        return line >= internal::kVersionLines && !m_hasValue[line] &&
               beginsWith(m_lines[line], internal::kTitleMark);
    }

    static bool looksLikeAddress(QStringView line)
    {
        return line.contains(QLatin1String("Camera IP"), Qt::CaseInsensitive) ||
               line.contains(QLatin1String(internal::kTitleMark), Qt::CaseInsensitive);
    }

    void warnOfUnreadAddress(QStringView line)
    {
        m_findings.warn(
            "address-not-read",
            QString::fromLatin1(
                "an address must stand behind \"# Camera IP: \" at the start of a line"),
            line);
    }

    /** A line that looks as if it said an address. */
    void checkUnread(std::size_t line)
    {
        if (isTitleAtStart(line))
            m_findings.warn(
                "title-at-start",
                QString::fromLatin1("a title at the very start of a line has no address"),
                m_lines[line]);
        else if (!m_hasValue[line] && looksLikeAddress(m_lines[line]))
            warnOfUnreadAddress(m_lines[line]);
    }

    FindingList &m_findings;
    std::vector<QStringView> m_lines;
    std::vector<bool> m_hasValue;
    QStringView m_address; // the line of the last one
};

// ---- The body ----------------------------------------------------------------------------------

/** A sink of the text reader that notes what is wrong, and what is not read as it looks. */
class Linter : public internal::ConfigSink
{
public:
    Linter(FindingList &findings, VanteroConfigText::Form form)
        : m_findings(findings)
        , m_form(form)
        , m_header(findings)
    {
    }

    void headerLine(QStringView line) { m_header.line(line); }
    void headerValue(HeaderField field, QStringView value) { m_header.value(field, value); }
    void headerEnd() { m_header.end(); }

    void comment(QStringView line)
    {
        if (m_form == VanteroConfigText::Form::Configuration &&
            beginsWith(line, internal::kAddressMark))
            m_findings.warn(
                "address-not-read",
                QString::fromLatin1("this address is not in the header, so it is not read"), line);
    }

    void strayLine(QStringView line)
    {
        if (!isIndentedMark(line, "opens no section"))
            m_findings.warn("entry-outside-section",
                            QString::fromLatin1("outside of sections, so it is not read"), line);
    }

    void beginSection(QStringView name, QStringView line)
    {
        m_start = line;
        if (name.isEmpty()) {
            m_findings.warn(
                "section-without-name",
                QString::fromLatin1("a section without a name, so nothing in it is read"), line);
            return;
        }
        checkMark(line, name);
        if (hasBlanksAround(name))
            m_findings.warn("blanks-around-name",
                            QString::fromLatin1("blanks at the ends belong to the name"), name);
        if (m_form == VanteroConfigText::Form::Configuration &&
            name == VanteroConfigFile::HEAD_SECTION)
            m_findings.warn(
                "section-head",
                QString::fromLatin1("the entries of a section \"head\" are taken for values of the "
                                    "header"),
                line);
        const auto known = m_sectionIds.constFind(name);
        if (known == m_sectionIds.constEnd()) {
            m_section = int(m_sections.size());
            m_sectionIds.insert(name, m_section);
            m_sections.push_back({name, line, {}, false});
        } else {
            m_section = *known;
            m_findings.note("section-in-several-blocks",
                            QLatin1String("section ") % quoted(name) %
                                QLatin1String(" stands in line ") %
                                m_findings.lineOf(m_sections[std::size_t(m_section)].firstLine) %
                                QLatin1String(", too; they are read as one"),
                            line);
        }
    }

    void addEntry(const QString &, QStringView key, QStringView value)
    {
        const QStringView line(key.begin(), value.isNull() ? key.end() : value.end());
        m_sections[std::size_t(m_section)].hasEntries = true;
        if (isIndentedMark(line, "is an entry"))
            return;
        if (value.isNull())
            m_findings.note("key-without-equals",
                            QLatin1String("no \"=\" behind the key ") % quoted(key), key);
        if (key.isEmpty())
            m_findings.warn("no-key", QString::fromLatin1("no key before the \"=\""), line);
        if (hasBlanksAround(key))
            m_findings.warn("blanks-around-key",
                            QString::fromLatin1("blanks at the ends belong to the key"), key);
        if (hasBlanksAround(value))
            m_findings.warn("blanks-around-value",
                            QString::fromLatin1("blanks at the ends belong to the value"), value);
        const auto known = m_keys.constFind({m_section, key});
        if (known == m_keys.constEnd())
            m_keys.insert({m_section, key}, line);
        else
            m_findings.note("key-repeated",
                            QLatin1String("key ") % quoted(key) %
                                QLatin1String(" stands in line ") % m_findings.lineOf(*known) %
                                QLatin1String(", too; the last value counts as the first one"),
                            line);
    }

    void endSection(QStringView line)
    {
        const QStringView name = internal::nameOfEnd(line);
        if (!name.isNull()) // null where the line ends with the mark
            checkMark(line, name);
        QStringView &lastLine = m_sections[std::size_t(m_section)].lastLine;
        if (lastLine.isNull())
            lastLine = line;
    }

    void fault(ConfigFault fault, QStringView where)
    {
        QStringView line = where;
        const char *code = nullptr;
        switch (fault) {
        case ConfigFault::SectionInsideSection:
            // Whether it ends further on, after this one, or never: this is the fault.
            m_outer.insert(internal::nameOfStart(m_start));
            code = "section-inside-section";
            break;
        case ConfigFault::EndWithoutSection:
            if (m_outer.remove(internal::nameOfEnd(line)))
                return;
            code = "end-without-section";
            break;
        case ConfigFault::EndOfAnotherSection:
            m_outer.remove(internal::nameOfEnd(line));
            code = "end-of-another-section";
            break;
        case ConfigFault::EntryOutsideSection: // strayLine() tells
            return;
        case ConfigFault::EndMissing:
            code = "section-not-closed";
            line = m_start;
            break;
        }
        m_isRefused = true;
        m_findings.add(Severity::Error, code, internal::textOf(fault, where), line);
    }

    /** All has been read. */
    void end(QStringView text)
    {
        for (const Section &section : m_sections) {
            if (!section.hasEntries)
                m_findings.warn("empty-section",
                                QString::fromLatin1("a section without entries is not kept"),
                                section.firstLine);
        }
        if (!m_isRefused)
            checkNames(text);
    }

private:
    struct Section
    {
        QStringView name;
        QStringView firstLine; // of its first block, like the other one
        QStringView lastLine;
        bool hasEntries;
    };

    /** The character that parts the mark of a line from the name is lost, whatever it is. */
    void checkMark(QStringView line, QStringView name)
    {
        const QStringView parting = line.mid(name.begin() - line.begin() - 1, 1);
        if (parting.front() != QLatin1Char(' '))
            m_findings.warn("no-blank-before-name",
                            QLatin1String("not a blank, but ") % quoted(parting) %
                                QLatin1String(" is between the word and the name ") % quoted(name),
                            parting);
    }

    /** A line that would begin or end a section, were it not for its blanks. */
    bool isIndentedMark(QStringView line, const char *instead)
    {
        const QStringView word = line.trimmed();
        const LineKind kind = internal::kindOf(word);
        if (word.begin() == line.begin() ||
            (kind != LineKind::SectionStart && kind != LineKind::SectionEnd))
            return false;
        m_findings.warn("blank-before-section",
                        QLatin1String("with a blank before it, the line ") % QLatin1String(instead),
                        line);
        return true;
    }

    /** Names that a search for the words of their lines finds elsewhere. */
    void checkNames(QStringView text)
    {
        std::vector<NamedSection> names;
        for (const Section &section : m_sections) {
            // Others are never found, and have been told.
            if (beginsWith(section.firstLine, internal::kStartOfLine) &&
                beginsWith(section.lastLine, internal::kEndOfLine))
                names.push_back({section.name,
                                 m_findings.places().offsetOf(section.firstLine.begin()),
                                 m_findings.places().offsetOf(section.lastLine.begin())});
        }
        internal::findMistakenNames(text, names);
        for (const NamedSection &section : names) {
            if (section.mistaken >= 0)
                m_findings.warn("mistaken-name",
                                QLatin1String("where section ") % quoted(section.name) %
                                    QLatin1String(" is replaced as a text, line ") %
                                    m_findings.lineOf(text.mid(section.mistaken, 0)) %
                                    QLatin1String(" would be taken for it"),
                                section.name);
        }
    }

    FindingList &m_findings;
    VanteroConfigText::Form m_form;
    HeaderCheck m_header;
    QStringView m_start;       // the first line of the last section
    QSet<QStringView> m_outer; // sections in which others were opened
    std::vector<Section> m_sections;
    QHash<QStringView, int> m_sectionIds;
    QHash<QPair<int, QStringView>, QStringView> m_keys; // with their first lines
    int m_section = -1;
    bool m_isRefused = false;
};

} // namespace

Findings VanteroConfigText::findings() const
{
    const QString text = m_data->text();
    FindingList findings(text);
    CharacterCheck(text, findings).run();

    MemoryLines lines(text);
    Linter linter(findings, m_data->form());
    if (m_data->form() == Form::Configuration) {
        (void)internal::readHeader(lines, linter); // the linter knows more than the result
        linter.headerEnd();
    }
    internal::readSections(lines, linter);
    linter.end(text);
    return findings.take();
}

} // namespace vn
