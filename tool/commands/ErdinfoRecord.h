// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_COMMANDS_ERDINFORECORD_H
#define VN_TOOL_COMMANDS_ERDINFORECORD_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <array>

namespace vn::tool {

/** What an erdinfo record holds, read by the layout of erdinfo/ErdinfoLayout.h. */
struct ErdinfoRecord
{
    struct Block
    {
        quint32 number;
        quint32 seconds;
        quint32 milliseconds;
    };

    std::array<QString, 3> texts; ///< as far as they are in the record
    qint32 id1;
    qint32 id2;
    quint32 flags;
    std::array<Block, 2> blocks;

    /** What makes the record none, such as "offset 0: the magic is "Evt ", not "EvtD"". */
    QStringList faults;

    /** What a writer of this library does not write, but a reader may pass over. */
    QStringList warnings;

    /** Reads the first bytes of @p bytes, which are at least a record. */
    static ErdinfoRecord read(const QByteArray &bytes);
};

} // namespace vn::tool

#endif // VN_TOOL_COMMANDS_ERDINFORECORD_H
