// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigDiff.h"

#include "config/SameValue_p.h"
#include "config/VanteroConfigMap.h"

#include <algorithm>

namespace vn {

namespace {

using Section = VanteroConfigMap::Section;
using Kind = ConfigKeyDifference::Kind;

/** The values of the key at @p at, which moves on behind them. */
QStringList takeValues(Section::const_iterator &at, const Section::const_iterator &end,
                       const QString &key)
{
    QStringList values;
    for (; at != end && at.key() == key; ++at)
        values += at.value();
    return values;
}

bool isSame(const QStringList &a, const QStringList &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), internal::isSameValue);
}

/** How values that are not the same differ. */
Kind kindOf(QStringList first, QStringList second)
{
    if (first.isEmpty())
        return Kind::OnlyInSecond;
    if (second.isEmpty())
        return Kind::OnlyInFirst;
    if (first == second)
        return Kind::NullAgainstEmpty;
    // By Qt's order null and empty are one.
    const auto before = [](const QString &a, const QString &b) {
        return a == b ? a.isNull() && !b.isNull() : a < b;
    };
    std::sort(first.begin(), first.end(), before);
    std::sort(second.begin(), second.end(), before);
    return isSame(first, second) ? Kind::Reordered : Kind::Changed;
}

QList<ConfigKeyDifference> keyDifferences(const Section &first, const Section &second)
{
    QList<ConfigKeyDifference> result;
    auto a = first.constBegin();
    auto b = second.constBegin();
    while (a != first.constEnd() || b != second.constEnd()) {
        const bool fromFirst =
            b == second.constEnd() || (a != first.constEnd() && a.key() <= b.key());
        ConfigKeyDifference difference;
        difference.key = fromFirst ? a.key() : b.key();
        difference.first = takeValues(a, first.constEnd(), difference.key);
        difference.second = takeValues(b, second.constEnd(), difference.key);
        if (isSame(difference.first, difference.second))
            continue;
        difference.kind = kindOf(difference.first, difference.second);
        result += difference;
    }
    return result;
}

} // namespace

ConfigDiff configDiff(const VanteroConfigMap &first, const VanteroConfigMap &second)
{
    const QStringList inFirst = first.allSectionKeys();
    const QStringList inSecond = second.allSectionKeys();
    QStringList names;
    std::set_union(inFirst.begin(), inFirst.end(), inSecond.begin(), inSecond.end(),
                   std::back_inserter(names));
    ConfigDiff result;
    for (const QString &name : qAsConst(names)) {
        const ConfigSectionDifference difference = {
            name, first.containsSection(name), second.containsSection(name),
            keyDifferences(first.section(name), second.section(name))};
        if (!difference.keys.isEmpty() || difference.inFirst != difference.inSecond)
            result += difference;
    }
    return result;
}

} // namespace vn
