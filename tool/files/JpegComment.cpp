// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/JpegComment.h"

#include "tool/cli/ToolError.h"

#include <csetjmp>
#include <cstdio> // jpeglib.h needs it before
#include <new>

#include <jpeglib.h>

namespace vn::tool {

namespace {

/** One reading of a header: libjpeg's error handler, the way back out of its functions, and what is
 * read. */
struct Reading
{
    jpeg_error_mgr manager; // first: libjpeg knows only this part
    std::jmp_buf wayBack;
    char message[JMSG_LENGTH_MAX];
    QByteArray *comment;
    bool isOutOfMemory;
};

Reading *readingOf(jpeg_common_struct *info)
{
    return reinterpret_cast<Reading *>(info->err);
}

[[noreturn]] void onError(j_common_ptr info)
{
    Reading *reading = readingOf(info);
    reading->manager.format_message(info, reading->message);
    // libjpeg is C: an exception must not pass through it. NOLINTNEXTLINE(cert-err52-cpp)
    std::longjmp(reading->wayBack, 1);
}

void onMessage(j_common_ptr /*info*/, int /*level*/)
{
    // Warnings concern the image data; libjpeg would print them.
}

/** The next byte; behind the end those that libjpeg puts there, which end the image. */
unsigned takeByte(jpeg_decompress_struct *info)
{
    jpeg_source_mgr *source = info->src;
    if (source->bytes_in_buffer == 0)
        (void)source->fill_input_buffer(info); // out of memory it never has to wait
    --source->bytes_in_buffer;
    return *source->next_input_byte++;
}

/** Takes one comment segment. libjpeg would keep them, too, but in a list that it walks to its end
 * for each. */
boolean onComment(j_decompress_ptr info)
{
    constexpr unsigned kSizeOfLength = 2; // which counts itself
    const unsigned high = takeByte(info);
    const unsigned length = high << 8 | takeByte(info);
    if (length <= kSizeOfLength)
        return TRUE; // a length below that is none, and nothing follows
    const unsigned size = length - kSizeOfLength;
    const jpeg_source_mgr *source = info->src;
    Reading *reading = readingOf(reinterpret_cast<j_common_ptr>(info));
    try {
        // One that is cut is of no use: without an image behind it the header is damaged.
        if (size <= source->bytes_in_buffer)
            reading->comment->append(reinterpret_cast<const char *>(source->next_input_byte),
                                     static_cast<int>(size));
    } catch (const std::bad_alloc &) {
        reading->isOutOfMemory = true;
    }
    if (reading->isOutOfMemory)
        std::longjmp(reading->wayBack, 1); // NOLINT(cert-err52-cpp): see onError()
    source->skip_input_data(info, static_cast<long>(size));
    return TRUE;
}

/** Reads the header; false on an error. No object with a destructor may live here: the way back is
 * a jump. */
bool readHeader(jpeg_decompress_struct *info, Reading *reading, const QByteArray &bytes)
{
    if (setjmp(reading->wayBack) != 0) // NOLINT(cert-err52-cpp): see onError()
        return false;
    jpeg_create_decompress(info);
    jpeg_mem_src(info, reinterpret_cast<const unsigned char *>(bytes.constData()),
                 static_cast<unsigned long>(bytes.size()));
    jpeg_set_marker_processor(info, JPEG_COM, onComment);
    jpeg_read_header(info, TRUE);
    return true;
}

} // namespace

bool isJpeg(const QByteArray &bytes)
{
    return bytes.startsWith("\xFF\xD8\xFF");
}

QByteArray jpegComment(const QByteArray &bytes, const QString &name)
{
    jpeg_decompress_struct info = {};
    Reading reading = {};
    QByteArray comment;
    reading.comment = &comment;
    info.err = jpeg_std_error(&reading.manager);
    reading.manager.error_exit = onError;
    reading.manager.emit_message = onMessage;

    const bool ok = readHeader(&info, &reading, bytes);
    jpeg_destroy_decompress(&info);
    if (reading.isOutOfMemory)
        throw std::bad_alloc();
    if (!ok)
        throw ToolError(ExitCode::BadInput, QLatin1String("damaged JPEG image: ") +
                                                QString::fromLatin1(reading.message))
            .because(QStringLiteral("image-damaged"))
            .at(name);
    return comment;
}

} // namespace vn::tool
