// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "version/VanteroSoftwareVersion.h"

#include "version/Platforms_p.h"
#include "version/VersionText_p.h"

#include <array>
#include <cstddef>
#include <limits>

namespace vn {

namespace {

constexpr std::size_t kPlatform = internal::kPlatformComponent;
constexpr std::size_t kMajor = internal::kMajorComponent;
constexpr std::size_t kPreRelease = internal::kPreReleaseComponent;

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

/** The code of a platform; 0 for an unknown name. */
int platformCode(QStringView name)
{
    for (const internal::Platform &platform : internal::kPlatforms) {
        if (is(name, platform.name))
            return platform.code;
    }
    return 0;
}

/** Reads the parts of a text in one pass. */
class PartReader
{
public:
    explicit PartReader(const QString &text)
        : m_begin(text.constData())
        , m_at(m_begin)
        , m_end(m_begin + text.size())
    {
    }

    /** Leaves out one character where the next part begins with it. */
    void skip(QLatin1Char character)
    {
        if (m_at != m_end && *m_at == character)
            ++m_at;
    }

    /** Reads the next part; an empty text has one, which is empty. */
    void read()
    {
        m_begin = m_at;
        unsigned int value = 0;
        for (; m_at != m_end; ++m_at) {
            const unsigned int digit = m_at->unicode() - unsigned{'0'};
            if (digit > 9)
                break;
            value = value * 10 + digit;
        }
        m_number = static_cast<int>(value);
        if (m_at - m_begin > kSafeDigits)
            m_number = QStringView(m_begin, m_at).toInt();
        if (m_at == m_end || internal::isSeparator(*m_at))
            return;
        m_number = 0;
        do
            ++m_at;
        while (m_at != m_end && !internal::isSeparator(*m_at));
    }

    /** Moves to the next part, if there is one: a separator at the very end is followed by one. */
    bool next()
    {
        if (m_at == m_end)
            return false;
        do // the last part ended at a separator
            ++m_at;
        while (m_at != m_end && internal::isSeparator(*m_at));
        return true;
    }

    QStringView part() const { return {m_begin, m_at}; }

    /** The value of the part where it is a decimal number of 32 bits; 0 where it is not. */
    int number() const { return m_number; }

    bool isWildcard() const
    {
        return m_number == 0 && m_at - m_begin == 1 && *m_begin == QLatin1Char('*');
    }

private:
    static constexpr int kSafeDigits = std::numeric_limits<int>::digits10; // fit in any case

    const QChar *m_begin;
    const QChar *m_at;
    const QChar *m_end;
    int m_number = 0;
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
    constexpr Range any{0, 99};
    const auto only = [](int value) {
        const auto cut = static_cast<qint16>(value); // kept on purpose: values wrap at 16 bits
        return Range{cut, cut};
    };

    m_components.fill(Range());
    PartReader parts(text);
    parts.read();
    m_components[kPlatform] = parts.isWildcard() ? any : only(platformCode(parts.part()));
    for (std::size_t i = kMajor; i < kPreRelease; ++i) {
        if (!parts.next())
            return;
        if (i == kMajor)
            parts.skip(QLatin1Char('V'));
        parts.read();
        m_components[i] = parts.isWildcard() ? any : only(parts.number());
    }
    if (!parts.next())
        return;
    parts.read();
    m_components[kPreRelease] = is(parts.part(), "pre") ? only(1) : any;
}

VanteroSoftwareVersion::operator QString() const
{
    return m_text;
}

int VanteroSoftwareVersion::operator[](int i) const noexcept
{
    return i >= 0 && i < kComponents ? m_components[static_cast<std::size_t>(i)].low : 0;
}

int VanteroSoftwareVersion::high(int i) const noexcept
{
    return i >= 0 && i < kComponents ? m_components[static_cast<std::size_t>(i)].high : 0;
}

QString VanteroSoftwareVersion::platform() const
{
    const Range code = m_components[kPlatform];
    if (code.low != code.high)
        return QLatin1String("*");
    for (const internal::Platform &platform : internal::kPlatforms) {
        if (platform.code == code.low)
            return QLatin1String(platform.name);
    }
    return {};
}

bool VanteroSoftwareVersion::isNull() const noexcept
{
    return m_text.isEmpty();
}

int VanteroSoftwareVersion::order(const VanteroSoftwareVersion &other) const noexcept
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

bool VanteroSoftwareVersion::operator==(const VanteroSoftwareVersion &other) const noexcept
{
    return order(other) == 0;
}

bool VanteroSoftwareVersion::operator!=(const VanteroSoftwareVersion &other) const noexcept
{
    return order(other) != 0;
}

bool VanteroSoftwareVersion::operator<(const VanteroSoftwareVersion &other) const noexcept
{
    return order(other) < 0;
}

bool VanteroSoftwareVersion::operator<=(const VanteroSoftwareVersion &other) const noexcept
{
    return order(other) <= 0;
}

bool VanteroSoftwareVersion::operator>(const VanteroSoftwareVersion &other) const noexcept
{
    return order(other) > 0;
}

bool VanteroSoftwareVersion::operator>=(const VanteroSoftwareVersion &other) const noexcept
{
    return order(other) >= 0;
}

bool VanteroSoftwareVersion::isUpgrade(const VanteroSoftwareVersion &other) const noexcept
{
    return *this < other;
}

bool VanteroSoftwareVersion::isDowngrade(const VanteroSoftwareVersion &other) const noexcept
{
    return *this > other;
}

VanteroSoftwareVersion VanteroSoftwareVersion::fromFile(const QString &)
{
    return {};
}

} // namespace vn
