// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/commands/ErdinfoRecord.h"

#include "erdinfo/ErdinfoLayout.h"

#include <QtCore/QtEndian>

namespace vn::tool {

using namespace ErdinfoLayout;

namespace {

/** Takes the fields of a record one by one and keeps in mind which bytes belong to none. */
class FieldReader
{
public:
    explicit FieldReader(const QByteArray &bytes)
        : m_bytes(bytes.left(kRecordSize))
        , m_rest(m_bytes)
    {
    }

    QByteArray bytes(int offset, int size)
    {
        m_rest.replace(offset, size, QByteArray(size, '\0'));
        return m_bytes.mid(offset, size);
    }

    template <typename Integer>
    Integer number(int offset)
    {
        return qFromLittleEndian<Integer>(bytes(offset, int(sizeof(Integer))).constData());
    }

    /** The characters up to the zeros at the end of the field; the last one may have been cut. */
    QString text(int offset, int size)
    {
        QString text;
        int zeros = 0;
        for (int i = 0; i < size; i += 4) {
            const auto unit = number<quint32>(offset + i);
            if (unit == 0) {
                ++zeros;
                continue;
            }
            text += QString(zeros, QChar(0));
            zeros = 0;
            const bool valid = unit <= 0x10FFFF && !QChar::isSurrogate(unit);
            const uint character = valid ? unit : uint(QChar::ReplacementCharacter);
            text += QString::fromUcs4(&character, 1);
        }
        return text;
    }

    /** The offset of the first byte that is not 0 and belongs to no field; -1 where there is none.
     */
    int firstReserved() const
    {
        for (int i = 0; i < m_rest.size(); ++i)
            if (m_rest.at(i) != '\0')
                return i;
        return -1;
    }

private:
    const QByteArray m_bytes;
    QByteArray m_rest; // with 0 where fields have been taken
};

QString at(int offset, const QString &message)
{
    return QStringLiteral("offset %1: %2").arg(offset).arg(message);
}

/** Adds a fault where a field does not hold what it must. */
template <typename Integer>
void expect(FieldReader &fields, int offset, Integer expected, const char *what, int base,
            QStringList &faults)
{
    const auto value = fields.number<Integer>(offset);
    if (value == expected)
        return;
    const QLatin1String prefix(base == 16 ? "0x" : "");
    faults += at(offset, QLatin1String(what) + QLatin1String(" is ") + prefix +
                             QString::number(value, base) + QLatin1String(", not ") + prefix +
                             QString::number(expected, base));
}

ErdinfoRecord::Block readBlock(FieldReader &fields, int offset, qint32 id, QStringList &faults)
{
    expect(fields, offset + kBlockFirstCodeOffset, kBlockFirstCode, "the block's first code", 10,
           faults);
    expect(fields, offset + kBlockSecondCodeOffset, kBlockSecondCode, "the block's second code", 10,
           faults);
    const ErdinfoRecord::Block block{
        fields.number<quint32>(offset + kBlockNumberOffset),
        fields.number<quint32>(offset + kBlockSecondsOffset),
        fields.number<quint32>(offset + kBlockMillisecondsOffset),
    };
    if (block.milliseconds > 999)
        faults += at(
            offset + kBlockMillisecondsOffset,
            QStringLiteral("%1 milliseconds are more than a second has").arg(block.milliseconds));
    expect(fields, offset + kBlockIdOffset, id, "the number that the block repeats", 10, faults);
    expect(fields, offset + kBlockThirdCodeOffset, kBlockThirdCode, "the block's third code", 10,
           faults);
    return block;
}

} // namespace

ErdinfoRecord ErdinfoRecord::read(const QByteArray &bytes)
{
    FieldReader fields(bytes);
    ErdinfoRecord record;

    const QByteArray magic(kMagic, kMagicSize);
    const QByteArray found = fields.bytes(kMagicOffset, kMagicSize);
    if (found != magic)
        record.faults += at(kMagicOffset, QStringLiteral("the magic is %1, not %2 (\"%3\")")
                                              .arg(QString::fromLatin1(found.toHex(' ')),
                                                   QString::fromLatin1(magic.toHex(' ')),
                                                   QString::fromLatin1(magic)));
    expect(fields, kFormatOffset, kFormat, "the format code", 16, record.faults);
    expect(fields, kHeaderSizeOffset, quint32(kHeaderSize), "the size of the header record", 10,
           record.faults);
    expect(fields, kDataSizeOffset, quint32(kDataSize), "the size of the data record", 10,
           record.faults);
    record.flags = fields.number<quint32>(kFlagsOffset);
    record.texts = {fields.text(kText1Offset, kText1Size), fields.text(kText2Offset, kText2Size),
                    fields.text(kText3Offset, kText3Size)};
    record.id1 = fields.number<qint32>(kId1Offset);
    record.id2 = fields.number<qint32>(kId2Offset);
    record.blocks = {readBlock(fields, kBlock1Offset, record.id1, record.faults),
                     readBlock(fields, kBlock2Offset, record.id2, record.faults)};

    if (record.flags != 0)
        record.warnings +=
            at(kFlagsOffset,
               QStringLiteral("the flags are 0x%1, not 0").arg(QString::number(record.flags, 16)));
    const int reserved = fields.firstReserved();
    if (reserved >= 0)
        record.warnings += at(reserved, QStringLiteral("a reserved byte is not 0"));
    return record;
}

} // namespace vn::tool
