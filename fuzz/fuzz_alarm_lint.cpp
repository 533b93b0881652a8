// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The findings of an alarm list and of an alarm update: errors where the parsers refuse the text,
// and nowhere else; the first is their place and message.

#include "AlarmUpdateSupport.h"

#include "alarm/AlarmLint.h"
#include "alarm/AlarmListParser.h"

#include <optional>

namespace {

template <typename Parse>
std::optional<vn::ParseException> refusalOf(Parse parse)
{
    try {
        parse();
    } catch (const vn::ParseException &e) {
        return e;
    }
    return std::nullopt;
}

void check(const vn::Findings &findings, const std::optional<vn::ParseException> &refusal,
           const QByteArray &text)
{
    bool hasError = false;
    qint64 last = 0;
    for (const vn::Finding &finding : findings) {
        const vn::TextRange &range = finding.range;
        FUZZ_CHECK(range.offset >= last && range.length >= 0);
        FUZZ_CHECK(range.offset + range.length <= text.size());
        FUZZ_CHECK(range.line == 1 + text.left(int(range.offset)).count('\n'));
        FUZZ_CHECK(range.column >= 1 && finding.code != QLatin1String("refused"));
        last = range.offset;
        if (finding.severity != vn::Finding::Severity::Error || hasError)
            continue;
        hasError = true;
        FUZZ_CHECK(refusal.has_value());
        FUZZ_CHECK(range.offset == refusal->startColumn());
        FUZZ_CHECK(range.offset + range.length == refusal->endColumn());
        FUZZ_CHECK(finding.message.endsWith(refusal->message() + QLatin1Char(')')));
    }
    FUZZ_CHECK(hasError == refusal.has_value());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static auto *engine = new Engine; // its application must not go after Qt's own statics
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));

    const vn::Findings ofList = vn::alarmListFindings(text);
    check(ofList, refusalOf([&] {
              QByteArray bytes = text;
              vn::AlarmListParser parser;
              parser.setFatalErrors(vn::FatalErrors::Throw);
              (void)parser.parse(&bytes);
          }),
          text);
    check(vn::alarmUpdateFindings(text), refusalOf([&] {
              QByteArray bytes = text;
              (void)vn::AlarmUpdateParser(engine->get()).parse(&bytes);
          }),
          text);
    engine->check();
    return 0;
}
