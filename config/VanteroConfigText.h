// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_VANTEROCONFIGTEXT_H
#define VN_CONFIG_VANTEROCONFIGTEXT_H

#include "base/Export.h"
#include "base/Finding.h"
#include "config/VanteroConfigMap.h"

#include <QtCore/QSharedDataPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

namespace vn {

namespace internal {
class ConfigTextData;
}

/**
 * A configuration text with its places: what stands where, what is wrong with it, and edits that
 * change nothing else.
 *
 * Where VanteroConfigFile loads a text into a map and forgets the text's order and comments, this
 * class keeps them: an edit changes the characters that say the value, and no other.
 * @code
 * VanteroConfigText text(FileUtils::readText(path));
 * if (const auto done = text.setValue("ethernet", "HOSTNAME", "gate-2"); !done)
 *     qWarning() << done.reason;
 * text.text(); // the whole text; text.edits() has the one place where it differs
 * @endcode
 * Values are those that VanteroConfigFile::parse() reads, in its order: of several values of a key
 * the newest, which is the last line of it in the text, has the index 0. The values of the header
 * are the keys VanteroConfigFile::FILE_VERSION, SOFTWARE_VERSION and FACTORY_IP of the section
 * VanteroConfigFile::HEAD_SECTION.
 *
 * Each edit is that of a map, said beside it: text(), read by VanteroConfigFile::parse(), has
 * exactly the map that the edit gives when it is done to the map of the text before. A section
 * without entries, which a map may have and a text cannot say, counts as none.
 *
 * Errors: no operation throws; edits say in their Result what they could not do, and change nothing
 * then. A text that parse() refuses can be looked at, as far as parse() reads it, but not edited.
 * Costs: reading the text once at construction; an edit takes the time of a lookup, text() and
 * edits() that of the text.
 *
 * Threads: reentrant. Copies share their content until one of them is changed.
 * @since 1.0.0
 */
class VN_EXPORT VanteroConfigText
{
public:
    /** What the text is of, which decides whether it has a header. */
    enum class Form {
        Configuration, ///< Read as VanteroConfigFile::parse() does: a header, then sections.
        ImageComment,  ///< Read as VanteroConfigFile::parseJpegComment() does: sections alone.
    };

    // ---- Outline -------------------------------------------------------------------------------

    /** A line with a value: of a section, or of the header. */
    struct Entry
    {
        /** The key; in the header the name under which the map has the value. */
        QString key;
        /** The value; null for a line without "=". */
        QString value;
        /** The line without its end. */
        TextRange range;
        /** The key, in the header the mark before the value. */
        TextRange keyRange;
        /** The value; empty, behind the key, for a line without "=". */
        TextRange valueRange;
    };

    /** A line whose first character is "#" and that says no value. */
    struct Comment
    {
        /** The line, "#" included. */
        QString text;
        /** The line without its end. */
        TextRange range;
    };

    /** The lines from "SECTION name" to "ENDSECTION name". */
    struct Block
    {
        /** From the first line to the last one without its end. */
        TextRange range;
        /** The name in the first line. */
        TextRange nameRange;
        /** The entries in the order of the text. */
        QVector<Entry> entries;
        /** The comments in it. */
        QVector<Comment> comments;
    };

    /** A section with all its blocks; their entries are one section of the map. */
    struct Section
    {
        /** The name, never empty. */
        QString name;
        /** The blocks in the order of the text, at least one. */
        QVector<Block> blocks;
    };

    /** The lines up to the first empty one behind the two version lines. */
    struct Header
    {
        /** Whether both version lines are there, as VanteroConfigFile::parse() tells. */
        bool isComplete = false;
        /** All of it, the empty line that ends it included, but for the end of that. */
        TextRange range;
        /** The values in the order of the text. Of several addresses the last one counts. */
        QVector<Entry> values;
        /** The comments that say no value. */
        QVector<Comment> comments;
    };

    /** What stands where in a text. */
    struct Outline
    {
        /** The header; complete and empty for an image comment. */
        Header header;
        /** The sections in the order of their first blocks. */
        QVector<Section> sections;
        /** The comments behind the header and outside of sections. */
        QVector<Comment> comments;
    };

    // ---- Edits ---------------------------------------------------------------------------------

    /** What became of an edit. */
    enum class Outcome {
        Done,     ///< It is in the text now.
        NotFound, ///< There is no such section, key or value.
        Refused,  ///< The format cannot hold it, or the text is malformed.
    };

    /** What an edit tells. */
    struct Result
    {
        /** What became of it. */
        Outcome outcome = Outcome::Done;
        /** Why it was not done; null when it was. No full stop. */
        QString reason;

        /** Whether it was done. */
        explicit operator bool() const noexcept { return outcome == Outcome::Done; }
    };

