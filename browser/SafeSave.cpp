// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "SafeSave.h"

#include "base/AtomicFile.h"
#include "base/EncodedText.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"

#include <QtCore/QCoreApplication>

namespace browser {

namespace {

struct Words
{
    Q_DECLARE_TR_FUNCTIONS(browser::SafeSave)
};

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

Replaced replaceText(const QString &path, const QByteArray &before, const QString &text)
{
    QByteArray now;
    if (const QString failure = reasonOf([&] { now = vn::FileUtils::readBytes(path); });
        !failure.isNull())
        return {QByteArray(), {failure, {}}};
    const QString changed =
        Words::tr("The file has changed on the disk since it was read. Reload it, or "
                  "save a copy of what you have.");
    if (now != before)
        return {QByteArray(), {changed, {}}};
    const vn::EncodedText::Result edited = vn::EncodedText(before).encode(text);
    if (!edited)
        return {QByteArray(),
                {Words::tr("The file is Latin-1, which cannot hold all of the text. Save a "
                           "copy, which will be UTF-8."),
                 {}}};
    vn::AtomicFile::Outcome outcome{true, {}}; // and where an exception says why it is not
    const QString reason =
        reasonOf([&] { outcome = vn::AtomicFile::replaceUnchanged(path, before, edited.bytes); });
    return {edited.bytes, {outcome ? reason : changed, vn::AtomicFile::describe(outcome.losses)}};
}

Written writeBytes(const QString &path, const QByteArray &bytes)
{
    vn::AtomicFile::Losses losses;
    const QString reason =
        reasonOf([&] { losses = vn::AtomicFile::replaceWithReport(path, bytes); });
    return {reason, vn::AtomicFile::describe(losses)};
}

} // namespace browser
