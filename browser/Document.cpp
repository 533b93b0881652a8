// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "Document.h"

#include "SafeSave.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "config/VanteroConfigFile.h"

#include <utility>

using vn::VanteroConfigFile;

namespace browser {

Document::Document(Configuration configuration, QObject *parent)
    : QObject(parent)
    , m_configuration(std::move(configuration))
    , m_map(m_configuration.map)
{
}

QString Document::text() const
{
    return m_edited ? m_edited->text() : m_configuration.text;
}

bool Document::isModified(const QString &section, const QString &key, int index) const
{
    return m_isModified &&
           m_map.value(section, key, index) != m_configuration.map.value(section, key, index);
}

QString Document::readOnlyReason() const
{
    if (m_configuration.isArchiveEntry())
        return tr("An entry of an archive cannot be edited. Save a copy of it to edit that.");
    if (!m_configuration.parseError.isEmpty())
        return tr("Only the sections before an error could be read, so nothing can be edited: %1.")
            .arg(m_configuration.parseError);
    return {};
}

bool Document::isEditable(const QString &section) const
{
    // The header is no section of the text.
    return section != VanteroConfigFile::HEAD_SECTION && readOnlyReason().isNull();
}

QString Document::setValue(const QString &section, const QString &key, int index,
                           const QString &value)
{
    if (!isEditable(section))
        return tr("This value cannot be edited.");
    if (m_map.value(section, key, index) == value)
        return {};

    if (!m_edited)
        m_edited.emplace(m_configuration.text);
    const vn::VanteroConfigText::Result result = m_edited->setValue(section, key, value, index);
    if (!result)
        return tr("Not changed: %1.").arg(result.reason);
    auto entry = m_map.find(section, key); // the newest
    std::advance(entry, index);
    *entry = value;
    m_isModified = !m_edited->edits().isEmpty();
    Q_EMIT changed();
    return {};
}

QString Document::save()
{
    const QString edited = text();
    QString error = replaceText(m_configuration.path, m_configuration.text, edited);
    if (!error.isNull())
        return error;
    Configuration saved = m_configuration;
    saved.text = edited;
    saved.map = m_map;
    setConfiguration(std::move(saved));
    return {};
}

QString Document::reload()
{
    try {
        setConfiguration(makeConfiguration(m_configuration.path, QString(), 0,
                                           vn::FileUtils::readText(m_configuration.path)));
    } catch (const vn::ExceptionQt &e) {
        return e.message();
    }
    return {};
}

QString Document::title() const
{
    const QString address = m_configuration.address();
    const QString host = m_configuration.hostName();
    if (address.isEmpty())
        return host.isEmpty() ? m_configuration.sourceName() : host;
    return host.isEmpty() ? address : tr("%1 (%2)").arg(address, host);
}

void Document::setConfiguration(Configuration configuration)
{
    m_configuration = std::move(configuration);
    m_map = m_configuration.map;
    m_edited.reset();
    m_isModified = false;
    Q_EMIT changed();
}

} // namespace browser
