// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGLINES_H
#define VN_TOOL_FILES_CONFIGLINES_H

#include <QtCore/QString>

#include <vector>

namespace vn::tool {

/**
 * Where the lines of a configuration text are and what the library reads them as.
 *
 * The library's reader gives entries without their places; an edit that leaves every other
 * character alone needs the places. What is found here is only used to propose a new text: the
 * reader then decides whether that text says what was wanted.
 */
class ConfigLines
{
public:
    enum class Kind {
        Header,       ///< up to and with the first empty line after the second line
        Ignored,      ///< empty, a comment, or an entry outside sections
        SectionStart, ///< name() is that of the section
        SectionEnd,
        Entry, ///< of a section; key() tells which
        Bad,   ///< the reader fails here; no line follows
    };

    struct Line
    {
        int begin;      ///< in the text, in code units
        int contentEnd; ///< where the line end begins
        int end;        ///< where the next line begins
        Kind kind = Kind::Ignored;
        int block = -1; ///< index of the section block that it belongs to
    };

    /** A section block: a name may have several. */
    struct Block
    {
        QString name;
        int startLine;
        int endLine; ///< -1 when it is not ended
    };

    /** Reads the places of @p text. */
    explicit ConfigLines(QString text);

    const std::vector<Line> &lines() const { return m_lines; }
    const std::vector<Block> &blocks() const { return m_blocks; }

    /** The line without its end. */
    QString content(const Line &line) const;

    /** The key of an entry. */
    QString key(const Line &line) const;

    /** The last block of that name; null when there is none. */
    const Block *lastBlock(const QString &section) const;

    /** The indices of the lines with an entry of that key in the blocks of that section. */
    std::vector<int> entries(const QString &section, const QString &key) const;

    /** The number (from 1) of the line at which the reader fails, the one after the last line when
     * a section is not ended; 0 when it does not fail. */
    int malformedLine() const;

    /** The line end of the line with that index. */
    QString lineEnd(int index) const;

    /** The line end of the text's first line; "\n" when it has none. */
    QString lineEnd() const;

private:
    void split();
    void classify();

    QString m_text;
    std::vector<Line> m_lines;
    std::vector<Block> m_blocks;
    int m_malformedLine = 0;
};

} // namespace vn::tool

#endif // VN_TOOL_FILES_CONFIGLINES_H
