// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "base/ExceptionBoundary_p.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "config/MapBuilder_p.h"

#include <QtCore/QBuffer>
#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>
#include <QtCore/QScopeGuard>
#include <QtCore/QTextStream>

namespace vn {

const QString &internal::keyOf(HeaderField field)
{
    switch (field) {
    case HeaderField::FileVersion:
        return VanteroConfigFile::FILE_VERSION;
    case HeaderField::SoftwareVersion:
        return VanteroConfigFile::SOFTWARE_VERSION;
    case HeaderField::FactoryIp:
        break;
    }
    return VanteroConfigFile::FACTORY_IP;
}

namespace {

using internal::HeaderField;
using internal::MapBuilder;
using internal::SharedKeys;

constexpr char kHeaderTemplate[] = "#:%1===============================\n"
                                   "#:%2\n"
                                   "# VANTERO Camera Configuration\n"
                                   "#\n"
                                   "# Created by FieldDesk\n"
                                   "#============================================\n";

/** Reads all section blocks of a text in memory into @p map. */
void readSectionsInto(VanteroConfigMap &map, internal::MemoryLines &lines)
{
    MapBuilder builder(map);
    internal::readSections(lines, builder);
}

/**
 * A sink for streams. The device of a stream may use the configuration while it is read: it may
 * copy it in mid-section, or load something else. So nothing is remembered between two entries, and
 * each takes the lock, which the reader need not hold.
 */
class StreamBuilder : public internal::ConfigSink
{
public:
    /** @p keys, where there are any, are shared by all sections that are read. */
    explicit StreamBuilder(VanteroConfigFile &config, SharedKeys *keys = nullptr)
        : m_config(config)
        , m_keys(keys)
    {
    }

    void addEntry(const QString &section, QStringView key, QStringView value)
    {
        m_config.addValue(section, m_keys ? m_keys->string(key) : key.toString(),
                          internal::toText(value));
    }

private:
    VanteroConfigFile &m_config;
    SharedKeys *m_keys;
};

/** Reads all section blocks of a stream into @p config. */
void readSectionsInto(VanteroConfigFile &config, internal::StreamLines &lines)
{
    SharedKeys keys;
    StreamBuilder builder(config, &keys);
    internal::readSections(lines, builder);
}

/** What @p device has at hand, as a QTextStream decodes it. That stream ends early and in silence
 * where its device fails; here the failure is heard. */
QString readAll(QIODevice *device)
{
    // A stream takes the line ends of a device in text mode into its own hands.
    const bool isText = device->isTextModeEnabled();
    const auto restoreTextMode = qScopeGuard([&] {
        if (isText)
            device->setTextModeEnabled(true);
    });
    if (isText)
        device->setTextModeEnabled(false);
    QByteArray bytes = FileUtils::readAvailable(device);
    QBuffer buffer(&bytes);
    (void)buffer.open(isText ? QIODevice::ReadOnly | QIODevice::Text : QIODevice::ReadOnly);
    return QTextStream(&buffer).readAll();
}

/** A stream over a device; over nothing where that is not open for reading, as Qt reads it with a
 * warning. */
class DeviceStream
{
public:
    explicit DeviceStream(QIODevice *device)
        : m_stream(device->isReadable() ? device : &m_nothing)
    {
        (void)m_nothing.open(QIODevice::ReadOnly); // a buffer always opens
    }

    QTextStream *stream() { return &m_stream; }

private:
    QBuffer m_nothing;
    QTextStream m_stream;
};

} // namespace

bool VanteroConfigFile::parse(const QString &text, const QDateTime &)
{
    return onlyThrows<ParseException>([&] {
        const QMutexLocker lock(m_lock.get());
        m_map = VanteroConfigMap();
        m_sourceText = text;
        // Kept on purpose: the time of loading counts, not the one given.
        m_timeStamp = QDateTime::currentDateTime();
        internal::MemoryLines lines(m_sourceText);
        const bool complete = internal::readHeaderInto(m_map, lines);
        readSectionsInto(m_map, lines);
        return complete;
    });
}

bool VanteroConfigFile::parse(QIODevice *device, const QDateTime &dateTime)
{
    return onlyThrows<ParseException, IOException>(
        [&] { return parse(readAll(device), dateTime); });
}

bool VanteroConfigFile::parse(QTextStream *stream, const QDateTime &dateTime)
{
    return onlyThrows<ParseException, IOException>([&] {
        const QMutexLocker lock(m_lock.get());
        m_timeStamp = dateTime;
        internal::StreamLines lines(stream);
        const bool complete = internal::readHeaderInto(m_map, lines);
        readSectionsInto(*this, lines);
        return complete;
    });
}

VanteroConfigFile VanteroConfigFile::open(const QString &path, const QDateTime &dateTime)
{
    return onlyThrows<ParseException, IOException>([&] {
        VanteroConfigFile config;
        (void)config.parse(FileUtils::readText(path), dateTime); // a header is not required
        return config;
    });
}

bool VanteroConfigFile::parseHeader(QTextStream *stream)
{
    return onlyThrows<ParseException, IOException>([&] {
        const QMutexLocker lock(m_lock.get());
        internal::StreamLines lines(stream);
        return internal::readHeaderInto(m_map, lines);
    });
}

bool VanteroConfigFile::parseHeader(QIODevice *device)
{
    return onlyThrows<ParseException, IOException>([&] {
        DeviceStream stream(device);
        return parseHeader(stream.stream());
    });
}

bool VanteroConfigFile::parseHeader(const QString &text)
{
    return onlyThrows<ParseException, IOException>([&] {
        const QMutexLocker lock(m_lock.get());
        const QString held = text; // the text may be a value of this very map
        internal::MemoryLines lines(held);
        return internal::readHeaderInto(m_map, lines);
    });
}

QString VanteroConfigFile::parseSection(QTextStream *stream, bool ignoreStrayLines)
{
    return onlyThrows<ParseException, IOException>([&] {
        internal::StreamLines lines(stream);
        StreamBuilder builder(*this);
        return internal::readSection(lines, ignoreStrayLines, builder);
    });
}

void VanteroConfigFile::parseJpegComment(QTextStream *stream)
{
    onlyThrows<ParseException, IOException>([&] {
        const QMutexLocker lock(m_lock.get());
        internal::StreamLines lines(stream);
        readSectionsInto(*this, lines);
    });
}

void VanteroConfigFile::parseJpegComment(QIODevice *device)
{
    onlyThrows<ParseException, IOException>([&] {
        DeviceStream stream(device);
        parseJpegComment(stream.stream());
    });
}

void VanteroConfigFile::parseJpegComment(QByteArray *comment)
{
    onlyThrows<ParseException, IOException>([&] {
        QTextStream stream(comment, QIODevice::ReadOnly);
        parseJpegComment(&stream);
    });
}

void VanteroConfigFile::parseJpegComment(const QString &comment)
{
    onlyThrows<ParseException, IOException>([&] {
        const QMutexLocker lock(m_lock.get());
        const QString held = comment; // the comment may be a value of this very map
        internal::MemoryLines lines(held);
        readSectionsInto(m_map, lines);
    });
}

QString VanteroConfigFile::makeHeader() const
{
    return QString::fromLatin1(kHeaderTemplate)
        .arg(getFileVersion(), 0, QLatin1Char(' '))
        .arg(getSoftwareVersion(), 0, QLatin1Char(' '));
}

} // namespace vn
