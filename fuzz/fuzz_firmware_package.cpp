// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The version line of a firmware package: over bytes, a device and a stream, against a plain loop.

#include "Support.h"

#include "version/FirmwareHead.h"
#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QBuffer>
#include <QtCore/QTextStream>

using vn::VanteroSoftwareVersion;

namespace {

QString readPlainly(QTextStream &stream)
{
    QString text;
    for (int i = 0; i < 30 && !stream.atEnd(); ++i) {
        const QString line = stream.readLine();
        if (line.startsWith(QLatin1String("## Version:")))
            text = line.mid(12);
        if (line.startsWith(QLatin1String("# Version:")))
            text = line.mid(11);
        if (line.endsWith(QLatin1String("UPLD")))
            text = line.mid(2, line.size() - 7);
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    // Blocks of a device matter only to long texts, which take many bytes to invent.
    const int padding = static_cast<int>(input.byte()) * 128;
    const QByteArray bytes = QByteArray(padding, '#') + input.rest();

    QTextStream plain(bytes, QIODevice::ReadOnly);
    const QString expected = readPlainly(plain);

    FUZZ_EQUAL(QString(VanteroSoftwareVersion::fromFwp(bytes)), expected);

    QTextStream stream(bytes, QIODevice::ReadOnly);
    FUZZ_EQUAL(QString(VanteroSoftwareVersion::fromFwp(stream)), expected);
    FUZZ_EQUAL(stream.readLine(), plain.readLine());

    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    FUZZ_EQUAL(QString(VanteroSoftwareVersion::fromFwpFile(&buffer)), expected);

    const vn::FirmwareHead head = vn::FirmwareHead::read(bytes);
    FUZZ_EQUAL(QString(head.version()), expected);
    FUZZ_CHECK(!head.lines().isEmpty() || !head.findings().isEmpty());
    for (const vn::FirmwareLine &line : head.lines()) {
        FUZZ_CHECK(line.line >= 1 && line.line <= 30);
        FUZZ_CHECK(line.range.length == QString(line.version).size());
    }
    return 0;
}
