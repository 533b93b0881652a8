// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigValues.h"

#include "support/ConfigMaps.h"
#include "support/Expect.h"

#include <gtest/gtest.h>

namespace {

/** A value and what is read from it: its text in "read", or what is wrong in "problem". */
struct Row
{
    const char *name;
    QString value;
    QString read;
    QString problem;
};

std::ostream &operator<<(std::ostream &out, const Row &row)
{
    return out << row.name;
}

/** What was read as text: "true", "-12", "a|b"; null when nothing was. */
QString shown(const vn::ConfigReading<bool> &reading)
{
    return reading.value ? *reading.value ? "true"_q : "false"_q : QString();
}

QString shown(const vn::ConfigReading<qint64> &reading)
{
    return reading.value ? QString::number(*reading.value) : QString();
}

QString shown(const vn::ConfigReading<QStringList> &reading)
{
    return reading.value ? "|"_q + reading.value->join("|"_q) + "|"_q : QString();
}

template <typename Reading>
void expectReading(const Reading &reading, const Row &row)
{
    EXPECT_EQ(shown(reading), row.read);
    EXPECT_EQ(reading.problem, row.problem);
    EXPECT_EQ(reading.value.has_value(), reading.problem.isNull());
}

class ReadBool : public testing::TestWithParam<Row>
{
};
class ReadInteger : public testing::TestWithParam<Row>
{
};
class ReadPort : public testing::TestWithParam<Row>
{
};
class ReadList : public testing::TestWithParam<Row>
{
};

// clang-format off
const Row bools[] = {
    {"one",         "1"_q,       "true"_q,  QString()},
    {"on",          "on"_q,      "true"_q,  QString()},
    {"zero",        "0"_q,       "false"_q, QString()},
    {"off",         "off"_q,     "false"_q, QString()},
    {"otherWord",   "auto"_q,    QString(), "\"auto\" is neither on (1, on) nor off (0, off)"_q},
    {"otherNumber", "2"_q,       QString(), "\"2\" is neither on (1, on) nor off (0, off)"_q},
    {"otherCase",   "On"_q,      QString(), "\"On\" is neither on (1, on) nor off (0, off)"_q},
    {"blankBefore", " 1"_q,      QString(), "\" 1\" is neither on (1, on) nor off (0, off)"_q},
    {"blankBehind", "off "_q,    QString(), "\"off \" is neither on (1, on) nor off (0, off)"_q},
    {"empty",       ""_q,        QString(), "there is no value"_q},
    {"null",        QString(),   QString(), "there is no value"_q},
};

const Row integers[] = {
    {"zero",              "0"_q,                    "0"_q,                    QString()},
    {"positive",          "62"_q,                   "62"_q,                   QString()},
    {"negative",          "-12"_q,                  "-12"_q,                  QString()},
    {"leadingZeros",      "007"_q,                  "7"_q,                    QString()},
    {"minusZero",         "-0"_q,                   "0"_q,                    QString()},
    {"greatest",          "9223372036854775807"_q,  "9223372036854775807"_q,  QString()},
    {"least",             "-9223372036854775808"_q, "-9223372036854775808"_q, QString()},
    {"beyondTheGreatest", "9223372036854775808"_q,  QString(), "\"9223372036854775808\" is not between -9223372036854775808 and 9223372036854775807"_q},
    {"beyondTheLeast",    "-9223372036854775809"_q, QString(), "\"-9223372036854775809\" is not between -9223372036854775808 and 9223372036854775807"_q},
    {"letterBehind",      "12a"_q,                  QString(), "\"12a\" is not an integer"_q},
    {"plus",              "+1"_q,                   QString(), "\"+1\" is not an integer"_q},
    {"minusAlone",        "-"_q,                    QString(), "\"-\" is not an integer"_q},
    {"minusTwice",        "--1"_q,                  QString(), "\"--1\" is not an integer"_q},
    {"fraction",          "1.5"_q,                  QString(), "\"1.5\" is not an integer"_q},
    {"hexadecimal",       "0x10"_q,                 QString(), "\"0x10\" is not an integer"_q},
    {"grouped",           "1,000"_q,                QString(), "\"1,000\" is not an integer"_q},
    {"blankBefore",       " 1"_q,                   QString(), "\" 1\" is not an integer"_q},
    {"blankBehind",       "1 "_q,                   QString(), "\"1 \" is not an integer"_q},
    {"otherDigits",       "٣"_q,                    QString(), "\"٣\" is not an integer"_q},
    {"empty",             ""_q,                     QString(), "there is no value"_q},
    {"null",              QString(),                QString(), "there is no value"_q},
};

const Row ports[] = { // from 1 to 65535
    {"least",       "1"_q,     "1"_q,     QString()},
    {"greatest",    "65535"_q, "65535"_q, QString()},
    {"belowLeast",  "0"_q,     QString(), "\"0\" is not between 1 and 65535"_q},
    {"above",       "65536"_q, QString(), "\"65536\" is not between 1 and 65535"_q},
    {"farAbove",    "99999999999999999999"_q, QString(), "\"99999999999999999999\" is not between 1 and 65535"_q},
    {"noInteger",   "http"_q,  QString(), "\"http\" is not an integer"_q},
};

const Row lists[] = {
    {"one",          "a"_q,      "|a|"_q,     QString()},
    {"several",      "0,32,40"_q, "|0|32|40|"_q, QString()},
    {"mixed",        "0,18,sensitivity=18"_q, "|0|18|sensitivity=18|"_q, QString()},
    {"blanksStay",   "a, b"_q,   "|a| b|"_q,  QString()},
    {"emptyIsEmpty", ""_q,       "||"_q,      QString()},
    {"null",         QString(),  QString(),   "there is no value"_q},
    {"emptyFirst",   ",b"_q,     QString(),   "element 1 of \",b\" is empty"_q},
    {"emptyMiddle",  "a,,c"_q,   QString(),   "element 2 of \"a,,c\" is empty"_q},
    {"emptyLast",    "a,b,"_q,   QString(),   "element 3 of \"a,b,\" is empty"_q},
    {"separatorAlone", ","_q,    QString(),   "element 1 of \",\" is empty"_q},
};
// clang-format on

} // namespace

