// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VanteroSoftwareVersion.h"

#include "version/SafeUpdateRules_p.h"

#include <array>
#include <cstddef>
#include <limits>

namespace vn {

namespace {

constexpr int kPlatform = 0;
constexpr int kMajor = 1;
constexpr int kPreRelease = 5;

/** For each ASCII character whether it separates parts. */
constexpr auto kAsciiSeparators = [] {
    std::array<bool, 0x80> separates{};
    for (std::size_t code = 0; code < separates.size(); ++code) {
        const std::size_t letter = code | 0x20;
        separates[code] = !((code >= '0' && code <= '9') || (letter >= 'a' && letter <= 'z'));
    }
    separates['*'] = false; // a wildcard is a part
    return separates;
}();

/** Whether a code unit separates parts: one that splitVersion matches, "*" excepted. */
bool isSeparator(QChar unit)
{
    const std::size_t code = unit.unicode();
    if (code < kAsciiSeparators.size())
        return kAsciiSeparators[code];
    return !unit.isLetterOrNumber() && !unit.isMark();
}

/** Whether a part is exactly the word @p word. */
bool is(QStringView part, const char *word)
{
    for (const QChar unit : part) {
        if (*word == '\0' || unit != QLatin1Char(*word))
            return false;
        ++word;
    }
    return *word == '\0';
}

struct Platform
{
    const char *name;
    int code;
};

/** The codes order the platforms: every VN version is greater than every R16 version. */
constexpr Platform kPlatforms[] = {{"VN", 20}, {"R16", 10}, {"R8", 2}, {"R4", 1}};

/** The code of a platform; 0 for an unknown name. */
int platformCode(QStringView name)
{
    for (const Platform &platform : kPlatforms) {
        if (is(name, platform.name))
            return platform.code;
    }
    return 0;
}

/** One part of a text, and its value where it is a decimal number of 32 bits; 0 where it is not. */
struct Part
{
    QStringView text;
    int number;
};

/** Reads the parts of a text in one pass. */
class PartReader
{
public:
    explicit PartReader(const QString &text)
        : m_at(text.constData())
        , m_end(m_at + text.size())
    {
    }

    /** Leaves out one character where the next part begins with it. */
    void skip(QLatin1Char character)
    {
        if (m_at != m_end && *m_at == character)
            ++m_at;
    }

    /** Reads the next part; an empty text has one, which is empty. */
    Part read()
    {
        const QChar *const begin = m_at;
        qint64 value = 0;
        for (; m_at != m_end && m_at->unicode() >= '0' && m_at->unicode() <= '9'; ++m_at) {
            if (value <= kLargest)
                value = value * 10 + (m_at->unicode() - '0');
        }
        const QChar *const digitsEnd = m_at;
        while (m_at != m_end && !isSeparator(*m_at))
            ++m_at;
        const bool isNumber = m_at == digitsEnd && value <= kLargest;
        return {QStringView(begin, m_at), isNumber ? static_cast<int>(value) : 0};
    }

    /** Moves to the next part, if there is one: a separator at the very end is followed by one. */
    bool next()
    {
        if (m_at == m_end)
            return false;
        while (m_at != m_end && isSeparator(*m_at))
            ++m_at;
        return true;
    }

private:
    static constexpr int kLargest = std::numeric_limits<int>::max();

