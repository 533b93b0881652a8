// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_ALARM_LALRMODEL_H
#define VN_TESTS_ALARM_LALRMODEL_H

/**
 * @file A table-driven parser that predicts what the library's parsers must say. It shares nothing
 * with them: the tables are computed here from the productions, by way of the canonical LR(1)
 * states.
 *
 * It follows the rules of an LALR(1) parser with default reductions: the most common reduction of a
 * state is done whatever the next token is, a state that can do nothing else does not even ask for
 * that token, and the tokens expected are those that the state has entries for.
 */

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

struct Production
{
    QString left;
    QStringList right;
};

class LalrModel
{
public:
    /** @p terminals in the order of messages, the end first; @p productions with the start first.
     */
    LalrModel(const QStringList &terminals, const QList<Production> &productions)
        : m_terminals(terminals)
        , m_productions(productions)
    {
        m_productions.prepend({QStringLiteral("$accept"), {productions.first().left}});
        buildStates();
    }

    /** What a run of the parser gives. */
    struct Outcome
    {
        int code = 0;    // 0 accepted, 1 syntax error, 2 stack exhausted
        QString message; // empty when accepted
        int errorState = -1;
    };

    /**
     * Runs the parser. @p next gives the next token as its terminal's name and sets its value; @p
     * reduce gives the value of a production (counted from 1, as given) and may end the parse with
     * success by setting its last argument.
     */
    template <typename Value, typename Next, typename Reduce>
    Outcome run(Next next, Reduce reduce, int depth = 200) const
    {
        std::vector<int> states = {0};
        std::vector<Value> values(1);
        QString token;
        Value tokenValue;
        bool hasToken = false;
        for (;;) {
            if (static_cast<int>(states.size()) >= depth)
                return {2, QStringLiteral("memory exhausted"), -1};
            const State &state = m_states[static_cast<std::size_t>(states.back())];
            int production = state.defaultReduction;
            if (!state.actions.empty()) {
                if (!hasToken) {
                    tokenValue = Value();
                    token = next(tokenValue);
                    hasToken = true;
                }
                const auto action = state.actions.find(token);
                if (action != state.actions.end()) {
                    if (action->second == kAccept)
                        return {};
                    if (action->second >= 0) {
                        states.push_back(action->second);
                        values.push_back(tokenValue);
                        hasToken = false;
                        continue;
                    }
                    production = -action->second;
                }
            }
            if (production == 0)
                return {1, message(state, token), states.back()};

            const Production &rule = m_productions.at(production);
            const std::size_t length = static_cast<std::size_t>(rule.right.size());
            std::vector<Value> right(values.end() - static_cast<std::ptrdiff_t>(length),
                                     values.end());
            states.resize(states.size() - length);
            values.resize(values.size() - length);
            bool isAccepted = false;
            values.push_back(reduce(production, right, isAccepted));
            if (isAccepted)
                return {};
            states.push_back(m_states[static_cast<std::size_t>(states.back())].gotos.at(rule.left));
        }
    }

    /** The states in which a syntax error can be found. */
    std::set<int> errorStates() const
    {
        std::set<int> found;
        for (std::size_t i = 0; i < m_states.size(); ++i)
            if (m_states[i].defaultReduction == 0)
                found.insert(static_cast<int>(i));
        return found;
    }

private:
    static constexpr int kAccept = 1000000;
    static constexpr int kMaxExpected = 4;

    /** A production with a place in it; the start's is production 0. */
    using Core = std::pair<int, int>;
    using Items = std::map<Core, std::set<QString>>;

    struct State
    {
        std::map<QString, int> actions; // by terminal: a state to shift to, minus a production
        std::map<QString, int> gotos;   // by nonterminal
        int defaultReduction = 0;       // 0 for none: production 0 is never reduced
    };

    bool isTerminal(const QString &symbol) const { return m_terminals.contains(symbol); }

    std::set<QString> firstOf(const QString &symbol) const
    {
        if (isTerminal(symbol))
            return {symbol};
        std::set<QString> found;
        std::set<QString> seen = {symbol};
        std::vector<QString> open = {symbol};
        while (!open.empty()) { // no production is empty
            const QString left = open.back();
            open.pop_back();
            for (const Production &production : m_productions) {
                if (production.left != left)
                    continue;
                const QString &first = production.right.first();
                if (isTerminal(first))
                    found.insert(first);
                else if (seen.insert(first).second)
                    open.push_back(first);
            }
        }
        return found;
    }

