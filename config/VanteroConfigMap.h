// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_VANTEROCONFIGMAP_H
#define VN_CONFIG_VANTEROCONFIGMAP_H

#include "base/Export.h"

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QTextStream;

namespace vn {

/** The null string that lookups return when nothing is found; there while the library is loaded.
 * @since 1.0.0 */
VN_EXPORT extern const QString EMPTY_STRING;

/** The empty section that lookups return when nothing is found; there while the library is loaded.
 * @since 1.0.0
 */
VN_EXPORT extern const QMultiMap<QString, QString> EMPTY_MAP;

/**
 * A configuration in memory: named sections, each an ordered multi-map of `key=value` entries.
 *
 * Section names and keys are ordered by UTF-16 code units and are case-sensitive. Among the values
 * of one key the newest stands first: in lookups, iteration and print. A value read from a line
 * without "=" is null, not merely empty; both print alike.
 * @code
 * VanteroConfigMap map;
 * map.addValue("ethernet", "DNS", "10.0.0.1");
 * map.addValue("ethernet", "DNS", "10.0.0.2");
 * map.value("ethernet", "DNS", 0); // "10.0.0.2", the newest
 * @endcode
 * The sections are public Qt containers: copies share their data until one of them is changed.
 *
 * Errors: no operation reports one. Lookups that find nothing return false, 0, an empty list,
 * EMPTY_STRING or EMPTY_MAP.
 *
 * Threads: reentrant.
 * @since 1.0.0
 */
class VN_EXPORT VanteroConfigMap
{
public:
    /** A section: keys ascending, the values of one key newest first. */
    using Section = QMultiMap<QString, QString>;

    // ---- Lookups -------------------------------------------------------------------------------

    /** Whether there is a section of that name; an empty one counts. */
    [[nodiscard]] bool containsSection(const QString &section) const;

    /** The section, or EMPTY_MAP. The reference stays valid until the map changes. */
    [[nodiscard]] const QMultiMap<QString, QString> &section(const QString &section) const;

    /** Whether the section has at least one entry of @p key. */
    [[nodiscard]] bool contains(const QString &section, const QString &key) const;

    /** The number of entries of @p key. */
    [[nodiscard]] int count(const QString &section, const QString &key) const;

    /**
     * The @p index-th value of @p key, counting from the newest (0); a negative index counts as 0.
     * EMPTY_STRING when the section or the key is missing. The reference stays valid until the map
     * changes.
     *
     * Kept on purpose: the steps are not bounded by the key. From count(section, key) on, the index
     * reaches into the entries of the following keys; past the last entry of the section the result
     * is EMPTY_STRING.
     */
    [[nodiscard]] const QString &value(const QString &section, const QString &key, int index) const;

    /** All values of @p key, newest first. */
    [[nodiscard]] QList<QString> values(const QString &section, const QString &key) const;

    /** The newest entry of @p key; the end of the section when only the key is missing, the end of
     *  EMPTY_MAP when the section is. */
    [[nodiscard]] QMultiMap<QString, QString>::const_iterator find(const QString &section,
                                                                   const QString &key) const;

    /** The names of all sections, ascending. */
    [[nodiscard]] QStringList allSectionKeys() const;

    // ---- Edits ---------------------------------------------------------------------------------

    /** The section, created empty when it is missing. The reference stays valid until the map
     * changes. */
    QMultiMap<QString, QString> &section(const QString &section);

    /** The newest entry of @p key, or the end of the section. Kept on purpose: a missing section is
     *  created. */
    QMultiMap<QString, QString>::iterator find(const QString &section, const QString &key);

    /** Adds an entry before all others of @p key; replaces none. */
    void addValue(const QString &section, const QString &key, const QString &value);

    /** Overwrites the newest value of @p key, leaving older ones as they are, or adds the entry. */
    void setValue(const QString &section, const QString &key, const QString &value);

    /** Removes every entry of @p key and returns their number. Kept on purpose: a missing section
     * is created. */
    int remove(const QString &section, const QString &key);

    /** Removes the section; returns the number of sections removed, 0 or 1. */
    int removeSection(const QString &section);

    /** Removes each section of the list. */
    void removeAllSections(const QStringList &sections);

    /** Stores @p content under the name @p section in place of what was there. */
    void replaceSection(const QString &section, const QMultiMap<QString, QString> &content);

    // ---- Text ----------------------------------------------------------------------------------

    /**
     * Writes every section, names ascending, each with an empty line before and after its block.
     * The text so begins with an empty line; an empty map prints nothing. Line ends are "\n".
     */
    void print(QTextStream &out) const;

    /** Writes one section as a block; a missing one prints as an empty block. */
    void printSection(QTextStream &out, const QString &section) const;

    /**
     * Writes @p content as a block: "SECTION name", a line "key=value" for each entry (keys
     * ascending, newest value first), "ENDSECTION name". Nothing is escaped.
     */
    static void printSection(QTextStream &out, const QString &section,
                             const QMultiMap<QString, QString> &content);

    /** The text of print(). */
    [[nodiscard]] QString toString() const;

    /** The text of printSection() for that section. */
    [[nodiscard]] QString toString(const QString &section) const;

    /** The text of printSection() for @p content. */
    [[nodiscard]] static QString toString(const QString &section,
                                          const QMultiMap<QString, QString> &content);

    /**
     * Reads `key=value` lines from @p in to its end and adds every entry to @p out.
     *
     * Empty lines and lines whose first character is "#" are skipped. The key ends at the first
     * "="; a line without one is a key with a null value. Nothing is trimmed. A key that occurs
     * several times keeps all its values, the last one first, so printing what was parsed reverses
     * their order.
     *
     * Kept on purpose: a line of more than 1024 characters is cut there, the rest is the next line.
     * @throws ParseException only; it raises none of its own, every line is accepted
     */
    static void parseProperties(QTextStream *in, QMultiMap<QString, QString> &out);

    /** The same over @p text. */
    static void parseProperties(const QString &text, QMultiMap<QString, QString> &out);

    /** The entries of @p text as a new section. */
    [[nodiscard]] static QMultiMap<QString, QString> parseProperties(const QString &text);

    // ---- Comparison ----------------------------------------------------------------------------

    /**
     * Whether both have the same sections (empty ones count) with the same keys and the same values
     * in the same order. A null value differs from an empty one: a text tells them apart, too.
     */
    friend VN_EXPORT bool operator==(const VanteroConfigMap &a, const VanteroConfigMap &b) noexcept;

private:
    QMap<QString, QMultiMap<QString, QString>> m_sections;
};

/** Whether the two differ in anything; see operator==(). @since 1.0.0 */
inline bool operator!=(const VanteroConfigMap &a, const VanteroConfigMap &b) noexcept
{
    return !(a == b);
}

} // namespace vn

#endif // VN_CONFIG_VANTEROCONFIGMAP_H
