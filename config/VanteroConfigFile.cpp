// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>

namespace vn {

// On the heap, not in the library's own data: copies must survive its unloading.
const QString VanteroConfigFile::HEAD_SECTION = QString::fromLatin1("head");
const QString VanteroConfigFile::FILE_VERSION = QString::fromLatin1("File Version");
const QString VanteroConfigFile::SOFTWARE_VERSION = QString::fromLatin1("Software Version");
const QString VanteroConfigFile::FACTORY_IP = QString::fromLatin1("Factory IP");
const QString VanteroConfigFile::TYPE_LONG = QString::fromLatin1("Type Long");
const QString VanteroConfigFile::TYPE_SHORT = QString::fromLatin1("Type Short");

VanteroConfigFile::VanteroConfigFile()
    : m_timeStamp(QDateTime::currentDateTime())
    , m_lock(std::make_unique<QRecursiveMutex>())
{
}

VanteroConfigFile::VanteroConfigFile(const VanteroConfigFile &other)
    : QObject()
    , m_lock(std::make_unique<QRecursiveMutex>())
{
    *this = other;
}

VanteroConfigFile &VanteroConfigFile::operator=(const VanteroConfigFile &other)
{
    const QMutexLocker ownLock(m_lock.get());
    const QMutexLocker otherLock(other.m_lock.get());
    m_sourceText = other.m_sourceText;
    m_timeStamp = other.m_timeStamp;
    m_map = other.m_map;
    return *this;
}

VanteroConfigFile::~VanteroConfigFile() = default;

// ---- Map ---------------------------------------------------------------------------------------

QString VanteroConfigFile::value(const QString &section, const QString &key) const
{
    const QMutexLocker lock(m_lock.get());
    return m_map.value(section, key, -1);
}

void VanteroConfigFile::setValue(const QString &section, const QString &key, const QString &value)
{
    const QMutexLocker lock(m_lock.get());
    m_map.setValue(section, key, value);
}

void VanteroConfigFile::addValue(const QString &section, const QString &key, const QString &value)
{
    const QMutexLocker lock(m_lock.get());
    m_map.addValue(section, key, value);
}

bool VanteroConfigFile::containsSection(const QString &section) const
{
    const QMutexLocker lock(m_lock.get());
    return m_map.containsSection(section);
}

QStringList VanteroConfigFile::allSectionKeys() const
{
    const QMutexLocker lock(m_lock.get());
    return m_map.allSectionKeys();
}

QString VanteroConfigFile::toString() const
{
    const QMutexLocker lock(m_lock.get());
    return m_map.toString();
}

QString VanteroConfigFile::toString(const QString &section) const
{
    const QMutexLocker lock(m_lock.get());
    return m_map.toString(section);
}

QMultiMap<QString, QString> VanteroConfigFile::section(const QString &section) const
{
    const QMutexLocker lock(m_lock.get());
    return m_map.section(section);
}

VanteroConfigMap VanteroConfigFile::map() const
{
    const QMutexLocker lock(m_lock.get());
    return m_map;
}

QDateTime VanteroConfigFile::timeStamp() const
{
    const QMutexLocker lock(m_lock.get());
    return m_timeStamp;
}

// ---- Header values -----------------------------------------------------------------------------

QString VanteroConfigFile::getFileVersion() const
{
    return value(HEAD_SECTION, FILE_VERSION);
}

QString VanteroConfigFile::getSoftwareVersion() const
{
    return value(HEAD_SECTION, SOFTWARE_VERSION);
}

QString VanteroConfigFile::getFactoryIP() const
{
    return value(HEAD_SECTION, FACTORY_IP);
}

QString VanteroConfigFile::getLongCameraType() const
{
    return value(HEAD_SECTION, TYPE_LONG);
}

QString VanteroConfigFile::getShortCameraType() const
{
    return value(HEAD_SECTION, TYPE_SHORT);
}

void VanteroConfigFile::setFileVersion(const QString &value)
{
    setValue(HEAD_SECTION, FILE_VERSION, value);
}

void VanteroConfigFile::setSoftwareVersion(const QString &value)
{
    setValue(HEAD_SECTION, SOFTWARE_VERSION, value);
}

void VanteroConfigFile::setFactoryIP(const QString &value)
{
    setValue(HEAD_SECTION, FACTORY_IP, value);
}

void VanteroConfigFile::setLongCameraType(const QString &value)
{
    setValue(HEAD_SECTION, TYPE_LONG, value);
}

void VanteroConfigFile::setShortCameraType(const QString &value)
{
    setValue(HEAD_SECTION, TYPE_SHORT, value);
}

} // namespace vn
