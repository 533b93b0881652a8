// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QTextStream>

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
 * Reads the lines of a device that need not be read byte by byte, to the same effect as
 * QTextStream::readLine(), but in bounded memory: packages hold images, and what looks like one
 * line of an image may be a gigabyte of zeros.
 */
class LineReader
{
public:
    explicit LineReader(QIODevice &device)
        : m_stream(&device)
    {
    }

    bool atEnd() const { return m_next == m_chunk.size() && m_stream.atEnd(); }

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
            if (!whole && line.text.size() > kLongLine && (line.cut || !isMarked(line.text))) {
                line.text = line.text.right(s_upload.size() + 1); // a carriage return may follow
                line.cut = true;
            }
            m_chunk = m_stream.read(kChunk);
            m_next = 0;
            if (m_chunk.isEmpty()) {
                if (m_stream.device()->atEnd())
                    dropCarriageReturn(line.text);
                return line;
            }
        }
    }

private:
    static constexpr int kChunk = 16384; // that of QTextStream
    static constexpr int kLongLine = 1 << 20;

    static void dropCarriageReturn(QString &text)
    {
        if (text.endsWith(QLatin1Char('\r')))
            text.chop(1);
    }

    QTextStream m_stream;
    QString m_chunk;
    int m_next = 0;
};

/**
 * The text of the version that a random-access device names from its position on. Line @p whole is
 * read whole at any length; -1 means none.
 */
QString versionText(QIODevice &device, int whole = -1)
{
    const qint64 start = device.pos();
    QString text;
    int cutUpload = -1; // the line that names the version, where only its end is known
    LineReader lines(device);
    for (int i = 0; i < kLines && !lines.atEnd(); ++i) {
        const LineReader::Line line = lines.readLine(i == whole);
        if (line.cut && isUpload(line.text))
            cutUpload = i;
        else if (!line.cut && takeVersionText(line.text, text))
            cutUpload = -1;
    }
    if (cutUpload >= 0 && device.seek(start))
        return versionText(device, cutUpload);
    return text;
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
    if (!device->isSequential())
        return versionText(*device);
    // A pipe may hold no more than its lines for now: nothing may be asked for beyond them.
    QTextStream stream(device);
    return fromFwp(stream);
}

VanteroSoftwareVersion VanteroSoftwareVersion::fromFwpFile(const QString &fileName)
{
    QFile file(fileName);
    if (!fileName.isEmpty())                  // of which Qt would warn
        (void)file.open(QIODevice::ReadOnly); // what cannot be opened reads as empty
    return fromFwpFile(&file);
}

} // namespace vn
