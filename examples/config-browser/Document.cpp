// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "Document.h"

#include "SafeSave.h"
#include "SectionText.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "config/VanteroConfigFile.h"

#include <utility>

using vn::VanteroConfigFile;
using vn::VanteroConfigMap;

namespace browser {

Document::Document(Configuration configuration, QObject *parent)
    : QObject(parent)
    , m_configuration(std::move(configuration))
    , m_map(m_configuration.map)
    , m_text(m_configuration.text)
{
}

bool Document::isModified(const QString &section, const QString &key, int index) const
{
    return m_changedSections.contains(section) &&
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
    if (value.contains(QLatin1Char('\n')) || value.endsWith(QLatin1Char('\r')))
        return tr("A value cannot hold a line break.");
    if (m_map.value(section, key, index) == value)
        return {};

    VanteroConfigMap map = m_map;
    auto entry = map.find(section, key); // the newest
    std::advance(entry, index);
    *entry = value;

    QSet<QString> sections = m_changedSections;
    if (map.section(section) == m_configuration.map.section(section))
        sections.remove(section);
    else
        sections.insert(section);

    QString text = m_configuration.text;
    for (const QString &changed : std::as_const(sections))
        text = VanteroConfigFile::replaceSection(
            text, sectionText(text, changed, std::as_const(map).section(changed)), changed);

    // The library finds sections by their markers alone. A comment may hold them, too, or a section
    // stand in several blocks: what cannot be read back as it was meant must not be written.
    try {
        if (!isSameMap(parseMap(text), map))
            return tr("The section \"%1\" of this text cannot be replaced: it stands in several "
                      "blocks, or its name stands elsewhere, too.")
                .arg(section);
    } catch (const vn::ExceptionQt &e) {
        return tr("The text could not be read back: %1.").arg(e.message());
    }

    m_map = std::move(map);
    m_text = std::move(text);
    m_changedSections = std::move(sections);
    Q_EMIT changed();
    return {};
}

QString Document::save()
{
    QString error = replaceText(m_configuration.path, m_configuration.text, m_text);
    if (!error.isNull())
        return error;
    Configuration saved = m_configuration;
    saved.text = m_text;
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
    m_text = m_configuration.text;
    m_changedSections.clear();
    Q_EMIT changed();
}

} // namespace browser
