// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Closest.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace vn::tool {

namespace {

/** The number of characters to insert, remove or replace on the way from @p a to @p b. */
int distance(const QString &a, const QString &b)
{
    std::vector<int> row(std::size_t(b.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (int i = 0; i < a.size(); ++i) {
        int diagonal = row[0];
        row[0] = i + 1;
        for (int j = 0; j < b.size(); ++j) {
            const int above = row[std::size_t(j) + 1];
            row[std::size_t(j) + 1] = std::min(
                {above + 1, row[std::size_t(j)] + 1, diagonal + (a.at(i) == b.at(j) ? 0 : 1)});
            diagonal = above;
        }
    }
    return row.back();
}

} // namespace

QString closest(const QString &word, const QStringList &words)
{
    constexpr int kLongest = 100; // nobody mistypes more, and the search takes their square
    constexpr int kMostWrong = 2;
    constexpr int kShortestBeginning = 2;
    const QString folded = word.toCaseFolded();
    QString best;
    int least = std::min(kMostWrong, word.size() / 2) + 1;
    for (const QString &candidate : words) {
        if (candidate == word || std::max(candidate.size(), word.size()) > kLongest)
            continue;
        const QString foldedCandidate = candidate.toCaseFolded();
        int wrong = distance(folded, foldedCandidate);
        if (word.size() >= kShortestBeginning && foldedCandidate.startsWith(folded))
            wrong = std::min(wrong, 1);
        if (wrong >= least)
            continue;
        least = wrong;
        best = candidate;
    }
    return best;
}

QString didYouMean(const QString &word, const QStringList &words)
{
    const QString best = closest(word, words);
    return best.isEmpty() ? QString() : QStringLiteral("; did you mean %1?").arg(best);
}

} // namespace vn::tool
