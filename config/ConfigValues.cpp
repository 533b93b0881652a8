// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigValues.h"

#include "config/VanteroConfigMap.h"

#include <algorithm>

namespace vn {

namespace {

template <typename T>
ConfigReading<T> problem(const QString &text)
{
    return {std::nullopt, text};
}

QString noValue()
{
    return QString::fromLatin1("there is no value");
}

QString quoted(const QString &value)
{
    return QLatin1Char('"') + value + QLatin1Char('"');
}

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

bool isInteger(const QString &value)
{
    const auto *digits = value.begin() + (value.startsWith(QLatin1Char('-')) ? 1 : 0);
    return digits != value.end() && std::all_of(digits, value.end(), isDigit);
}

/** The value of a key, read by @p read; what is wrong names the key. */
template <typename Read>
auto readNewest(const VanteroConfigMap &map, const QString &section, const QString &key, Read read)
    -> decltype(read(key))
{
    const auto at = map.find(section, key);
    if (at == map.section(section).constEnd()) {
        if (!map.containsSection(section))
            return {std::nullopt, section + QLatin1String(": there is no such section")};
        return {std::nullopt,
                section + QLatin1Char('/') + key + QLatin1String(": there is no such key")};
    }
    auto reading = read(at.value());
    if (!reading.value)
        reading.problem.prepend(section + QLatin1Char('/') + key + QLatin1String(": "));
    return reading;
}

} // namespace

ConfigReading<bool> readBool(const QString &value)
{
    if (value == QLatin1String("1") || value == QLatin1String("on"))
        return {true, QString()};
    if (value == QLatin1String("0") || value == QLatin1String("off"))
        return {false, QString()};
    if (value.isEmpty())
        return problem<bool>(noValue());
    return problem<bool>(quoted(value) + QLatin1String(" is neither on (1, on) nor off (0, off)"));
}

ConfigReading<qint64> readInteger(const QString &value, qint64 least, qint64 greatest)
{
    if (value.isEmpty())
        return problem<qint64>(noValue());
    if (!isInteger(value))
        return problem<qint64>(quoted(value) + QLatin1String(" is not an integer"));
    bool fits = false;
    const qint64 number = value.toLongLong(&fits);
    if (!fits || number < least || number > greatest)
        return problem<qint64>(quoted(value) + QLatin1String(" is not between ") +
                               QString::number(least) + QLatin1String(" and ") +
                               QString::number(greatest));
    return {number, QString()};
}

ConfigReading<QStringList> readList(const QString &value, QChar separator)
{
    if (value.isNull())
        return problem<QStringList>(noValue());
    if (value.isEmpty())
        return {QStringList(), QString()};
    QStringList elements = value.split(separator);
    const int empty = elements.indexOf(QString());
    if (empty >= 0)
        return problem<QStringList>(QLatin1String("element ") + QString::number(empty + 1) +
                                    QLatin1String(" of ") + quoted(value) +
                                    QLatin1String(" is empty"));
    return {std::move(elements), QString()};
}

ConfigReading<bool> readBool(const VanteroConfigMap &map, const QString &section,
                             const QString &key)
{
    return readNewest(map, section, key, [](const QString &value) { return readBool(value); });
}

ConfigReading<qint64> readInteger(const VanteroConfigMap &map, const QString &section,
                                  const QString &key, qint64 least, qint64 greatest)
{
    return readNewest(map, section, key,
                      [=](const QString &value) { return readInteger(value, least, greatest); });
}

ConfigReading<QStringList> readList(const VanteroConfigMap &map, const QString &section,
                                    const QString &key, QChar separator)
{
    return readNewest(map, section, key,
                      [=](const QString &value) { return readList(value, separator); });
}

} // namespace vn
