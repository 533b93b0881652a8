// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigTextReader_p.h"
#include "config/TextPlaces_p.h"
#include "config/VanteroConfigTextData_p.h"

namespace vn {

namespace {

/** A sink of the text reader that notes what is wrong. */
class Linter : public internal::ConfigSink
{
public:
    explicit Linter(QStringView text)
        : m_places(text)
    {
    }

    Findings take() { return std::move(m_findings); }

    void beginSection(QStringView, QStringView line) { m_start = line; }

    void fault(internal::ConfigFault fault, QStringView where)
    {
        const char *code = "entry-outside-section";
        QStringView line = where;
        switch (fault) {
        case internal::ConfigFault::SectionInsideSection:
            code = "section-inside-section";
            break;
        case internal::ConfigFault::EndWithoutSection:
            code = "end-without-section";
            break;
        case internal::ConfigFault::EndOfAnotherSection:
            code = "end-of-another-section";
            break;
        case internal::ConfigFault::EntryOutsideSection:
            break;
        case internal::ConfigFault::EndMissing:
            code = "section-not-closed";
            line = m_start;
            break;
        }
        m_findings += {Finding::Severity::Error, QString::fromLatin1(code),
                       internal::textOf(fault, where), m_places.rangeOf(line)};
    }

private:
    internal::TextPlaces m_places;
    Findings m_findings;
    QStringView m_start; // the first line of the last section
};

} // namespace

Findings VanteroConfigText::findings() const
{
    const QString text = m_data->text();
    MemoryLines lines(text);
    Linter linter(text);
    if (m_data->form() == Form::Configuration)
        (void)internal::readHeader(lines, linter);
    internal::readSections(lines, linter);
    return linter.take();
}

} // namespace vn
