// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/SyntaxErrorText_p.h"

#include <cstring>

namespace vn::internal {

namespace {

constexpr const char kSyntaxError[] = "syntax error";

/** Calls @p append with every piece of the text, in order. */
template <typename Append>
void forEachPiece(const char *unexpected, const char *const *expected, int expectedCount,
                  Append append)
{
    append(kSyntaxError);
    append(", unexpected ");
    append(unexpected);
    for (int i = 0; i < expectedCount; ++i) {
        append(i == 0 ? ", expecting " : " or ");
        append(expected[i]);
    }
}

} // namespace

SyntaxErrorText::SyntaxErrorText(const char *unexpected, const char *const *expected,
                                 int expectedCount)
{
    std::size_t size = 1; // the zero byte
    forEachPiece(unexpected, expected, expectedCount,
                 [&](const char *piece) { size += std::strlen(piece); });

    char *out = m_own;
    if (size > kOwnSize) {
        m_enlarged.reset(static_cast<char *>(std::malloc(2 * size)));
        if (!m_enlarged) {
            m_text = kSyntaxError;
            m_isComplete = false;
            return;
        }
        out = m_enlarged.get();
        m_text = out;
    }
    forEachPiece(unexpected, expected, expectedCount, [&](const char *piece) {
        const std::size_t length = std::strlen(piece);
        std::memcpy(out, piece, length);
        out += length;
    });
    *out = '\0';
}

} // namespace vn::internal
