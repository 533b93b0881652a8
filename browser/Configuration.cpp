// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "Configuration.h"

#include "base/Exceptions.h"
#include "config/ConfigSelection.h"
#include "config/VanteroConfigFile.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <utility>

using vn::VanteroConfigFile;

namespace browser {

namespace {

constexpr int kFastCompression = 1;

QString inArchive(const QString &file, const QString &entry)
{
    return entry.isNull() ? file : file + QStringLiteral(" › ") + entry;
}

} // namespace

Configuration::Configuration(QString path, QString entry, int entryIndex, const QByteArray &bytes,
                             Form form)
    : m_path(std::move(path))
    , m_entry(std::move(entry))
    , m_entryIndex(entryIndex)
    , m_form(form)
    , m_packed(qCompress(bytes, kFastCompression))
    , m_summary(summaryOf(vn::EncodedText(bytes).text(), form))
{
    m_packed.squeeze(); // qCompress() leaves room for nearly as much again
}

QString Configuration::sourceName() const
{
    return inArchive(QFileInfo(m_path).fileName(), m_entry);
}

QString Configuration::sourcePath() const
{
    return inArchive(QDir::toNativeSeparators(m_path), m_entry);
}

QString Configuration::fileName() const
{
    return QFileInfo(isArchiveEntry() ? m_entry : m_path).fileName();
}

vn::VanteroConfigMap mapOf(const QString &text, Configuration::Form form, QString *error)
{
    VanteroConfigFile config;
    try {
        if (form == Configuration::Form::ImageComment)
            config.parseJpegComment(text);
        else
            config.parse(text, QDateTime());
    } catch (const vn::ExceptionQt &e) {
        if (error)
            *error = e.message(); // the sections before it were read
    }
    return config.map();
}

Summary summaryOf(const QString &text, Configuration::Form form)
{
    Summary summary;
    const QString host = QStringLiteral("HOSTNAME");
    const QString network = QStringLiteral("ethernet");
    vn::VanteroConfigMap map;
    if (form == Configuration::Form::ImageComment) {
        map = mapOf(text, form, &summary.parseError);
    } else {
        vn::ConfigSelection selection; // to keep all values of a site takes thrice the time
        selection.add(network, host);
        try {
            (void)selection.parse(text, map);
        } catch (const vn::ExceptionQt &e) {
            summary.parseError = e.message();
        }
    }
    summary.address = map.value(VanteroConfigFile::HEAD_SECTION, VanteroConfigFile::FACTORY_IP, 0);
    summary.firmware =
        map.value(VanteroConfigFile::HEAD_SECTION, VanteroConfigFile::SOFTWARE_VERSION, 0);
    summary.hostName = map.value(network, host, 0);
    return summary;
}

} // namespace browser
