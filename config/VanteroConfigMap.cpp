// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigMap.h"

#include "base/ExceptionBoundary_p.h"
#include "base/Exceptions.h"
#include "config/ConfigSyntax_p.h"
#include "config/SameValue_p.h"

#include <QtCore/QTextStream>

#include <algorithm>
#include <limits>

namespace vn {

const QString EMPTY_STRING;
const QMultiMap<QString, QString> EMPTY_MAP;

namespace {

using Sections = QMap<QString, VanteroConfigMap::Section>;

constexpr qsizetype kLongestPropertyLine = 1024; // in UTF-16 code units

/**
 * A text that is written piece by piece. It is sized by a guess and grows by halves: to count first
 * would be a second walk through all entries, which costs more than the copy.
 */
class TextBuffer
{
public:
    explicit TextBuffer(qint64 expectedSize)
        : m_text(static_cast<int>(std::min<qint64>(expectedSize, kMaxSize)), Qt::Uninitialized)
        , m_out(m_text.data())
        , m_end(m_out + m_text.size())
    {
    }

    TextBuffer &operator<<(const QString &text)
    {
        reserve(text.size());
        m_out = std::copy(text.begin(), text.end(), m_out);
        return *this;
    }
    TextBuffer &operator<<(QLatin1String text)
    {
        reserve(text.size());
        m_out = std::transform(text.begin(), text.end(), m_out,
                               [](char character) { return QLatin1Char(character); });
        return *this;
    }
    TextBuffer &operator<<(QLatin1Char character)
    {
        reserve(1);
        *m_out++ = character;
        return *this;
    }

    /** The text; null when nothing was written. The buffer is spent. */
    QString take()
    {
        const int size = used();
        if (size == 0)
            return QString();
        m_text.resize(size);
        m_text.squeeze();
        return std::move(m_text);
    }

private:
    static constexpr qint64 kMaxSize = std::numeric_limits<int>::max() / 2 - 64; // Qt's limit

    int used() const { return static_cast<int>(m_out - m_text.constData()); }

    void reserve(int size)
    {
        if (m_end - m_out < size)
            grow(size);
    }

    void grow(int size)
    {
        const int written = used();
        const qint64 needed = qint64(written) + size;
        if (needed > kMaxSize)
            qBadAlloc();
        m_text.resize(static_cast<int>(std::min(needed + needed / 2, kMaxSize)));
        m_out = m_text.data() + written;
        m_end = m_text.data() + m_text.size();
    }

