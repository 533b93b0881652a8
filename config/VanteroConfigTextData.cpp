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

constexpr QLatin1Char kReturn('\r');

/** Whether @p line is another one when it is read: reading takes one "\r" off a line's end. */
bool holdsLineBreak(const QString &line, const QString &lineEnd)
{
    return line.contains(QLatin1Char('\n')) ||
           (line.endsWith(kReturn) && !lineEnd.startsWith(kReturn));
}

/** Whether the first and last line of a section can say the name. */
Result checkName(const QString &section, const QString &lineEnd)
{
    if (section.isEmpty())
        return refused("a section needs a name");
    if (holdsLineBreak(section, lineEnd))
        return refused("the name of a section cannot hold a line break");
    return {};
}

/** Whether a line with that end can say the entry. */
Result checkEntry(const QString &key, const QString &value, const QString &lineEnd)
{
    // In front of the "=" nothing ends.
    if (holdsLineBreak(key, value.isNull() ? lineEnd : QString(kReturn)))
        return refused("a key cannot hold a line break");
    if (key.contains(kValueMark))
        return refused("a key cannot hold \"=\"");
    if (holdsLineBreak(value, lineEnd))
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
    const Entry &known = m_entries[std::size_t(entry)];
    const bool isAtEnd = known.line.isNull() || known.originalValue.end() == known.line.end();
    if (holdsLineBreak(value, isAtEnd ? lineEndOf(known) : QString(kReturn)))
        return refused("a value cannot hold a line break");
    const int field = headerField(entry);
    if (field == int(HeaderField::FileVersion) && value.contains(kValueMark))
        return refused("the file version of the header cannot hold \"=\"");
    const QStringView line = known.line;
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
    if (Result result = isHeader ? checkHeader(found, value)
                                 : checkEntry(key, value, lineEndOf(m_entries[std::size_t(found)]));
        !result)
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
    const Section *const known = existing(section);
    const bool hasBlock = known && known->lastBlock != kNone;
    const QString end = hasBlock ? lineEndOf(m_blocks[std::size_t(known->lastBlock)]) : lineEnd();
    if (Result result = checkName(section, hasBlock ? QString(kReturn) : end); !result)
        return result;
    if (Result result = checkEntry(key, value, end); !result)
        return result;

    const int id = makeSection(known ? QStringView(section) : keep(section));
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
    const QString end = lineEnd();
    if (Result result = checkName(section, end); !result)
        return result;
    if (const Section *const found = existing(section);
        found && (found->lastBlock != kNone || found->count > 0))
        return refused(QLatin1String("there is a section ") % quoted(section) %
                       QLatin1String(" already"));
    for (auto it = content.begin(); it != content.end(); ++it) {
        if (Result result = checkEntry(it.key(), it.value(), end); !result)
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

} // namespace vn::internal
