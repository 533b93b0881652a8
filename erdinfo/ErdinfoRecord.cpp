// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "erdinfo/ErdinfoRecord.h"

#include "base/ExceptionBoundary_p.h"
#include "base/Exceptions.h"
#include "erdinfo/ErdinfoFields.h"
#include "erdinfo/ErdinfoLayout.h"

#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <algorithm>
#include <type_traits>

namespace vn {

using Type = ErdinfoField::Type;
using Role = ErdinfoField::Role;

namespace {

constexpr quint32 kLastCharacter = 0x10FFFF;
constexpr quint32 kMostMilliseconds = 999;

constexpr bool isWithoutGaps()
{
    int end = 0;
    for (const ErdinfoField &field : kErdinfoFields) {
        if (field.offset != end)
            return false;
        end += field.size;
    }
    return end == ErdinfoLayout::kRecordSize;
}
static_assert(isWithoutGaps(), "every byte of the record belongs to one field");

// ---- Writing -----------------------------------------------------------------------------------

void put(char *bytes, const ErdinfoTime &time)
{
    qToLittleEndian(time.seconds, bytes);
    qToLittleEndian(time.milliseconds, bytes + 4);
}

/** Writes a number into a field of two or four bytes. */
void putNumber(char *bytes, int size, quint32 number)
{
    if (size == 2)
        qToLittleEndian(quint16(number), bytes);
    else
        qToLittleEndian(number, bytes);
}

void putText(char *bytes, int size, const std::u32string &text)
{
    const std::size_t count = std::min(text.size(), std::size_t(size) / 4);
    for (std::size_t i = 0; i < count; ++i)
        qToLittleEndian(quint32(text[i]), bytes + 4 * i);
}

void putField(char *bytes, const ErdinfoField &field, const ErdinfoRecord &record)
{
    std::visit(
        [&](auto member) {
            using Member = decltype(member);
            if constexpr (std::is_same_v<Member, std::monostate>) {
                if (field.role == Role::Constant)
                    putNumber(bytes, field.size, field.constant);
            } else if constexpr (std::is_same_v<Member, ErdinfoTime ErdinfoRecord::*>) {
                put(bytes, record.*member);
            } else if constexpr (std::is_same_v<Member, std::u32string ErdinfoRecord::*>) {
                putText(bytes, field.size, record.*member);
            } else {
                putNumber(bytes, field.size, quint32(record.*member));
            }
        },
        field.member);
}

// ---- Reading -----------------------------------------------------------------------------------

/** Reads the fields of one record and tells what is wrong with them. */
class Reader
{
public:
    Reader(const QByteArray &bytes, Findings *findings)
        : m_bytes(bytes)
        , m_findings(findings)
    {
    }

    ErdinfoRecord read()
    {
        if (m_bytes.size() < ErdinfoLayout::kRecordSize) {
            tell(Finding::Severity::Error, "record-too-short",
                 text("too short: %1 bytes, a record has %2")
                     .arg(m_bytes.size())
                     .arg(ErdinfoLayout::kRecordSize),
                 m_bytes.size(), 0);
            return m_record;
        }
        for (const ErdinfoField &field : kErdinfoFields)
            readField(field);
        return std::move(m_record);
    }

private:
    static QString text(const char *latin1) { return QString::fromLatin1(latin1); }

    void tell(Finding::Severity severity, const char *code, const QString &message, int offset,
              int length)
    {
        if (m_findings)
            m_findings->append({severity,
                                text(code),
                                message,
                                {1, offset + 1, 1, offset + length + 1, offset, length}});
    }

    quint32 number(const ErdinfoField &field) const
    {
        const char *const bytes = m_bytes.constData() + field.offset;
        return field.size == 2 ? qFromLittleEndian<quint16>(bytes)
                               : qFromLittleEndian<quint32>(bytes);
    }

    void readField(const ErdinfoField &field)
    {
        std::visit(
            [&](auto member) {
                using Member = decltype(member);
                if constexpr (std::is_same_v<Member, std::monostate>) {
                    field.role == Role::Constant ? checkConstant(field) : checkReserved(field);
                } else if constexpr (std::is_same_v<Member, ErdinfoTime ErdinfoRecord::*>) {
                    m_record.*member = readTime(field);
                } else if constexpr (std::is_same_v<Member, std::u32string ErdinfoRecord::*>) {
                    m_record.*member = readText(field);
                } else {
                    using Number = std::decay_t<decltype(m_record.*member)>;
                    if (field.role == Role::Copy)
                        return checkCopy(field, m_record.*member, Number(number(field)));
                    m_record.*member = Number(number(field));
                    if (field.role == Role::Flags && m_record.*member != 0)
                        tell(Finding::Severity::Warning, "record-flags",
                             text("the flags are 0x%1, not 0").arg(number(field), 0, 16),
                             field.offset, field.size);
                }
            },
            field.member);
    }

    /** A constant as people know it: the magic by its bytes, a long code by its digits. */
    static QString shown(const ErdinfoField &field, quint32 value)
    {
        constexpr quint32 kLong = 0xFFFF;
        if (field.type != Type::Magic)
            return field.constant > kLong ? QLatin1String("0x") + QString::number(value, 16)
                                          : QString::number(value);
        QByteArray bytes(field.size, '\0');
        qToLittleEndian(value, bytes.data());
        return QString::fromLatin1(bytes.toHex(' ')) +
               (value == field.constant ? text(" (\"%1\")").arg(QString::fromLatin1(bytes))
                                        : QString());
    }

