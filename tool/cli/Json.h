// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_JSON_H
#define VN_TOOL_CLI_JSON_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <initializer_list>
#include <utility>
#include <vector>

namespace vn::tool {

/**
 * A JSON value that keeps its members in the order in which they were added, and tells a null
 * string from an empty one.
 * @code
 * Json::object({{"key", key}, {"values", Json::array(values)}}).toText();
 * @endcode
 */
class Json
{
public:
    using Member = std::pair<QString, Json>;

    Json() = default; // null
    Json(bool value);
    Json(int value);
    Json(unsigned value);
    Json(qint64 value);
    Json(quint64 value);
    /** A number in its shortest form that reads back the same; null when it is not finite. */
    Json(double value);
    /** A string; null for a null string. */
    Json(const QString &value);
    /** A string of the tool's own: UTF-8. */
    Json(const char *value);

    static Json array(std::vector<Json> items = {});
    static Json array(const QStringList &items);
    static Json object();
    static Json object(std::initializer_list<std::pair<const char *, Json>> members);

    /** Adds an item to this array. */
    void append(Json item);

    /** Adds a member to this object; a name that is there already is not replaced. */
    void insert(const QString &name, Json value);

    /** The result on what may be several: @p items as the member @p list, with @p errors if there
     * can be any. Where @p isOnly, what was named is a single one, whose members stand before them,
     * too, for those who never name more. */
    static Json listed(const char *list, const Json &items, bool isOnly,
                       const Json *errors = nullptr);

    /** The text in UTF-8, indented by two blanks a level (an array without arrays and objects in it
     * is one line), "\n" at its end. Unpaired surrogates are escaped. */
    QByteArray toText() const;

    /** The same on one line without blanks between, for JSON Lines. */
    QByteArray toLine() const;

private:
    enum class Kind { Scalar, String, Array, Object };

    void write(QByteArray &out, int level) const;
    void writeLine(QByteArray &out) const;

    Kind m_kind = Kind::Scalar;
    QByteArray m_scalar = QByteArrayLiteral("null");
    QString m_string;
    std::vector<Member> m_members; // items of an array have no name
};

} // namespace vn::tool

#endif // VN_TOOL_CLI_JSON_H
