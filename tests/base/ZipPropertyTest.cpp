// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Random archives, the same on every run: what one program writes another one reads.

#include "base/ZipReader.h"
#include "base/ZipWriter.h"

#include "base/Zips.h"
#include "support/Random.h"

#include <QtCore/QBuffer>
#include <QtCore/QDateTime>
#include <QtCore/QSet>

using namespace vn;

namespace {

class ZipProperty : public FolderTest
{
protected:
    QString archive() const { return path("cams.zip"_q); }
};

QString randomName(Random *random)
{
    static const QString letters = u8"abcXYZ019 ._-[]()%äÖ€ß漢字📷"_q;
    QString name;
    for (unsigned parts = 1 + random->below(3); parts > 0; --parts) {
        if (!name.isEmpty())
            name += QLatin1Char('/');
        for (unsigned size = 1 + random->below(12); size > 0; --size) {
            const int place =
                static_cast<int>(random->below(static_cast<unsigned>(letters.size())));
            if (!letters.at(place).isSurrogate())
                name += letters.at(place);
            else
                name += u8"📷"_q;
        }
    }
    return name + (random->below(2) ? ".cfg"_q : ".CFG"_q);
}

QByteArray randomContent(Random *random)
{
    const int size = static_cast<int>(random->below(1U << random->below(18)));
    switch (random->below(4)) {
    case 0:
        return QByteArray(size, static_cast<char>(random->below(256)));
    case 1:
        return noise(size, random->below(1000000));
    default:
        return configText(size, static_cast<int>(random->below(1000000)));
    }
}

/** Up to 30 entries; of different names if @p isUnique says so. */
Entries randomEntries(Random *random, bool isUnique)
{
    Entries entries;
    QSet<QString> names;
    for (unsigned left = random->below(31); left > 0; --left) {
        const bool isTwin = !isUnique && !entries.isEmpty() && random->below(4) == 0;
        const QString name = isTwin ? random->oneOf(entries).name : randomName(random);
        if (isUnique && names.contains(name))
            continue;
        names.insert(name);
        entries.append({name, randomContent(random)});
    }
    return entries;
}

QByteArray randomPassword(Random *random)
{
    const QByteArray passwords[] = {""_b, "secret"_b, u8"Tür & Tor €"_b, QByteArray(100, 'x')};
    return passwords[random->below(4)];
}

/** Reads @p entries in a random order, each entry of a name in its turn. */
void expectReadInAnyOrder(ZipReader *zip, const Entries &entries, Random *random)
{
    QHash<QString, int> turns;
    for (int i = 0; i < entries.size(); ++i) {
        const QString name = random->oneOf(entries).name;
        Entries ofThatName;
        for (const Entry &entry : entries)
            if (entry.name == name)
                ofThatName.append(entry);
        const int turn = turns[name]++ % ofThatName.size();
        ASSERT_EQ(readEntry(zip, name), ofThatName.at(turn).content);
    }
}

} // namespace

TEST_F(ZipProperty, archivesOfTheWriterAreReadBack)
{
    Random random(1);
    for (int i = 0; i < 40; ++i) {
        SCOPED_TRACE(i);
        const Entries entries = randomEntries(&random, true);
        const QByteArray password = randomPassword(&random);
        ZipWriter writer(archive(), password);
        writer.open();
        for (const Entry &entry : entries) {
            QBuffer buffer;
            buffer.setData(entry.content);
            ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
            writer.appendFile(&buffer, entry.name, entry.name, QDateTime::currentDateTime());
        }
        writer.close();
        ASSERT_EQ(readAll(archive(), password), entries);
        if (password.isEmpty() && i % 4 == 0) {
            ASSERT_EQ(readByPython(archive()), entries);
        }

        ZipReader zip(archive(), password);
        ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
        expectReadInAnyOrder(&zip, entries, &random);
        if (!password.isEmpty() && !entries.isEmpty()) {
            ZipReader wrong(archive(), password + "x");
            ASSERT_TRUE(wrong.open(QIODevice::ReadOnly));
            ASSERT_TRUE(wrong.openFile(entries.first().name));
            ASSERT_TRUE(readInPieces(&wrong).isNull());
        }
    }
}

TEST_F(ZipProperty, archivesOfPythonAreReadWithAllTheirTwins)
{
    Random random(2);
    for (int i = 0; i < 20; ++i) {
        SCOPED_TRACE(i);
        const Entries entries = randomEntries(&random, false);
        makeByPython(archive(), entries, random.below(2));
        ASSERT_EQ(readAll(archive()), entries);
        ZipReader zip(archive());
        ASSERT_TRUE(zip.open(QIODevice::ReadOnly));
        expectReadInAnyOrder(&zip, entries, &random);
    }
}

// Several bytes changed at once, cut out or put in, so that the reader meets more than it does with
// one byte: whatever happens, what it reads is an entry of the archive as it was, and it ends.
TEST_F(ZipProperty, archivesDamagedAtRandomGiveAnErrorOrTheRightBytes)
{
    Random random(3);
    const Entries entries = {{"a.cfg"_q, configText(300, 1)},
                             {"b.cfg"_q, configText(300, 2)},
                             {"c.cfg"_q, noise(300, 3)},
                             {"d.cfg"_q, ""_b}};
    for (const QByteArray &password : {""_b, "secret"_b}) {
        ZipWriter writer(archive(), password);
        writer.open();
        for (const Entry &entry : entries) {
            QBuffer buffer;
            buffer.setData(entry.content);
            ASSERT_TRUE(buffer.open(QIODevice::ReadOnly));
            writer.appendFile(&buffer, entry.name, "comment"_q, QDateTime::currentDateTime());
        }
        writer.close();
        const QByteArray bytes = readFile(archive());
        int opened = 0;
        for (int i = 0; i < 1000; ++i) {
            QByteArray damaged = bytes;
            for (unsigned left = 1 + random.below(4); left > 0; --left) {
                const int place =
                    static_cast<int>(random.below(static_cast<unsigned>(damaged.size())));
                const int size = static_cast<int>(random.below(20));
                switch (random.below(4)) {
                case 0:
                    damaged.remove(place, size);
                    break;
                case 1:
                    damaged.insert(place, noise(size, static_cast<unsigned>(i)));
                    break;
                default:
                    damaged[place] = static_cast<char>(random.below(256));
                }
            }
            writeFile(archive(), damaged);
            ZipReader zip(archive(), password);
            if (!zip.open(QIODevice::ReadOnly))
                continue;
            ++opened;
            const QStringList names = zip.fileListBySuffix(QString());
            for (const QString &name : names) {
                ASSERT_TRUE(zip.openFile(name));
                const QByteArray content = readInPieces(&zip);
                const bool isKnown =
                    std::any_of(entries.begin(), entries.end(),
                                [&](const Entry &e) { return e.content == content; });
                ASSERT_TRUE(content.isNull() || isKnown) << i << ' ' << content.toHex().constData();
            }
        }
        EXPECT_GT(opened, 100) << "hardly any of the damaged archives was looked into";
    }
}