    Items closure(Items items) const
    {
        for (bool grows = true; grows;) {
            grows = false;
            const Items before = items;
            for (const auto &[core, lookaheads] : before) {
                const Production &production = m_productions.at(core.first);
                if (core.second == production.right.size())
                    continue;
                const QString &symbol = production.right.at(core.second);
                if (isTerminal(symbol))
                    continue;
                const std::set<QString> follow = core.second + 1 < production.right.size()
                                                     ? firstOf(production.right.at(core.second + 1))
                                                     : lookaheads;
                for (int i = 0; i < m_productions.size(); ++i) {
                    if (m_productions.at(i).left != symbol)
                        continue;
                    std::set<QString> &target = items[{i, 0}];
                    const std::size_t size = target.size();
                    target.insert(follow.begin(), follow.end());
                    grows = grows || target.size() != size || !before.count({i, 0});
                }
            }
        }
        return items;
    }

    void buildStates()
    {
        const QString end = m_terminals.first();
        std::vector<Items> sets = {closure({{{0, 0}, {end}}})};
        std::vector<std::map<QString, int>> edges(1);
        // States with the same cores are one, with the lookaheads of both.
        for (std::size_t i = 0; i < sets.size();) {
            std::map<QString, Items> moved;
            for (const auto &[core, lookaheads] : sets[i]) {
                const Production &production = m_productions.at(core.first);
                if (core.second < production.right.size())
                    moved[production.right.at(core.second)][{core.first, core.second + 1}].insert(
                        lookaheads.begin(), lookaheads.end());
            }
            std::size_t again = i + 1;
            for (const auto &[symbol, kernel] : moved) {
                const Items items = closure(kernel);
                std::size_t target = 0;
                while (target < sets.size() && !sameCores(sets[target], items))
                    ++target;
                if (target == sets.size()) {
                    sets.push_back(items);
                    edges.emplace_back();
                } else if (addLookaheads(sets[target], items)) {
                    again = std::min(again, target);
                }
                edges[i][symbol] = static_cast<int>(target);
            }
            i = again;
        }

        for (std::size_t i = 0; i < sets.size(); ++i) {
            State state;
            for (const auto &[symbol, target] : edges[i])
                (isTerminal(symbol) ? state.actions : state.gotos)[symbol] = target;
            std::map<int, std::set<QString>> reductions;
            for (const auto &[core, lookaheads] : sets[i]) {
                if (core.second < m_productions.at(core.first).right.size())
                    continue;
                if (core.first == 0)
                    state.actions[end] = kAccept;
                else
                    reductions[core.first] = lookaheads;
            }
            for (const auto &[production, lookaheads] : reductions)
                if (state.defaultReduction == 0 ||
                    lookaheads.size() > reductions[state.defaultReduction].size())
                    state.defaultReduction = production;
            for (const auto &[production, lookaheads] : reductions)
                if (production != state.defaultReduction)
                    for (const QString &lookahead : lookaheads)
                        state.actions[lookahead] = -production;
            m_states.push_back(state);
        }
    }

    static bool sameCores(const Items &a, const Items &b)
    {
        return a.size() == b.size() &&
               std::equal(a.begin(), a.end(), b.begin(),
                          [](const auto &x, const auto &y) { return x.first == y.first; });
    }

    static bool addLookaheads(Items &target, const Items &source)
    {
        bool grows = false;
        for (const auto &[core, lookaheads] : source) {
            const std::size_t size = target[core].size();
            target[core].insert(lookaheads.begin(), lookaheads.end());
            grows = grows || target[core].size() != size;
        }
        return grows;
    }

    QString message(const State &state, const QString &unexpected) const
    {
        QStringList expected;
        for (const QString &terminal : m_terminals)
            if (state.actions.count(terminal))
                expected << terminal;
        QString text = QStringLiteral("syntax error, unexpected ") + unexpected;
        if (expected.size() <= kMaxExpected)
            for (int i = 0; i < expected.size(); ++i)
                text += (i == 0 ? QStringLiteral(", expecting ") : QStringLiteral(" or ")) +
                        expected.at(i);
        return text;
    }

    QStringList m_terminals;
    QList<Production> m_productions;
    std::vector<State> m_states;
};

#endif // VN_TESTS_ALARM_LALRMODEL_H
