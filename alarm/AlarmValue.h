// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMVALUE_H
#define VN_ALARM_ALARMVALUE_H

#include "base/Export.h"
#include "base/Finding.h"

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVector>

#include <memory>

class QScriptEngine;
class QScriptValue;

namespace vn {

namespace internal {
class AlarmDocumentData;
}

class AlarmMember;

/**
 * One value of an AlarmDocument or AlarmUpdateDocument: where it stands, what it is, and what is
 * inside of it in the order of the text.
 *
 * A value keeps its document alive; copies are cheap. Lookups report nothing: what a value does not
 * have is empty.
 *
 * Threads: reentrant; values of one document may be read on several threads at once.
 * @since 1.0.0
 */
class VN_EXPORT AlarmValue
{
public:
    /** What a value is. */
    enum class Kind {
        Invalid, ///< No value at all.
        Null,    ///< `null` of a list.
        Bool,    ///< `true` or `false`.
        Number,  ///< A number.
        Text,    ///< A text, in quotes or without.
        Date,    ///< A day of an update, `2010-05-01`.
        Time,    ///< A time of an update, `12:30:00`.
        Array,   ///< An array, or several texts of an update.
        Object,  ///< An object, or the pairs of an update.
    };

    /** No value. */
    AlarmValue();
    /** The same value. */
    AlarmValue(const AlarmValue &other);
    /** The value of @p other. */
    AlarmValue &operator=(const AlarmValue &other);
    ~AlarmValue();

    /** What it is. */
    [[nodiscard]] Kind kind() const noexcept;

    /** Where it stands, quotes and brackets included: bytes, and columns as alarmTextRange() has
     * them. */
    [[nodiscard]] TextRange range() const;

    /** The text of a text, as the parsers publish it; of any other value the bytes of range(). */
    [[nodiscard]] QString text() const;

    /** The number; 1 for true, 0 for all else. */
    [[nodiscard]] double number() const noexcept;

    /** How many values are directly inside: elements of an array, members of an object, those with
     * a repeated key each; else 0. */
    [[nodiscard]] int count() const noexcept;

    /** What is directly inside, in the order of the text. */
    [[nodiscard]] QVector<AlarmMember> members() const;

    /** The value of the first member of that key; invalid when there is none. */
    [[nodiscard]] AlarmValue operator[](const QString &key) const;

    /** The value as AlarmListParser publishes it: arrays in reverse order, objects as QVariantMap
     * with the first value of a repeated key first. Days and times of an update are invalid. */
    [[nodiscard]] QVariant toVariant() const;

    /** The value of an AlarmUpdateDocument as AlarmUpdateParser publishes it: what has to be an
     * object, array or date is one of @p engine. An invalid value is an invalid script value; so
     * are null and the objects inside of an alarm list. */
    [[nodiscard]] QScriptValue toScriptValue(QScriptEngine *engine) const;

private:
    friend class AlarmDocument;
    friend class AlarmUpdateDocument;

    AlarmValue(std::shared_ptr<const internal::AlarmDocumentData> document, int index);

    std::shared_ptr<const internal::AlarmDocumentData> m_document;
    int m_index = -1;
};

/** What is inside of an array or object. @since 1.0.0 */
class AlarmMember
{
public:
    /** The key, as the parsers publish it; null in an array. */
    QString key;
    /** Where the key stands, quotes included; empty, before the value, in an array. */
    TextRange keyRange;
    /** The value. */
    AlarmValue value;
};

} // namespace vn

#endif // VN_ALARM_ALARMVALUE_H
