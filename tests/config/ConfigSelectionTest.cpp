// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/ConfigSelection.h"

#include "base/Exceptions.h"
#include "config/VanteroConfigFile.h"
#include "support/Expect.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"
#include "support/Random.h"

#include <gtest/gtest.h>

#include <QtCore/QDateTime>

using vn::ConfigSelection;
using vn::ParseException;
using vn::VanteroConfigFile;
using vn::VanteroConfigMap;

namespace {

const QString kText = "#:1.3===\n#:VN-3.0.6.29\n# Camera IP: 10.0.0.1\n\n"
                      "SECTION a\nk=1\nk=2\nl=3\nn\nENDSECTION a\n"
                      "SECTION b\nk=4\nENDSECTION b\n"
                      "SECTION a\nk=5\nENDSECTION a\n"_q;

/** All that a map holds: "section/key=value", the newest value of a key first. */
QStringList shown(const VanteroConfigMap &map)
{
    QStringList lines;
    for (const QString &section : map.allSectionKeys()) {
        const QMultiMap<QString, QString> entries = map.section(section);
        for (auto entry = entries.begin(); entry != entries.end(); ++entry)
            lines += section + "/"_q + entry.key() +
                     (entry.value().isNull() ? ""_q : "="_q + entry.value());
    }
    return lines;
}

const QStringList kHeader = {"head/Factory IP=10.0.0.1"_q, "head/File Version=1.3"_q,
                             "head/Software Version=VN-3.0.6.29"_q};

} // namespace

TEST(ConfigSelection, keepsTheHeaderAndWhatIsSelected)
{
    ConfigSelection selection;
    VanteroConfigMap map;
    EXPECT_TRUE(selection.parse(kText, map));
    EXPECT_EQ(shown(map), kHeader);
    selection.add("a"_q, "k"_q);
    selection.add("a"_q, "n"_q);
    selection.add("a"_q, "k"_q);
    selection.add("none"_q, "k"_q);
    EXPECT_TRUE(selection.parse(kText, map));
    EXPECT_EQ(shown(map), (QStringList{"a/k=5"_q, "a/k=2"_q, "a/k=1"_q, "a/n"_q} + kHeader));
    EXPECT_FALSE(selection.parse("SECTION a\nk=1\nENDSECTION a\n"_q, map)) << "no versions";
}

TEST(ConfigSelection, readsToTheEndForFaultsThatAreElsewhere)
{
    ConfigSelection selection;
    selection.add("a"_q, "k"_q);
    VanteroConfigMap map;
    EXPECT_THROW((void)selection.parse(kText + "SECTION c\nx=y\n"_q, map), ParseException);
    EXPECT_EQ(shown(map), (QStringList{"a/k=5"_q, "a/k=2"_q, "a/k=1"_q} + kHeader));
}

TEST(ConfigSelection, agreesWithParseOnRandomTexts)
{
    Random random(20260711);
    const QStringList pieces = {"#:1.3=\n"_q,
                                "#:VN-3\n"_q,
                                "# Camera IP: 1\n"_q,
                                "\n"_q,
                                "SECTION a\n"_q,
                                "ENDSECTION a\n"_q,
                                "SECTION head\n"_q,
                                "ENDSECTION head\n"_q,
                                "k=1\n"_q,
                                "k=2\r\n"_q,
                                "l=\n"_q,
                                "m\n"_q,
                                "Factory IP=2\n"_q,
                                "# c\n"_q,
                                "SECTION b\n"_q,
                                "ENDSECTION b\n"_q,
                                "=x\n"_q,
                                "k=3"_q};
    ConfigSelection selection;
    selection.add("a"_q, "k"_q);
    selection.add("b"_q, "m"_q);
    selection.add("b"_q, ""_q);
    selection.add("head"_q, "Factory IP"_q);
    int faults = 0;
    for (int round = 0; round < 20000; ++round) {
        QString text = random.below(2) ? "#:1.3=\n#:VN-3\n# Camera IP: 1\n\n"_q : ""_q;
        for (unsigned count = random.below(12); count > 0; --count)
            text += random.oneOf(pieces);
        VanteroConfigFile file;
        VanteroConfigMap map;
        QString expectedFault;
        QString fault;
        bool expected = false;
        bool complete = false;
        try {
            expected = file.parse(text, QDateTime());
        } catch (const ParseException &e) {
            expectedFault = e.message();
        }
        try {
            complete = selection.parse(text, map);
        } catch (const ParseException &e) {
            fault = e.message();
        }
        QStringList lines;
        for (const QString &line : shown(file.map()))
            if (line.startsWith("a/k="_q) || line == "a/k"_q || line.startsWith("b/m="_q) ||
                line == "b/m"_q || line.startsWith("b/="_q) || line.startsWith("head/F"_q) ||
                line.startsWith("head/So"_q))
                lines += line;
        ASSERT_EQ(shown(map), lines) << text.toStdString();
        ASSERT_EQ(fault, expectedFault) << text.toStdString();
        ASSERT_EQ(complete, expected) << text.toStdString();
        faults += fault.isNull() ? 0 : 1;
    }
    EXPECT_GT(faults, 1000);
    EXPECT_LT(faults, 19000);
}
