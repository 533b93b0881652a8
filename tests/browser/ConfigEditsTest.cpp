// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ConfigEdits.h"

#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

namespace {

using namespace browser;

/** Two blocks of one section, a repeated key, comments, other line ends and blanks. */
const char *const kText = "#:1.3=\n#:VN-3.0.6.29\n# Camera IP: 10.0.0.1\n\n"
                          "SECTION net\nDNS=1\r\n# DNS=9\nDNS=2\nDNS=3\nNTP = n\n"
                          "ENDSECTION net\n\n# net\nSECTION net\nDNS=4\nENDSECTION net\n"
                          "SECTION other\nDNS=5\nENDSECTION other";

QString text()
{
    return QString::fromLatin1(kText);
}

QString with(QList<QPair<QString, QString>> changes)
{
    QString result = text();
    for (const auto &change : changes) {
        EXPECT_EQ(result.count(change.first), 1) << qPrintable(change.first);
        result.replace(change.first, change.second);
    }
    return result;
}

TEST(ConfigEdits, keyIsRenamedInItsSectionAlone_inAllItsLines)
{
    EXPECT_EQ(edits::renameKey("net"_q, "DNS"_q, "SERVER"_q)(text()).text,
              with({{"\nDNS=1"_q, "\nSERVER=1"_q},
                    {"\nDNS=2"_q, "\nSERVER=2"_q},
                    {"\nDNS=3"_q, "\nSERVER=3"_q},
                    {"\nDNS=4"_q, "\nSERVER=4"_q}}));
}

TEST(ConfigEdits, sectionIsRenamedInAllItsBlocks)
{
    QString expected = text();
    expected.replace("SECTION net\n"_q, "SECTION n2\n"_q);
    EXPECT_EQ(edits::renameSection("net"_q, "n2"_q)(text()).text, expected);
}

TEST(ConfigEdits, nameThatTheEndRepeats_isRenamedAtTheEnd)
{
    const QString before = "#:1=\n#:2\n\nSECTION E\nE=E\nENDSECTION E\n"_q;
    EXPECT_EQ(edits::renameSection("E"_q, "long name"_q)(before).text,
              "#:1=\n#:2\n\nSECTION long name\nE=E\nENDSECTION long name\n"_q);
}

TEST(ConfigEdits, valuesAreExchanged_otherBytesStay)
{
    // The newest value, which is the last one of the text, has the index 0.
    EXPECT_EQ(edits::swapValues("net"_q, "DNS"_q, 0, 3)(text()).text,
              with({{"DNS=1\r"_q, "DNS=4\r"_q},
                    {"# net\nSECTION net\nDNS=4"_q, "# net\nSECTION net\nDNS=1"_q}}));
    EXPECT_EQ(edits::swapValues("net"_q, "DNS"_q, 3, 4)(text()).reason, "there is no such value"_q);
}

struct Refusal
{
    const char *name;
    Edit edit;
    const char *reason;
};

class ConfigEditsRefusal : public testing::TestWithParam<Refusal>
{
};

TEST_P(ConfigEditsRefusal, isSaid)
{
    const EditResult result = GetParam().edit(text());
    EXPECT_FALSE(result);
    EXPECT_EQ(result.reason, QString::fromLatin1(GetParam().reason));
}

const Refusal refusals[] = {
    {"keyThatIsThere", edits::renameKey("net"_q, "DNS"_q, "NTP "_q), "there is a key NTP  already"},
    {"keyThatIsNot", edits::renameKey("net"_q, "none"_q, "x"_q), "there is no such key"},
    {"sectionThatIsThere", edits::renameSection("net"_q, "other"_q),
     "there is a section other already"},
    {"headerAsAName", edits::renameSection("net"_q, "head"_q), "there is a section head already"},
    {"sectionThatIsNot", edits::renameSection("none"_q, "x"_q), "there is no such section"},
};

INSTANTIATE_TEST_SUITE_P(ConfigEdits, ConfigEditsRefusal, testing::ValuesIn(refusals),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(ConfigEdits, namesThatTheFormatCannotHold_areRefused)
{
    for (const QString &key : {"a=b"_q, "a\nb"_q, "#a"_q, "SECTION a"_q})
        EXPECT_FALSE(edits::renameKey("net"_q, "DNS"_q, key)(text())) << qPrintable(key);
    for (const QString &name : {""_q, "a\nb"_q})
        EXPECT_FALSE(edits::renameSection("net"_q, name)(text())) << qPrintable(name);
}

} // namespace
