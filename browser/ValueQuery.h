// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_VALUEQUERY_H
#define BROWSER_VALUEQUERY_H

#include "Configuration.h"

#include <QtCore/QString>

namespace browser {

/**
 * A question about the values of a camera, as it is typed: "NTP=10.14" is true where a value of the
 * key NTP holds that text, "NTP!=10.14" where none does, "NTP=" where the key is there, and
 * "ethernet/NTP=…" asks one section only. The case of letters does not matter.
 */
class ValueQuery
{
public:
    /** A text that asks for no key is null: it is for the columns of the table. */
    explicit ValueQuery(const QString &typed = QString());

    bool isNull() const { return m_key.isEmpty(); }
    bool matches(const QString &text, Configuration::Form form) const;

private:
    bool isIn(const QString &text, Configuration::Form form) const;

    QString m_section; // empty: any
    QString m_key;
    QString m_value;
    bool m_isNegated = false;
};

} // namespace browser

#endif // BROWSER_VALUEQUERY_H
