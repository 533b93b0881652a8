// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_BASE_ENCODEDTEXT_H
#define VN_BASE_ENCODEDTEXT_H

#include "base/Export.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

class QIODevice;

namespace vn {

/**
 * A text together with what its bytes tell beside it, so that an edited text can be written back as
 * the file was: in its encoding, with its byte order mark and its line ends.
 * @code
 * const EncodedText file = EncodedText::read(path);
 * const EncodedText::Result edited = file.encode(edit(file.text()));
 * if (edited)
 *     AtomicFile::replace(path, edited.bytes);
 * else
 *     show(edited.message);
 * @endcode
 * The bytes of encode(text()) are those that were read, whatever they are.
 *
 * Threads: reentrant, a plain value.
 * @since 1.0.0
 */
class VN_BASE_EXPORT EncodedText
{
public:
    /** How the bytes stand for characters. */
    enum class Encoding {
        Utf8,   ///< The bytes are valid UTF-8; those of an ASCII text are, too.
        Latin1, ///< Anything else: a byte a character.
    };

    /** Why a text cannot be written back. */
    enum class Fault {
        None,          ///< It can.
        NoCharacter,   ///< The encoding lacks a character.
        ReadOtherwise, ///< The bytes would be read as another text.
    };

    /** What encode() gives. */
    struct Result
    {
        /** The bytes to be written; null where they must not be. */
        QByteArray bytes;
        /** Why not. */
        Fault fault = Fault::None;
        /** Where the first character stands that the encoding lacks, in UTF-16 code units from 0;
         * -1 without one. */
        int position = -1;
        /** Why not, in words; null where there is no fault. */
        QString message;

        /** Whether the text can be written back. */
        explicit operator bool() const noexcept { return fault == Fault::None; }
    };

    /** An empty text, in UTF-8. */
    EncodedText() = default;

    /** Decodes @p bytes as FileUtils::decodeText() does. Reports nothing: any bytes are a text. */
    explicit EncodedText(const QByteArray &bytes);

    /** The text of the file at @p path.
     * @throws FileException as FileUtils::readBytes() */
    static EncodedText read(const QString &path);

    /** The text that remains in the open @p device.
     * @throws IOException as FileUtils::readBytes() */
    static EncodedText read(QIODevice *device);

    /** The bytes, as they were read. */
    [[nodiscard]] const QByteArray &bytes() const noexcept { return m_bytes; }

    /** The text: without its byte order mark, with its line ends as they are. Never null. */
    [[nodiscard]] const QString &text() const noexcept { return m_text; }

    /** How the bytes stand for the text. */
    [[nodiscard]] Encoding encoding() const noexcept { return m_encoding; }

    /** Whether the bytes begin with the byte order mark of UTF-8, which the text lacks. */
    [[nodiscard]] bool hasByteOrderMark() const noexcept { return m_hasByteOrderMark; }

    /** What new lines are to end with: what the first line ends with, "\r\n" or "\n"; "\n" where no
     * line ends. */
    [[nodiscard]] QString lineEnd() const;

    /** Whether some lines end with "\r\n" and others with "\n". */
    [[nodiscard]] bool hasMixedLineEnds() const noexcept;

    /**
     * The bytes of @p text in this encoding, with this byte order mark. Line ends are written as
     * they are in @p text. Reports what cannot be written by the result.
     *
     * Latin-1 has 256 characters, and a text in it must not come out as valid UTF-8, which it would
     * be taken for. UTF-8 lacks halves of surrogate pairs.
     */
    [[nodiscard]] Result encode(const QString &text) const;

private:
    QByteArray m_bytes{""};
    QString m_text{QLatin1String("")};
    Encoding m_encoding = Encoding::Utf8;
    bool m_hasByteOrderMark = false;
};

} // namespace vn

#endif // VN_BASE_ENCODEDTEXT_H
