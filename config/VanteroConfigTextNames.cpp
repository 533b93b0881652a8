// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigTextNames_p.h"

#include "config/ConfigSyntax_p.h"

#include <algorithm>

namespace vn::internal {

namespace {

/**
 * Names in order, each with the longest other one that it begins with. All names that a text begins
 * with are found so: they are the chain of the last name that is not behind the text.
 */
class NameChains
{
public:
    explicit NameChains(const std::vector<NamedSection> &sorted)
        : m_sections(sorted)
        , m_shorter(sorted.size(), kNone)
    {
        for (int i = 1; i < int(sorted.size()); ++i)
            m_shorter[std::size_t(i)] = longestStartOf(name(i), i - 1);
    }

    static constexpr int kNone = -1;

    /** The longest name that @p text begins with. */
    int longestStartOf(QStringView text) const
    {
        const auto behind =
            std::upper_bound(m_sections.begin(), m_sections.end(), text,
                             [](QStringView a, const NamedSection &b) { return a < b.name; });
        return longestStartOf(text, int(behind - m_sections.begin()) - 1);
    }

    /** The next shorter one. */
    int shorter(int section) const { return m_shorter[std::size_t(section)]; }

private:
    QStringView name(int section) const { return m_sections[std::size_t(section)].name; }

    int longestStartOf(QStringView text, int candidate) const
    {
        while (candidate != kNone && !text.startsWith(name(candidate)))
            candidate = shorter(candidate);
        return candidate;
    }

    const std::vector<NamedSection> &m_sections;
    std::vector<int> m_shorter;
};

/** Tells the first place of the words before each name, to who has not heard one yet. */
class FirstPlaces
{
public:
    explicit FirstPlaces(std::size_t count)
        : m_isFound(count, false)
    {
    }

    /** Calls @p use with each section whose words stand at a place for the first time. A name that
     * was found was so with all shorter ones of its chain, so each is visited once. */
    template <typename Use>
    void add(const NameChains &chains, int longest, Use use)
    {
        for (int i = longest; i != NameChains::kNone && !m_isFound[std::size_t(i)];
             i = chains.shorter(i)) {
            m_isFound[std::size_t(i)] = true;
            use(std::size_t(i));
        }
    }

private:
    std::vector<bool> m_isFound;
};

} // namespace

void findMistakenNames(QStringView text, std::vector<NamedSection> &sections)
{
    std::sort(sections.begin(), sections.end(),
              [](const NamedSection &a, const NamedSection &b) { return a.name < b.name; });
    const NameChains chains(sections);
    FirstPlaces starts(sections.size());
    FirstPlaces ends(sections.size());

    // The words of the end hold those of the start.
    const QLatin1String start(kStartOfLine);
    const QLatin1String end(kEndOfLine);
    const qsizetype lead = end.size() - start.size();
    for (qsizetype at = 0; (at = text.indexOf(start, at)) >= 0; at += start.size()) {
        // No name holds a line end, so none needs to be looked for, which may be far away.
        const int longest = chains.longestStartOf(text.mid(at + start.size()));
        const auto expect = [&](qsizetype place, qsizetype NamedSection::*expected) {
            return [&sections, place, expected](std::size_t i) {
                NamedSection &section = sections[i];
                if (section.*expected != place && section.mistaken < 0)
                    section.mistaken = place;
            };
        };
        starts.add(chains, longest, expect(at, &NamedSection::start));
        if (at >= lead && text.mid(at - lead).startsWith(end))
            ends.add(chains, longest, expect(at - lead, &NamedSection::end));
    }
}

} // namespace vn::internal
