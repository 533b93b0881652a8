// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigTextData_p.h"

#include "base/Exceptions.h"
#include "config/ConfigTextReader_p.h"
#include "config/TextPlaces_p.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QStringBuilder>

#include <algorithm>

namespace vn::internal {

namespace {

using Outcome = VanteroConfigText::Outcome;
using Result = VanteroConfigText::Result;

Result refused(const QString &reason)
{
    return {Outcome::Refused, reason};
}

Result refused(const char *reason)
{
    return refused(QString::fromLatin1(reason));
}

QString quoted(const QString &text)
{
    return QLatin1Char('"') % text % QLatin1Char('"');
}

bool holdsLineBreak(const QString &text)
{
    return text.contains(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r'));
}

Result checkName(const QString &section)
{
    if (section.isEmpty())
        return refused("a section needs a name");
    if (holdsLineBreak(section))
        return refused("the name of a section cannot hold a line break");
    return {};
}

/** Whether a line can say the entry. */
Result checkEntry(const QString &key, const QString &value)
{
    if (holdsLineBreak(key))
        return refused("a key cannot hold a line break");
    if (key.contains(kValueMark))
        return refused("a key cannot hold \"=\"");
    if (holdsLineBreak(value))
        return refused("a value cannot hold a line break");
    switch (kindOf(key)) {
    case LineKind::Empty:
        if (value.isNull())
            return refused("an entry without a key needs a value");
        break;
    case LineKind::Comment:
        return refused("a key cannot begin with \"#\", which begins a comment");
    case LineKind::SectionStart:
        return refused("a key cannot begin with \"SECTION\"");
    case LineKind::SectionEnd:
        return refused("a key cannot begin with \"ENDSECTION\"");
    case LineKind::Entry:
        break;
    }
    return {};
}

} // namespace

// ---- The index ---------------------------------------------------------------------------------

/** A sink of the text reader that fills the index; a fault ends the reading. */
class ConfigTextData::Indexer : public ConfigSink
{
public:
    explicit Indexer(ConfigTextData &data)
        : m_data(data)
    {
    }

    void headerLine(QStringView line) { m_data.m_header.push_back(line); }

    void headerValue(HeaderField field, QStringView value)
    {
        const QStringView line = m_data.m_header.back();
        if (field == HeaderField::FactoryIp)
            m_data.m_addresses.push_back(line);
        int &entry = m_data.m_headerEntries[std::size_t(field)];
        if (entry == kNone) {
            const int head = m_data.makeSection(VanteroConfigFile::HEAD_SECTION);
            entry = m_data.makeEntry(head, kNone, keyOf(field), value, line);
        } else { // a later address replaces an earlier one
            Entry &known = m_data.m_entries[std::size_t(entry)];
            known.value = known.originalValue = value;
            known.line = line;
        }
    }

    void beginSection(QStringView name, QStringView line)
    {
        m_start = line;
        if (!name.isEmpty())
            m_block = m_data.makeBlock(m_data.makeSection(name), line);
    }

    void addEntry(const QString &, QStringView key, QStringView value)
    {
        const QStringView line(key.begin(), value.isNull() ? key.end() : value.end());
        const int section = m_data.m_blocks[std::size_t(m_block)].section;
        (void)m_data.makeEntry(section, m_block, key, value, line);
    }

    void endSection(QStringView line) { m_data.m_blocks[std::size_t(m_block)].lastLine = line; }

