// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/Exceptions.h"
#include "config/ConfigTextReader_p.h"
#include "config/TextPlaces_p.h"
#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigTextData_p.h"

#include <QtCore/QHash>

namespace vn {

namespace {

using internal::HeaderField;

/** A sink of the text reader that notes what stands where; a fault ends the reading. */
class Outliner : public internal::ConfigSink
{
public:
    using Outline = VanteroConfigText::Outline;

    explicit Outliner(QStringView text)
        : m_places(text)
    {
    }

    Outline take() { return std::move(m_outline); }

    void isComplete(bool complete) { m_outline.header.isComplete = complete; }

    void headerLine(QStringView line)
    {
        m_line = line;
        const TextRange range = m_places.rangeOf(line);
        TextRange &header = m_outline.header.range;
        header.length = range.offset + range.length;
        header.endLine = range.endLine;
        header.endColumn = range.endColumn;
        if (internal::kindOf(line) == internal::LineKind::Comment)
            m_outline.header.comments += {line.toString(), range};
    }

    void headerValue(HeaderField field, QStringView value)
    {
        // A line that says a value is no mere comment.
        auto &comments = m_outline.header.comments;
        if (!comments.isEmpty() &&
            comments.last().range.offset == m_places.offsetOf(m_line.begin()))
            comments.removeLast();
        const QStringView shown = value.isNull() ? m_line.right(0) : value;
        m_outline.header.values +=
            {internal::keyOf(field), internal::toText(value), m_places.rangeOf(m_line),
             m_places.range(m_line.begin(), shown.begin()), m_places.rangeOf(shown)};
    }

    void comment(QStringView line)
    {
        VanteroConfigText::Block *const block = openBlock();
        (block ? block->comments : m_outline.comments) += {line.toString(), m_places.rangeOf(line)};
        extend(line);
    }

    void beginSection(QStringView name, QStringView line)
    {
        if (name.isEmpty())
            return;
        const auto known = m_sections.constFind(name);
        if (known == m_sections.constEnd()) {
            m_open = m_outline.sections.size();
            m_sections.insert(name, m_open);
            m_outline.sections += {name.toString(), {}};
        } else {
            m_open = *known;
        }
        m_outline.sections[m_open].blocks +=
            {m_places.rangeOf(line), m_places.rangeOf(name), {}, {}};
    }

    void addEntry(const QString &, QStringView key, QStringView value)
    {
        const QStringView shown = value.isNull() ? key.right(0) : value;
        const QStringView line(key.begin(), shown.end());
        openBlock()->entries += {key.toString(), internal::toText(value), m_places.rangeOf(line),
                                 m_places.rangeOf(key), m_places.rangeOf(shown)};
        extend(line);
    }

    void endSection(QStringView line)
    {
        extend(line);
        m_open = -1;
    }

private:
    VanteroConfigText::Block *openBlock()
    {
        return m_open < 0 ? nullptr : &m_outline.sections[m_open].blocks.last();
    }

    /** The open block reaches to the end of this line. */
    void extend(QStringView line)
    {
        if (VanteroConfigText::Block *const block = openBlock()) {
            const TextRange range = m_places.rangeOf(line);
            block->range.length = range.offset + range.length - block->range.offset;
            block->range.endLine = range.endLine;
            block->range.endColumn = range.endColumn;
        }
    }

    internal::TextPlaces m_places;
    Outline m_outline;
    QHash<QStringView, int> m_sections;
    QStringView m_line; // of the header
    int m_open = -1;    // the section that is open
};

} // namespace

VanteroConfigText::Outline VanteroConfigText::outline() const
{
    const QString text = m_data->text();
    internal::MemoryLines lines(text);
    Outliner outliner(text);
    try {
        outliner.isComplete(m_data->form() == Form::ImageComment ||
                            internal::readHeader(lines, outliner));
        internal::readSections(lines, outliner);
    } catch (const ParseException &) {
        // what was found before it stays
    }
    return outliner.take();
}

} // namespace vn
