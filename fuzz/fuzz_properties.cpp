// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// `key=value` lines read from memory, from a stream, and by a plain loop: the same entries.

#include "Support.h"

#include "config/VanteroConfigMap.h"

#include <QtCore/QTextStream>

using Section = QMultiMap<QString, QString>;
using vn::VanteroConfigMap;

namespace {

Section readPlainly(QString text)
{
    Section section;
    QTextStream stream(&text, QIODevice::ReadOnly);
    while (!stream.atEnd()) {
        const QString line = stream.readLine(1024);
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const int equals = line.indexOf(QLatin1Char('='));
        section.insert(equals < 0 ? line : line.left(equals),
                       equals < 0 ? QString() : line.mid(equals + 1));
    }
    return section;
}

void checkSame(const Section &actual, const Section &expected)
{
    FUZZ_CHECK(actual.keys() == expected.keys());
    FUZZ_CHECK(actual.values() == expected.values());
    auto other = expected.begin();
    for (const QString &value : actual)
        FUZZ_CHECK(value.isNull() == (other++)->isNull());
}

QString print(const QString &name, const Section &section)
{
    QString text;
    QTextStream stream(&text, QIODevice::WriteOnly);
    VanteroConfigMap::printSection(stream, name, section);
    stream.flush();
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    // A long line takes many bytes to invent: the first one may repeat the text.
    const QString text = input.restAsText().repeated(input.byte() == 'r' ? 200 : 1);

    const Section expected = readPlainly(text);
    const Section actual = VanteroConfigMap::parseProperties(text);
    checkSame(actual, expected);

    QString copy = text;
    QTextStream stream(&copy, QIODevice::ReadOnly);
    Section streamed;
    VanteroConfigMap::parseProperties(&stream, streamed);
    checkSame(streamed, expected);

    const QString name = text.left(8);
    FUZZ_EQUAL(VanteroConfigMap::toString(name, actual), print(name, actual));
    return 0;
}
