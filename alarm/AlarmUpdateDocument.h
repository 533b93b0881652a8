// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMUPDATEDOCUMENT_H
#define VN_ALARM_ALARMUPDATEDOCUMENT_H

#include "alarm/AlarmValue.h"
#include "base/Export.h"

class QByteArray;

namespace vn {

/**
 * An alarm update with its places: every pair in the order of the text, repeated keys each. It
 * needs no script engine; AlarmValue::toScriptValue() makes what AlarmUpdateParser publishes.
 * @code
 * const AlarmUpdateDocument update = AlarmUpdateDocument::parse("state=1;cams=front,back");
 * update.root()["cams"].members().first().value.text(); // "front"
 * @endcode
 * Threads: reentrant. Copies share their content, which never changes.
 * @since 1.0.0
 */
class VN_EXPORT AlarmUpdateDocument
{
public:
    /** A document without a value. */
    AlarmUpdateDocument();

    /**
     * Reads @p text as a new AlarmUpdateParser does.
     * @throws ParseException with the parser's message and place
     */
    [[nodiscard]] static AlarmUpdateDocument parse(const QByteArray &text);

    /** The object whose members are the pairs, or the one of an error report; invalid in a document
     * without a value. */
    [[nodiscard]] const AlarmValue &root() const noexcept { return m_root; }

    /** Whether the text is an error report, `#text:1.0`. */
    [[nodiscard]] bool isErrorReport() const noexcept { return m_isErrorReport; }

private:
    AlarmValue m_root;
    bool m_isErrorReport = false;
};

} // namespace vn

#endif // VN_ALARM_ALARMUPDATEDOCUMENT_H
