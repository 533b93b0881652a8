// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/FirmwareLines_p.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QTextStream>

namespace vn {

VanteroSoftwareVersion VanteroSoftwareVersion::fromFwp(QTextStream &stream)
{
    if (!stream.device() && !stream.string())
        return {}; // nothing to read, of which Qt would warn
    QString text;
    QString line;
    for (int i = 0; i < internal::kFirmwareLines && !stream.atEnd(); ++i) {
        stream.readLineInto(&line);
        if (const auto version = internal::namedVersion(line))
            text = version->text;
    }
    return text;
}

VanteroSoftwareVersion VanteroSoftwareVersion::fromFwp(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    (void)buffer.open(QIODevice::ReadOnly); // a buffer of its own bytes always opens
    return fromFwpFile(&buffer);
}

VanteroSoftwareVersion VanteroSoftwareVersion::fromFwpFile(QIODevice *device)
{
    if (!device || !device->isReadable())
        return {};
    const auto versions = internal::namedVersions(*device);
    return versions.empty() ? QString() : versions.back().text;
}

VanteroSoftwareVersion VanteroSoftwareVersion::fromFwpFile(const QString &fileName)
{
    QFile file(fileName);
    if (!fileName.isEmpty())                  // of which Qt would warn
        (void)file.open(QIODevice::ReadOnly); // what cannot be opened reads as empty
    return fromFwpFile(&file);
}

} // namespace vn
