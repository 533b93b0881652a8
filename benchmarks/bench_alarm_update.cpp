// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/** @file Alarm updates into objects of a script engine, against the engine's own readers. */

#include "Support.h"

#include "alarm/AlarmUpdateParser.h"
#include "tests/alarm/TimeZone.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QStringList>
#include <QtScript/QScriptEngine>
#include <QtScript/QScriptValue>

#include <string>
#include <utility>
#include <vector>

namespace {

/** One update in the form of each reader: strings, numbers, dates and lists in turn. */
struct Update
{
    explicit Update(int pairs)
    {
        json = "{";
        script = "({";
        for (int i = 0; i < pairs; ++i) {
            const QByteArray key = "key" + QByteArray::number(i);
            const QByteArray separator = i ? "," : "";
            const QByteArray number = QByteArray::number(i);
            keys += QString::fromLatin1(key);
            if (i)
                text += ';';
            switch (i % 4) {
            case 0:
                add(separator, key, "entrance" + number, "\"entrance" + number + "\"");
                break;
            case 1:
                add(separator, key, number, number);
                break;
            case 2:
                addDate(separator, key, QDate(2010, 1, 1).addDays(7 * i));
                break;
            default:
                add(separator, key, "front,back", "[\"back\",\"front\"]");
                break;
            }
        }
        json += "}";
        script += "})";
    }

    void add(const QByteArray &separator, const QByteArray &key, const QByteArray &plain,
             const QByteArray &literal)
    {
        text += key + '=' + plain;
        json += separator + '"' + key + "\":" + literal;
        script += separator + '"' + key + "\":" + literal;
    }

    /** Each another one, through summer and winter. */
    void addDate(const QByteArray &separator, const QByteArray &key, const QDate &date)
    {
        text += key + '=' + date.toString(Qt::ISODate).toLatin1();
        script += separator + '"' + key + "\":new Date(" + QByteArray::number(date.year()) + ',' +
                  QByteArray::number(date.month() - 1) + ',' + QByteArray::number(date.day()) + ')';
        json += separator + '"' + key + "\":0";
        dates.emplace_back(QString::fromLatin1(key), date);
    }

    QByteArray text;
    QByteArray json;
    QByteArray script;
    QStringList keys;
    std::vector<std::pair<QString, QDate>> dates;
};

void check(const Update &update, const QScriptValue &result, const char *what)
{
    require(result.property(QStringLiteral("key0")).toString() == QLatin1String("entrance0"), what);
    for (const auto &[key, date] : update.dates)
        require(result.property(key).toDateTime() == date.startOfDay(), what);
    require(result.property(update.keys.last()).isValid(), what);
}

void ours(benchmark::State &state, const char *timeZone)
{
    const TimeZone zone(timeZone);
    const Update update(int(state.range(0)));
    QScriptEngine engine;
    vn::AlarmUpdateParser parser(&engine);
    const QByteArray terminated = update.text + QByteArray(2, '\0');
    QScriptValue result;
    for (auto _ : state)
        result = parser.parse(terminated.constData(), unsigned(terminated.size()));
    check(update, result, "update/ours");
}

void jsonParse(benchmark::State &state, const char *timeZone)
{
    const TimeZone zone(timeZone);
    const Update update(int(state.range(0)));
    QScriptEngine engine;
    QScriptValue parse =
        engine.globalObject().property(QStringLiteral("JSON")).property(QStringLiteral("parse"));
    const QString json = QString::fromLatin1(update.json);
    QScriptValue result;
    for (auto _ : state) {
        result = parse.call(QScriptValue(), QScriptValueList{QScriptValue(json)});
        for (const auto &[key, date] : update.dates)
            result.setProperty(key, engine.newDate(QDateTime(date, QTime(0, 0))));
    }
    check(update, result, "update/JSON.parse");
}

void evaluate(benchmark::State &state, const char *timeZone)
{
    const TimeZone zone(timeZone);
    const Update update(int(state.range(0)));
    QScriptEngine engine;
    const QString script = QString::fromLatin1(update.script);
    QScriptValue result;
    for (auto _ : state)
        result = engine.evaluate(script);
    check(update, result, "update/evaluate");
}

/** An object from values that lie ready. */
void limit(benchmark::State &state, const char *timeZone)
{
    const TimeZone zone(timeZone);
    const Update update(int(state.range(0)));
    QScriptEngine engine;
    vn::AlarmUpdateParser parser(&engine);
    QByteArray text = update.text;
    const QScriptValue parsed = parser.parse(&text);
    std::vector<std::pair<QString, QScriptValue>> ready;
    for (const QString &key : update.keys)
        ready.emplace_back(key, parsed.property(key));
    QScriptValue result;
    for (auto _ : state) {
        result = engine.newObject();
        for (const auto &[key, value] : ready)
            result.setProperty(key, value, QScriptValue::KeepExistingFlags);
    }
    check(update, result, "update/limit");
}

const bool s_registered = [] {
    const struct
    {
        const char *name;
        const char *timeZone;
    } works[] = {
        {"update", nullptr}, {"update in UTC", "UTC"}, {"update in Berlin", "Europe/Berlin"}};
    const struct
    {
        const char *name;
        void (*run)(benchmark::State &, const char *);
    } implementations[] = {
        {"ours", ours}, {"JSON.parse", jsonParse}, {"evaluate", evaluate}, {"limit", limit}};
    for (const auto &work : works) {
        for (const auto &implementation : implementations) {
            benchmark::RegisterBenchmark(
                (std::string(work.name) + '/' + implementation.name).c_str(), implementation.run,
                work.timeZone)
                ->Arg(1)
                ->Arg(10)
                ->Arg(90);
        }
    }
    return true;
}();

} // namespace

// A script engine wants an application.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
