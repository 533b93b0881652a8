// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "SafeSave.h"

#include "base/FileUtils.h"

#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>

namespace browser {

namespace {

const QByteArray kByteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

/** @p text in the encoding of @p bytes, which hold @p before. */
QByteArray encodeLike(const QByteArray &bytes, const QString &before, const QString &text)
{
    const QByteArray utf8 = before.toUtf8();
    if (bytes == utf8)
        return text.toUtf8();
    if (bytes == kByteOrderMark + utf8)
        return kByteOrderMark + text.toUtf8();
    return text.toLatin1();
}

QString writeBytes(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    // commit() does not tell of what fails as it writes the last of its buffer: flush() does.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() ||
        !file.commit())
        return file.errorString();
    return {};
}

} // namespace

QString replaceText(const QString &path, const QString &before, const QString &text)
{
    const auto tr = [](const char *words) {
        return QCoreApplication::translate("browser::SafeSave", words);
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return file.errorString();
    file.close();
    if (vn::FileUtils::decodeText(bytes) != before)
        return tr("The file has changed on the disk since it was read. Reload it, or save a copy "
                  "of what you have.");

    const QByteArray edited = encodeLike(bytes, before, text);
    // Latin-1 has few characters, and some of its texts would pass for UTF-8.
    if (vn::FileUtils::decodeText(edited) != text)
        return tr("The file is Latin-1, which cannot hold all of the text. Save a copy, which will "
                  "be UTF-8.");
    return writeBytes(path, edited);
}

QString writeText(const QString &path, const QString &text)
{
    return writeBytes(path, text.toUtf8());
}

} // namespace browser