    const QChar *m_at;
    const QChar *m_end;
};

} // namespace

// From Latin-1, so that copies of the pattern own their characters.
const QRegExp VanteroSoftwareVersion::splitVersion(QString::fromLatin1("(\\W|_)+"));

VanteroSoftwareVersion::VanteroSoftwareVersion() = default;

VanteroSoftwareVersion::VanteroSoftwareVersion(const char *text)
    : VanteroSoftwareVersion(QString::fromLatin1(text))
{
}

VanteroSoftwareVersion::VanteroSoftwareVersion(const QString &text)
    : m_text(text)
{
    parse(text);
}

void VanteroSoftwareVersion::parse(const QString &text)
{
    m_components.fill(Range());
    PartReader parts(text);
    for (int i = 0; i < kComponents; ++i) {
        if (i == kMajor)
            parts.skip(QLatin1Char('V'));
        const Part part = parts.read();
        m_components[static_cast<std::size_t>(i)] = range(i, part.text, part.number);
        if (!parts.next())
            return;
    }
}

VanteroSoftwareVersion::Range VanteroSoftwareVersion::range(int index, QStringView part, int number)
{
    constexpr Range any{0, 99};
    const auto only = [](int value) {
        const auto cut = static_cast<qint16>(value); // kept on purpose: values wrap at 16 bits
        return Range{cut, cut};
    };
    if (is(part, "*"))
        return any;
    switch (index) {
    case kPlatform:
        return only(platformCode(part));
    case kPreRelease:
        return is(part, "pre") ? only(1) : any;
    default:
        return only(number);
    }
}

VanteroSoftwareVersion::operator QString() const
{
    return m_text;
}

int VanteroSoftwareVersion::operator[](int i) const
{
    return i >= 0 && i < kComponents ? m_components[static_cast<std::size_t>(i)].low : 0;
}

int VanteroSoftwareVersion::high(int i) const
{
    return i >= 0 && i < kComponents ? m_components[static_cast<std::size_t>(i)].high : 0;
}

QString VanteroSoftwareVersion::platform() const
{
    const Range code = m_components[kPlatform];
    if (code.low != code.high)
        return QLatin1String("*");
    for (const Platform &platform : kPlatforms) {
        if (platform.code == code.low)
            return QLatin1String(platform.name);
    }
    return {};
}

bool VanteroSoftwareVersion::isNull() const
{
    return m_text.isEmpty();
}

int VanteroSoftwareVersion::order(const VanteroSoftwareVersion &other) const
{
    for (std::size_t i = 0; i < kComponents; ++i) {
        const Range mine = m_components[i];
        const Range others = other.m_components[i];
        if (mine.high < others.low)
            return -1;
        if (mine.low > others.high)
            return 1;
    }
    return 0;
}

bool VanteroSoftwareVersion::operator==(const VanteroSoftwareVersion &other) const
{
    return order(other) == 0;
}

bool VanteroSoftwareVersion::operator!=(const VanteroSoftwareVersion &other) const
{
    return order(other) != 0;
}

bool VanteroSoftwareVersion::operator<(const VanteroSoftwareVersion &other) const
{
    return order(other) < 0;
}

bool VanteroSoftwareVersion::operator<=(const VanteroSoftwareVersion &other) const
{
    return order(other) <= 0;
}

bool VanteroSoftwareVersion::operator>(const VanteroSoftwareVersion &other) const
{
    return order(other) > 0;
}

bool VanteroSoftwareVersion::operator>=(const VanteroSoftwareVersion &other) const
{
    return order(other) >= 0;
}

bool VanteroSoftwareVersion::isUpgrade(const VanteroSoftwareVersion &other) const
{
    return *this < other;
}

bool VanteroSoftwareVersion::isDowngrade(const VanteroSoftwareVersion &other) const
{
    return *this > other;
}

bool VanteroSoftwareVersion::isSafe(const QString &model,
                                    const VanteroSoftwareVersion &target) const
{
    return decideUpdate(model, *this, target).safe;
}

SafeUpdateVerdict VanteroSoftwareVersion::checkUpdate(const QString &model,
                                                      const VanteroSoftwareVersion &target) const
{
    const SafeUpdateDecision decision = decideUpdate(model, *this, target);
    return {decision.safe, QLatin1String(decision.rule.identifier), decision.rule.sentence()};
}

VanteroSoftwareVersion VanteroSoftwareVersion::fromFile(const QString &)
{
    return {};
}

} // namespace vn