    void fault(ConfigFault fault, QStringView where)
    {
        const QStringView line = fault == ConfigFault::EndMissing ? m_start : where;
        m_data.m_faultLine = TextPlaces(m_data.m_original).rangeOf(line).line;
        raise(fault, where);
    }

private:
    ConfigTextData &m_data;
    QStringView m_start; // the first line of the last section
    int m_block = kNone;
};

ConfigTextData::ConfigTextData(const QString &text, Form form)
    : m_original(text)
    , m_form(form)
{
    MemoryLines lines(m_original);
    Indexer indexer(*this);
    try {
        if (form == Form::Configuration)
            (void)readHeader(lines, indexer); // whether it is complete does not matter here
        readSections(lines, indexer);
    } catch (const ParseException &e) {
        m_fault = e.message();
    }
}

QStringView ConfigTextData::keep(const QString &text)
{
    m_kept += text;
    return m_kept.constLast();
}

int ConfigTextData::makeSection(QStringView name)
{
    const auto known = m_sectionIds.constFind(name);
    if (known != m_sectionIds.constEnd())
        return *known;
    const int id = int(m_sections.size());
    m_sections.emplace_back();
    m_sections.back().name = name.toString();
    m_sectionIds.insert(name, id);
    return id;
}

int ConfigTextData::makeBlock(int section, QStringView firstLine)
{
    const int id = int(m_blocks.size());
    int &last = m_sections[std::size_t(section)].lastBlock;
    m_blocks.push_back({section, last, firstLine, {}});
    last = id;
    return id;
}

int ConfigTextData::makeEntry(int section, int block, QStringView key, QStringView value,
                              QStringView line)
{
    const int id = int(m_entries.size());
    const auto known = m_newest.find({section, key});
    m_entries.push_back({block, known == m_newest.end() ? kNone : *known, key, value, line, value});
    if (known == m_newest.end())
        m_newest.insert({section, key}, id);
    else
        *known = id;
    ++m_sections[std::size_t(section)].count;
    return id;
}

// ---- Lookups -----------------------------------------------------------------------------------

int ConfigTextData::newest(const QString &section, const QString &key) const
{
    const int id = m_sectionIds.value(section, kNone);
    return id == kNone ? kNone : m_newest.value({id, key}, kNone);
}

int ConfigTextData::entryAt(const QString &section, const QString &key, int index) const
{
    int entry = newest(section, key);
    for (; entry != kNone && index > 0; --index)
        entry = m_entries[std::size_t(entry)].older;
    return entry;
}

const ConfigTextData::Section *ConfigTextData::existing(const QString &section) const
{
    const int id = m_sectionIds.value(section, kNone);
    return id == kNone ? nullptr : &m_sections[std::size_t(id)];
}

bool ConfigTextData::containsSection(const QString &section) const
{
    const Section *const found = existing(section);
    return found && found->count > 0;
}

QString ConfigTextData::value(const QString &section, const QString &key, int index) const
{
    const int entry = entryAt(section, key, index);
    return entry == kNone ? QString() : toText(m_entries[std::size_t(entry)].value);
}

QStringList ConfigTextData::values(const QString &section, const QString &key) const
{
    QStringList result;
    for (int i = newest(section, key); i != kNone; i = m_entries[std::size_t(i)].older)
        result += toText(m_entries[std::size_t(i)].value);
    return result;
}

// ---- Edits -------------------------------------------------------------------------------------

Result ConfigTextData::malformed() const
{
    if (m_fault.isNull())
        return {};
    return refused(QLatin1String("the text is malformed in line ") % QString::number(m_faultLine) %
                   QLatin1String(": ") % m_fault);
}

Result ConfigTextData::missing(const QString &section, const QString &key, int index) const
{
    QString reason;
    if (!existing(section))
        reason = QLatin1String("no section ") % quoted(section);
    else if (newest(section, key) == kNone)
        reason = QLatin1String("no key ") % quoted(key) % QLatin1String(" in section ") %
                 quoted(section);
    else
        reason = QLatin1String("key ") % quoted(key) % QLatin1String(" in section ") %
                 quoted(section) % QLatin1String(" has no value with the index ") %
                 QString::number(index);
    return {Outcome::NotFound, reason};
}

int ConfigTextData::headerField(int entry) const
{
    const auto found = std::find(m_headerEntries.begin(), m_headerEntries.end(), entry);
    return found == m_headerEntries.end() ? kNone : int(found - m_headerEntries.begin());
}

bool ConfigTextData::isVersionLine(int entry) const
{
    const int field = headerField(entry);
    return field == int(HeaderField::FileVersion) || field == int(HeaderField::SoftwareVersion);
}

/** Whether the line of the header can say the value. */
Result ConfigTextData::checkHeader(int entry, const QString &value) const
{
    if (holdsLineBreak(value))
        return refused("a value cannot hold a line break");
    const int field = headerField(entry);
    if (field == int(HeaderField::FileVersion) && value.contains(kValueMark))
        return refused("the file version of the header cannot hold \"=\"");
    const QStringView line = m_entries[std::size_t(entry)].line;
    if (field == int(HeaderField::FactoryIp) && !line.isNull() && !beginsWith(line, kAddressMark) &&
        value != value.trimmed())
        return refused("an address in a title of the header cannot begin or end with a blank");
    return {};
}

Result ConfigTextData::setValue(const QString &section, const QString &key, const QString &value,
                                int index)
{
    if (Result result = malformed(); !result)
        return result;
    const int found = entryAt(section, key, index);
    if (found == kNone)
        return index > 0 ? missing(section, key, index) : add(section, key, value, true);

    const bool isHeader = headerField(found) != kNone;
    if (Result result = isHeader ? checkHeader(found, value) : checkEntry(key, value); !result)
        return result;
    const QStringView kept = keep(isHeader && value.isNull() ? QString::fromLatin1("") : value);
    m_entries[std::size_t(found)].value = kept;
    touch(found);
    return {};
}

Result ConfigTextData::addValue(const QString &section, const QString &key, const QString &value)
{
    if (Result result = malformed(); !result)
        return result;
    return add(section, key, value, false);
}

Result ConfigTextData::add(const QString &section, const QString &key, const QString &value,
                           bool mayBeHeader)
{
    if (Result result = checkName(section); !result)
        return result;
    if (Result result = checkEntry(key, value); !result)
        return result;

    const int id = makeSection(existing(section) ? QStringView(section) : keep(section));
    const QStringView keptKey = keep(key);
    if (mayBeHeader && section == VanteroConfigFile::HEAD_SECTION &&
        key == VanteroConfigFile::FACTORY_IP && placeOfNewAddress()) {
        const QStringView kept = keep(value.isNull() ? QString::fromLatin1("") : value);
        m_headerEntries[std::size_t(HeaderField::FactoryIp)] =
            makeEntry(id, kNone, keptKey, kept, {});
        return {};
    }
    int block = m_sections[std::size_t(id)].lastBlock;
    if (block == kNone)
        block = makeBlock(id, {});
    const int entry = makeEntry(id, block, keptKey, keep(value), {});
    m_blocks[std::size_t(block)].added.push_back(entry);
    m_touchedBlocks.push_back(block);
    return {};
}

void ConfigTextData::touch(int entry)
{
    Entry &touched = m_entries[std::size_t(entry)];
    if (!touched.isTouched)
        m_touchedEntries.push_back(entry);
    touched.isTouched = true;
}

/** Takes the entry out of the text; its key is the caller's. */
void ConfigTextData::remove(int entry)
{
    Entry &removed = m_entries[std::size_t(entry)];
    removed.isRemoved = true;
    if (const int field = headerField(entry); field != kNone) {
        m_areAddressesRemoved = m_areAddressesRemoved || !removed.line.isNull();
        m_headerEntries[std::size_t(field)] = kNone;
    } else {
        touch(entry);
    }
}

Result ConfigTextData::removeValue(const QString &section, const QString &key, int index)
{
    if (Result result = malformed(); !result)
        return result;
    const int found = entryAt(section, key, index);
    if (found == kNone)
        return missing(section, key, index);
    if (isVersionLine(found))
        return refused("the version lines of the header cannot be removed");

    const int id = m_sectionIds.value(section);
    const int older = m_entries[std::size_t(found)].older;
    int newer = newest(section, key);
    if (newer != found) {
        while (m_entries[std::size_t(newer)].older != found)
            newer = m_entries[std::size_t(newer)].older;
        m_entries[std::size_t(newer)].older = older;
    } else if (older != kNone) {
        m_newest[{id, key}] = older;
    } else {
        m_newest.remove({id, key});
    }
    --m_sections[std::size_t(id)].count;
    remove(found);
    return {};
}

Result ConfigTextData::removeKey(const QString &section, const QString &key)
{
    if (Result result = malformed(); !result)
        return result;
    const int first = newest(section, key);
    if (first == kNone)
        return missing(section, key, 0);
    for (int i = first; i != kNone; i = m_entries[std::size_t(i)].older) {
        if (isVersionLine(i))
            return refused("the version lines of the header cannot be removed");
    }
    const int id = m_sectionIds.value(section);
    for (int i = first; i != kNone; i = m_entries[std::size_t(i)].older) {
        --m_sections[std::size_t(id)].count;
        remove(i);
    }
    m_newest.remove({id, key});
    return {};
}

Result ConfigTextData::removeSection(const QString &section)
{
    if (Result result = malformed(); !result)
        return result;
    const Section *const found = existing(section);
    if (!found)
        return missing(section, QString(), 0);
    if (section == VanteroConfigFile::HEAD_SECTION) {
        for (const int entry : m_headerEntries) {
            if (entry != kNone && isVersionLine(entry))
                return refused("the version lines of the header cannot be removed");
        }
        const int address = m_headerEntries[std::size_t(HeaderField::FactoryIp)];
        if (address != kNone)
            remove(address);
    }
    for (int i = found->lastBlock; i != kNone; i = m_blocks[std::size_t(i)].previous) {
        m_blocks[std::size_t(i)].isRemoved = true;
        m_touchedBlocks.push_back(i);
    }
    m_sectionIds.remove(section); // and with it the way to its entries
    return {};
}

Result ConfigTextData::addSection(const QString &section, const VanteroConfigMap::Section &content)
{
    if (Result result = malformed(); !result)
        return result;
    if (Result result = checkName(section); !result)
        return result;
    if (const Section *const found = existing(section);
        found && (found->lastBlock != kNone || found->count > 0))
        return refused(QLatin1String("there is a section ") % quoted(section) %
                       QLatin1String(" already"));
    for (auto it = content.begin(); it != content.end(); ++it) {
        if (Result result = checkEntry(it.key(), it.value()); !result)
            return result;
    }
    (void)makeBlock(makeSection(keep(section)), {});
    const QStringList keys = content.uniqueKeys();
    for (const QString &key : keys) {
        const QStringList values = content.values(key);
        for (auto it = values.rbegin(); it != values.rend(); ++it) // the newest is read last
            (void)add(section, key, *it, false);                   // checked above
    }
    return {};
}

// ---- The text with its edits -------------------------------------------------------------------

const QChar *ConfigTextData::endOfLine(QStringView line) const
{
    const QChar *const textEnd = m_original.constEnd();
    const QChar *end = line.end();
    if (end != textEnd && *end == QLatin1Char('\r'))
        ++end;
    if (end != textEnd && *end == QLatin1Char('\n'))
        ++end;
    return end;
}

QString ConfigTextData::lineEndOf(QStringView line) const
{
    return QStringView(line.end(), endOfLine(line)).toString();
}

/** The line end of the text's first line; "\n" when it has none. */
QString ConfigTextData::lineEnd() const
{
    const int at = m_original.indexOf(QLatin1Char('\n'));
    return at > 0 && m_original.at(at - 1) == QLatin1Char('\r') ? QString::fromLatin1("\r\n")
                                                                : QString::fromLatin1("\n");
}

/** Where the header takes a line with an address: behind its title, the third line, or behind the
 * version lines; null where it has no such place. */
const QChar *ConfigTextData::placeOfNewAddress() const
{
    if (m_header.size() < kVersionLines)
        return nullptr;
    const bool hasTitle = m_header.size() > kVersionLines && !m_header[kVersionLines].isEmpty();
    for (int line = hasTitle ? kVersionLines : kVersionLines - 1; line >= kVersionLines - 1;
         --line) {
        const QChar *const end = endOfLine(m_header[std::size_t(line)]);
        if (end[-1] == QLatin1Char('\n'))
            return end;
    }
    return nullptr;
}

VanteroConfigText::Splice ConfigTextData::splice(const QChar *begin, const QChar *end,
                                                 const QString &text) const
{
    Splice result;
    result.range.offset = begin - m_original.constBegin();
    result.range.length = end - begin;
    result.text = text;
    return result;
}

/** The splice for a line of the original text that has another value now, or is removed. */
void ConfigTextData::addChange(const Entry &entry, std::vector<Splice> &splices) const
{
    const QStringView before = entry.originalValue;
    const QStringView line = entry.line;
    if (entry.isRemoved) {
        splices.push_back(splice(line.begin(), endOfLine(line), QString()));
    } else if (before.isNull() && !entry.value.isNull()) {
        // An address may be missing in a title, where one character parts it from the words.
        const QString parted =
            entry.block == kNone ? QString::fromLatin1(" ") : QString(kValueMark);
        splices.push_back(splice(line.end(), line.end(), parted + entry.value.toString()));
    } else if (!before.isNull() && entry.value.isNull()) {
        splices.push_back(splice(before.begin() - 1, before.end(), QString()));
    } else if (before != entry.value) {
        splices.push_back(splice(before.begin(), before.end(), entry.value.toString()));
    }
}

/** The lines that have been added to the block. */
QString ConfigTextData::added(const Block &block, const QString &lineEnd) const
{
    QString lines;
    for (const int id : block.added) {
        const Entry &entry = m_entries[std::size_t(id)];
        if (entry.isRemoved)
            continue;
        lines += entry.key;
        if (!entry.value.isNull())
            lines += kValueMark + entry.value.toString();
        lines += lineEnd;
    }
    return lines;
}

/** The blocks that have been added at the end, with what must stand before them. */
QString ConfigTextData::newBlocks() const
{
    const QString newLine = lineEnd();
    QString blocks;
    for (const Block &block : m_blocks) {
        if (!block.firstLine.isNull() || block.isRemoved)
            continue;
        const QString &name = m_sections[std::size_t(block.section)].name;
        if (!blocks.isEmpty())
            blocks += newLine;
        blocks += QLatin1String(kStartOfLine) % name % newLine % added(block, newLine) %
                  QLatin1String(kEndOfLine) % name % newLine;
    }
    if (blocks.isEmpty())
        return blocks;

    QString before;
    if (!m_original.isEmpty() && !m_original.endsWith(QLatin1Char('\n'))) {
        // "\r" at the end of a text is the beginning of a line end.
        before = m_original.endsWith(QLatin1Char('\r')) ? QString::fromLatin1("\n") : newLine;
    }
    if (m_form == Form::Configuration &&
        (m_header.size() <= kVersionLines || !m_header.back().isEmpty())) {
        // The header goes on: it has two lines, and an empty one ends it.
        for (std::size_t lines = m_header.size(); lines < kVersionLines; ++lines)
            before += newLine;
        before += newLine;
    } else if (!m_original.isEmpty() && !(m_original + before).endsWith(newLine + newLine)) {
        before += newLine;
    }
    return before + blocks;
}

QVector<VanteroConfigText::Splice> ConfigTextData::splices() const
{
    std::vector<Splice> found;
    for (const int id : m_touchedEntries) {
        const Entry &entry = m_entries[std::size_t(id)];
        const bool isInBlock = entry.block != kNone;
        if (!entry.line.isNull() && (isInBlock || !entry.isRemoved) &&
            !(isInBlock && m_blocks[std::size_t(entry.block)].isRemoved))
            addChange(entry, found);
    }
    if (m_areAddressesRemoved) {
        for (const QStringView line : m_addresses)
            found.push_back(splice(line.begin(), endOfLine(line), QString()));
    }
    const int address = m_headerEntries[std::size_t(HeaderField::FactoryIp)];
    if (address != kNone && m_entries[std::size_t(address)].line.isNull()) {
        const QChar *const place = placeOfNewAddress();
        found.push_back(splice(place, place,
                               QLatin1String(kAddressMark) +
                                   m_entries[std::size_t(address)].value.toString() + lineEnd()));
    }
    std::vector<int> blocks = m_touchedBlocks;
    std::sort(blocks.begin(), blocks.end());
    blocks.erase(std::unique(blocks.begin(), blocks.end()), blocks.end());
    for (const int id : blocks) {
        const Block &block = m_blocks[std::size_t(id)];
        if (block.firstLine.isNull())
            continue;
        if (block.isRemoved)
            found.push_back(splice(block.firstLine.begin(), endOfLine(block.lastLine), QString()));
        else
            found.push_back(splice(block.lastLine.begin(), block.lastLine.begin(),
                                   added(block, lineEndOf(block.firstLine))));
    }
    if (const QString blocksAtEnd = newBlocks(); !blocksAtEnd.isEmpty())
        found.push_back(splice(m_original.constEnd(), m_original.constEnd(), blocksAtEnd));

    std::stable_sort(found.begin(), found.end(), [](const Splice &a, const Splice &b) {
        return std::make_pair(a.range.offset, a.range.length) <
               std::make_pair(b.range.offset, b.range.length);
    });
    QVector<Splice> result;
    for (const Splice &next : found) {
        if (next.range.length == 0 && next.text.isEmpty())
            continue;
        if (!result.isEmpty() &&
            result.last().range.offset + result.last().range.length == next.range.offset) {
            result.last().range.length += next.range.length;
            result.last().text += next.text;
        } else {
            result += next;
        }
    }
    if (!result.isEmpty()) {
        const TextPlaces places(m_original);
        for (Splice &one : result) {
            const QChar *const begin = m_original.constBegin() + one.range.offset;
            one.range = places.range(begin, begin + one.range.length);
        }
    }
    return result;
}

QString ConfigTextData::text() const
{
    const QVector<Splice> edits = splices();
    if (edits.isEmpty())
        return m_original;
    qint64 size = m_original.size();
    for (const Splice &edit : edits)
        size += edit.text.size() - edit.range.length;
    QString result;
    result.reserve(int(size));
    int at = 0;
    for (const Splice &edit : edits) {
        result += m_original.midRef(at, int(edit.range.offset) - at);
        result += edit.text;
        at = int(edit.range.offset + edit.range.length);
    }
    return result += m_original.midRef(at);
}

} // namespace vn::internal
