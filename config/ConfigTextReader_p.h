// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_CONFIGTEXTREADER_P_H
#define VN_CONFIG_CONFIGTEXTREADER_P_H

/**
 * @file The reader of configuration texts: header block, section blocks, `key=value` lines.
 *
 * It is written once over any source of lines (TextLines_p.h); what it finds goes to a sink:
 * - headers: `sink(key, value)` with the published header key and the value as a view;
 * - sections: `sink.beginSection(name)` at each opening line, `sink.addEntry(name, key, value)`.
 */

#include "config/TextLines_p.h"
#include "config/VanteroConfigFile.h"

namespace vn {

/** What the reader says of malformed texts; all exceptions it raises come from here. */
namespace configError {

[[noreturn]] void readPastEnd();
[[noreturn]] void sectionInsideSection(QStringView line);
[[noreturn]] void endWithoutSection(QStringView line);
[[noreturn]] void endOfAnotherSection(QStringView line);
[[noreturn]] void entryOutsideSection(QStringView line);
[[noreturn]] void endMissing(const QString &section);

} // namespace configError

/** The two parts of an entry line: up to the first "=", and after it (null where there is none). */
struct EntryLine
{
    explicit EntryLine(QStringView line)
    {
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        key = equals < 0 ? line : line.left(equals);
        if (equals >= 0)
            value = line.mid(equals + 1);
    }

    QStringView key;
    QStringView value;
};

/** Reads the header block; returns whether both version lines were found. */
template <typename Lines, typename Sink>
bool readHeader(Lines &lines, Sink &&sink)
{
    constexpr char16_t versionMark[] = u"#:";
    constexpr char16_t addressMark[] = u"# Camera IP: ";
    const QLatin1String titleMark("Configuration of");

    bool complete = true;
    QStringView line;
    if (!lines.atEnd()) {
        (void)lines.readLine(line); // a line that cannot be read counts as an empty one
        complete = beginsWith(line, versionMark);
        if (complete) {
            const qsizetype equals = line.indexOf(QLatin1Char('='));
            sink(VanteroConfigFile::FILE_VERSION,
                 equals < 0 ? line.mid(2) : line.mid(2, equals - 2));
        }
    }
    if (!lines.atEnd()) {
        (void)lines.readLine(line);
        if (beginsWith(line, versionMark))
            sink(VanteroConfigFile::SOFTWARE_VERSION, line.mid(2));
        else
            complete = false;
    }
    while (!lines.atEnd()) {
        (void)lines.readLine(line);
        if (line.isEmpty())
            break;
        if (beginsWith(line, addressMark)) {
            // Kept on purpose: this address is not trimmed, that of the title line is.
            sink(VanteroConfigFile::FACTORY_IP, line.mid(13));
            continue;
        }
        // Kept on purpose: a title at the very start of the line is none.
        const qsizetype title = line.indexOf(titleMark);
        if (title > 0)
            sink(VanteroConfigFile::FACTORY_IP,
                 textFrom(line, title + titleMark.size() + 1).trimmed());
    }
    return complete;
}

/** Reads up to the end of the next section block and returns its name; null when there is none. */
template <typename Lines, typename Sink>
QString readSection(Lines &lines, bool ignoreStrayLines, Sink &sink)
{
    QString name; // empty while no section is open
    for (;;) {
        if (lines.atEnd()) {
            if (!name.isEmpty())
                configError::endMissing(name);
            return QString();
        }
        QStringView line;
        if (!lines.readLine(line))
            configError::readPastEnd();
        if (line.isEmpty() || line.front() == QLatin1Char('#'))
            continue;
        if (beginsWith(line, u"SECTION")) {
            if (!name.isEmpty())
                configError::sectionInsideSection(line);
            name = toText(textFrom(line, 8));
            sink.beginSection(name);
        } else if (beginsWith(line, u"ENDSECTION")) {
            if (name.isEmpty())
                configError::endWithoutSection(line);
            if (textFrom(line, 11) != name)
                configError::endOfAnotherSection(line);
            return name;
        } else if (!name.isEmpty()) {
            const EntryLine entry(line);
            sink.addEntry(name, entry.key, entry.value);
        } else if (!ignoreStrayLines) {
            configError::entryOutsideSection(line);
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

} // namespace vn

#endif // VN_CONFIG_CONFIGTEXTREADER_P_H
