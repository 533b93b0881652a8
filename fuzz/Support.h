// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_FUZZ_SUPPORT_H
#define VN_FUZZ_SUPPORT_H

/** @file What fuzz targets share: checks, and inputs cut into pieces. */

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/** Ends the run, as an input that breaks a promise must. */
#define FUZZ_CHECK(condition)                                                                      \
    do {                                                                                           \
        if (!(condition))                                                                          \
            fuzzFailed(#condition, __FILE__, __LINE__);                                            \
    } while (false)

[[noreturn]] inline void fuzzFailed(const char *condition, const char *file, int line)
{
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, condition);
    std::abort();
}

/** Ends the run, showing both, unless the two texts are equal (null counts as empty). */
#define FUZZ_EQUAL(actual, expected) fuzzEqual((actual), (expected), __FILE__, __LINE__)

inline void fuzzEqual(const QString &actual, const QString &expected, const char *file, int line)
{
    if (actual == expected)
        return;
    std::fprintf(stderr, "%s:%d: got\n%s\nexpected\n%s\n", file, line, qUtf8Printable(actual),
                 qUtf8Printable(expected));
    std::abort();
}

/** All of @p bytes as text; Qt's functions for byte arrays stop at a zero byte. */
inline QString fromUtf8(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size());
}
inline QString fromLatin1(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

/** What an input consists of, taken from its front. */
class Input
{
public:
    Input(const std::uint8_t *data, std::size_t size)
        : m_rest(reinterpret_cast<const char *>(data), static_cast<int>(size))
    {
    }

    /** The next byte; 0 at the end. */
    unsigned byte()
    {
        if (m_rest.isEmpty())
            return 0;
        const auto value = static_cast<unsigned char>(m_rest.at(0));
        m_rest.remove(0, 1);
        return value;
    }

    /** The bytes before the next separator (0xFF, which no UTF-8 text holds), or all that is left.
     */
    QByteArray piece()
    {
        const int end = m_rest.indexOf('\xff');
        const QByteArray result = m_rest.left(end);
        m_rest = end < 0 ? QByteArray() : m_rest.mid(end + 1);
        return result;
    }

    /** A piece as text. */
    QString text() { return fromUtf8(piece()); }

    bool atEnd() const { return m_rest.isEmpty(); }

    /** All that is left. */
    QByteArray rest() const { return m_rest; }
    QString restAsText() const { return fromUtf8(m_rest); }

private:
    QByteArray m_rest;
};

#endif // VN_FUZZ_SUPPORT_H
