// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_CONFIGFINDINGS_H
#define VN_TESTS_SUPPORT_CONFIGFINDINGS_H

/** @file What outline and findings of any configuration text promise. */

#include "base/Exceptions.h"
#include "config/VanteroConfigFile.h"
#include "config/VanteroConfigText.h"

#include <QtCore/QDateTime>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>

/** How a text looks to who reads it without knowing how the library does. */
class PlainReading
{
public:
    PlainReading(const QString &text, const vn::Findings &findings)
        : m_text(text)
        , m_findings(findings)
    {
    }

    /** Whether something in [@p begin, @p end], a line, is told to be lost or read otherwise. */
    bool isReported(qint64 begin, qint64 end) const
    {
        return std::any_of(m_findings.begin(), m_findings.end(), [&](const vn::Finding &finding) {
            return finding.severity != vn::Finding::Severity::Note && finding.range.offset <= end &&
                   finding.range.offset + finding.range.length >= begin;
        });
    }

    /** What the lines say of which nothing is told, as "section name" and "section/key=value" in
     * their order. */
    QStringList values()
    {
        m_result.clear();
        bool isHeader = true;
        int number = 0;
        for (int begin = 0; begin < m_text.size();) {
            const int lineFeed = m_text.indexOf(QLatin1Char('\n'), begin);
            int end = lineFeed < 0 ? m_text.size() : lineFeed;
            const int next = end + 1;
            if (end > begin && m_text.at(end - 1) == QLatin1Char('\r'))
                --end;
            const QString line = m_text.mid(begin, end - begin);
            const bool isTold = isReported(begin, end);
            ++number;
            if (isHeader)
                readHeaderLine(number, line, isTold);
            else
                readBodyLine(line, isTold);
            isHeader = isHeader && !(number > 2 && line.isEmpty());
            begin = next;
        }
        return m_result;
    }

private:
    void readHeaderLine(int number, const QString &line, bool isTold)
    {
        static const QRegularExpression version(QStringLiteral("^#:\\s*([^=]*?)\\s*=*$"));
        static const QRegularExpression software(QStringLiteral("^#:\\s*(.*?)\\s*$"));
        static const QRegularExpression address(
            QStringLiteral("(?:^#\\s*Camera IP:|Configuration of)\\s*(.*?)\\s*$"),
            QRegularExpression::CaseInsensitiveOption);
        if (isTold || line.isEmpty())
            return;
        const QRegularExpressionMatch match = (number == 1   ? version
                                               : number == 2 ? software
                                                             : address)
                                                  .match(line);
        if (match.hasMatch())
            add(QStringLiteral("head"),
                QString::fromLatin1(number == 1   ? "File Version"
                                    : number == 2 ? "Software Version"
                                                  : "Factory IP"),
                match.captured(1));
        else if (!line.startsWith(QLatin1Char('#')))
            m_result += QLatin1String("lost in the header: ") + line;
    }

    void readBodyLine(const QString &line, bool isTold)
    {
        const QString content = line.trimmed();
        if (isTold && !line.isEmpty() && line.at(0).isSpace()) // no mark of a section, whatever it
            return;                                            // says, and the key is another one
        if (content.startsWith(QLatin1String("SECTION"))) {
            m_section = content.mid(isTold ? 8 : 7).trimmed(); // where it is told, as it is read
            m_isTold = isTold;
            if (isTold)
                m_toldSections += m_section;
            else if (!m_toldSections.contains(m_section))
                m_result += QLatin1String("section ") + m_section;
        } else if (content.startsWith(QLatin1String("ENDSECTION"))) {
            m_section.clear();
            m_isTold = false;
        } else if (!isTold && !m_isTold && !line.isEmpty() &&
                   !content.startsWith(QLatin1Char('#'))) {
            add(m_section, content.section(QLatin1Char('='), 0, 0).trimmed(),
                content.section(QLatin1Char('='), 1).trimmed());
        }
    }

    void add(const QString &section, const QString &key, const QString &value)
    {
        m_result += section + QLatin1Char('/') + key + QLatin1Char('=') + value;
    }

    QString m_text;
    vn::Findings m_findings;
    QStringList m_result;
    QString m_section;
    QStringList m_toldSections;
    bool m_isTold = false; // of the first line of the section
};

/** The map that an outline tells. */
inline vn::VanteroConfigMap mapOf(const vn::VanteroConfigText::Outline &outline)
{
    vn::VanteroConfigMap map;
    for (const auto &value : outline.header.values)
        map.setValue(vn::VanteroConfigFile::HEAD_SECTION, value.key, value.value);
    for (const auto &section : outline.sections) {
        for (const auto &block : section.blocks) {
            for (const auto &entry : block.entries)
                map.addValue(section.name, entry.key, entry.value);
        }
    }
    return map;
}

