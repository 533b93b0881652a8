// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigLines.h"

#include <utility>

namespace vn::tool {

namespace {

const QLatin1String kStart("SECTION");
const QLatin1String kEnd("ENDSECTION");
constexpr int kStartNameAt = 8; // after the keyword and the one character that follows it
constexpr int kEndNameAt = 11;

} // namespace

ConfigLines::ConfigLines(QString text)
    : m_text(std::move(text))
{
    split();
    classify();
}

void ConfigLines::split()
{
    for (int begin = 0; begin < m_text.size();) {
        const int newline = m_text.indexOf(QLatin1Char('\n'), begin);
        Line line;
        line.begin = begin;
        line.contentEnd = newline < 0 ? m_text.size() : newline;
        line.end = newline < 0 ? m_text.size() : newline + 1;
        if (line.contentEnd > begin && m_text.at(line.contentEnd - 1) == QLatin1Char('\r'))
            --line.contentEnd;
        m_lines.push_back(line);
        begin = line.end;
    }
}

void ConfigLines::classify()
{
    int index = 0;
    const int count = int(m_lines.size());
    for (bool inHeader = true; inHeader && index < count; ++index) {
        Line &line = m_lines[std::size_t(index)];
        line.kind = Kind::Header;
        inHeader = index < 2 || line.contentEnd > line.begin;
    }

    int open = -1; // the block that is open
    for (; index < count; ++index) {
        Line &line = m_lines[std::size_t(index)];
        line.block = open;
        const QString text = content(line);
        if (text.isEmpty() || text.startsWith(QLatin1Char('#')))
            continue;
        bool bad = false;
        if (text.startsWith(kStart)) {
            bad = open >= 0;
            const QString name = text.mid(kStartNameAt);
            if (!bad && !name.isEmpty()) { // without a name no section is open
                open = int(m_blocks.size());
                m_blocks.push_back({name, index, -1});
                line.block = open;
                line.kind = Kind::SectionStart;
            }
        } else if (text.startsWith(kEnd)) {
            bad = open < 0 || text.mid(kEndNameAt) != m_blocks.back().name;
            if (!bad) {
                m_blocks.back().endLine = index;
                line.kind = Kind::SectionEnd;
                open = -1;
            }
        } else if (open >= 0) {
            line.kind = Kind::Entry;
        }
        if (bad) {
            line.kind = Kind::Bad;
            m_malformedLine = index + 1;
            m_lines.resize(std::size_t(index) + 1);
            return;
        }
    }
    if (open >= 0)
        m_malformedLine = count + 1;
}

QString ConfigLines::content(const Line &line) const
{
    return m_text.mid(line.begin, line.contentEnd - line.begin);
}

QString ConfigLines::key(const Line &line) const
{
    const QString text = content(line);
    const int equals = text.indexOf(QLatin1Char('='));
    return equals < 0 ? text : text.left(equals);
}

const ConfigLines::Block *ConfigLines::lastBlock(const QString &section) const
{
    for (auto it = m_blocks.rbegin(); it != m_blocks.rend(); ++it)
        if (it->name == section)
            return &*it;
    return nullptr;
}

std::vector<int> ConfigLines::entries(const QString &section, const QString &key) const
{
    std::vector<int> result;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const Line &line = m_lines[i];
        if (line.kind == Kind::Entry && m_blocks[std::size_t(line.block)].name == section &&
            this->key(line) == key)
            result.push_back(int(i));
    }
    return result;
}

int ConfigLines::malformedLine() const
{
    return m_malformedLine;
}

QString ConfigLines::lineEnd(int index) const
{
    const Line &line = m_lines[std::size_t(index)];
    return m_text.mid(line.contentEnd, line.end - line.contentEnd);
}

QString ConfigLines::lineEnd() const
{
    const QString first = m_lines.empty() ? QString() : lineEnd(0);
    return first.endsWith(QLatin1Char('\n')) ? first : QStringLiteral("\n");
}

} // namespace vn::tool
