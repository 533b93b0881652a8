// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The record of an event recording, written over a file of any content, against its table of bytes.

#include "Support.h"

#include "erdinfo/VanteroErdinfoFile.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace {

/** A file in memory that can be opened by a name. */
class MemoryFile
{
public:
    MemoryFile()
        : m_descriptor(::memfd_create("erdinfo", 0))
    {
        FUZZ_CHECK(m_descriptor >= 0);
    }

    std::wstring path() const { return L"/proc/self/fd/" + std::to_wstring(m_descriptor); }

    void setContent(const QByteArray &bytes)
    {
        FUZZ_CHECK(::ftruncate(m_descriptor, 0) == 0);
        FUZZ_CHECK(::pwrite(m_descriptor, bytes.constData(), std::size_t(bytes.size()), 0) ==
                   bytes.size());
    }

    QByteArray content() const
    {
        QByteArray bytes(int(::lseek(m_descriptor, 0, SEEK_END)), Qt::Uninitialized);
        FUZZ_CHECK(::pread(m_descriptor, bytes.data(), std::size_t(bytes.size()), 0) ==
                   bytes.size());
        return bytes;
    }

private:
    int m_descriptor;
};

template <typename Number>
Number take(Input &input)
{
    Number number = 0;
    for (std::size_t i = 0; i < sizeof number; ++i)
        number = static_cast<Number>(static_cast<quint64>(number) << 8 | input.byte());
    return number;
}

/** A text of any code units, each repeated so that long ones need few bytes. */
std::wstring takeText(Input &input)
{
    std::wstring text;
    const unsigned length = input.byte();
    const unsigned repeat = input.byte() % 64 + 1;
    for (unsigned i = 0; i < length && !input.atEnd(); ++i)
        text.append(repeat, static_cast<wchar_t>(i % 8 ? input.byte() : take<quint32>(input)));
    return text;
}

void put32(QByteArray &record, int offset, quint32 number)
{
    qToLittleEndian(number, record.data() + offset);
}

void putText(QByteArray &record, int offset, std::size_t width, const std::wstring &text)
{
    QByteArray storage;
    for (const wchar_t unit : text.substr(0, width)) {
        char bytes[4];
        qToLittleEndian(static_cast<quint32>(unit), bytes);
        storage.append(bytes, 4);
    }
    const int count = static_cast<int>(std::min(text.size(), width));
    std::copy_n(storage.constData(), count, record.data() + offset);
}

void putBlock(QByteArray &record, int offset, unsigned number, quint64 time, int id)
{
    put32(record, offset, 1);
    put32(record, offset + 4, 2);
    put32(record, offset + 8, number);
    put32(record, offset + 12, static_cast<quint32>(time / 1000000));
    put32(record, offset + 16, static_cast<quint32>(time / 1000 % 1000));
    put32(record, offset + 20, static_cast<quint32>(id));
    record[offset + 24] = 1;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const auto id1 = take<int>(input);
    const auto id2 = take<int>(input);
    const auto number1 = take<unsigned>(input);
    const auto number2 = take<unsigned>(input);
    const auto time1 = take<quint64>(input);
    const auto time2 = take<quint64>(input);
    const int oldSize = static_cast<int>(input.byte()) * 4;
    const std::wstring text1 = takeText(input);
    const std::wstring text2 = takeText(input);
    const std::wstring text3 = takeText(input);

    QByteArray record(488, '\0');
    record.replace(0, 4, "EvtD");
    put32(record, 4, 0x01080002);
    put32(record, 8, 332);
    put32(record, 12, 156);
    putText(record, 20, 128, text1);
    putText(record, 276, 16, text2);
    putText(record, 292, 32, text3);
    put32(record, 332, static_cast<quint32>(id1));
    put32(record, 336, static_cast<quint32>(id2));
    putBlock(record, 344, number1, time1, id1);
    putBlock(record, 408, number2, time2, id2);

    static MemoryFile file;
    const QByteArray old(oldSize, 'x');
    file.setContent(old);
    vn::VanteroErdinfoFile info(file.path());
    info.setData(id1, id2, number1, number2, time1, time2, text1, text2, text3);
    FUZZ_CHECK(info.save());
    FUZZ_CHECK(file.content() == record + old.mid(488));
    return 0;
}
