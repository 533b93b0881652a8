// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_ALARM_SYNTAXERRORTEXT_P_H
#define VN_ALARM_SYNTAXERRORTEXT_P_H

/** @file The messages of both parsers. */

#include <QtCore/QString>

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace vn::internal {

/** "Initialisation Error": the message as long as there is no other. No static, which would be gone
 * before the last functions of the process that parse. */
inline QString initialisationError()
{
    return QString::fromLatin1("Initialisation Error"); // on the heap: outlives the library
}

/** With more expected tokens than this, a message names none of them. */
constexpr int kMaxExpectedTokens = 4;

/**
 * "syntax error, unexpected TNUMBER, expecting TSTRING or '}'".
 *
 * The text is built in a small buffer of its own, in one from the heap when it is longer. Where the
 * heap has none left, it is just "syntax error".
 */
class SyntaxErrorText
{
    Q_DISABLE_COPY(SyntaxErrorText)

public:
    /** Composes the text from the name of the offending token and those of the @p expectedCount
     * ones that could stand in its place (0 to kMaxExpectedTokens). */
    SyntaxErrorText(const char *unexpected, const char *const *expected, int expectedCount);

    /** The text; it lives as long as this object. */
    const char *text() const { return m_text; }

    /** Whether the text names the tokens; false when there was no memory for it. */
    bool isComplete() const { return m_isComplete; }

private:
    struct Free
    {
        void operator()(char *memory) const { std::free(memory); }
    };

    static constexpr std::size_t kOwnSize = 128;

    char m_own[kOwnSize];
    std::unique_ptr<char, Free> m_enlarged;
    const char *m_text = m_own;
    bool m_isComplete = true;
};

} // namespace vn::internal

#endif // VN_ALARM_SYNTAXERRORTEXT_P_H
