// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// The device that a configuration is read from uses that very configuration: on the same thread its
// lock lets it in, in the middle of a section.

#include "config/VanteroConfigFile.h"

#include "support/Devices.h"
#include "support/Expect.h"
#include "support/Literals.h"
#include "support/QtPrinters.h"

#include <QtCore/QTextStream>

#include <gtest/gtest.h>

#include <functional>

using namespace vn;

namespace {

/** Gives its pieces one by one and does something before the last one. */
class CallingDevice : public SequentialDevice
{
public:
    CallingDevice(const QList<QByteArray> &pieces, std::function<void()> call)
        : SequentialDevice(pieces, End::NoMore)
        , m_left(pieces.size())
        , m_call(std::move(call))
    {
    }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        if (--m_left == 0)
            m_call();
        return SequentialDevice::readData(data, maxSize);
    }

private:
    int m_left;
    std::function<void()> m_call;
};

struct Reader
{
    const char *name;
    const char *header;
    void (*read)(VanteroConfigFile &, QIODevice *);
};

std::ostream &operator<<(std::ostream &out, const Reader &reader)
{
    return out << reader.name;
}

class ReentrantLoading : public testing::TestWithParam<Reader>
{
protected:
    /** Reads a section of which @p call sees the first half. */
    void read(const std::function<void()> &call)
    {
        CallingDevice device(
            {GetParam().header + "SECTION s\nk=1\nk=2\n"_b, "l=3\nENDSECTION s\n"_b}, call);
        GetParam().read(m_config, &device);
    }

    VanteroConfigFile m_config;
};

const char *const kHeader = "#:1=\n#:2\n\n";

const Reader readers[] = {
    {"parseOfAStream", kHeader,
     [](VanteroConfigFile &config, QIODevice *device) {
         QTextStream stream(device);
         config.parse(&stream, QDateTime());
     }},
    {"parseSection", "",
     [](VanteroConfigFile &config, QIODevice *device) {
         QTextStream stream(device);
         config.parseSection(&stream, true);
     }},
    {"parseJpegCommentOfAStream", "",
     [](VanteroConfigFile &config, QIODevice *device) {
         QTextStream stream(device);
         config.parseJpegComment(&stream);
     }},
    {"parseJpegCommentOfADevice", "",
     [](VanteroConfigFile &config, QIODevice *device) { config.parseJpegComment(device); }},
};

} // namespace

TEST_P(ReentrantLoading, aCopyMadeMeanwhileKeepsWhatWasThere)
{
    VanteroConfigFile copy;
    read([&] { copy = m_config; });
    EXPECT_EQ(copy.toString("s"_q), "SECTION s\nk=2\nk=1\nENDSECTION s\n"_q);
    EXPECT_EQ(m_config.toString("s"_q), "SECTION s\nk=2\nk=1\nl=3\nENDSECTION s\n"_q);
}

TEST_P(ReentrantLoading, aTextLoadedMeanwhileTakesTheRest)
{
    read([&] { m_config.parse("#:1=\n#:2\n\nSECTION t\na=1\nENDSECTION t\n"_q, QDateTime()); });
    EXPECT_EQ(m_config.toString("s"_q), "SECTION s\nl=3\nENDSECTION s\n"_q);
    EXPECT_EQ(m_config.toString("t"_q), "SECTION t\na=1\nENDSECTION t\n"_q);
}

TEST_P(ReentrantLoading, aSectionSetMeanwhileTakesTheRest)
{
    read([&] { m_config.setSection("s"_q, {{"a"_q, "1"_q}}); });
    EXPECT_EQ(m_config.toString("s"_q), "SECTION s\na=1\nl=3\nENDSECTION s\n"_q);
}

INSTANTIATE_TEST_SUITE_P(, ReentrantLoading, testing::ValuesIn(readers), nameOfRow);
