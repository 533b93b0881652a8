// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigEdit.h"

#include "tool/files/ConfigInput.h"

#include "tool/files/ConfigWriting.h"

#include "base/Exceptions.h"

#include <QtCore/QDateTime>

namespace vn::tool {

namespace {

const QLatin1String kVersionMark("#:");
const QLatin1String kAddressMark("# Camera IP: ");
const QLatin1String kConfigurationOf("Configuration of");

bool holdsLineBreak(const QString &text)
{
    return text.contains(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r'));
}

} // namespace

ConfigEdit::ConfigEdit(const ConfigTextFile &file)
    : m_file(file)
    , m_map(parseConfig(file.text(), file.name()).map())
    , m_lines(file.text())
{
}

QString ConfigEdit::set(const QString &section, const QString &key, const QString &value) const
{
    requireWritable(section, key, value);
    VanteroConfigMap wanted = m_map;
    wanted.setValue(section, key, value);

    const QString &text = m_file.text();
    const std::vector<int> entries = m_lines.entries(section, key);
    if (!entries.empty()) {
        const ConfigLines::Line &line = m_lines.lines()[std::size_t(entries.back())];
        return firstThatReads(
            {text.left(line.begin) + key + QLatin1Char('=') + value + text.mid(line.contentEnd)},
            wanted);
    }
    if (isHeaderValue(section, key)) {
        const Range range = *headerValue(key);
        return firstThatReads({text.left(range.begin) + range.before + value + text.mid(range.end)},
                              wanted);
    }
    return firstThatReads(withNewLine(section, key, value), wanted);
}

QString ConfigEdit::add(const QString &section, const QString &key, const QString &value) const
{
    requireWritable(section, key, value);
    VanteroConfigMap wanted = m_map;
    wanted.addValue(section, key, value);
    return firstThatReads(withNewLine(section, key, value), wanted);
}

QString ConfigEdit::unset(const QString &section, const QString &key) const
{
    if (!m_map.containsSection(section))
        throw ToolError(ExitCode::No, QStringLiteral("no section \"%1\"").arg(section))
            .at(m_file.name());
    VanteroConfigMap wanted = m_map;
    if (wanted.remove(section, key) == 0)
        throw ToolError(ExitCode::No,
                        QStringLiteral("no key \"%1\" in section \"%2\"").arg(key, section))
            .at(m_file.name());

    std::vector<int> lines = m_lines.entries(section, key);
    if (isHeaderValue(section, key)) {
        if (key != VanteroConfigFile::FACTORY_IP)
            throw refusal(QStringLiteral("the version lines of the header cannot be removed"));
        const std::vector<int> addresses = addressLines();
        lines.insert(lines.begin(), addresses.begin(), addresses.end());
    }
    QString text = m_file.text();
    for (auto it = lines.rbegin(); it != lines.rend(); ++it) {
        const ConfigLines::Line &line = m_lines.lines()[std::size_t(*it)];
        text.remove(line.begin, line.end - line.begin);
    }
    return firstThatReads({text}, wanted);
}

ToolError ConfigEdit::refusal(const QString &message) const
{
    return ToolError(ExitCode::BadInput, message).at(m_file.name());
}

/** Refuses with a reason what would break the line that it is written to. */
void ConfigEdit::requireWritable(const QString &section, const QString &key,
                                 const QString &value) const
{
    if (section.isEmpty())
        throw refusal(QStringLiteral("a section needs a name"));
    if (holdsLineBreak(section))
        throw refusal(QStringLiteral("the name of a section cannot hold a line break"));
    if (holdsLineBreak(key))
        throw refusal(QStringLiteral("a key cannot hold a line break"));
    if (key.contains(QLatin1Char('=')))
        throw refusal(QStringLiteral("a key cannot hold \"=\""));
    if (key.startsWith(QLatin1Char('#')))
        throw refusal(QStringLiteral("a key cannot begin with \"#\", which begins a comment"));
    for (const char *keyword : {"SECTION", "ENDSECTION"})
        if (key.startsWith(QLatin1String(keyword)))
            throw refusal(
                QStringLiteral("a key cannot begin with \"%1\"").arg(QLatin1String(keyword)));
    if (holdsLineBreak(value))
        throw refusal(QStringLiteral("a value cannot hold a line break"));
}

/** Whether the header holds the value and no section block "head" a newer one. */
bool ConfigEdit::isHeaderValue(const QString &section, const QString &key) const
{
    return section == VanteroConfigFile::HEAD_SECTION && headerValue(key);
}

std::optional<ConfigEdit::Range> ConfigEdit::headerValue(const QString &key) const
{
    const bool isFileVersion = key == VanteroConfigFile::FILE_VERSION;
    if (isFileVersion || key == VanteroConfigFile::SOFTWARE_VERSION) {
        const std::size_t index = isFileVersion ? 0 : 1;
        if (m_lines.lines().size() <= index)
            return std::nullopt;
        const ConfigLines::Line &line = m_lines.lines()[index];
        const QString content = m_lines.content(line);
        if (!content.startsWith(kVersionMark))
            return std::nullopt;
        const int equals = isFileVersion ? content.indexOf(QLatin1Char('=')) : -1;
        return Range{line.begin + kVersionMark.size(),
                     equals < 0 ? line.contentEnd : line.begin + equals, QString()};
    }
    if (key != VanteroConfigFile::FACTORY_IP || addressLines().empty())
        return std::nullopt;
    const ConfigLines::Line &line = m_lines.lines()[std::size_t(addressLines().back())];
    const QString content = m_lines.content(line);
    if (content.startsWith(kAddressMark))
        return Range{line.begin + kAddressMark.size(), line.contentEnd, QString()};
    const int after = content.indexOf(kConfigurationOf) + kConfigurationOf.size();
    if (after == content.size())
        return Range{line.contentEnd, line.contentEnd, QStringLiteral(" ")};
    return Range{line.begin + after + 1, line.contentEnd, QString()};
}

/** The header lines with the camera's address; the last one counts. */
std::vector<int> ConfigEdit::addressLines() const
{
    std::vector<int> result;
    const auto &lines = m_lines.lines();
    for (std::size_t i = 2; i < lines.size() && lines[i].kind == ConfigLines::Kind::Header; ++i) {
        const QString content = m_lines.content(lines[i]);
        if (content.startsWith(kAddressMark) || content.indexOf(kConfigurationOf) > 0)
            result.push_back(int(i));
    }
    return result;
}

/** The texts with one more line: in the last block of the section, or in a new block at the end. */
QStringList ConfigEdit::withNewLine(const QString &section, const QString &key,
                                    const QString &value) const
{
    const QString &text = m_file.text();
    const QString entry = key + QLatin1Char('=') + value;
    if (const ConfigLines::Block *block = m_lines.lastBlock(section)) {
        const int at = m_lines.lines()[std::size_t(block->endLine)].begin;
        return {text.left(at) + entry + m_lines.lineEnd(block->startLine) + text.mid(at)};
    }

    const QString lineEnd = m_lines.lineEnd();
    QString start = text;
    if (!start.isEmpty() && !start.endsWith(QLatin1Char('\n')))
        start += lineEnd;
    if (!start.endsWith(lineEnd + lineEnd))
        start += lineEnd;
    const QString block = QLatin1String("SECTION ") + section + lineEnd + entry + lineEnd +
                          QLatin1String("ENDSECTION ") + section + lineEnd;
    // A header may need up to two further lines: it has two lines at least, and an empty one ends
    // it.
    return {start + block, start + lineEnd + block, start + lineEnd + lineEnd + block};
}

QString ConfigEdit::firstThatReads(const QStringList &proposals,
                                   const VanteroConfigMap &wanted) const
{
    for (const QString &proposal : proposals) {
        VanteroConfigFile read;
        try {
            read.parse(proposal, QDateTime::currentDateTime());
        } catch (const ExceptionQt &) {
            continue;
        }
        if (saysTheSame(read.map(), wanted))
            return proposal;
    }
    throw refusal(QStringLiteral("the format cannot hold that: it would be read back differently"));
}

} // namespace vn::tool
