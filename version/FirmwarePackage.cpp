// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QTextCodec>
#include <QtCore/QTextStream>

#include <array>

namespace vn {

namespace {

constexpr int kLines = 30;

const QLatin1String s_markers[] = {QLatin1String("## Version:"), QLatin1String("# Version:")};
const QLatin1String s_upload("UPLD");

bool isMarked(const QString &line)
{
    return line.startsWith(s_markers[0]) || line.startsWith(s_markers[1]);
}

bool isUpload(const QString &line)
{
    return line.endsWith(s_upload);
}

/** Puts the text of the version that @p line names into @p text; returns whether it names one. */
bool takeVersionText(const QString &line, QString &text)
{
    bool named = false;
    for (const QLatin1String marker : s_markers) {
        if (line.startsWith(marker)) {
            text = line.mid(marker.size() + 1); // kept on purpose: any one character is skipped
            named = true;
        }
    }
    if (isUpload(line)) {
        // Kept on purpose: a negative size, of a line of less than 7 characters, takes them all.
        text = line.mid(2, line.size() - 2 - (s_upload.size() + 1));
        named = true;
    }
    return named;
}

/**
 * Reads the lines of a device to the same effect as QTextStream::readLine(), but in bounded memory:
 * packages hold images, and what looks like one line of an image may be a gigabyte of zeros. Of a
 * device that cannot go back it takes no more than the lines.
 */
class LineReader
{
public:
    explicit LineReader(QIODevice &device)
        : m_device(device)
        , m_isSequential(device.isSequential())
        , m_isText(device.isTextModeEnabled())
    {
        // Qt opens a file by its name such that readLine() takes the bytes of the line alone; from
        // a handle it may be a C stream, whose lines Qt takes to end at a zero byte.
        const auto *file = qobject_cast<QFileDevice *>(&device);
        m_takesLines = m_isSequential && !(file && file->fileName().isEmpty());
        device.setTextModeEnabled(false); // carriage returns go once the bytes are decoded
    }
    ~LineReader() { m_device.setTextModeEnabled(m_isText); }
    LineReader(const LineReader &) = delete; // one reader, one mode
    LineReader &operator=(const LineReader &) = delete;

    /** Whether there is no more. Only a read tells where a sequential device ends. */
    bool atEnd()
    {
        return m_next == m_chunk.size() && (m_isSequential ? !fill() : m_device.atEnd());
    }

    struct Line
    {
        QString text;
        bool cut = false; ///< only the end of the line is in the text
    };

    /** Reads one line. A long one that has no marker is cut, unless it is wanted @p whole. */
    Line readLine(bool whole)
    {
        Line line;
        while (true) {
            const int newline = m_chunk.indexOf(QLatin1Char('\n'), m_next);
            const int end = newline < 0 ? m_chunk.size() : newline;
            line.text.append(m_chunk.constData() + m_next, end - m_next);
            m_next = end;
            if (newline >= 0) {
                ++m_next;
                dropCarriageReturn(line.text);
                return line;
            }
            if (isToBeCut(line, whole)) {
                line.text = line.text.right(s_upload.size() + 1); // a carriage return may follow
                line.cut = true;
            }
            if (!fill()) {
                if (m_device.atEnd())
                    dropCarriageReturn(line.text);
                return line;
            }
        }
    }

private:
    static constexpr int kChunk = 16384; // that of QTextStream
    static constexpr int kLongLine = 1 << 20;
    static constexpr int kLongestLine = 1 << 29; // of which there is still room for a copy

    bool isToBeCut(const Line &line, bool whole) const
    {
        const int size = line.text.size();
        if (size <= kLongLine || line.cut)
            return line.cut;
        const bool isKept = whole || m_isSequential || isMarked(line.text);
        return !isKept || size > kLongestLine;
    }

    /** Reads and decodes some more; false where there is none. */
    bool fill()
    {
        std::array<char, kChunk> bytes;
        do {
            m_next = 0;
            m_chunk.clear();
            const qint64 size = m_takesLines ? m_device.readLine(bytes.data(), kChunk)
                                             : m_device.read(bytes.data(), kChunk);
            if (size <= 0)
                return false;
            const auto count = static_cast<int>(size);
            if (!m_codec)
                m_codec = QTextCodec::codecForUtfText(QByteArray::fromRawData(bytes.data(), count),
                                                      QTextCodec::codecForLocale());
            m_chunk = m_codec->toUnicode(bytes.data(), count, &m_state);
            if (m_isText)
                m_chunk.remove(QLatin1Char('\r'));
        } while (m_chunk.isEmpty());
        if (m_takesLines) // a byte order mark is none at the beginning of a later line
            m_state.flags |= QTextCodec::IgnoreHeader;
        return true;
    }

    static void dropCarriageReturn(QString &text)
    {
        if (text.endsWith(QLatin1Char('\r')))
            text.chop(1);
    }

    QIODevice &m_device;
    const bool m_isSequential;
    const bool m_isText;
    bool m_takesLines;
    const QTextCodec *m_codec = nullptr;
    QTextCodec::ConverterState m_state;
    QString m_chunk;
    int m_next = 0;
};

/**
 * The text of the version that a device names from its position on. Line @p whole is read whole at
 * any length; -1 means none.
 */
QString versionText(QIODevice &device, int whole = -1)
{
    const qint64 start = device.pos();
    QString text;
    int cutUpload = -1; // the line that names the version, where only its end is known
    {
        LineReader lines(device);
        for (int i = 0; i < kLines && !lines.atEnd(); ++i) {
            const LineReader::Line line = lines.readLine(i == whole);
            if (line.cut && isUpload(line.text))
                cutUpload = i;
            else if (!line.cut && takeVersionText(line.text, text))
                cutUpload = -1;
        }
    }
    if (cutUpload < 0 || cutUpload == whole || device.isSequential() || !device.seek(start))
        return text;
    return versionText(device, cutUpload);
}

} // namespace

VanteroSoftwareVersion VanteroSoftwareVersion::fromFwp(QTextStream &stream)
{
    if (!stream.device() && !stream.string())
        return {}; // nothing to read, of which Qt would warn
    QString text;
    QString line;
    for (int i = 0; i < kLines && !stream.atEnd(); ++i) {
        stream.readLineInto(&line);
        takeVersionText(line, text);
    }
    return text;
}

VanteroSoftwareVersion VanteroSoftwareVersion::fromFwp(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    (void)buffer.open(QIODevice::ReadOnly); // a buffer of its own bytes always opens
    return fromFwpFile(&buffer);
}

VanteroSoftwareVersion VanteroSoftwareVersion::fromFwpFile(QIODevice *device)
{
    if (!device || !device->isReadable())
        return {};
    return versionText(*device);
}

VanteroSoftwareVersion VanteroSoftwareVersion::fromFwpFile(const QString &fileName)
{
    QFile file(fileName);
    if (!fileName.isEmpty())                  // of which Qt would warn
        (void)file.open(QIODevice::ReadOnly); // what cannot be opened reads as empty
    return fromFwpFile(&file);
}

} // namespace vn
