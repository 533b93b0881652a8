// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// A configuration text without its secrets is read as before, but for values; the report tells of
// every change; no value of a secret key is left.

#include "Support.h"

#include "base/Exceptions.h"
#include "config/ConfigRedaction.h"
#include "config/VanteroConfigFile.h"

using vn::VanteroConfigFile;

namespace {

struct Outcome
{
    bool header = false;
    QString error;
    vn::VanteroConfigMap map;
};

Outcome outcomeOf(const QString &text)
{
    Outcome outcome;
    VanteroConfigFile config;
    try {
        outcome.header = config.parse(text, QDateTime());
    } catch (const vn::ParseException &e) {
        outcome.error = e.message();
    }
    outcome.map = config.map();
    return outcome;
}

void checkSameKeys(const Outcome &before, const Outcome &after)
{
    FUZZ_EQUAL(after.error, before.error);
    FUZZ_CHECK(after.header == before.header);
    const QStringList names = before.map.allSectionKeys();
    FUZZ_CHECK(after.map.allSectionKeys() == names);
    for (const QString &name : names) {
        const auto &old = before.map.section(name);
        const auto &now = after.map.section(name);
        FUZZ_CHECK(now.keys() == old.keys());
        auto value = now.begin();
        for (auto it = old.begin(); it != old.end(); ++it, ++value) {
            FUZZ_CHECK(value->isNull() == it->isNull());
            if (it.key() == QLatin1String("password") && name != VanteroConfigFile::HEAD_SECTION)
                FUZZ_CHECK(value->isEmpty() || value->startsWith(QLatin1String("***")));
        }
    }
}

/** The text that the report describes; its places must stand in order, each in its line. */
QString rebuilt(const QString &text, const QList<vn::ConfigRedaction> &replaced)
{
    QString result;
    int copied = 0;
    for (const vn::ConfigRedaction &redaction : replaced) {
        const vn::TextRange &range = redaction.range;
        FUZZ_CHECK(range.offset >= copied && range.length > 0);
        FUZZ_CHECK(range.offset + range.length <= text.size());
        const int begin = static_cast<int>(range.offset);
        const int lineBegin = begin == 0 ? 0 : text.lastIndexOf(QLatin1Char('\n'), begin - 1) + 1;
        FUZZ_CHECK(range.column == begin - lineBegin + 1);
        FUZZ_CHECK(range.line == text.leftRef(begin).count(QLatin1Char('\n')) + 1);
        const QString secret = text.mid(begin, static_cast<int>(range.length));
        FUZZ_CHECK(!secret.contains(QLatin1Char('\n')));
        result += text.mid(copied, begin - copied) + QLatin1String("***");
        copied = begin + secret.size();
    }
    return result + text.mid(copied);
}

void check(const QString &text, const vn::ConfigRedactionRules &rules)
{
    const vn::RedactedConfig redacted = vn::redactConfig(text, rules);
    FUZZ_EQUAL(redacted.text, rebuilt(text, redacted.replaced));
    checkSameKeys(outcomeOf(text), outcomeOf(redacted.text));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    check(text, {});
    vn::ConfigRedactionRules everything;
    everything.patterns = {QRegularExpression(QStringLiteral(".+"))};
    check(text, everything);
    return 0;
}
