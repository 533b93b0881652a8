// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// prove_plans: compares plans of updates with brute force, all of them: for each class of models
// and each platform
// - from each version around a limit to each, with none and each one and each two of them at hand;
// - from each representative of a kind of versions to each, with all choices of up to 6 at hand.

#include "PlanProof.h"

#include <cstdio>
#include <cstdlib>

namespace {

/** Compares for all choices of up to @p most of @p pool. */
void proveChoices(PlanProof &proof, const QString &model, const std::vector<int> &ends,
                  const std::vector<int> &pool, std::size_t most, PlanProof::Figures &figures)
{
    std::vector<int> chosen;
    const auto prove = [&](const auto &self, std::size_t from) -> void {
        for (const int current : ends) {
            for (const int target : ends) {
                const QString difference = proof.compare(current, target, chosen, figures);
                if (difference.isEmpty())
                    continue;
                std::printf("%s from %d to %d by", qPrintable(model), current, target);
                for (const int version : chosen)
                    std::printf(" %d", version);
                std::printf(": %s\n", qPrintable(difference));
                std::exit(1);
            }
        }
        if (chosen.size() == most)
            return;
        for (std::size_t i = from; i < pool.size(); ++i) {
            chosen.push_back(pool[i]);
            self(self, i + 1);
            chosen.pop_back();
        }
    };
    prove(prove, 0);
}

void print(const char *what, const PlanProof::Figures &figures)
{
    std::printf(
        "%s: %llu plans; %llu of several updates, %d at the most; %llu without a way, %llu of "
        "which one package would open\n",
        what, static_cast<unsigned long long>(figures.plans),
        static_cast<unsigned long long>(figures.longWays), figures.longest,
        static_cast<unsigned long long>(figures.noWays),
        static_cast<unsigned long long>(figures.bridges));
    std::fflush(stdout);
}

} // namespace

int main()
{
    PlanProof::Figures total;
    for (const QString &platform : PlanProof::platforms()) {
        for (const QString &model : PlanProof::models()) {
            PlanProof proof(model, platform);
            std::vector<int> all;
            for (int i = 0; i < proof.versionCount(); ++i)
                all.push_back(i);
            const std::vector<int> representatives = proof.representatives();
            PlanProof::Figures figures;
            proveChoices(proof, model, all, all, 2, figures);
            proveChoices(proof, model, representatives, representatives, 6, figures);
            const QString what = QStringLiteral("%1 on %2 (%3 versions, %4 representatives)")
                                     .arg(model, platform)
                                     .arg(proof.versionCount())
                                     .arg(representatives.size());
            print(qPrintable(what), figures);
            total += figures;
        }
    }
    print("all", total);
    return 0;
}
