// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_ALARMDOCUMENT_H
#define VN_ALARM_ALARMDOCUMENT_H

#include "alarm/AlarmValue.h"
#include "base/Export.h"

class QByteArray;

namespace vn {

/**
 * An alarm list with its places: every value in the order of the text, repeated keys each.
 *
 * Where AlarmListParser publishes a tree, with arrays reversed and keys sorted, a document makes no
 * tree: it keeps the text and where its values stand, which is cheaper.
 * @code
 * const AlarmDocument list = AlarmDocument::parse(bytes);
 * for (const AlarmMember &member : list.root().members())
 *     show(member.key, member.value.text(), member.value.range().line);
 * @endcode
 * Threads: reentrant, but for texts with quoted strings, which are parsed on one thread at a time,
 * as by AlarmListParser. Copies share their content, which never changes.
 * @since 1.0.0
 */
class VN_EXPORT AlarmDocument
{
public:
    /** A document without a value. */
    AlarmDocument();

    /**
     * Reads @p text as a new AlarmListParser does.
     * @throws ParseException with the parser's message and place; where the parser would end the
     * process, because of a comment that ends with "*" as the last byte, with the message of the
     * scanner, "flex scanner jammed", and the place of the comment's end
     */
    [[nodiscard]] static AlarmDocument parse(const QByteArray &text);

    /** The array or object that the list is; invalid in a document without a value. */
    [[nodiscard]] const AlarmValue &root() const noexcept { return m_root; }

private:
    AlarmValue m_root;
};

} // namespace vn

#endif // VN_ALARM_ALARMDOCUMENT_H
