// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ValueQuery.h"

namespace browser {

ValueQuery::ValueQuery(const QString &typed)
{
    const int mark = typed.indexOf(QLatin1Char('='));
    if (mark < 1)
        return;
    m_isNegated = typed.at(mark - 1) == QLatin1Char('!');
    const QString name = typed.left(m_isNegated ? mark - 1 : mark).trimmed();
    const int slash = name.indexOf(QLatin1Char('/'));
    m_section = slash < 0 ? QString() : name.left(slash);
    m_key = name.mid(slash + 1);
    m_value = typed.mid(mark + 1);
}

bool ValueQuery::matches(const QString &text, Configuration::Form form) const
{
    return isIn(text, form) != m_isNegated;
}

bool ValueQuery::isIn(const QString &text, Configuration::Form form) const
{
    // Most texts that lack it are told by a glance; the header's keys stand in none.
    const bool isHeader = m_section.compare(QLatin1String("head"), Qt::CaseInsensitive) == 0;
    if (!isHeader &&
        !(text.contains(m_key, Qt::CaseInsensitive) && text.contains(m_value, Qt::CaseInsensitive)))
        return false;
    const vn::VanteroConfigMap map = mapOf(text, form);
    const QStringList sections = map.allSectionKeys();
    for (const QString &name : sections) {
        if (!m_section.isEmpty() && name.compare(m_section, Qt::CaseInsensitive) != 0)
            continue;
        const vn::VanteroConfigMap::Section &section = map.section(name);
        for (auto it = section.begin(); it != section.end(); ++it)
            if (it.key().compare(m_key, Qt::CaseInsensitive) == 0 &&
                it.value().contains(m_value, Qt::CaseInsensitive))
                return true;
    }
    return false;
}

} // namespace browser
