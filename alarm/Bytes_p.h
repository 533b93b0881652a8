// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_BYTES_P_H
#define VN_ALARM_BYTES_P_H

/** @file What the bytes of alarm lists and alarm updates may be a part of. */

#include <QtCore/qglobal.h>

#include <array>
#include <cstring>

namespace vn::internal {

/** Classes of bytes; a byte may be of several, the zero byte is of none. */
enum ByteClass : quint16 {
    Space = 1, // line ends, too
    Digit = 2,
    Hex = 4,
    // Of lists:
    WordStart = 8,
    Word = 16,
    DoubleQuoted = 32, // between such quotes, by itself
    SingleQuoted = 64,
    Escaped = 128, // behind a backslash, as are "u" and the quote of the text
    // Of updates:
    UpdateWord = 256,
};

inline constexpr std::array<quint16, 256> kByteClasses = [] {
    std::array<quint16, 256> classes{};
    const auto add = [&classes](int byteClass, const char *bytes) {
        for (; *bytes != '\0'; ++bytes) {
            quint16 &of = classes[static_cast<unsigned char>(*bytes)];
            of = static_cast<quint16>(of | byteClass);
        }
    };
    add(Space | UpdateWord, " \t");
    add(Space, "\r\n");
    add(Digit | Hex | Word | UpdateWord, "0123456789");
    add(Hex, "abcdefABCDEF");
    add(WordStart | Word | UpdateWord, "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_");
    add(Word, "-");
    add(Word | UpdateWord, "./");
    add(UpdateWord, "[\\]^");
    add(Escaped, "/\\bfnrt");
    for (unsigned byte = 0x20; byte < classes.size(); ++byte)
        if (byte != 0x7f && byte != '\\')
            classes[byte] = static_cast<quint16>(classes[byte] | (byte == '"' ? 0 : DoubleQuoted) |
                                                 (byte == '\'' ? 0 : SingleQuoted));
    return classes;
}();

/** Whether @p byte is of one of the @p byteClasses. */
inline bool is(int byteClasses, char byte)
{
    return kByteClasses[static_cast<unsigned char>(byte)] & byteClasses;
}

/** Whether @p byte is one of @p set; no zero byte is. */
inline bool isIn(char byte, const char *set)
{
    return byte != '\0' && std::strchr(set, byte) != nullptr;
}

/** Behind the bytes of @p byteClass from @p at on. */
inline const char *skip(ByteClass byteClass, const char *at)
{
    while (is(byteClass, *at))
        ++at;
    return at;
}

} // namespace vn::internal

#endif // VN_ALARM_BYTES_P_H
