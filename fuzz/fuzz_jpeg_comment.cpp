// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The comment of a JPEG image of any bytes: found, or refused with a message.

#include "Support.h"

#include "tool/cli/ToolError.h"
#include "tool/files/JpegComment.h"

#include "base/Exceptions.h"
#include "config/VanteroConfigFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const QString name = QStringLiteral("image.jpg");
    (void)vn::tool::isJpeg(bytes);
    try {
        QByteArray comment = vn::tool::jpegComment(bytes, name);
        FUZZ_CHECK(comment.size() <= bytes.size());
        vn::VanteroConfigFile config;
        config.parseJpegComment(&comment);
    } catch (const vn::tool::ToolError &e) {
        FUZZ_CHECK(e.file() == name && !e.message().isEmpty());
    } catch (const vn::ParseException &e) {
        FUZZ_CHECK(!e.message().isEmpty());
    }
    return 0;
}
