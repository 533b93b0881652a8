// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_CONFIG_TEXTLINES_P_H
#define VN_CONFIG_TEXTLINES_P_H

/**
 * @file Two sources of text lines with one form, so that readers are written once.
 *
 * Lines come without "\n" or "\r\n" (and without a "\r" that ends the text), as views that stay
 * valid until the next line is read.
 */

#include <QtCore/QString>
#include <QtCore/QStringView>
#include <QtCore/QTextStream>

namespace vn::internal {

/** The lines of a text in memory, exactly as QTextStream on that text would give them. */
class MemoryLines
{
public:
    explicit MemoryLines(QStringView text)
        : m_next(text.begin())
        , m_end(text.end())
    {
    }

    bool atEnd() const { return m_next == m_end; }

    /** What is still to be read. */
    QStringView rest() const { return {m_next, m_end}; }

    /** Reads a line, of at most @p maxLength characters when that is not 0; false at the end. */
    bool readLine(QStringView &line, qsizetype maxLength = 0)
    {
        const QChar *const begin = m_next;
        if (begin == m_end)
            return false;
        const bool cut = maxLength > 0 && m_end - begin > maxLength;
        const QChar *const limit = cut ? begin + maxLength : m_end;
        const qsizetype lineFeed = QStringView(begin, limit).indexOf(QLatin1Char('\n'));
        const QChar *lineEnd = limit;
        if (lineFeed >= 0) {
            lineEnd = begin + lineFeed;
            m_next = lineEnd + 1;
        } else {
            m_next = limit;
        }
        const bool complete = lineFeed >= 0 || m_next == m_end;
        if (complete && lineEnd != begin && lineEnd[-1] == QLatin1Char('\r'))
            --lineEnd;
        line = QStringView(begin, lineEnd);
        return true;
    }

private:
    const QChar *m_next;
    const QChar *m_end;
};

/** The lines of a stream from its current position on. */
class StreamLines
{
public:
    explicit StreamLines(QTextStream *stream)
        : m_stream(stream)
    {
    }

    bool atEnd() const { return m_stream->atEnd(); }

    /** As MemoryLines::readLine(); false also when the stream fails to give a line. */
    bool readLine(QStringView &line, qsizetype maxLength = 0)
    {
        const bool read = m_stream->readLineInto(&m_line, maxLength);
        line = read ? QStringView(m_line) : QStringView();
        return read;
    }

private:
    QTextStream *m_stream;
    QString m_line;
};

/** The view as a string of its own; a null view gives a null string, an empty one an empty string.
 */
inline QString toText(QStringView view)
{
    return view.isNull() ? QString() : view.toString();
}

/** Whether @p line begins with the ASCII text @p start; inlined, as every line is asked. */
template <int SizeWithZero>
bool beginsWith(QStringView line, const char (&start)[SizeWithZero])
{
    constexpr int size = SizeWithZero - 1;
    if (line.size() < size)
        return false;
    for (int i = 0; i < size; ++i) {
        if (line.utf16()[i] != static_cast<unsigned char>(start[i]))
            return false;
    }
    return true;
}

/** What follows the first @p position characters; null when there are fewer, as with QString::mid.
 */
inline QStringView textFrom(QStringView line, qsizetype position)
{
    return position > line.size() ? QStringView() : line.mid(position);
}

} // namespace vn::internal

#endif // VN_CONFIG_TEXTLINES_P_H