/** Says how the first error of @p findings is not @p fault, the message of an exception or null. */
inline QString otherFault(const vn::Findings &findings, const QString &fault)
{
    const auto error =
        std::find_if(findings.begin(), findings.end(), [](const vn::Finding &finding) {
            return finding.severity == vn::Finding::Severity::Error;
        });
    if ((error == findings.end()) != fault.isNull())
        return QStringLiteral("errors and exceptions differ: ") + fault;
    if (error != findings.end() && error->message != fault)
        return QStringLiteral("the first error differs: ") + error->message;
    return QString();
}

/** Says how the findings of an image's comment are not as it is read; null where they are. */
inline QString brokenPromiseOfComment(const QString &text)
{
    using vn::VanteroConfigText;
    const VanteroConfigText places(text, VanteroConfigText::Form::ImageComment);
    vn::VanteroConfigFile config;
    QString fault;
    try {
        config.parseJpegComment(text);
    } catch (const vn::ParseException &e) {
        fault = e.message();
    }
    if (mapOf(places.outline()).toString() != config.toString())
        return QStringLiteral("the outline of the comment is of another map");
    return otherFault(places.findings(), fault);
}

/** Says which promise of outline and findings @p text breaks; null where it breaks none. */
inline QString brokenPromise(const QString &text)
{
    using namespace vn;
    const VanteroConfigText places(text);
    const Findings findings = places.findings();
    const VanteroConfigText::Outline outline = places.outline();

    VanteroConfigFile config;
    QString fault;
    bool isComplete = outline.header.isComplete;
    try {
        isComplete = config.parse(text, QDateTime());
    } catch (const ParseException &e) {
        fault = e.message();
    }

    if (const QString other = otherFault(findings, fault); !other.isNull())
        return other;

    // Places are those of the text, in order.
    for (int i = 0; i < findings.size(); ++i) {
        const TextRange &range = findings.at(i).range;
        if (range.offset < 0 || range.length < 0 || range.offset + range.length > text.size())
            return QStringLiteral("outside of the text: ") + findings.at(i).code;
        const QString before = text.left(int(range.offset));
        if (range.line != before.count(QLatin1Char('\n')) + 1 ||
            range.column != before.size() - before.lastIndexOf(QLatin1Char('\n')))
            return QStringLiteral("another line or column: ") + findings.at(i).code;
        if (i > 0 && findings.at(i - 1).range.offset > range.offset)
            return QStringLiteral("not in order: ") + findings.at(i).code;
    }

    // The outline is what is loaded.
    if (isComplete != outline.header.isComplete)
        return QStringLiteral("the header differs");
    if (mapOf(outline).toString() != config.toString())
        return QStringLiteral("the outline is of another map");

    // What nothing is told of is loaded as it looks.
    if (!fault.isNull())
        return QString();
    PlainReading reading(text, findings);
    QStringList loaded;
    const auto add = [&](const QString &section, const VanteroConfigText::Entry &entry) {
        if (text.mid(int(entry.valueRange.offset), int(entry.valueRange.length)) != entry.value)
            loaded += QStringLiteral("another value stands there: ") + entry.value;
        if (!reading.isReported(entry.range.offset, entry.range.offset + entry.range.length))
            loaded += section + QLatin1Char('/') + entry.key + QLatin1Char('=') + entry.value;
    };
    const auto &values = outline.header.values;
    for (auto it = values.begin(); it != values.end(); ++it) {
        const bool isReplaced = std::any_of(
            it + 1, values.end(), [&](const auto &later) { return later.key == it->key; });
        if (!isReplaced)
            add(VanteroConfigFile::HEAD_SECTION, *it);
    }
    struct Block
    {
        QString section;
        VanteroConfigText::Block block;
    };
    QVector<Block> blocks; // in the order of the text
    for (const auto &section : outline.sections) {
        for (const auto &block : section.blocks)
            blocks += {section.name, block};
    }
    std::sort(blocks.begin(), blocks.end(), [](const Block &a, const Block &b) {
        return a.block.range.offset < b.block.range.offset;
    });
    QStringList told;
    for (const Block &block : qAsConst(blocks)) {
        const TextRange &name = block.block.nameRange;
        if (reading.isReported(block.block.range.offset, name.offset + name.length)) {
            told += block.section.trimmed();
            continue;
        }
        if (config.containsSection(block.section) && !told.contains(block.section))
            loaded += QLatin1String("section ") + block.section;
        for (const auto &entry : block.block.entries)
            add(block.section, entry);
    }
    const QStringList plain = reading.values();
    if (loaded != plain)
        return QStringLiteral("loaded is\n") + loaded.join(QLatin1Char('\n')) +
               QStringLiteral("\nbut it looks as\n") + plain.join(QLatin1Char('\n'));
    return QString();
}

#endif // VN_TESTS_SUPPORT_CONFIGFINDINGS_H
