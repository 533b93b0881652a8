// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// Archives of other projects, which are no part of this one: the environment variable
// VANTERO_CORPORA names a folder whose subfolder "zip" holds them.

#include "base/ZipReader.h"

#include "base/Zips.h"

#include <QtCore/QDirIterator>
#include <QtCore/QElapsedTimer>

#include <iostream>

using namespace vn;

namespace {

constexpr qint64 kMostMilliseconds = 10000;

struct Listing
{
    bool isOpened = false;
    struct Item
    {
        QString name;
        QByteArray content; // null where it cannot be read
    };
    QList<Item> items;
};

/** What Python's zipfile makes of each archive, by its path. */
QHash<QString, Listing> listedByPython(const QStringList &archives, const QByteArray &password)
{
    QTemporaryDir folder;
    runPython(R"(
import base64, json, sys, zipfile
def items(path):
    try:
        with zipfile.ZipFile(path) as archive:
            return [[info.filename, content(archive, info)]
                    for info in archive.infolist() if not info.filename.endswith('/')]
    except Exception:
        return None
def content(archive, info):
    try:
        return base64.b64encode(archive.read(info, sys.argv[1].encode())).decode()
    except Exception:
        return None
json.dump({path: items(path) for path in sys.argv[2:]}, open('listings', 'w'))
)",
              QStringList{QString::fromUtf8(password)} + archives, folder.path());
    const QJsonObject json =
        QJsonDocument::fromJson(readFile(folder.filePath("listings"_q))).object();
    QHash<QString, Listing> listings;
    for (auto it = json.begin(); it != json.end(); ++it) {
        Listing &listing = listings[it.key()];
        listing.isOpened = !it.value().isNull();
        const QJsonArray items = it.value().toArray();
        for (const QJsonValue &item : items) {
            const QJsonValue content = item.toArray().at(1);
            const QByteArray bytes = QByteArray::fromBase64(content.toString().toLatin1());
            listing.items.append({item.toArray().at(0).toString(),
                                  content.isNull() ? QByteArray() : QByteArray("") + bytes});
        }
    }
    return listings;
}

/** What a program writes out of all entries of an archive, one after the other. */
QByteArray extractedBy(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments, QIODevice::ReadOnly);
    EXPECT_TRUE(process.waitForFinished(60000));
    return process.readAllStandardOutput();
}

/** The same by ZipReader; each error names archive and entry. */
Listing listedByUs(const QString &archive, const QByteArray &password)
{
    Listing listing;
    ZipReader zip(archive, password);
    listing.isOpened = zip.open(QIODevice::ReadOnly);
    if (!listing.isOpened) {
        EXPECT_TRUE(zip.errorString().startsWith(archive + ": "_q));
        EXPECT_THROW(zip.fileListBySuffix(QString()), IOException);
        return listing;
    }
    const QStringList names = zip.fileListBySuffix(QString());
    for (const QString &name : names) {
        EXPECT_TRUE(zip.openFile(name));
        listing.items.append({name, readInPieces(&zip)});
        if (listing.items.last().content.isNull()) {
            EXPECT_TRUE(zip.errorString().startsWith(archive + ": "_q + name + ": "_q))
                << zip.errorString().toStdString();
        }
    }
    return listing;
}

} // namespace

TEST(ZipCorpora, giveWhatOtherReadersGiveOrAnError)
{
    const QString corpora = QString::fromLocal8Bit(qgetenv("VANTERO_CORPORA"));
    if (corpora.isEmpty()) {
        std::cout << "VANTERO_CORPORA is not set: ran without archives of other projects\n";
        return;
    }
    QStringList archives;
    QDirIterator files(corpora + "/zip"_q, {"*.zip"_q}, QDir::Files);
    while (files.hasNext())
        archives.append(files.next());
    int same = 0;
    int errors = 0;
    for (const QByteArray &password : {"foofoofoo"_b, "1234"_b, "wrong"_b}) {
        const QHash<QString, Listing> listings = listedByPython(archives, password);
        for (const QString &archive : qAsConst(archives)) {
            SCOPED_TRACE(archive.toStdString());
            QElapsedTimer timer;
            timer.start();
            const Listing ours = listedByUs(archive, password);
            EXPECT_LT(timer.elapsed(), kMostMilliseconds);
            if (!ours.isOpened) {
                ++errors;
                continue;
            }
            const Listing theirs = listings.value(archive);
            bool isAgreed = theirs.isOpened && theirs.items.size() == ours.items.size();
            QByteArray all("");
            for (int i = 0; i < ours.items.size(); ++i) {
                const QByteArray &content = ours.items.at(i).content;
                all += content;
                if (content.isNull())
                    ++errors;
                else if (isAgreed && theirs.items.at(i).content == content &&
                         !theirs.items.at(i).content.isNull())
                    ++same;
                else
                    isAgreed = false;
            }
            if (isAgreed)
                continue;
            // Python knows neither AES nor the newer methods, takes a comment for an archive, and
            // is strict about names; 7z is strict about other things.
            const QString option = "-p"_q + QString::fromUtf8(password);
            const QByteArray by7z = extractedBy("7z"_q, {"x"_q, "-so"_q, "-bd"_q, option, archive});
            if (all == by7z)
                ++same;
            else
                EXPECT_EQ(all, extractedBy("unzip"_q,
                                           {"-P"_q, QString::fromUtf8(password), "-p"_q, archive}));
        }
    }
    std::cout << archives.size() << " archives: " << same << " entries as other readers give them, "
              << errors << " errors\n";
    EXPECT_GT(archives.size(), 0);
    EXPECT_GT(same, archives.size());
}