    QString m_text;
    QChar *m_out;
    QChar *m_end;
};

/** What an entry usually takes, in characters. */
constexpr int kUsualEntry = 32;

template <typename Sink>
void writeSection(Sink &out, const QString &section, const VanteroConfigMap::Section &content)
{
    out << QLatin1String(internal::kStartOfLine) << section << QLatin1Char('\n');
    for (auto it = content.constBegin(), end = content.constEnd(); it != end; ++it)
        out << it.key() << internal::kValueMark << it.value() << QLatin1Char('\n');
    out << QLatin1String(internal::kEndOfLine) << section << QLatin1Char('\n');
}

template <typename Sink>
void writeSections(Sink &out, const Sections &sections)
{
    for (auto it = sections.constBegin(), end = sections.constEnd(); it != end; ++it) {
        out << QLatin1Char('\n');
        writeSection(out, it.key(), it.value());
        out << QLatin1Char('\n');
    }
}

template <typename Lines>
void readProperties(Lines &lines, VanteroConfigMap::Section &out)
{
    while (!lines.atEnd()) {
        QStringView line;
        // A stream that claims to hold more but gives no line would be asked for ever.
        if (!lines.readLine(line, kLongestPropertyLine))
            return;
        // The marks of sections are none here: their lines are entries like others.
        if (line.isEmpty() || line.front() == internal::kCommentMark)
            continue;
        const internal::EntryLine entry(line);
        out.insert(entry.key.toString(), internal::toText(entry.value));
    }
}

/** Whether two maps have the same keys in the same order, and values that @p isSame takes for it.
 */
template <typename Map, typename IsSame>
bool isSameContent(const Map &a, const Map &b, IsSame isSame)
{
    if (a.isSharedWith(b))
        return true;
    if (a.size() != b.size())
        return false;
    for (auto x = a.constBegin(), y = b.constBegin(); x != a.constEnd(); ++x, ++y)
        if (x.key() != y.key() || !isSame(x.value(), y.value()))
            return false;
    return true;
}

} // namespace

// ---- Lookups -----------------------------------------------------------------------------------

bool VanteroConfigMap::containsSection(const QString &section) const
{
    return m_sections.contains(section);
}

const QMultiMap<QString, QString> &VanteroConfigMap::section(const QString &section) const
{
    const auto it = m_sections.constFind(section);
    return it == m_sections.constEnd() ? EMPTY_MAP : it.value();
}

bool VanteroConfigMap::contains(const QString &section, const QString &key) const
{
    return this->section(section).contains(key);
}

int VanteroConfigMap::count(const QString &section, const QString &key) const
{
    return this->section(section).count(key);
}

const QString &VanteroConfigMap::value(const QString &section, const QString &key, int index) const
{
    const Section &entries = this->section(section);
    const auto end = entries.constEnd();
    auto it = entries.constFind(key);
    while (it != end && index > 0) {
        ++it;
        --index;
    }
    return it == end ? EMPTY_STRING : it.value();
}

QList<QString> VanteroConfigMap::values(const QString &section, const QString &key) const
{
    return this->section(section).values(key);
}

QMultiMap<QString, QString>::const_iterator VanteroConfigMap::find(const QString &section,
                                                                   const QString &key) const
{
    return this->section(section).constFind(key);
}

QStringList VanteroConfigMap::allSectionKeys() const
{
    return m_sections.keys();
}

// ---- Edits -------------------------------------------------------------------------------------

QMultiMap<QString, QString> &VanteroConfigMap::section(const QString &section)
{
    return m_sections[section];
}

QMultiMap<QString, QString>::iterator VanteroConfigMap::find(const QString &section,
                                                             const QString &key)
{
    return this->section(section).find(key);
}

void VanteroConfigMap::addValue(const QString &section, const QString &key, const QString &value)
{
    this->section(section).insert(key, value);
}

void VanteroConfigMap::setValue(const QString &section, const QString &key, const QString &value)
{
    Section &entries = this->section(section);
    const auto it = entries.find(key);
    if (it == entries.end())
        entries.insert(key, value);
    else
        it.value() = value;
}

int VanteroConfigMap::remove(const QString &section, const QString &key)
{
    const QString kept = key; // the caller's key may be that of an entry which goes
    return this->section(section).remove(kept);
}

int VanteroConfigMap::removeSection(const QString &section)
{
    return m_sections.remove(section);
}

void VanteroConfigMap::removeAllSections(const QStringList &sections)
{
    for (const QString &section : sections)
        removeSection(section);
}

void VanteroConfigMap::replaceSection(const QString &section,
                                      const QMultiMap<QString, QString> &content)
{
    m_sections.insert(section, content);
}

// ---- Text --------------------------------------------------------------------------------------

void VanteroConfigMap::print(QTextStream &out) const
{
    writeSections(out, m_sections);
}

void VanteroConfigMap::printSection(QTextStream &out, const QString &section) const
{
    printSection(out, section, this->section(section));
}

void VanteroConfigMap::printSection(QTextStream &out, const QString &section,
                                    const QMultiMap<QString, QString> &content)
{
    writeSection(out, section, content);
}

QString VanteroConfigMap::toString() const
{
    qint64 entries = 0;
    for (const Section &section : m_sections)
        entries += section.size() + 2; // its first and last line
    TextBuffer text(entries * kUsualEntry);
    writeSections(text, m_sections);
    return text.take();
}

QString VanteroConfigMap::toString(const QString &section) const
{
    return toString(section, this->section(section));
}

QString VanteroConfigMap::toString(const QString &section,
                                   const QMultiMap<QString, QString> &content)
{
    TextBuffer text((content.size() + 2) * qint64(kUsualEntry));
    writeSection(text, section, content);
    return text.take();
}

void VanteroConfigMap::parseProperties(QTextStream *in, QMultiMap<QString, QString> &out)
{
    onlyThrows<ParseException>([&] {
        internal::StreamLines lines(in);
        readProperties(lines, out);
    });
}

void VanteroConfigMap::parseProperties(const QString &text, QMultiMap<QString, QString> &out)
{
    onlyThrows<ParseException>([&] {
        internal::MemoryLines lines(text);
        readProperties(lines, out);
    });
}

QMultiMap<QString, QString> VanteroConfigMap::parseProperties(const QString &text)
{
    QMultiMap<QString, QString> section;
    parseProperties(text, section);
    return section;
}

// ---- Comparison --------------------------------------------------------------------------------

bool operator==(const VanteroConfigMap &a, const VanteroConfigMap &b) noexcept
{
    const auto isSameSection = [](const VanteroConfigMap::Section &x,
                                  const VanteroConfigMap::Section &y) {
        return isSameContent(x, y, internal::isSameValue);
    };
    return isSameContent(a.m_sections, b.m_sections, isSameSection);
}

} // namespace vn