    void checkConstant(const ErdinfoField &field)
    {
        const quint32 value = number(field);
        if (value != field.constant)
            tell(Finding::Severity::Error, "record-constant",
                 text("the %1 is %2, not %3")
                     .arg(QString::fromLatin1(field.what), shown(field, value),
                          shown(field, field.constant)),
                 field.offset, field.size);
    }

    template <typename Number>
    void checkCopy(const ErdinfoField &field, Number value, Number copy)
    {
        if (copy != value)
            tell(Finding::Severity::Error, "record-copy",
                 text("the %1 is %2, not %3")
                     .arg(QString::fromLatin1(field.what))
                     .arg(copy)
                     .arg(value),
                 field.offset, field.size);
    }

    void checkReserved(const ErdinfoField &field)
    {
        const auto isSet = [](char byte) { return byte != '\0'; };
        const char *const begin = m_bytes.constData() + field.offset;
        const char *const end = begin + field.size;
        const char *const first = std::find_if(begin, end, isSet);
        if (first == end)
            return;
        const auto last =
            std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(begin), isSet);
        tell(Finding::Severity::Warning, "record-reserved", text("a reserved byte is not 0"),
             field.offset + int(first - begin), int(last.base() - first));
    }

    ErdinfoTime readTime(const ErdinfoField &field)
    {
        const char *const bytes = m_bytes.constData() + field.offset;
        const ErdinfoTime time{qFromLittleEndian<quint32>(bytes),
                               qFromLittleEndian<quint32>(bytes + 4)};
        if (time.milliseconds > kMostMilliseconds)
            tell(Finding::Severity::Error, "record-milliseconds",
                 text("%1 milliseconds are more than a second has").arg(time.milliseconds),
                 field.offset + 4, 4);
        return time;
    }

    std::u32string readText(const ErdinfoField &field)
    {
        std::u32string units;
        for (int i = 0; i < field.size; i += 4)
            units += char32_t(qFromLittleEndian<quint32>(m_bytes.constData() + field.offset + i));
        units.erase(units.find_last_not_of(U'\0') + 1);
        return units;
    }

    const QByteArray &m_bytes;
    Findings *const m_findings;
    ErdinfoRecord m_record;
};

} // namespace

void ErdinfoRecord::setText(std::u32string ErdinfoRecord::*member, const std::wstring &text)
{
    const auto *const field = std::find_if(
        std::begin(kErdinfoFields), std::end(kErdinfoFields),
        [member](const ErdinfoField &each) { return each.member == ErdinfoField::Member(member); });
    std::u32string &kept = this->*member;
    // Kept on purpose: the count of characters limits the bytes, so most of a text is left out.
    const std::size_t bytes = std::min(text.size(), std::size_t(field->size));
    kept.assign(text.begin(), text.begin() + std::ptrdiff_t((bytes + 3) / 4));
    if (const std::size_t last = bytes % 4) // the count ends within a character
        kept.back() &= char32_t((quint32(1) << (8 * last)) - 1);
    kept.erase(kept.find_last_not_of(U'\0') + 1);
}

QString ErdinfoRecord::toString(const std::u32string &text)
{
    QString result;
    for (const char32_t unit : text) {
        const bool isCharacter = unit <= kLastCharacter && !QChar::isSurrogate(unit);
        const uint character = isCharacter ? unit : uint(QChar::ReplacementCharacter);
        result += QString::fromUcs4(&character, 1);
    }
    return result;
}

QByteArray ErdinfoRecord::toBytes() const
{
    QByteArray bytes(ErdinfoLayout::kRecordSize, '\0');
    char *const begin = bytes.data();
    for (const ErdinfoField &field : kErdinfoFields)
        putField(begin + field.offset, field, *this);
    return bytes;
}

ErdinfoRecord ErdinfoRecord::fromBytes(const QByteArray &bytes, Findings *findings)
{
    return Reader(bytes, findings).read();
}

void ErdinfoRecord::save(const QString &path) const
{
    onlyThrows<FileException>([&] {
        // Read-write alone does not truncate; without a buffer the record goes out in one write.
        QFile file(path);
        const QByteArray bytes = toBytes();
        if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) ||
            file.write(bytes) != bytes.size())
            throw FileException(file);
    });
}

ErdinfoRecord ErdinfoRecord::load(const QString &path)
{
    return onlyThrows<FileException, ParseException>([&] {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw FileException(file);
        const QByteArray bytes = file.read(ErdinfoLayout::kRecordSize);
        if (file.error() != QFile::NoError)
            throw FileException(file);
        Findings findings;
        ErdinfoRecord record = fromBytes(bytes, &findings);
        for (const Finding &each : qAsConst(findings))
            if (each.severity == Finding::Severity::Error)
                throw ParseException(path + QLatin1String(": ") + each.message, 0,
                                     int(each.range.offset), 0,
                                     int(each.range.offset + each.range.length));
        return record;
    });
}

} // namespace vn
