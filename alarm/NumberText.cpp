// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/NumberText_p.h"

#include <charconv>
#include <cstdlib>
#include <locale.h> // NOLINT(modernize-deprecated-headers): POSIX has more in it than C++

namespace vn::internal {

namespace {

/** strtod() in the C locale; for the few numbers that from_chars() only calls out of range. */
double toDoubleOutOfRange(const char *text)
{
    const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    const double value = strtod_l(text, nullptr, cLocale);
    freelocale(cLocale);
    return value;
}

} // namespace

double toDouble(const char *text, int length)
{
    double value = 0;
    const auto [end, error] = std::from_chars(text, text + length, value);
    Q_UNUSED(end) // the scanner's pattern admits numbers only
    return error == std::errc() ? value : toDoubleOutOfRange(text);
}

qint32 toInt32(const char *text)
{
    const qint64 value = std::strtoll(text, nullptr, 10);
    return static_cast<qint32>(static_cast<quint32>(static_cast<quint64>(value)));
}

} // namespace vn::internal
