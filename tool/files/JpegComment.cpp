// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/JpegComment.h"

#include "tool/cli/ToolError.h"

#include <csetjmp>
#include <cstdio> // jpeglib.h needs it before

#include <jpeglib.h>

namespace vn::tool {

namespace {

/** libjpeg's error handler, with the way back out of its functions. */
struct ErrorHandler
{
    jpeg_error_mgr manager; // first: libjpeg knows only this part
    std::jmp_buf wayBack;
    char message[JMSG_LENGTH_MAX];
};

[[noreturn]] void onError(j_common_ptr info)
{
    auto *handler = reinterpret_cast<ErrorHandler *>(info->err);
    handler->manager.format_message(info, handler->message);
    // libjpeg is C: an exception must not pass through it. NOLINTNEXTLINE(cert-err52-cpp)
    std::longjmp(handler->wayBack, 1);
}

void onMessage(j_common_ptr /*info*/, int /*level*/)
{
    // Warnings concern the image data; libjpeg would print them.
}

/** Reads the header; false on an error. No object with a destructor may live here: the way back is
 * a jump. */
bool readHeader(jpeg_decompress_struct *info, ErrorHandler *handler, const QByteArray &bytes)
{
    constexpr unsigned kWholeSegment = 0xFFFF;
    if (setjmp(handler->wayBack) != 0) // NOLINT(cert-err52-cpp): see onError()
        return false;
    jpeg_create_decompress(info);
    jpeg_mem_src(info, reinterpret_cast<const unsigned char *>(bytes.constData()),
                 static_cast<unsigned long>(bytes.size()));
    jpeg_save_markers(info, JPEG_COM, kWholeSegment);
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
    ErrorHandler handler = {};
    info.err = jpeg_std_error(&handler.manager);
    handler.manager.error_exit = onError;
    handler.manager.emit_message = onMessage;

    const bool ok = readHeader(&info, &handler, bytes);
    QByteArray comment;
    if (ok)
        for (const jpeg_marker_struct *marker = info.marker_list; marker; marker = marker->next)
            comment.append(reinterpret_cast<const char *>(marker->data), int(marker->data_length));
    jpeg_destroy_decompress(&info);
    if (!ok)
        throw ToolError(ExitCode::BadInput, QLatin1String("damaged JPEG image: ") +
                                                QString::fromLatin1(handler.message))
            .at(name);
    return comment;
}

} // namespace vn::tool
