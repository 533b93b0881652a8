// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_UTF8_P_H
#define VN_BASE_UTF8_P_H

/** @file Tells UTF-8 from other encodings. */

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace vn {

namespace internal {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

/**
 * The text of @p bytes, without a byte order mark at their start, if they are well-formed UTF-8: no
 * overlong forms, no surrogates, nothing past U+10FFFF, no sequence cut off.
 *
 * By QString rather than by a QTextCodec, which is not there any more while the process ends.
 */
inline std::optional<QString> fromWellFormedUtf8(const QByteArray &bytes)
{
    QString text = QString::fromUtf8(bytes.constData(), bytes.size());
    if (!text.contains(QChar(QChar::ReplacementCharacter)))
        return text;
    // That is what anything malformed becomes, unless it stands there itself, as EF BF BD.
    const bool hasMark = bytes.startsWith(kByteOrderMark);
    if (bytes.contains('\xEF') && (hasMark ? kByteOrderMark : "") + text.toUtf8() == bytes)
        return text;
    return std::nullopt;
}

} // namespace internal

} // namespace vn

#endif // VN_BASE_UTF8_P_H
