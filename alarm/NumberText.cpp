// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "alarm/NumberText_p.h"

#include "alarm/Bytes_p.h"

#include <cfloat>
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

/** Decimal digits as they are read one after another. */
struct Digits
{
    quint64 value = 0;
    int count = 0;

    const char *read(const char *text)
    {
        for (; is(Digit, *text); ++text) {
            value = value * 10 + static_cast<quint64>(*text - '0');
            ++count;
        }
        return text;
    }
};

// A number of so few digits is a 53-bit integer, and these powers of ten are doubles: one exact
// operation gives the nearest double. Where doubles are calculated wider it would be rounded twice.
constexpr int kMostExactDigits = FLT_EVAL_METHOD == 0 ? 15 : -1;
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kMostExactExponent = 22;
constexpr int kMostExponentDigits = 3;

} // namespace

const char *readListNumber(const char *text, double &value)
{
    const char *const start = text;
    const bool isNegative = *text == '-';
    text += isNegative ? 1 : 0;
    const bool isZero = *text == '0';
    if (!is(Digit, *text))
        return nullptr;
    Digits digits;
    text = isZero ? text + 1 : digits.read(text);
    int exponent = 0;
    const bool hasFraction = *text == '.';
    if (hasFraction) {
        const int before = digits.count;
        text = digits.read(text + 1);
        exponent = before - digits.count;
        if (exponent == 0)
            return nullptr;
    } else if (isZero && isNegative) {
        return nullptr;
    }
    bool isExact = digits.count <= kMostExactDigits;
    if (*text == 'e' || *text == 'E') {
        if (isZero && !hasFraction)
            return nullptr;
        ++text;
        const bool isDown = *text == '-';
        text += isDown || *text == '+' ? 1 : 0;
        Digits shift;
        text = shift.read(text);
        if (shift.count == 0)
            return nullptr;
        isExact = isExact && shift.count <= kMostExponentDigits;
        if (isExact)
            exponent += isDown ? -static_cast<int>(shift.value) : static_cast<int>(shift.value);
    }
    if (!isExact || exponent > kMostExactExponent || exponent < -kMostExactExponent) {
        value = toDouble(start, static_cast<int>(text - start));
        return text;
    }
    const double integer = static_cast<double>(static_cast<qint64>(digits.value));
    value = exponent < 0 ? integer / kPowersOfTen[-exponent] : integer * kPowersOfTen[exponent];
    if (isNegative)
        value = -value;
    return text;
}

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

int toDayNumber(const char *text)
{
    Digits digits;
    for (const int part : {0, 5, 8}) // "2010-05-01"
        digits.read(text + part);
    return static_cast<int>(digits.value);
}

} // namespace vn::internal
