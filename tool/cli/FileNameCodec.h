// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TOOL_CLI_FILENAMECODEC_H
#define VN_TOOL_CLI_FILENAMECODEC_H

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace vn::tool {

/**
 * Makes file names UTF-8 for all of Qt, whatever the locale says. A byte that is not part of valid
 * UTF-8 becomes the unpaired surrogate U+DC00 + byte and turns back into the byte on output, so
 * that every file name there is can be given as an argument, opened, and named in a message.
 * To be called once, before anything else of Qt.
 */
void installFileNameCodec();

/** The bytes of @p text as they are printed: UTF-8, a file name with the bytes it came with. */
QByteArray toOutputBytes(const QString &text);

/** A file name among the arguments, or in a list. */
QString fileNameFromArgument(const QByteArray &argument);

/** Any other argument: UTF-8, or Latin-1 when it is not valid UTF-8. */
QString textFromArgument(const QByteArray &argument);

} // namespace vn::tool

#endif // VN_TOOL_CLI_FILENAMECODEC_H
