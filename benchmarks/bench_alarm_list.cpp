// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

/** @file Alarm lists into trees of QVariant, against JSON parsers that build the same trees. */

#include "Support.h"

#include "alarm/AlarmListParser.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QVariant>

#include <rapidjson/document.h>
#include <simdjson.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

// ---- Texts: alarm lists that are JSON, too -----------------------------------------------------

QByteArray record(int number)
{
    const QByteArray id = QByteArray::number(number);
    return "{\"id\": " + id + ", \"name\": \"Entrance " + id +
           "\", \"active\": true, \"level\": 0.75, \"since\": \"2010-05-01T12:30:00\", "
           "\"zone\": null, \"cams\": [\"front\", \"back\"]}";
}

/** Arrays in arrays of about the same length each, as no array may hold more than 99 elements. */
QByteArray nestedText(int bytes)
{
    const int records = qMax(1, bytes / record(100).size());
    const int levels = records > 1000 ? 3 : records > 50 ? 2 : 1;
    int width = 1;
    while (std::pow(width, levels) < records)
        ++width;
    int number = 0;
    const auto build = [&](const auto &self, int level) -> QByteArray {
        if (level == 0)
            return record(++number);
        QByteArray text = "[";
        for (int i = 0; i < width && number < records; ++i)
            text += (i ? ", " : "") + self(self, level - 1);
        return text + "]";
    };
    return build(build, levels);
}

QByteArray flatList(int elements)
{
    QByteArray text = "[";
    for (int i = 0; i < elements; ++i)
        text += (i ? ", \"value " : "\"value ") + QByteArray::number(i) + '"';
    return text + "]";
}

QByteArray flatObject(int members)
{
    QByteArray text = "{";
    for (int i = 0; i < members; ++i) {
        text += (i ? ", \"key " : "\"key ") + QByteArray::number(i) +
                "\": " + QByteArray::number(i) + ".5";
    }
    return text + "}";
}

/** The same values as in nestedText() in a text that is no JSON: with comments, and with an escape
 * in each string, which no reader of alarm lists decodes. */
QByteArray commentedText(int bytes)
{
    QByteArray text = nestedText(bytes);
    text.replace("\"Entrance ", "\"Entrance\\/");
    text.replace("\"since\"", "/* local */ \"since\"");
    return "/* alarms */ " + text;
}

using MakeText = QByteArray (*)(int);

// ---- The same tree by each parser
// ----------------------------------------------------------------

QVariant toVariant(const simdjson::dom::element &element)
{
    switch (element.type()) {
    case simdjson::dom::element_type::ARRAY: {
        QVariantList list;
        for (const auto child : simdjson::dom::array(element))
            list.append(toVariant(child));
        return list;
    }
    case simdjson::dom::element_type::OBJECT: {
        QVariantMap map;
        for (const auto member : simdjson::dom::object(element)) {
            map.insert(QString::fromUtf8(member.key.data(), static_cast<int>(member.key.size())),
                       toVariant(member.value));
        }
        return map;
    }
    case simdjson::dom::element_type::STRING: {
        const std::string_view text = element;
        return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
    }
    case simdjson::dom::element_type::BOOL:
        return bool(element);
    case simdjson::dom::element_type::NULL_VALUE:
        return QVariant();
    default:
        return double(element);
    }
}

QVariant toVariant(const rapidjson::Value &value)
{
    switch (value.GetType()) {
    case rapidjson::kArrayType: {
        QVariantList list;
        for (const auto &child : value.GetArray())
            list.append(toVariant(child));
        return list;
    }
    case rapidjson::kObjectType: {
        QVariantMap map;
        for (const auto &member : value.GetObject()) {
            map.insert(QString::fromUtf8(member.name.GetString(),
                                         static_cast<int>(member.name.GetStringLength())),
                       toVariant(member.value));
        }
        return map;
    }
    case rapidjson::kStringType:
        return QString::fromUtf8(value.GetString(), static_cast<int>(value.GetStringLength()));
    case rapidjson::kNullType:
        return QVariant();
    case rapidjson::kNumberType:
        return value.GetDouble();
    default:
        return value.GetBool();
    }
}

/** The number of values in a tree: what all of them must agree on. */
int count(const QVariant &value)
{
    int sum = 1;
    if (value.type() == QVariant::List) {
        const QVariantList list = value.toList();
        for (const QVariant &child : list)
            sum += count(child);
    } else if (value.type() == QVariant::Map) {
        const QVariantMap map = value.toMap();
        for (const QVariant &child : map)
            sum += count(child);
    }
    return sum;
}

