// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ERDINFO_ERDINFOFIELDS_H
#define VN_ERDINFO_ERDINFOFIELDS_H

/**
 * @file
 * The fields of an erdinfo record: the one table that reading, writing, the tool and the documents
 * are made from.
 *
 * The file begins with one record of 488 bytes: a header record of 332 and a data record of 156
 * bytes. Bytes behind it belong to nobody and stay as they are. All integers are little-endian;
 * nothing is aligned or padded.
 *
 * To add a field: a member in ErdinfoRecord.h (and its operator==), a row here, and
 * `scripts/erdinfo-layout update`. Threads: constants.
 */

#include "erdinfo/ErdinfoRecord.h"

#include <iterator>
#include <string>
#include <variant>

namespace vn {

/** A row of the table of fields. @since 1.0.0 */
struct ErdinfoField
{
    /** How the bytes are read. */
    enum class Type {
        Magic,    ///< four ASCII characters
        U16,      ///< unsigned, 16 bits
        U32,      ///< unsigned, 32 bits
        I32,      ///< signed (two's complement), 32 bits
        Time,     ///< u32 whole seconds since 1970, their low 32 bits; u32 milliseconds, 0 to 999
        Text,     ///< UTF-32, the rest of the field 0; without a 0 at its end where it fills it
        Reserved, ///< 0
    };
    /** What the bytes are for. */
    enum class Role {
        Constant, ///< always `constant`
        Value,    ///< a value of the application, `member`
        Flags,    ///< `member`, which no writer of this library sets
        Copy,     ///< once more what `member` holds
        Reserved, ///< 0
    };
    /** The member of the record that a field holds. */
    using Member = std::variant<std::monostate, qint32 ErdinfoRecord::*, quint32 ErdinfoRecord::*,
                                ErdinfoTime ErdinfoRecord::*, std::u32string ErdinfoRecord::*>;

    /** Where the field begins, in bytes from the start of the file. */
    int offset;
    /** How long it is, in bytes. */
    int size;
    /** How its bytes are read. */
    Type type;
    /** The name, of a-z, 0-9 and "_". */
    const char *name;
    /** What its bytes are for. */
    Role role;
    /** What it holds, in words. */
    const char *what;
    /** The member; none of constants and of what is reserved. */
    Member member = {};
    /** The value of a constant. */
    quint32 constant = 0;
};

/** The fields in the order of their offsets, without gaps. @since 1.0.0 */
// clang-format off
constexpr ErdinfoField kErdinfoFields[] = {
    // header record
    {0, 4, ErdinfoField::Type::Magic, "magic", ErdinfoField::Role::Constant, "magic", {}, 0x44747645}, // "EvtD"
    {4, 4, ErdinfoField::Type::U32, "format", ErdinfoField::Role::Constant, "format code", {}, 0x01080002},
    {8, 4, ErdinfoField::Type::U32, "header_size", ErdinfoField::Role::Constant, "size of the header record", {}, 332},
    {12, 4, ErdinfoField::Type::U32, "data_size", ErdinfoField::Role::Constant, "size of the data record", {}, 156},
    {16, 4, ErdinfoField::Type::U32, "flags", ErdinfoField::Role::Flags, "flags: bits 0 to 7 a small field, bit 8 a flag, the rest reserved", &ErdinfoRecord::flags},
    {20, 128, ErdinfoField::Type::Text, "text1", ErdinfoField::Role::Value, "first text", &ErdinfoRecord::text1},
    {148, 128, ErdinfoField::Type::Reserved, "reserved1", ErdinfoField::Role::Reserved, "reserved"},
    {276, 16, ErdinfoField::Type::Text, "text2", ErdinfoField::Role::Value, "second text", &ErdinfoRecord::text2},
    {292, 32, ErdinfoField::Type::Text, "text3", ErdinfoField::Role::Value, "third text", &ErdinfoRecord::text3},
    {324, 8, ErdinfoField::Type::Reserved, "reserved2", ErdinfoField::Role::Reserved, "reserved"},
    // data record
    {332, 4, ErdinfoField::Type::I32, "id1", ErdinfoField::Role::Value, "first number", &ErdinfoRecord::id1},
    {336, 4, ErdinfoField::Type::I32, "id2", ErdinfoField::Role::Value, "second number", &ErdinfoRecord::id2},
    {340, 4, ErdinfoField::Type::Reserved, "reserved3", ErdinfoField::Role::Reserved, "reserved"},
    // its first block
    {344, 4, ErdinfoField::Type::U32, "block1_code1", ErdinfoField::Role::Constant, "block's first code", {}, 1},
    {348, 4, ErdinfoField::Type::U32, "block1_code2", ErdinfoField::Role::Constant, "block's second code", {}, 2},
    {352, 4, ErdinfoField::Type::U32, "number1", ErdinfoField::Role::Value, "first unsigned number", &ErdinfoRecord::number1},
    {356, 8, ErdinfoField::Type::Time, "time1", ErdinfoField::Role::Value, "first time", &ErdinfoRecord::time1},
    {364, 4, ErdinfoField::Type::I32, "block1_id", ErdinfoField::Role::Copy, "number that the block repeats", &ErdinfoRecord::id1},
    {368, 2, ErdinfoField::Type::U16, "block1_code3", ErdinfoField::Role::Constant, "block's third code", {}, 1},
    {370, 38, ErdinfoField::Type::Reserved, "block1_reserved", ErdinfoField::Role::Reserved, "reserved"},
    // its second block
    {408, 4, ErdinfoField::Type::U32, "block2_code1", ErdinfoField::Role::Constant, "block's first code", {}, 1},
    {412, 4, ErdinfoField::Type::U32, "block2_code2", ErdinfoField::Role::Constant, "block's second code", {}, 2},
    {416, 4, ErdinfoField::Type::U32, "number2", ErdinfoField::Role::Value, "second unsigned number", &ErdinfoRecord::number2},
    {420, 8, ErdinfoField::Type::Time, "time2", ErdinfoField::Role::Value, "second time", &ErdinfoRecord::time2},
    {428, 4, ErdinfoField::Type::I32, "block2_id", ErdinfoField::Role::Copy, "number that the block repeats", &ErdinfoRecord::id2},
    {432, 2, ErdinfoField::Type::U16, "block2_code3", ErdinfoField::Role::Constant, "block's third code", {}, 1},
    {434, 38, ErdinfoField::Type::Reserved, "block2_reserved", ErdinfoField::Role::Reserved, "reserved"},
    {472, 16, ErdinfoField::Type::Reserved, "reserved4", ErdinfoField::Role::Reserved, "reserved"},
};
// clang-format on

/** The field that the byte at @p offset belongs to; null beyond the record. @since 1.0.0 */
[[nodiscard]] constexpr const ErdinfoField *erdinfoFieldAt(qint64 offset) noexcept
{
    for (const ErdinfoField &field : kErdinfoFields)
        if (offset >= field.offset && offset < field.offset + field.size)
            return &field;
    return nullptr;
}

} // namespace vn

#endif // VN_ERDINFO_ERDINFOFIELDS_H
