// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "erdinfo/VanteroErdinfoFile.h"

#include "base/FileDescriptor_p.h"
#include "erdinfo/ErdinfoRecord.h"

#include <QtCore/QFile>
#include <QtCore/QString>

#include <fcntl.h>
#include <unistd.h>

namespace vn {

using internal::retried;

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
    ErdinfoRecord record;
    record.id1 = m_id1;
    record.id2 = m_id2;
    record.number1 = m_number1;
    record.number2 = m_number2;
    record.time1 = ErdinfoTime::fromMicroseconds(m_time1);
    record.time2 = ErdinfoTime::fromMicroseconds(m_time2);
    record.setText(&ErdinfoRecord::text1, m_text1);
    record.setText(&ErdinfoRecord::text2, m_text2);
    record.setText(&ErdinfoRecord::text3, m_text3);
    const QByteArray bytes = record.toBytes();

    // Kept on purpose: nothing is truncated, and a failed write is no error.
    if (path.contains(QLatin1Char(':'))) { // Qt's own names: resources and search paths
        QFile file(path);
        if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
            return false;
        (void)file.write(bytes);
        return true;
    }
    const QByteArray name = QFile::encodeName(path);
    const int file =
        retried([&] { return ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666); });
    if (file < 0)
        return false;
    (void)retried([&] { return ::write(file, bytes.constData(), std::size_t(bytes.size())); });
    (void)::close(file);
    return true;
}

} // namespace vn