    /** One place where the text differs from the original one. */
    struct Splice
    {
        /** The characters of the original text that go; an empty range is a place where some come.
         */
        TextRange range;
        /** What stands there instead. */
        QString text;
    };

    // ---- Construction --------------------------------------------------------------------------

    /** An empty text. */
    VanteroConfigText();

    /** Any text; what is wrong with it is told by findings() and by the results of edits. */
    explicit VanteroConfigText(const QString &text, Form form = Form::Configuration);

    /** A copy, which is edited by itself. */
    VanteroConfigText(const VanteroConfigText &other);
    /** Takes the content of @p other, which can then only be assigned to or destroyed. */
    VanteroConfigText(VanteroConfigText &&other) noexcept;
    /** The text, edits and form of @p other instead of its own. */
    VanteroConfigText &operator=(const VanteroConfigText &other);
    /** The same, taking them. */
    VanteroConfigText &operator=(VanteroConfigText &&other) noexcept;
    ~VanteroConfigText();

    // ---- Text ----------------------------------------------------------------------------------

    /** The text with all edits. */
    [[nodiscard]] QString text() const;

    /** The text as it was given. */
    [[nodiscard]] QString originalText() const;

    /**
     * Where text() differs from originalText(): places in the original, ascending, no two of them
     * touching. Empty when the edits came to nothing.
     */
    [[nodiscard]] QVector<Splice> edits() const;

    /** What stands where in text(). Of a text that parse() refuses, what stands before the fault;
     * the block that is open there ends with the last line before it. */
    [[nodiscard]] Outline outline() const;

    /**
     * What is wrong with text(), and what reading it changes or loses in silence;
     * `docs/findings.md` lists the codes. All faults are found in one pass. The first finding that
     * is an error has the message of the exception by which parse() refuses the text; where parse()
     * accepts it, there is no error.
     */
    [[nodiscard]] Findings findings() const;

    // ---- Lookups, in the text with all edits ---------------------------------------------------

    /** Whether the section has an entry. */
    [[nodiscard]] bool containsSection(const QString &section) const;

    /** The @p index-th value of @p key, counting from the newest (0); a negative index counts as 0.
     * Null when there is none. */
    [[nodiscard]] QString value(const QString &section, const QString &key, int index = 0) const;

    /** All values of @p key, newest first; empty when there is none. */
    [[nodiscard]] QStringList values(const QString &section, const QString &key) const;

    // ---- Edits ---------------------------------------------------------------------------------

    /**
     * Replaces the @p index-th value of @p key, counting from the newest (0); a negative index
     * counts as 0. A key that is not there is added as addValue() does when the index is 0, an
     * address of the camera as a line of the header where there is one.
     *
     * Of a map: the value that `find(section, key)` and @p index steps lead to; setValue() for 0.
     * A line break is "\n", and "\r" at the end of a line that "\n" alone ends, which reading takes
     * for a part of it.
     * @param section name of the section; must not be empty or hold a line break
     * @param key     must not hold "=" or a line break, nor begin as a comment or a section does
     * @param value   must hold no line break; a null value is written as a line without "=", in the
     *                header as an empty value
     * @param index   NotFound when there are fewer values, though at least one or @p index above 0
     */
    [[nodiscard]] Result setValue(const QString &section, const QString &key, const QString &value,
                                  int index = 0);

    /** Adds an entry, which is then the newest: before the end of the section's last block, or in a
     * new block at the end of the text. Of a map: addValue(). Parameters as of setValue(). */
    [[nodiscard]] Result addValue(const QString &section, const QString &key, const QString &value);

    /**
     * Removes the @p index-th value of @p key, counting from the newest (0), with its line. Of a
     * map: erase() of that entry. The version lines of the header cannot be removed; the address of
     * the header goes with all lines that say one.
     */
    [[nodiscard]] Result removeValue(const QString &section, const QString &key, int index = 0);

    /** Removes all values of @p key, as removeValue() does. Of a map: remove(). */
    [[nodiscard]] Result removeKey(const QString &section, const QString &key);

    /** Removes all blocks of the section, comments included; also one without entries. Of a map:
     * removeSection(). Refused for HEAD_SECTION where the header has a version line. */
    [[nodiscard]] Result removeSection(const QString &section);

    /**
     * Adds a block at the end of the text with the values of @p content, keys ascending; without
     * @p content it is empty and no section to a reader. Refused when the text has a block of that
     * name, or the header values of HEAD_SECTION. Of a map without the section: replaceSection().
     */
    [[nodiscard]] Result addSection(const QString &section,
                                    const VanteroConfigMap::Section &content = {});

private:
    QSharedDataPointer<internal::ConfigTextData> m_data;
};

} // namespace vn

#endif // VN_CONFIG_VANTEROCONFIGTEXT_H
