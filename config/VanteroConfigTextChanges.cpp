// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/** @file The text that edits give, out of what is known of them. */

#include "config/TextPlaces_p.h"
#include "config/VanteroConfigTextData_p.h"

#include <QtCore/QStringBuilder>

#include <algorithm>

namespace vn::internal {

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

/** The line end of the text's first line, which "\r" at the end of the text begins; "\n" when it
 * has none. */
QString ConfigTextData::lineEnd() const
{
    const int lineFeed = m_original.indexOf(QLatin1Char('\n'));
    const int at = lineFeed < 0 ? m_original.size() : lineFeed;
    return at > 0 && m_original.at(at - 1) == QLatin1Char('\r') ? QString::fromLatin1("\r\n")
                                                                : QString::fromLatin1("\n");
}

/** What lines that are added to the block end with. */
QString ConfigTextData::lineEndOf(const Block &block) const
{
    return block.firstLine.isNull() ? lineEnd() : lineEndOf(block.firstLine);
}

/** What the line of the entry ends with, also of one that has been added. */
QString ConfigTextData::lineEndOf(const Entry &entry) const
{
    if (!entry.line.isNull())
        return lineEndOf(entry.line);
    return entry.block == kNone ? lineEnd() : lineEndOf(m_blocks[std::size_t(entry.block)]);
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

/** The change for a line of the original text that has another value now, or is removed. */
void ConfigTextData::addChange(const Entry &entry, std::vector<Change> &changes) const
{
    const QStringView before = entry.originalValue;
    const QStringView line = entry.line;
    if (entry.isRemoved) {
        changes.push_back({line.begin(), endOfLine(line), QString()});
    } else if (before.isNull() && !entry.value.isNull()) {
        // An address may be missing in a title, where one character parts it from the words.
        const QString parted =
            entry.block == kNone ? QString::fromLatin1(" ") : QString(kValueMark);
        changes.push_back({line.end(), line.end(), parted + entry.value.toString()});
    } else if (!before.isNull() && entry.value.isNull()) {
        changes.push_back({before.begin() - 1, before.end(), QString()});
    } else if (before != entry.value) {
        changes.push_back({before.begin(), before.end(), entry.value.toString()});
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

/** Where the text differs from the original one: ascending, no two touching. */
std::vector<ConfigTextData::Change> ConfigTextData::changes() const
{
    std::vector<Change> found;
    for (const int id : m_touchedEntries) {
        const Entry &entry = m_entries[std::size_t(id)];
        const bool isInBlock = entry.block != kNone;
        if (!entry.line.isNull() && (isInBlock || !entry.isRemoved) &&
            !(isInBlock && m_blocks[std::size_t(entry.block)].isRemoved))
            addChange(entry, found);
    }
    if (m_areAddressesRemoved) {
        for (const QStringView line : m_addresses)
            found.push_back({line.begin(), endOfLine(line), QString()});
    }
    const int address = m_headerEntries[std::size_t(HeaderField::FactoryIp)];
    if (address != kNone && m_entries[std::size_t(address)].line.isNull()) {
        const QChar *const place = placeOfNewAddress();
        found.push_back({place, place,
                         QLatin1String(kAddressMark) +
                             m_entries[std::size_t(address)].value.toString() + lineEnd()});
    }
    std::vector<int> blocks = m_touchedBlocks;
    std::sort(blocks.begin(), blocks.end());
    blocks.erase(std::unique(blocks.begin(), blocks.end()), blocks.end());
    for (const int id : blocks) {
        const Block &block = m_blocks[std::size_t(id)];
        if (block.firstLine.isNull())
            continue;
        if (block.isRemoved)
            found.push_back({block.firstLine.begin(), endOfLine(block.lastLine), QString()});
        else
            found.push_back(
                {block.lastLine.begin(), block.lastLine.begin(), added(block, lineEndOf(block))});
    }
    if (const QString blocksAtEnd = newBlocks(); !blocksAtEnd.isEmpty())
        found.push_back({m_original.constEnd(), m_original.constEnd(), blocksAtEnd});

    std::stable_sort(found.begin(), found.end(), [](const Change &a, const Change &b) {
        return std::make_pair(a.begin, a.end) < std::make_pair(b.begin, b.end);
    });
    std::vector<Change> result; // those that touch each other as one
    for (const Change &next : found) {
        if (next.begin == next.end && next.text.isEmpty())
            continue;
        if (!result.empty() && result.back().end == next.begin) {
            result.back().end = next.end;
            result.back().text += next.text;
        } else {
            result.push_back(next);
        }
    }
    return result;
}

QVector<VanteroConfigText::Splice> ConfigTextData::splices() const
{
    QVector<VanteroConfigText::Splice> result;
    const std::vector<Change> all = changes();
    if (all.empty())
        return result;
    const TextPlaces places(m_original);
    result.reserve(int(all.size()));
    for (const Change &change : all)
        result += {places.range(change.begin, change.end), change.text};
    return result;
}

QString ConfigTextData::text() const
{
    const std::vector<Change> all = changes();
    if (all.empty())
        return m_original;
    qint64 size = m_original.size();
    for (const Change &change : all)
        size += change.text.size() - (change.end - change.begin);
    QString result;
    result.reserve(int(size));
    const QChar *at = m_original.constBegin();
    for (const Change &change : all) {
        result.append(at, int(change.begin - at));
        result += change.text;
        at = change.end;
    }
    return result.append(at, int(m_original.constEnd() - at));
}

} // namespace vn::internal
