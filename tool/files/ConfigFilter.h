// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_CONFIGFILTER_H
#define VN_TOOL_FILES_CONFIGFILTER_H

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QRegExp>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace vn {

class ConfigSelection;
class VanteroConfigMap;

namespace tool {

/** Something of a configuration that a user asks for: "address", "firmware", or "SECTION/KEY". */
class ConfigField
{
public:
    /** Reads the @p length characters of the option @p option that begin the text @p whole.
     * @throws ToolError (bad input) with a caret */
    ConfigField(const char *option, const QString &whole, int length);

    /** The same over all of the text. */
    ConfigField(const char *option, const QString &whole)
        : ConfigField(option, whole, whole.size())
    {
    }

    /** "ethernet/NTP" */
    const QString &toString() const { return m_name; }
    bool isFirmware() const { return m_isFirmware; }

    /** Its values in @p config, the newest first; none where it is missing. */
    QStringList valuesIn(const VanteroConfigMap &config) const;

    /** Has @p selection keep what valuesIn() looks for. */
    void addTo(ConfigSelection &selection) const;

private:
    QString m_name;
    bool m_isFirmware = false;
    bool m_isEntry = false; // no value of the header
    QString m_section;
    QString m_key;
};

/**
 * A condition on a configuration, as --where takes it:
 *
 *     FIELD             it is there
 *     FIELD = VALUE     one of its values is it; of "firmware": the same version or pattern
 *     FIELD != VALUE    none is
 *     FIELD ~ PATTERN   one of its values matches a pattern of the shell: * ? [a-z] [^a-z]
 *     firmware < VALUE  and <=, >, >=: by the order of versions
 *
 * without blanks around the operator; FIELD ends before the first of the characters "=!~<>". What
 * is missing counts as one empty value.
 */
class ConfigFilter
{
public:
    /** Reads the condition @p text. @throws ToolError (bad input) with a caret */
    explicit ConfigFilter(const QString &text);

    bool matches(const VanteroConfigMap &config) const;

    /** Has @p selection keep what matches() looks for. */
    void addTo(ConfigSelection &selection) const { m_field.addTo(selection); }

private:
    enum class Operator {
        IsThere,
        Equal,
        Unequal,
        Like,
        Less,
        LessOrEqual,
        Greater,
        GreaterOrEqual
    };

    bool matches(const QString &value) const;

    Operator m_operator;
    ConfigField m_field;
    QString m_value;
    VanteroSoftwareVersion m_version; // of the value of "firmware"
    QRegExp m_pattern;
};

} // namespace tool
} // namespace vn

#endif // VN_TOOL_FILES_CONFIGFILTER_H
