// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_COMMANDS_ALARMTREE_H
#define VN_TOOL_COMMANDS_ALARMTREE_H

#include "tool/cli/Json.h"
#include "tool/cli/ToolError.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <utility>
#include <vector>

class QScriptValue;
class QVariant;

namespace vn {
class ParseException;
}

namespace vn {
class AlarmValue;
}

namespace vn::tool {

/** What an alarm list or alarm update holds, in the order and with the duplicates of the library.
 */
class AlarmTree
{
public:
    /** The tree of an alarm list. */
    explicit AlarmTree(const QVariant &value);

    /** The object of an alarm update. */
    explicit AlarmTree(const QScriptValue &value);

    /** An alarm list in the order of its text. */
    explicit AlarmTree(const AlarmValue &value);

    /** Whether an object in it has a key twice. */
    bool hasRepeatedKeys() const;

    /**
     * The tree as JSON. Invalid dates and numbers that are not finite are null; a date is local
     * time. The values of a repeated key are one array, in the order of the tree; @p repeated gets
     * the JSON pointer (RFC 6901) of each such array.
     */
    Json toJson(QStringList &repeated) const;

    /** The tree as lines, indented by two blanks a level: "key: value" in objects, "- value" in
     * lists. Strings are quoted and escaped as in JSON, keys where they are more than a word. */
    QString toText() const;

private:
    enum class Kind { Scalar, List, Object };

    Json toJson(const QString &pointer, QStringList &repeated) const;
    bool isBlock() const { return m_kind != Kind::Scalar && !m_children.empty(); }
    void write(QString &text, int level) const;

    Kind m_kind = Kind::Scalar;
    Json m_json;                                           // of a scalar
    QString m_text;                                        // of a scalar
    std::vector<std::pair<QString, AlarmTree>> m_children; // in a list without names
};

/** The error that @p exception means for the text @p bytes of the file @p name, with the line,
 * counted from @p firstLine, and a mark under the offending token. */
ToolError alarmError(const ParseException &exception, const QString &name, const QByteArray &bytes,
                     qint64 firstLine = 1);

} // namespace vn::tool

#endif // VN_TOOL_COMMANDS_ALARMTREE_H
