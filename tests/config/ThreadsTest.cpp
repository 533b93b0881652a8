// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigFile.h"

#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace vn;

namespace {

/** A configuration whose @p sections sections all hold @p value. */
QString textOf(const QString &value, int sections)
{
    QString text = "#:"_q + value + "=\n#:"_q + value + "\n\n"_q;
    for (int i = 0; i < sections; ++i)
        text += "SECTION s%1\nk=%2\nENDSECTION s%1\n"_q.arg(i).arg(value);
    return text;
}

} // namespace

TEST(Threads, editOneObjectAtOnce)
{
    constexpr int kEdits = 500;
    VanteroConfigFile config;
    const auto edit = [&config](const QString &own) {
        for (int i = 0; i < kEdits; ++i) {
            const QString number = QString::number(i);
            config.addValue("shared"_q, "k"_q, number);
            config.setValue(own, "k"_q, number);
            config.setFactoryIP(own);
            (void)config.value("shared"_q, "k"_q);
            (void)config.section("shared"_q);
            (void)config.containsSection(own);
            (void)config.allSectionKeys();
            (void)config.makeHeader();
            (void)config.timeStamp();
            if (i % 50 == 0) {
                (void)config.toString();
                (void)config.toString(own);
            }
        }
    };
    std::thread first(edit, "first"_q);
    std::thread second(edit, "second"_q);
    first.join();
    second.join();
    EXPECT_EQ(config.section("shared"_q).count("k"_q), 2 * kEdits);
    EXPECT_EQ(config.value("first"_q, "k"_q), QString::number(kEdits - 1));
    EXPECT_EQ(config.value("second"_q, "k"_q), QString::number(kEdits - 1));
}

TEST(Threads, copySeesTheWholeOldOrTheWholeNewContent)
{
    constexpr int kSections = 40;
    const QString texts[] = {textOf("old"_q, kSections), textOf("new"_q, kSections)};
    VanteroConfigFile source;
    source.parse(texts[0], QDateTime());

    std::atomic<bool> done{false};
    std::thread parser([&] {
        for (int i = 0; i < 300; ++i)
            source.parse(texts[i % 2], QDateTime());
        done = true;
    });
    VanteroConfigFile assigned;
    do {
        const VanteroConfigFile copy(source);
        assigned = source;
        for (const VanteroConfigFile *config :
             {&copy, const_cast<const VanteroConfigFile *>(&assigned)}) {
            const QString value = config->getFileVersion();
            ASSERT_TRUE(value == "old"_q || value == "new"_q) << qPrintable(value);
            ASSERT_EQ(config->allSectionKeys().size(), kSections + 1);
            for (int i = 0; i < kSections; ++i)
                ASSERT_EQ(config->value("s%1"_q.arg(i), "k"_q), value);
        }
    } while (!done);
    parser.join();
}
