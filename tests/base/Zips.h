// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef VN_TESTS_BASE_ZIPS_H
#define VN_TESTS_BASE_ZIPS_H

/** @file Archives made and read by other programs than ours. */

#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/ZipReader.h"
#include "support/Files.h"
#include "support/Literals.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cstring>
#include <ostream>

/** An entry and what it holds. */
struct Entry
{
    QString name;
    QByteArray content;
};

inline bool operator==(const Entry &a, const Entry &b)
{
    return a.name == b.name && a.content == b.content;
}

inline void PrintTo(const Entry &entry, std::ostream *out)
{
    PrintTo(entry.name, out);
    *out << " (" << entry.content.size() << " bytes: ";
    PrintTo(entry.content.left(60), out);
    *out << ')';
}

using Entries = QList<Entry>;

inline void PrintTo(const Entries &entries, std::ostream *out)
{
    for (const Entry &entry : entries) {
        *out << "\n  ";
        PrintTo(entry, out);
    }
}

/** Runs a Python script with these arguments in @p folder. */
inline void runPython(const char *script, const QStringList &arguments, const QString &folder)
{
    runProgram("python3"_q, QStringList{"-c"_q, QString::fromUtf8(script)} + arguments, folder);
}

/** Makes the archive @p path by Python's zipfile, which takes any name, also twice. The entries are
 * deflated, or stored if @p isStored says so. */
inline void makeByPython(const QString &path, const Entries &entries, bool isStored = false)
{
    QJsonArray list;
    for (const Entry &entry : entries)
        list.append(QJsonArray{entry.name, QString::fromLatin1(entry.content.toBase64())});
    QTemporaryDir folder;
    writeFile(folder.filePath("entries"_q), QJsonDocument(list).toJson());
    runPython(R"(
import base64, json, sys, warnings, zipfile
warnings.simplefilter('ignore')
method = zipfile.ZIP_STORED if sys.argv[2] == 'stored' else zipfile.ZIP_DEFLATED
with zipfile.ZipFile(sys.argv[1], 'w', method) as archive:
    for name, content in json.load(open('entries')):
        archive.writestr(zipfile.ZipInfo(name, (2010, 5, 1, 12, 0, 0)), base64.b64decode(content), method)
)",
              {path, isStored ? "stored"_q : "deflated"_q}, folder.path());
}

/** What Python's zipfile reads from the archive @p path; its plain zip encryption is slow. */
inline Entries readByPython(const QString &path, const QByteArray &password = QByteArray())
{
    QTemporaryDir folder;
    runPython(R"(
import base64, json, sys, zipfile
with zipfile.ZipFile(sys.argv[1]) as archive:
    password = sys.argv[2].encode() or None
    json.dump([[info.filename, base64.b64encode(archive.read(info, password)).decode()]
               for info in archive.infolist() if not info.is_dir()], open('entries', 'w'))
)",
              {path, QString::fromUtf8(password)}, folder.path());
    Entries entries;
    const QJsonArray list = QJsonDocument::fromJson(readFile(folder.filePath("entries"_q))).array();
    for (const QJsonValue &entry : list)
        entries.append({entry.toArray().at(0).toString(),
                        QByteArray::fromBase64(entry.toArray().at(1).toString().toLatin1())});
    return entries;
}

/** Reads the rest of @p device in pieces of @p pieceSize; null on an error. */
inline QByteArray readInPieces(QIODevice *device, int pieceSize = 10000)
{
    QByteArray bytes("");
    QByteArray piece(pieceSize, Qt::Uninitialized);
    for (;;) {
        const qint64 count = device->read(piece.data(), piece.size());
        if (count < 0)
            return QByteArray();
        if (count == 0)
            return bytes;
        bytes.append(piece.constData(), static_cast<int>(count));
    }
}

/** Reads the entry @p name; on an error the text of it becomes a failure of the test. */
inline QByteArray readEntry(vn::ZipReader *zip, const QString &name)
{
    EXPECT_TRUE(zip->openFile(name)) << zip->errorString().toStdString();
    const QByteArray content = readInPieces(zip);
    EXPECT_FALSE(content.isNull()) << zip->errorString().toStdString();
    return content;
}

/** All entries of the archive @p path, in listed order. */
inline Entries readAll(const QString &path, const QByteArray &password = QByteArray())
{
    vn::ZipReader zip(path, password);
    EXPECT_TRUE(zip.open(QIODevice::ReadOnly)) << zip.errorString().toStdString();
    Entries entries;
    const QStringList names = zip.fileListBySuffix(QString());
    for (const QString &name : names)
        entries.append({name, readEntry(&zip, name)});
    return entries;
}

/** Expects that the entry @p name cannot be read: no byte comes, and the error names the archive,
 * the entry and @p reason, which stands for what begins so where it ends with "*". */
inline void expectReadError(vn::ZipReader *zip, const QString &archive, const QString &name,
                            const QString &reason)
{
    const QString expected = archive + ": "_q + name + ": "_q + reason;
    const auto begin = [&](const QString &text) {
        return expected.endsWith(QLatin1Char('*')) ? text.left(expected.size() - 1) + "*"_q : text;
    };
    ASSERT_TRUE(zip->openFile(name));
    char byte = 'x';
    EXPECT_EQ(zip->read(&byte, 1), -1);
    EXPECT_EQ(byte, 'x');
    EXPECT_EQ(begin(zip->errorString()), expected);
    EXPECT_EQ(zip->read(&byte, 1), -1) << "an error stays one";
    EXPECT_TRUE(zip->atEnd());

    ASSERT_TRUE(zip->openFile(name));
    try {
        vn::FileUtils::readText(zip);
        ADD_FAILURE() << "no exception";
    } catch (const vn::IOException &e) {
        EXPECT_EQ(begin(e.message()), expected);
    }
}

/** Text of @p size bytes that looks like a configuration; @p seed makes it another one. */
inline QByteArray configText(int size, int seed)
{
    QByteArray text;
    for (unsigned i = static_cast<unsigned>(seed) * 7919U; text.size() < size;
         i = i * 1103515245U + 12345U)
        text += "key" + QByteArray::number(i % 1000) + '=' + QByteArray::number(i) + '\n';
    return text.left(size);
}

/** Bytes that do not compress. */
inline QByteArray noise(int size, unsigned seed)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes) {
        seed = seed * 1664525U + 1013904223U;
        byte = static_cast<char>(seed >> 24);
    }
    return bytes;
}

#endif // VN_TESTS_BASE_ZIPS_H
