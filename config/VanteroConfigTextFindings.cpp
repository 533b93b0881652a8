// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigTextFindings_p.h"

#include "config/ConfigTextReader_p.h"
#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigTextData_p.h"
#include "config/VanteroConfigTextNames_p.h"

#include <QtCore/QHash>
#include <QtCore/QPair>
#include <QtCore/QSet>

namespace vn {

namespace {

using internal::ConfigFault;
using internal::FindingList;
using internal::hasBlanksAround;
using internal::HeaderField;
using internal::LineKind;
using internal::NamedSection;
using internal::quoted;

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
            internal::beginsWith(line, internal::kAddressMark))
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
        m_findings.add(Finding::Severity::Error, code, internal::textOf(fault, where), line);
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
            if (internal::beginsWith(section.firstLine, internal::kStartOfLine) &&
                internal::beginsWith(section.lastLine, internal::kEndOfLine))
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
    internal::HeaderCheck m_header;
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
    internal::findCharacters(text, findings);

    internal::MemoryLines lines(text);
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
