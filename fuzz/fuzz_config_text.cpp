// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// A configuration text loaded from memory, by a stream, and by a plain reader written here: one
// outcome. What was loaded is printed and loaded again.

#include "Support.h"

#include "base/Exceptions.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QMap>
#include <QtCore/QTextStream>

#include <functional>

using vn::VanteroConfigFile;
using Section = QMultiMap<QString, QString>;

namespace {

struct Outcome
{
    bool header = false;
    QString error;
    QMap<QString, Section> sections;
};

Outcome outcomeOf(const std::function<bool(VanteroConfigFile &)> &load)
{
    Outcome outcome;
    VanteroConfigFile config;
    try {
        outcome.header = load(config);
    } catch (const vn::ParseException &e) {
        FUZZ_CHECK(e.startLine() == -1 && e.startColumn() == -1 && e.endLine() == -1 &&
                   e.endColumn() == -1);
        outcome.error = e.message();
        FUZZ_CHECK(!outcome.error.isEmpty());
    }
    const QStringList names = config.allSectionKeys();
    for (const QString &name : names)
        outcome.sections.insert(name, config.section(name));
    return outcome;
}

// ---- The plain reader --------------------------------------------------------------------------

void setValue(Section &section, const QString &key, const QString &value)
{
    if (section.contains(key))
        section.find(key).value() = value;
    else
        section.insert(key, value);
}

/** Takes the header from the front of @p lines. */
bool readHeader(QStringList &lines, QMap<QString, Section> &sections)
{
    const auto store = [&](const char *key, const QString &value) {
        setValue(sections[QStringLiteral("head")], QString::fromLatin1(key), value);
    };
    bool result = true;
    if (!lines.isEmpty()) {
        const QString line = lines.takeFirst();
        result = line.startsWith(QLatin1String("#:"));
        if (result)
            store("File Version", line.mid(2).section(QLatin1Char('='), 0, 0));
    }
    if (!lines.isEmpty()) {
        const QString line = lines.takeFirst();
        if (line.startsWith(QLatin1String("#:")))
            store("Software Version", line.mid(2));
        else
            result = false;
    }
    while (!lines.isEmpty()) {
        const QString line = lines.takeFirst();
        if (line.isEmpty())
            break;
        const int phrase = line.indexOf(QLatin1String("Configuration of"));
        if (line.startsWith(QLatin1String("# Camera IP: ")))
            store("Factory IP", line.mid(13));
        else if (phrase > 0)
            store("Factory IP", line.mid(phrase + 17).trimmed());
    }
    return result;
}

QString readSections(const QStringList &lines, QMap<QString, Section> &sections)
{
    QString open;
    for (const QString &line : lines) {
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        if (line.startsWith(QLatin1String("SECTION"))) {
            if (!open.isEmpty())
                return QLatin1String("Unexpected ") + line;
            open = line.mid(8);
        } else if (line.startsWith(QLatin1String("ENDSECTION"))) {
            if (open.isEmpty())
                return QLatin1String("SECTION expected before ") + line;
            if (line.mid(11) != open)
                return line + QLatin1String(" does not match SECTION");
            open.clear();
        } else if (!open.isEmpty()) {
            const int equals = line.indexOf(QLatin1Char('='));
            sections[open].insert(equals < 0 ? line : line.left(equals),
                                  equals < 0 ? QString() : line.mid(equals + 1));
        }
    }
    return open.isEmpty() ? QString()
                          : QLatin1String("ENDSECTION ") + open + QLatin1String(" expected");
}

Outcome plainOutcome(const QString &text, bool withHeader)
{
    Outcome outcome;
    QStringList lines = linesOf(text);
    const bool header = withHeader && readHeader(lines, outcome.sections);
    outcome.error = readSections(lines, outcome.sections);
    outcome.header = outcome.error.isEmpty() && header;
    return outcome;
}

// ---- Checks ------------------------------------------------------------------------------------

void checkSame(const Outcome &actual, const Outcome &expected)
{
    FUZZ_EQUAL(actual.error, expected.error);
    FUZZ_CHECK(actual.header == expected.header);
    FUZZ_CHECK(actual.sections.keys() == expected.sections.keys());
    for (auto it = actual.sections.begin(); it != actual.sections.end(); ++it) {
        const Section &other = *expected.sections.find(it.key());
        FUZZ_CHECK(it->keys() == other.keys());
        FUZZ_CHECK(it->values() == other.values());
        auto entry = other.begin();
        for (const QString &value : *it)
            FUZZ_CHECK(value.isNull() == (entry++)->isNull());
    }
}

/** Header and sections other than "head" (which the header fills) as one text. */
QString printed(const VanteroConfigFile &config)
{
    QString text = config.makeHeader();
    const QStringList names = config.allSectionKeys();
    for (const QString &name : names)
        if (name != VanteroConfigFile::HEAD_SECTION)
            text += QLatin1Char('\n') + config.toString(name) + QLatin1Char('\n');
    return text;
}

/** Printing reverses the values of one key, so printing twice gives the text of the first time. */
void checkPrintedTextLoads(const QString &text)
{
    // A carriage return before a line end is lost with it; makeHeader() takes "%1" for a place.
    if (text.contains(QLatin1Char('\r')) || text.contains(QLatin1Char('%')))
        return;
    VanteroConfigFile config;
    try {
        config.parse(text, QDateTime());
    } catch (const vn::ParseException &) {
        return;
    }
    // The names of a section that the header shares with a block of the text would not come back.
    if (config.section(VanteroConfigFile::HEAD_SECTION).size() > 3 ||
        config.section(VanteroConfigFile::HEAD_SECTION).uniqueKeys().size() !=
            config.section(VanteroConfigFile::HEAD_SECTION).size())
        return;
    const QString first = printed(config);
    VanteroConfigFile second;
    FUZZ_CHECK(second.parse(first, QDateTime()));
    FUZZ_EQUAL(second.getFileVersion(), config.getFileVersion());
    FUZZ_EQUAL(second.getSoftwareVersion(), config.getSoftwareVersion());
    VanteroConfigFile third;
    FUZZ_CHECK(third.parse(printed(second), QDateTime()));
    FUZZ_EQUAL(printed(third), first);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));

    const Outcome expected = plainOutcome(text, true);
    checkSame(outcomeOf([&](VanteroConfigFile &config) { return config.parse(text, QDateTime()); }),
              expected);
    checkSame(outcomeOf([&](VanteroConfigFile &config) {
                  QString copy = text;
                  QTextStream stream(&copy, QIODevice::ReadOnly);
                  return config.parse(&stream, QDateTime());
              }),
              expected);

    const Outcome comment = plainOutcome(text, false);
    checkSame(outcomeOf([&](VanteroConfigFile &config) {
                  config.parseJpegComment(text);
                  return false;
              }),
              comment);
    checkSame(outcomeOf([&](VanteroConfigFile &config) {
                  QString copy = text;
                  QTextStream stream(&copy, QIODevice::ReadOnly);
                  config.parseJpegComment(&stream);
                  return false;
              }),
              comment);

    checkPrintedTextLoads(text);
    return 0;
}
