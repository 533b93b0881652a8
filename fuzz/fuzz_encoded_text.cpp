// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// A file of any bytes is written back as it was; another text in its place is refused, or read as
// what it is.

#include "Support.h"

#include "base/EncodedText.h"
#include "base/FileUtils.h"

using vn::EncodedText;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // Half of the input is the file, half the text, in UTF-16 so that there may be any unit.
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const QByteArray bytes = input.left(input.size() / 2);
    QString text(QLatin1String(""));
    for (int i = bytes.size(); i + 1 < input.size(); i += 2)
        text += QChar(static_cast<uchar>(input.at(i)), static_cast<uchar>(input.at(i + 1)));

    const EncodedText file(bytes);
    FUZZ_CHECK(file.bytes() == bytes);
    FUZZ_EQUAL(file.text(), vn::FileUtils::decodeText(bytes));
    const EncodedText::Result same = file.encode(file.text());
    FUZZ_CHECK(same && same.bytes == bytes);

    const EncodedText::Result other = file.encode(text);
    FUZZ_CHECK(bool(other) == other.message.isNull());
    FUZZ_CHECK(bool(other) == !other.bytes.isNull());
    if (other) {
        const EncodedText again(other.bytes);
        FUZZ_EQUAL(again.text(), text);
        FUZZ_CHECK(again.hasByteOrderMark() == file.hasByteOrderMark());
        FUZZ_CHECK(other.position == -1);
    } else if (other.fault == EncodedText::Fault::NoCharacter) {
        FUZZ_CHECK(other.position >= 0 && other.position < text.size());
        // what stands before that character can be written, if it reads as itself
        FUZZ_CHECK(file.encode(text.left(other.position)).fault != EncodedText::Fault::NoCharacter);
    }
    return 0;
}
