// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Numbers are read alike in a process whose numbers have commas.

#include "alarm/AlarmListParser.h"
#include "alarm/AlarmUpdateParser.h"
#include "alarm/ScriptTest.h"
#include "reference/AlarmText.h"
#include "support/Files.h"
#include "support/Random.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

using namespace vn;

namespace {

/** The C library's file of a locale that differs from "C.UTF-8" in its decimal comma alone; no
 * machine needs to have one installed. */
QByteArray numericCategory()
{
    return "\x14\x11\x03\x20\x06\0\0\0"_b     // the category's mark, six values
           "\x20\0\0\0\x22\0\0\0\x23\0\0\0"_b // where each of them is
           "\x24\0\0\0\x28\0\0\0\x2c\0\0\0"_b //
           ",\0\0\0"_b                        // point, no separator, no groups
           "\x2c\0\0\0\0\0\0\0UTF-8\0"_b;     // the same as wide characters, the encoding
}

class NumberLocale : public ScriptTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        ASSERT_TRUE(QDir(m_folder.path()).mkdir("comma"_q));
        writeFile(m_folder.filePath("comma/LC_NUMERIC"_q), numericCategory());
        m_before = std::setlocale(LC_NUMERIC, nullptr);
        m_pathBefore = qgetenv("LOCPATH");
        ::setenv("LOCPATH", m_folder.path().toLocal8Bit().constData(), 1);
        if (!std::setlocale(LC_NUMERIC, "comma"))
            GTEST_SKIP() << "this C library has another format of locales";
        ASSERT_EQ(std::strtod("1,5", nullptr), 1.5);
        ASSERT_EQ(std::strtod("1.5", nullptr), 1.0);
    }
    void TearDown() override
    {
        if (m_pathBefore.isEmpty())
            ::unsetenv("LOCPATH");
        else
            ::setenv("LOCPATH", m_pathBefore.constData(), 1);
        std::setlocale(LC_NUMERIC, m_before.constData());
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_before;
    QByteArray m_pathBefore;
};

} // namespace

TEST_F(NumberLocale, listsKeepTheirPoint)
{
    EXPECT_EQ(shown(AlarmListParser().parse("[1.5, -0.25e1, 1e400, 1e-400, 4.9e-324, 1.5e-400]"_q)),
              "[0, 4.9406564584124654e-324, 0, inf, -2.5, 1.5]"_q);
}

TEST_F(NumberLocale, updatesKeepTheirPoint)
{
    AlarmUpdateParser parser(&m_engine);
    EXPECT_EQ(shown(parser.parse("x=1.5;y=-.25;z=12"_q)), "{z: 12, y: -0.25, x: 1.5}"_q);
}

TEST(Numbers, areThoseOfTheCLibrary)
{
    Random random(21);
    AlarmListParser parser;
    for (int i = 0; i < 20000; ++i) {
        // All lengths of digits, exponents to both ends of the range and beyond.
        QByteArray text = random.below(2) ? "-" : "";
        text += static_cast<char>('1' + random.below(9));
        for (unsigned digits = random.below(25); digits > 0; --digits)
            text += static_cast<char>('0' + random.below(10));
        if (random.below(2)) {
            text += '.';
            for (unsigned digits = 1 + random.below(25); digits > 0; --digits)
                text += static_cast<char>('0' + random.below(10));
        }
        if (random.below(2))
            text += "e" + QByteArray::number(static_cast<int>(random.below(800)) - 400);
        const double value =
            parser.parse(QString::fromLatin1("[" + text + "]")).toList().first().toDouble();
        EXPECT_EQ(shown(value), shown(numberInC(text))) << text.constData();
    }
}
