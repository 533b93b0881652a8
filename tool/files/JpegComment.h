// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_FILES_JPEGCOMMENT_H
#define VN_TOOL_FILES_JPEGCOMMENT_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vn::tool {

/** Whether @p bytes begin as a JPEG image does. */
bool isJpeg(const QByteArray &bytes);

/**
 * The content of all comment segments (COM) before the image data of the JPEG image @p bytes,
 * joined in their order; null when there is none. The image data are not looked at.
 * @throws ToolError (bad input) for the file @p name when the image's header is damaged
 */
QByteArray jpegComment(const QByteArray &bytes, const QString &name);

} // namespace vn::tool

#endif // VN_TOOL_FILES_JPEGCOMMENT_H
