// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_UTF8_P_H
#define VN_BASE_UTF8_P_H

/** @file Texts into UTF-8, and UTF-8 told from other encodings. */

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <algorithm>
#include <optional>

namespace vn {

namespace internal {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

/**
 * Gives @p use the UTF-8 of @p text in pieces, one after the other. QString::toUtf8() asks for
 * three bytes a character first, which is more than a QByteArray holds where there are 716 million.
 */
template <typename Use>
void encodeUtf8(const QString &text, Use use)
{
    constexpr int kPiece = 64 * 1024;
    for (int begin = 0; begin < text.size();) {
        int end = text.size() - begin > kPiece ? begin + kPiece : text.size();
        if (end < text.size() && text.at(end - 1).isHighSurrogate())
            --end; // its other half follows
        use(text.midRef(begin, end - begin).toUtf8());
        begin = end;
    }
}

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
    if (!bytes.contains('\xEF'))
        return std::nullopt;
    const char *next = bytes.begin() + (bytes.startsWith(kByteOrderMark) ? 3 : 0);
    bool isSame = true;
    encodeUtf8(text, [&](const QByteArray &piece) {
        isSame = isSame && bytes.end() - next >= piece.size() &&
                 std::equal(piece.begin(), piece.end(), next);
        next += isSame ? piece.size() : 0;
    });
    if (isSame && next == bytes.end())
        return text;
    return std::nullopt;
}

} // namespace internal

} // namespace vn

#endif // VN_BASE_UTF8_P_H