TEST_P(ReadBool, reads)
{
    expectReading(vn::readBool(GetParam().value), GetParam());
}
INSTANTIATE_TEST_SUITE_P(, ReadBool, testing::ValuesIn(bools), nameOfRow);

TEST_P(ReadInteger, reads)
{
    expectReading(vn::readInteger(GetParam().value), GetParam());
}
INSTANTIATE_TEST_SUITE_P(, ReadInteger, testing::ValuesIn(integers), nameOfRow);

TEST_P(ReadPort, reads)
{
    expectReading(vn::readInteger(GetParam().value, 1, 65535), GetParam());
}
INSTANTIATE_TEST_SUITE_P(, ReadPort, testing::ValuesIn(ports), nameOfRow);

TEST_P(ReadList, reads)
{
    expectReading(vn::readList(GetParam().value), GetParam());
}
INSTANTIATE_TEST_SUITE_P(, ReadList, testing::ValuesIn(lists), nameOfRow);

TEST(ReadLists, hasNoElementsWhereTheValueIsEmpty)
{
    EXPECT_EQ(vn::readList(""_q).value->size(), 0);
}

TEST(ReadLists, takesAnotherSeparator)
{
    EXPECT_EQ(shown(vn::readList("always;0,6;00:00-24:00"_q, QLatin1Char(';'))),
              "|always|0,6|00:00-24:00|"_q);
}

// ---- Of a map ----------------------------------------------------------------------------------

TEST(ReadOfMap, takesTheNewestValue)
{
    const vn::VanteroConfigMap map = mapOf("s{a=0;a=1;b=5;b=6;c=x;c=y,z;}"_q);
    EXPECT_EQ(shown(vn::readBool(map, "s"_q, "a"_q)), "true"_q);
    EXPECT_EQ(shown(vn::readInteger(map, "s"_q, "b"_q)), "6"_q);
    EXPECT_EQ(shown(vn::readList(map, "s"_q, "c"_q)), "|y|z|"_q);
}

TEST(ReadOfMap, namesWhatIsWrong)
{
    const vn::VanteroConfigMap map = mapOf("s{a=x;b=7;c=,;d=(null);}e{}"_q);
    const auto expectProblem = [](const auto &reading, const QString &problem) {
        EXPECT_FALSE(reading.value.has_value());
        EXPECT_EQ(reading.problem, problem);
    };
    expectProblem(vn::readBool(map, "s"_q, "a"_q),
                  "s/a: \"x\" is neither on (1, on) nor off (0, off)"_q);
    expectProblem(vn::readInteger(map, "s"_q, "a"_q), "s/a: \"x\" is not an integer"_q);
    expectProblem(vn::readInteger(map, "s"_q, "b"_q, 0, 5), "s/b: \"7\" is not between 0 and 5"_q);
    expectProblem(vn::readList(map, "s"_q, "c"_q), "s/c: element 1 of \",\" is empty"_q);
    expectProblem(vn::readBool(map, "s"_q, "d"_q), "s/d: there is no value"_q);
    expectProblem(vn::readBool(map, "s"_q, "f"_q), "s/f: there is no such key"_q);
    expectProblem(vn::readInteger(map, "e"_q, "f"_q), "e/f: there is no such key"_q);
    expectProblem(vn::readList(map, "t"_q, "f"_q), "t: there is no such section"_q);
}

TEST(ReadOfMap, partsAtTheGivenSeparator)
{
    EXPECT_EQ(shown(vn::readList(mapOf("s{a=1:2,3;}"_q), "s"_q, "a"_q, QLatin1Char(':'))),
              "|1|2,3|"_q);
}

/** All words of the example configurations that say on or off. */
TEST(ReadOfMap, readsTheExamples)
{
    struct
    {
        const char *file, *section, *key;
        bool value;
    } const expected[] = {
        {"gate.cfg", "audio", "microphone", true},
        {"gate.cfg", "audio", "speaker", false},
        {"gate.cfg", "ethernet", "DHCP", false},
        {"gate.cfg", "eventdlite", "motioncheck", true},
        {"gate.cfg", "eventdlite", "motion2_check", true},
        {"gate.cfg", "text", "show_date", true},
        {"gate-factory.cfg", "audio", "microphone", false},
        {"gate-factory.cfg", "ethernet", "DHCP", true},
        {"gate-factory.cfg", "eventdlite", "analytics", false},
        {"gate-factory.cfg", "image", "lens_correction", true},
        {"entrance.cfg", "eventdlite", "motioncheck", true},
        {"dock.cfg", "eventdlite", "motion2_check", false},
    };
    for (const auto &row : expected) {
        const vn::VanteroConfigMap map =
            vn::VanteroConfigFile::open(
                QStringLiteral(VANTERO_EXAMPLE_DATA "/") + QString::fromLatin1(row.file), {})
                .map();
        const auto reading =
            vn::readBool(map, QString::fromLatin1(row.section), QString::fromLatin1(row.key));
        EXPECT_EQ(reading.value, row.value) << row.file << ' ' << row.key;
        EXPECT_EQ(reading.problem, QString());
    }
}
