// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_CONFIGTEXTREADER_P_H
#define VN_CONFIG_CONFIGTEXTREADER_P_H

/**
 * @file The reader of configuration texts: header block and section blocks.
 *
 * It is written once over any source of lines (TextLines_p.h). What it finds goes to a sink, which
 * has the functions of ConfigSink and hides those that it is interested in. Over lines in memory
 * all views that a sink gets lie in the text, so they tell the places, too.
 */

#include "config/ConfigSyntax_p.h"

namespace vn::internal {

/** The key under which a configuration has the value, in the section of the header. */
const QString &keyOf(HeaderField field);

/** What is wrong with a text that the reader refuses. */
enum class ConfigFault {
    SectionInsideSection,
    EndWithoutSection,
    EndOfAnotherSection,
    EntryOutsideSection,
    EndMissing,
};

/** The fault in words; @p where is the line, for EndMissing the name of the section. */
QString textOf(ConfigFault fault, QStringView where);

/** @throws ParseException with textOf() and without a position */
[[noreturn]] void raise(ConfigFault fault, QStringView where);

/** @throws IOException */
[[noreturn]] void raiseReadPastEnd();

/** What the reader tells; nobody listens here, and faults are raised. */
struct ConfigSink
{
    /** Each line of the header, its last and empty one included. */
    void headerLine(QStringView) {}
    /** A value in the header line told before. */
    void headerValue(HeaderField, QStringView /*value*/) {}

    void comment(QStringView) {}
    /** An entry outside of sections, which is passed over. */
    void strayLine(QStringView) {}
    /** The first line of a section; without a name it opens none. */
    void beginSection(QStringView /*name*/, QStringView /*line*/) {}
    void addEntry(const QString & /*section*/, QStringView /*key*/, QStringView /*value*/) {}
    /** The last line of the section. */
    void endSection(QStringView /*line*/) {}

    /**
     * A fault. Where a sink returns, the reader goes on: an open section ends where another one
     * begins and with any last line, and a last line without a section is passed over.
     */
    void fault(ConfigFault fault, QStringView where) { raise(fault, where); }
};

/** Reads the header block; returns whether both version lines were found. */
template <typename Lines, typename Sink>
bool readHeader(Lines &lines, Sink &sink)
{
    bool complete = true;
    QStringView line;
    if (!lines.atEnd()) {
        (void)lines.readLine(line); // a line that cannot be read counts as an empty one
        sink.headerLine(line);
        complete = beginsWith(line, kVersionMark);
        if (complete)
            sink.headerValue(HeaderField::FileVersion, fileVersionOf(line));
    }
    if (!lines.atEnd()) {
        (void)lines.readLine(line);
        sink.headerLine(line);
        if (beginsWith(line, kVersionMark))
            sink.headerValue(HeaderField::SoftwareVersion, softwareVersionOf(line));
        else
            complete = false;
    }
    while (!lines.atEnd()) {
        (void)lines.readLine(line);
        sink.headerLine(line);
        if (line.isEmpty())
            break;
        QStringView address;
        if (readAddress(line, address))
            sink.headerValue(HeaderField::FactoryIp, address);
    }
    return complete;
}

/** The same for who wants the values alone: @p use gets each field and its value. */
template <typename Lines, typename Use>
bool readHeaderValues(Lines &lines, Use use)
{
    struct Sink : ConfigSink
    {
        void headerValue(HeaderField field, QStringView value) { m_use(field, value); }
        Use &m_use;
    };
    Sink sink{{}, use};
    return readHeader(lines, sink);
}

/** Reads up to the end of the next section block and returns its name; null when there is none. */
template <typename Lines, typename Sink>
QString readSection(Lines &lines, bool ignoreStrayLines, Sink &sink)
{
    QString name; // empty while no section is open
    for (;;) {
        if (lines.atEnd()) {
            if (!name.isEmpty())
                sink.fault(ConfigFault::EndMissing, name);
            return QString();
        }
        QStringView line;
        if (!lines.readLine(line))
            raiseReadPastEnd();
        switch (kindOf(line)) {
        case LineKind::Empty:
            break;
        case LineKind::Comment:
            sink.comment(line);
            break;
        case LineKind::SectionStart:
            if (!name.isEmpty())
                sink.fault(ConfigFault::SectionInsideSection, line);
            name = toText(nameOfStart(line));
            sink.beginSection(nameOfStart(line), line);
            break;
        case LineKind::SectionEnd:
            if (name.isEmpty()) {
                sink.fault(ConfigFault::EndWithoutSection, line);
                break;
            }
            if (nameOfEnd(line) != name)
                sink.fault(ConfigFault::EndOfAnotherSection, line);
            sink.endSection(line);
            return name;
        case LineKind::Entry:
            if (!name.isEmpty()) {
                const EntryLine entry(line);
                sink.addEntry(name, entry.key, entry.value);
            } else if (ignoreStrayLines) {
                sink.strayLine(line);
            } else {
                sink.fault(ConfigFault::EntryOutsideSection, line);
            }
            break;
        }
    }
}

/** Reads all section blocks up to the end of the text; what stands between them is skipped. */
template <typename Lines, typename Sink>
void readSections(Lines &lines, Sink &sink)
{
    while (!readSection(lines, true, sink).isEmpty()) {
    }
}

} // namespace vn::internal

#endif // VN_CONFIG_CONFIGTEXTREADER_P_H
