// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_SUPPORT_DEVICES_H
#define VN_TESTS_SUPPORT_DEVICES_H

/** @file Devices that fail, take less than they are given, or deliver in their own time. */

#include <QtCore/QBuffer>
#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QThread>

#include <algorithm>
#include <cstring>
#include <functional>

/** A device of random access over bytes of its own; it fails once it has given or taken so many. */
class FailingDevice : public QIODevice
{
public:
    enum class Failure {
        Lasting,
        Once, // then it is as if it had been at its end
    };

    /** Holds @p bytes and fails at the offset @p failAt in them; opened for reading and writing, by
     * default without a buffer of Qt's. */
    FailingDevice(const QByteArray &bytes, qint64 failAt, Failure failure = Failure::Lasting,
                  OpenMode mode = ReadWrite | Unbuffered)
        : m_bytes(bytes)
        , m_failAt(failAt)
        , m_failure(failure)
    {
        open(mode);
    }

    /** What has been written, in the place of the bytes given first. */
    const QByteArray &written() const { return m_written; }

    qint64 size() const override { return m_bytes.size(); }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 left = std::min<qint64>(m_bytes.size(), m_failAt) - pos();
        if (left <= 0 && pos() >= m_failAt)
            return m_failure == Failure::Once && m_hasFailed ? 0 : fail();
        const qint64 count = std::clamp<qint64>(left, 0, maxSize);
        std::memcpy(data, m_bytes.constData() + pos(), static_cast<std::size_t>(count));
        return count;
    }
    qint64 writeData(const char *data, qint64 maxSize) override
    {
        const qint64 count = std::min(m_failAt - m_written.size(), maxSize);
        if (count <= 0)
            return fail();
        m_written.append(data, static_cast<int>(count));
        return count;
    }

private:
    qint64 fail()
    {
        setErrorString(QStringLiteral("the medium is worn out"));
        m_hasFailed = true;
        return -1;
    }

    QByteArray m_bytes;
    QByteArray m_written;
    qint64 m_failAt;
    Failure m_failure;
    bool m_hasFailed = false;
};

/** A sequential device, such as a socket or a process: its bytes come in pieces, with or without
 * waiting for each, and then it ends in one of the ways in which such devices do. */
class SequentialDevice : public QIODevice
{
public:
    enum class End {
        NoMore,       // read() gives 0, there is nothing to wait for
        Closed,       // read() gives -1, without an error: Qt's way to say that all has been read
        Error,        // read() gives -1, and errorString() says why
        Silent,       // nothing comes any more, and waiting takes all the time it is given
        PromisesMore, // waitForReadyRead() says that there is more, again and again
    };

    SequentialDevice(const QList<QByteArray> &pieces, End end, int delayMs = 0)
        : m_pieces(pieces)
        , m_end(end)
        , m_delayMs(delayMs)
        , m_isWaitedFor(delayMs == 0)
    {
        open(ReadOnly);
    }

    /** How often waiting was asked for. */
    int waitCount() const { return m_waitCount; }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override
    {
        const qint64 here = m_isWaitedFor && !m_pieces.isEmpty() ? m_pieces.first().size() : 0;
        return QIODevice::bytesAvailable() + here;
    }
    bool waitForReadyRead(int timeoutMs) override
    {
        ++m_waitCount;
        if (!m_pieces.isEmpty()) {
            const int needed = m_isWaitedFor ? 0 : m_delayMs;
            const bool isInTime = timeoutMs < 0 || needed <= timeoutMs;
            QThread::msleep(static_cast<unsigned long>(isInTime ? needed : timeoutMs));
            m_isWaitedFor = m_isWaitedFor || isInTime;
            return isInTime;
        }
        if (m_end == End::Silent && timeoutMs > 0)
            QThread::msleep(static_cast<unsigned long>(timeoutMs));
        return m_end == End::PromisesMore;
    }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        if (m_pieces.isEmpty()) {
            if (m_end == End::Error)
                setErrorString(QStringLiteral("the line is dead"));
            return m_end == End::Closed || m_end == End::Error ? -1 : 0;
        }
        if (!m_isWaitedFor)
            return 0;
        QByteArray &piece = m_pieces.first();
        const int count = static_cast<int>(std::min<qint64>(piece.size(), maxSize));
        std::memcpy(data, piece.constData(), static_cast<std::size_t>(count));
        piece.remove(0, count);
        if (piece.isEmpty()) {
            m_pieces.removeFirst();
            m_isWaitedFor = m_delayMs == 0;
        }
        return count;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QList<QByteArray> m_pieces;
    End m_end;
    int m_delayMs;
    bool m_isWaitedFor; // whether the first piece can be read
    int m_waitCount = 0;
};

/** A device that told of an error before, and tells of none once a read has succeeded. */
class RecoveredDevice : public QBuffer
{
public:
    explicit RecoveredDevice(const QByteArray &bytes)
    {
        setData(bytes);
        setErrorString(QStringLiteral("an old error"));
        open(ReadOnly | Unbuffered);
    }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        setErrorString(QBuffer().errorString());
        return QBuffer::readData(data, maxSize);
    }
};

/** A device that is never at its end and never has anything; a read may throw. */
class HollowDevice : public QIODevice
{
public:
    explicit HollowDevice(std::function<void()> onRead = [] {})
        : m_onRead(std::move(onRead))
    {
        open(ReadOnly);
    }
    bool atEnd() const override { return false; }

protected:
    qint64 readData(char *, qint64) override
    {
        m_onRead();
        return -1;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    std::function<void()> m_onRead;
};

#endif // VN_TESTS_SUPPORT_DEVICES_H
