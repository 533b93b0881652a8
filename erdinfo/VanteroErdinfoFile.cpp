// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "erdinfo/VanteroErdinfoFile.h"

#include "erdinfo/ErdinfoLayout.h"

#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtCore/QtEndian>

#include <algorithm>
#include <array>
#include <iterator>

namespace vn {

using namespace ErdinfoLayout;

namespace {

/** The bytes of a record, all 0 at first; integers are stored little-endian on every machine. */
class Record
{
public:
    template <typename Integer>
    void put(int offset, Integer value)
    {
        qToLittleEndian(value, m_bytes.data() + offset);
    }

    void putMagic() { std::copy(std::begin(kMagic), std::end(kMagic), m_bytes.begin()); }

    /** Kept on purpose: the count of characters limits the bytes, so most of a text is left out. */
    void putText(int offset, int width, const std::wstring &text)
    {
        const int count = static_cast<int>(std::min(text.size(), static_cast<std::size_t>(width)));
        for (int i = 0; i < count; i += 4)
            put(offset + i, static_cast<quint32>(text[static_cast<std::size_t>(i / 4)]));
        // The count may end within a character.
        std::fill(m_bytes.begin() + offset + count, m_bytes.begin() + offset + width, '\0');
    }

    void putBlock(int offset, quint32 number, quint64 microseconds, qint32 id)
    {
        put(offset + kBlockFirstCodeOffset, kBlockFirstCode);
        put(offset + kBlockSecondCodeOffset, kBlockSecondCode);
        put(offset + kBlockNumberOffset, number);
        put(offset + kBlockSecondsOffset, static_cast<quint32>(microseconds / 1000000));
        put(offset + kBlockMillisecondsOffset, static_cast<quint32>(microseconds / 1000 % 1000));
        put(offset + kBlockIdOffset, id);
        put(offset + kBlockThirdCodeOffset, kBlockThirdCode);
    }

    const char *bytes() const { return m_bytes.data(); }

private:
    std::array<char, kRecordSize> m_bytes{};
};

} // namespace

// NOLINTNEXTLINE(modernize-pass-by-value): the signature is published
VanteroErdinfoFile::VanteroErdinfoFile(const std::wstring &path)
    : m_path(path)
{
}

VanteroErdinfoFile::VanteroErdinfoFile(const VanteroErdinfoFile &) = default;
VanteroErdinfoFile &VanteroErdinfoFile::operator=(const VanteroErdinfoFile &) = default;
VanteroErdinfoFile::~VanteroErdinfoFile() = default;

void VanteroErdinfoFile::setData(int id1, int id2, unsigned int number1, unsigned int number2,
                                 unsigned long long time1, unsigned long long time2,
                                 const std::wstring &text1, const std::wstring &text2,
                                 const std::wstring &text3)
{
    m_id1 = id1;
    m_id2 = id2;
    m_number1 = number1;
    m_number2 = number2;
    m_time1 = time1;
    m_time2 = time2;
    m_text1 = text1;
    m_text2 = text2;
    m_text3 = text3;
}

bool VanteroErdinfoFile::save() const
{
    const QString path = QString::fromStdWString(m_path);
    if (path.isEmpty())
        return false;
    // Read-write alone does not truncate; without a buffer the record goes out in one write.
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return false;

    Record record;
    record.putMagic();
    record.put(kFormatOffset, kFormat);
    record.put(kHeaderSizeOffset, quint32(kHeaderSize));
    record.put(kDataSizeOffset, quint32(kDataSize));
    record.putText(kText1Offset, kText1Size, m_text1);
    record.putText(kText2Offset, kText2Size, m_text2);
    record.putText(kText3Offset, kText3Size, m_text3);
    record.put(kId1Offset, qint32(m_id1));
    record.put(kId2Offset, qint32(m_id2));
    record.putBlock(kBlock1Offset, m_number1, m_time1, m_id1);
    record.putBlock(kBlock2Offset, m_number2, m_time2, m_id2);

    (void)file.write(record.bytes(), kRecordSize); // kept on purpose: a failed write is no error
    return true;
}

} // namespace vn
