// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/** @file Alarm updates into objects of a script engine, against the engine's own readers. */

#include "Support.h"

#include "alarm/AlarmUpdateParser.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QStringList>
#include <QtScript/QScriptEngine>
#include <QtScript/QScriptValue>

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
                text += key + "=2010-05-01";
                script += separator + '"' + key + "\":new Date(2010,4,1)";
                json += separator + '"' + key + "\":0";
                dates += QString::fromLatin1(key);
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

    QByteArray text;
    QByteArray json;
    QByteArray script;
    QStringList keys;
    QStringList dates;
};

void check(const Update &update, const QScriptValue &result, const char *what)
{
    require(result.property(QStringLiteral("key0")).toString() == QLatin1String("entrance0"), what);
    for (const QString &key : update.dates)
        require(result.property(key).toDateTime().date() == QDate(2010, 5, 1), what);
    require(result.property(update.keys.last()).isValid(), what);
}

void ours(benchmark::State &state)
{
    const Update update(int(state.range(0)));
    QScriptEngine engine;
    vn::AlarmUpdateParser parser(&engine);
    const QByteArray terminated = update.text + QByteArray(2, '\0');
    QScriptValue result;
    for (auto _ : state)
        result = parser.parse(terminated.constData(), unsigned(terminated.size()));
    check(update, result, "update/ours");
}

void jsonParse(benchmark::State &state)
{
    const Update update(int(state.range(0)));
    QScriptEngine engine;
    QScriptValue parse =
        engine.globalObject().property(QStringLiteral("JSON")).property(QStringLiteral("parse"));
    const QString json = QString::fromLatin1(update.json);
    QScriptValue result;
    for (auto _ : state) {
        result = parse.call(QScriptValue(), QScriptValueList{QScriptValue(json)});
        for (const QString &key : update.dates)
            result.setProperty(key, engine.newDate(QDateTime(QDate(2010, 5, 1), QTime(0, 0))));
    }
    check(update, result, "update/JSON.parse");
}

void evaluate(benchmark::State &state)
{
    const Update update(int(state.range(0)));
    QScriptEngine engine;
    const QString script = QString::fromLatin1(update.script);
    QScriptValue result;
    for (auto _ : state)
        result = engine.evaluate(script);
    check(update, result, "update/evaluate");
}

/** An object from values that lie ready. */
void limit(benchmark::State &state)
{
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

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(1)->Arg(10)->Arg(90);
}

} // namespace

BENCHMARK(ours)->Name("update/ours")->Apply(sizes);
BENCHMARK(jsonParse)->Name("update/JSON.parse")->Apply(sizes);
BENCHMARK(evaluate)->Name("update/evaluate")->Apply(sizes);
BENCHMARK(limit)->Name("update/limit")->Apply(sizes);

// A script engine wants an application.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
