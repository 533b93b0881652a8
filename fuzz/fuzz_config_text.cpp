// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// A configuration text loaded from memory, by a stream, and by the reference: one outcome. What was
// loaded is printed and loaded again.

#include "Support.h"

#include "base/Exceptions.h"
#include "config/VanteroConfigFile.h"
#include "reference/ConfigReference.h"

#include <QtCore/QTextStream>

#include <functional>

using reference::Configuration;
using vn::VanteroConfigFile;

namespace {

Configuration outcomeOf(const std::function<bool(VanteroConfigFile &)> &load)
{
    Configuration outcome;
    VanteroConfigFile config;
    try {
        outcome.isComplete = load(config);
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

// ---- Checks ------------------------------------------------------------------------------------

void checkSame(const Configuration &actual, const Configuration &expected)
{
    FUZZ_EQUAL(actual.error, expected.error);
    FUZZ_CHECK(actual.isComplete == expected.isComplete);
    FUZZ_CHECK(actual.sections.keys() == expected.sections.keys());
    for (auto it = actual.sections.begin(); it != actual.sections.end(); ++it) {
        const reference::Section &other = *expected.sections.find(it.key());
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

    const Configuration expected = reference::loaded(text);
    checkSame(outcomeOf([&](VanteroConfigFile &config) { return config.parse(text, QDateTime()); }),
              expected);
    checkSame(outcomeOf([&](VanteroConfigFile &config) {
                  QString copy = text;
                  QTextStream stream(&copy, QIODevice::ReadOnly);
                  return config.parse(&stream, QDateTime());
              }),
              expected);

    const Configuration comment = reference::loaded(text, false);
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
