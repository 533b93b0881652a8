// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The header reader over a text, over a stream and the reference's: the same values, and the stream
// stands at the same place.

#include "Support.h"

#include "config/VanteroConfigFile.h"
#include "reference/ConfigReference.h"

#include <QtCore/QTextStream>

using vn::VanteroConfigFile;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QStringList rest = reference::linesOf(text);
    QMap<QString, reference::Section> sections;
    const bool isComplete = reference::readHeader(rest, sections);
    const reference::Section head = sections.value(VanteroConfigFile::HEAD_SECTION);

    VanteroConfigFile config;
    FUZZ_CHECK(config.parseHeader(text) == isComplete);
    FUZZ_EQUAL(config.getFileVersion(), head.value(QStringLiteral("File Version")));
    FUZZ_EQUAL(config.getSoftwareVersion(), head.value(QStringLiteral("Software Version")));
    FUZZ_EQUAL(config.getFactoryIP(), head.value(QStringLiteral("Factory IP")));
    FUZZ_CHECK(config.section(VanteroConfigFile::HEAD_SECTION) == head);

    QString copy = text;
    QTextStream stream(&copy, QIODevice::ReadOnly);
    VanteroConfigFile streamed;
    FUZZ_CHECK(streamed.parseHeader(&stream) == isComplete);
    FUZZ_EQUAL(streamed.toString(), config.toString());
    for (const QString &line : qAsConst(rest))
        FUZZ_EQUAL(stream.readLine(), line);
    FUZZ_CHECK(stream.atEnd());
    return 0;
}
