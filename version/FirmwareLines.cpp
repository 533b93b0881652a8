// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/FirmwareLines_p.h"

#include <QtCore/QFileDevice>
#include <QtCore/QTextCodec>

#include <algorithm>
#include <array>
#include <bitset>

namespace vn {

namespace internal {

namespace {

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
        qint64 offset = 0; ///< where the line begins, in characters
        bool cut = false;  ///< only the end of the line is in the text
    };

    /** Reads one line. A long one that has no marker is cut, unless it is wanted @p whole. */
    Line readLine(bool whole)
    {
        Line line;
        line.offset = m_offset;
        while (true) {
            const int newline = m_chunk.indexOf(QLatin1Char('\n'), m_next);
            const int end = newline < 0 ? m_chunk.size() : newline;
            line.text.append(m_chunk.constData() + m_next, end - m_next);
            m_offset += end - m_next;
            m_next = end;
            if (newline >= 0) {
                ++m_next;
                ++m_offset;
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
            // Of a named pipe Qt reads lines byte by byte: no way to go through an image.
            const bool byLine = m_takesLines && m_lineSize < kChunk;
            const qint64 size = byLine ? m_device.readLine(bytes.data(), kChunk)
                                       : m_device.read(bytes.data(), kChunk);
            if (size <= 0)
                return false;
            const auto count = static_cast<int>(size);
            const QByteArray taken = QByteArray::fromRawData(bytes.data(), count);
            const int newline = taken.lastIndexOf('\n');
            m_lineSize = newline < 0 ? m_lineSize + size : size - newline - 1;
            if (!m_codec) {
                // Qt's codecs are not there any more while the process ends.
                if (QTextCodec *const ofLocale = QTextCodec::codecForLocale())
                    m_codec = QTextCodec::codecForUtfText(taken, ofLocale);
            }
            m_chunk = m_codec ? m_codec->toUnicode(bytes.data(), count, &m_state)
                              : QString::fromLatin1(bytes.data(), count);
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
    qint64 m_lineSize = 0; // bytes taken since the last newline
    const QTextCodec *m_codec = nullptr;
    QTextCodec::ConverterState m_state;
    QString m_chunk;
    int m_next = 0;
    qint64 m_offset = 0; // of the next character in the decoded text
};

using LineSet = std::bitset<kFirmwareLines>;

/** The lines that name a version; those of @p whole are read whole at any length. */
std::vector<NamedVersion> scan(QIODevice &device, const LineSet &whole)
{
    std::vector<NamedVersion> versions;
    LineReader lines(device);
    for (int i = 0; i < kFirmwareLines && !lines.atEnd(); ++i) {
        const LineReader::Line line = lines.readLine(whole[static_cast<std::size_t>(i)]);
        std::optional<NamedVersion> version;
        if (!line.cut)
            version = namedVersion(line.text);
        else if (isUpload(line.text))
            version.emplace().isCut = true;
        if (version) {
            version->line = i;
            version->lineOffset = line.offset;
            versions.push_back(*std::move(version));
        }
    }
    return versions;
}

} // namespace

std::optional<NamedVersion> namedVersion(const QString &line)
{
    std::optional<NamedVersion> version;
    const auto take = [&](FirmwareLine::Form form, int from, int size) {
        const bool isSecond = version.has_value();
        version = NamedVersion();
        version->form = form;
        version->text = line.mid(from, size);
        version->column = std::min(from, line.size());
        version->hasTwoForms = isSecond;
        if (form != FirmwareLine::Form::Upload)
            version->skipped = line.mid(from - 1, 1);
    };
    // Kept on purpose: any one character behind a mark is skipped.
    if (line.startsWith(s_markers[0]))
        take(FirmwareLine::Form::TwoHashes, s_markers[0].size() + 1, -1);
    if (line.startsWith(s_markers[1]))
        take(FirmwareLine::Form::OneHash, s_markers[1].size() + 1, -1);
    // Kept on purpose: a negative size, of a line of less than 7 characters, takes them all.
    if (isUpload(line))
        take(FirmwareLine::Form::Upload, 2, line.size() - 2 - (s_upload.size() + 1));
    return version;
}

std::vector<NamedVersion> namedVersions(QIODevice &device)
{
    const qint64 start = device.pos();
    std::vector<NamedVersion> versions = scan(device, {});
    LineSet cut;
    for (const NamedVersion &version : versions)
        cut[static_cast<std::size_t>(version.line)] = version.isCut;
    if (cut.any() && !device.isSequential() && device.seek(start))
        versions = scan(device, cut);
    versions.erase(std::remove_if(versions.begin(), versions.end(),
                                  [](const NamedVersion &version) { return version.isCut; }),
                   versions.end());
    return versions;
}

} // namespace internal

} // namespace vn
