// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "SafeSave.h"

#include "base/AtomicFile.h"
#include "base/EncodedText.h"
#include "base/Exceptions.h"

#include <QtCore/QCoreApplication>

namespace browser {

namespace {

/** Runs @p write; returns why it failed, or a null string. */
template <typename Write>
QString reasonOf(Write &&write)
{
    try {
        write();
    } catch (const vn::FileException &e) {
        return e.reason();
    }
    return {};
}

} // namespace

QString replaceText(const QString &path, const QString &before, const QString &text)
{
    const auto tr = [](const char *words) {
        return QCoreApplication::translate("browser::SafeSave", words);
    };
    vn::EncodedText file;
    const QString failure = reasonOf([&] { file = vn::EncodedText::read(path); });
    if (!failure.isNull())
        return failure;
    if (file.text() != before)
        return tr("The file has changed on the disk since it was read. Reload it, or save a copy "
                  "of what you have.");
    const vn::EncodedText::Result edited = file.encode(text);
    if (!edited)
        return tr("The file is Latin-1, which cannot hold all of the text. Save a copy, which will "
                  "be UTF-8.");
    return reasonOf([&] { vn::AtomicFile::replace(path, edited.bytes); });
}

QString writeText(const QString &path, const QString &text)
{
    return reasonOf([&] { vn::AtomicFile::replace(path, text.toUtf8()); });
}

} // namespace browser
