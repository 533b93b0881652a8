// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/FileNameCodec.h"

#include <QtCore/QFile>
#include <QtCore/QTextCodec>

#include <algorithm>
#include <cstring>

namespace vn::tool {

namespace {

constexpr ushort kEscape = 0xDC00; // plus a byte of 0x80 to 0xFF

/** The result of decodeSequence: its length and code point; no length for a bad byte. */
struct Sequence
{
    int length;
    bool incomplete; // the bytes so far are the beginning of a valid sequence
    uint codePoint;
};

/** Reads one UTF-8 sequence of the Unicode standard's table 3-7 (no overlong form, no surrogate,
 * nothing beyond U+10FFFF). */
Sequence decodeSequence(const uchar *bytes, int size)
{
    const uchar lead = bytes[0];
    if (lead < 0x80)
        return {1, false, lead};
    if (lead < 0xC2 || lead > 0xF4)
        return {0, false, 0};
    const int length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    uint codePoint = lead & (0xFFU >> (length + 1));
    for (int i = 1; i < length; ++i) {
        if (i == size)
            return {0, true, 0};
        uchar low = 0x80;
        uchar high = 0xBF;
        if (i == 1) {
            low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : low;
            high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : high;
        }
        if (bytes[i] < low || bytes[i] > high)
            return {0, false, 0};
        codePoint = codePoint << 6 | (bytes[i] & 0x3FU);
    }
    return {length, false, codePoint};
}

class FileNameCodec : public QTextCodec
{
public:
    QByteArray name() const override { return QByteArrayLiteral("vantero-file-name"); }
    int mibEnum() const override { return -1; } // not registered

protected:
    QString convertToUnicode(const char *chars, int size, ConverterState *state) const override
    {
        // A stream hands over its bytes in pieces: the start of a sequence waits for the next one.
        QByteArray bytes;
        if (state && state->remainingChars > 0) {
            bytes.append(reinterpret_cast<const char *>(state->state_data), state->remainingChars);
            state->remainingChars = 0;
        }
        bytes.append(chars, size);

        QString text;
        text.reserve(bytes.size());
        const auto *data = reinterpret_cast<const uchar *>(bytes.constData());
        for (int i = 0; i < bytes.size();) {
            const Sequence sequence = decodeSequence(data + i, bytes.size() - i);
            if (sequence.incomplete && state) {
                state->remainingChars = bytes.size() - i; // three at most
                std::memcpy(state->state_data, data + i, std::size_t(state->remainingChars));
                break;
            }
            if (sequence.length == 0) {
                text += QChar(ushort(kEscape + data[i]));
                ++i;
            } else {
                if (QChar::requiresSurrogates(sequence.codePoint)) {
                    text += QChar(QChar::highSurrogate(sequence.codePoint));
                    text += QChar(QChar::lowSurrogate(sequence.codePoint));
                } else {
                    text += QChar(ushort(sequence.codePoint));
                }
                i += sequence.length;
            }
        }
        return text;
    }

    QByteArray convertFromUnicode(const QChar *chars, int size,
                                  ConverterState * /*state*/) const override
    {
        QByteArray bytes;
        bytes.reserve(size);
        int plain = 0; // where the text begins that is still to be encoded as it stands
        const auto flush = [&](int end) {
            bytes += QString::fromRawData(chars + plain, end - plain).toUtf8();
        };
        for (int i = 0; i < size; ++i) {
            const ushort unit = chars[i].unicode();
            if (chars[i].isHighSurrogate() && i + 1 < size && chars[i + 1].isLowSurrogate()) {
                ++i;
            } else if (unit >= kEscape + 0x80 && unit <= kEscape + 0xFF) {
                flush(i);
                bytes += char(unit - kEscape);
                plain = i + 1;
            }
        }
        flush(size);
        return bytes;
    }
};

} // namespace

void installFileNameCodec()
{
    QTextCodec::setCodecForLocale(new FileNameCodec); // Qt owns its codecs
} // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the constructor registers the codec with Qt

QByteArray toOutputBytes(const QString &text)
{
    return QFile::encodeName(text);
}

QString fileNameFromArgument(const QByteArray &argument)
{
    const QString name = QFile::decodeName(argument);
    // Qt takes a name that begins so for one of its resources.
    return name.startsWith(QLatin1Char(':')) ? QLatin1String("./") + name : name;
}

QString textFromArgument(const QByteArray &argument)
{
    const auto *data = reinterpret_cast<const uchar *>(argument.constData());
    for (int i = 0; i < argument.size();) {
        const int length = decodeSequence(data + i, argument.size() - i).length;
        if (length == 0)
            return QString::fromLatin1(argument);
        i += length;
    }
    // Qt takes U+FEFF at the start of bytes for a byte order mark, and drops it.
    return QString::fromUtf8('x' + argument).mid(1);
}

} // namespace vn::tool
