// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "base/EncodedText.h"

#include "base/FileUtils.h"
#include "base/Utf8_p.h"

namespace vn {

namespace {

using internal::kByteOrderMark;

/** The first code point of @p text that is larger than @p last or half a surrogate pair, and its
 * place; -1 where there is none. */
int findMisfit(const QString &text, uint last, uint *codePoint)
{
    for (int i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        const bool isPair =
            unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        *codePoint = isPair ? QChar::surrogateToUcs4(unit, text.at(i + 1)) : unit.unicode();
        if (*codePoint > last || (unit.isSurrogate() && !isPair))
            return i;
        i += isPair ? 1 : 0;
    }
    return -1;
}

} // namespace

EncodedText::EncodedText(const QByteArray &bytes)
    : m_bytes(bytes)
    , m_text(FileUtils::decodeText(bytes))
{
    if (!internal::fromWellFormedUtf8(bytes))
        m_encoding = Encoding::Latin1;
    else
        m_hasByteOrderMark = bytes.startsWith(kByteOrderMark);
}

EncodedText EncodedText::read(const QString &path)
{
    return EncodedText(FileUtils::readBytes(path));
}

EncodedText EncodedText::read(QIODevice *device)
{
    return EncodedText(FileUtils::readBytes(device));
}

QString EncodedText::lineEnd() const
{
    const int end = m_text.indexOf(QLatin1Char('\n'));
    const bool isDouble = end > 0 && m_text.at(end - 1) == QLatin1Char('\r');
    return isDouble ? QString::fromLatin1("\r\n") : QString::fromLatin1("\n");
}

bool EncodedText::hasMixedLineEnds() const noexcept
{
    bool hasSingle = false;
    bool hasDouble = false;
    for (int end = m_text.indexOf(QLatin1Char('\n')); end >= 0;
         end = m_text.indexOf(QLatin1Char('\n'), end + 1))
        (end > 0 && m_text.at(end - 1) == QLatin1Char('\r') ? hasDouble : hasSingle) = true;
    return hasSingle && hasDouble;
}

EncodedText::Result EncodedText::encode(const QString &text) const
{
    const bool isLatin1 = m_encoding == Encoding::Latin1;
    Result result;
    uint codePoint = 0;
    result.position = findMisfit(text, isLatin1 ? 0xFF : QChar::LastValidCodePoint, &codePoint);
    if (result.position >= 0) {
        result.fault = Fault::NoCharacter;
        const QString number = QString::number(codePoint, 16).toUpper();
        result.message =
            QStringLiteral("the file is %1, which has no \"%2\" (U+%3)")
                .arg(isLatin1 ? QLatin1String("Latin-1") : QLatin1String("UTF-8"),
                     QString::fromUcs4(&codePoint, 1), number.rightJustified(4, QLatin1Char('0')));
        return result;
    }
    if (isLatin1) {
        result.bytes = text.toLatin1();
    } else {
        result.bytes = m_hasByteOrderMark ? kByteOrderMark : "";
        result.bytes.reserve(text.size() + result.bytes.size());
        internal::encodeUtf8(text, [&](const QByteArray &piece) { result.bytes += piece; });
    }
    // What is left of a Latin-1 text may happen to be valid UTF-8, and the first character of a
    // text without a byte order mark may be one.
    if (FileUtils::decodeText(result.bytes) != text) {
        result.bytes = QByteArray();
        result.fault = Fault::ReadOtherwise;
        result.message = isLatin1
                             ? QString::fromLatin1(
                                   "the result would be read in another encoding than the file's")
                             : QString::fromLatin1(
                                   "the text begins with a byte order mark, which reading drops");
    }
    return result;
}

} // namespace vn