int expected(const QByteArray &json)
{
    return count(QJsonDocument::fromJson(json).toVariant());
}

void ours(benchmark::State &state, MakeText makeText)
{
    const QByteArray text = makeText(int(state.range(0)));
    QByteArray terminated = text + QByteArray(2, '\0');
    vn::AlarmListParser parser;
    QVariant tree;
    for (auto _ : state)
        tree = parser.parse(terminated.constData(), unsigned(terminated.size()));
    require(count(tree) == expected(text), "ours");
}

/** With a parser for each text, which remembers nothing of those before. */
void oursOneOff(benchmark::State &state, MakeText makeText)
{
    const QByteArray text = makeText(int(state.range(0)));
    QByteArray terminated = text + QByteArray(2, '\0');
    QVariant tree;
    for (auto _ : state) {
        vn::AlarmListParser parser;
        tree = parser.parse(terminated.constData(), unsigned(terminated.size()));
    }
    require(count(tree) == expected(text), "ours, one-off");
}

/** Texts that peers cannot read: theirs is the one with the same values. */
void oursCommented(benchmark::State &state, MakeText makeText)
{
    const QByteArray text = commentedText(int(state.range(0)));
    QByteArray terminated = text + QByteArray(2, '\0');
    vn::AlarmListParser parser;
    QVariant tree;
    for (auto _ : state)
        tree = parser.parse(terminated.constData(), unsigned(terminated.size()));
    require(count(tree) == expected(makeText(int(state.range(0)))), "ours, commented");
}

void simdjsonToVariant(benchmark::State &state, MakeText makeText)
{
    const QByteArray text = makeText(int(state.range(0)));
    const simdjson::padded_string padded(text.constData(), std::size_t(text.size()));
    simdjson::dom::parser parser;
    QVariant tree;
    for (auto _ : state)
        tree = toVariant(simdjson::dom::element(parser.parse(padded)));
    require(count(tree) == expected(text), "simdjson");
}

void rapidjsonToVariant(benchmark::State &state, MakeText makeText)
{
    const QByteArray text = makeText(int(state.range(0)));
    QVariant tree;
    for (auto _ : state) {
        rapidjson::Document document;
        document.Parse(text.constData(), std::size_t(text.size()));
        tree = toVariant(static_cast<const rapidjson::Value &>(document));
    }
    require(count(tree) == expected(text), "RapidJSON");
}

void qJsonToVariant(benchmark::State &state, MakeText makeText)
{
    const QByteArray text = makeText(int(state.range(0)));
    QVariant tree;
    for (auto _ : state)
        tree = QJsonDocument::fromJson(text).toVariant();
    require(count(tree) == expected(text), "QJsonDocument");
}

/** The tree from data that is parsed already. */
void limit(benchmark::State &state, MakeText makeText)
{
    const QByteArray text = makeText(int(state.range(0)));
    const simdjson::padded_string padded(text.constData(), std::size_t(text.size()));
    simdjson::dom::parser parser;
    const simdjson::dom::element parsed = parser.parse(padded);
    QVariant tree;
    for (auto _ : state)
        tree = toVariant(parsed);
    require(count(tree) == expected(text), "limit");
}

struct Implementation
{
    const char *name;
    void (*run)(benchmark::State &, MakeText);
};

struct Work
{
    const char *name;
    MakeText text;
    std::vector<int64_t> sizes;
};

const bool s_registered = [] {
    const Work works[] = {{"nested", nestedText, {2'000, 60'000, 1'000'000}},
                          {"flat list", flatList, {9, 90}},
                          {"flat object", flatObject, {9, 90}},
                          {"commented", nestedText, {2'000, 60'000, 1'000'000}}};
    const Implementation peers[] = {{"simdjson", simdjsonToVariant},
                                    {"RapidJSON", rapidjsonToVariant},
                                    {"QJsonDocument", qJsonToVariant},
                                    {"limit", limit}};
    const auto registerRow = [](const Work &work, const Implementation &implementation) {
        benchmark::RegisterBenchmark((std::string(work.name) + '/' + implementation.name).c_str(),
                                     implementation.run, work.text)
            ->ArgsProduct({work.sizes});
    };
    for (const Work &work : works) {
        const bool isCommented = work.name == std::string("commented");
        registerRow(work, {"ours", isCommented ? oursCommented : ours});
        if (!isCommented)
            registerRow(work, {"ours, one-off parsers", oursOneOff});
        for (const Implementation &peer : peers)
            registerRow(work, peer);
    }
    return true;
}();

} // namespace
