// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The arguments of every command of the tool: they are understood, or refused with a message. No
// command is run.

#include "Support.h"

#include "tool/cli/CommandTable.h"
#include "tool/cli/FileNameCodec.h"

#include <QtCore/QFile>

using namespace vn::tool;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const bool isReady = (installFileNameCodec(), true);
    (void)isReady;

    Input input(data, size);
    const auto &table = commandTable();
    const CommandEntry &entry = table[input.byte() % table.size()];
    QList<QByteArray> words;
    while (!input.atEnd()) {
        // A word from the system ends at its first zero byte.
        const QByteArray word = input.piece();
        words += QByteArray(word.constData());
        // A file name gives back the bytes that it came with, a text stays readable.
        FUZZ_CHECK(QFile::encodeName(fileNameFromArgument(words.last())) == words.last());
        FUZZ_CHECK(toOutputBytes(fileNameFromArgument(words.last())) == words.last());
        FUZZ_CHECK(textFromArgument(words.last()).isEmpty() == words.last().isEmpty());
    }

    const std::unique_ptr<Command> command = entry.create();
    Arguments arguments(entry.fullName(), QString::fromUtf8(entry.summary));
    command->declare(arguments);
    FUZZ_CHECK(!arguments.names().isEmpty());
    try {
        if (!arguments.parse(words))
            FUZZ_CHECK(arguments.help().startsWith(QLatin1String("Usage: ")));
    } catch (const ToolError &e) {
        FUZZ_CHECK(e.code() == ExitCode::BadInput);
        FUZZ_CHECK(e.message().contains(entry.fullName()));
    }
    return 0;
}
