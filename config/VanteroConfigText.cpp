// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "config/VanteroConfigText.h"

#include "config/VanteroConfigTextData_p.h"

namespace vn {

VanteroConfigText::VanteroConfigText()
    : VanteroConfigText(QString())
{
}

VanteroConfigText::VanteroConfigText(const QString &text, Form form)
    : m_data(new internal::ConfigTextData(text, form))
{
}

VanteroConfigText::VanteroConfigText(const VanteroConfigText &other) = default;
VanteroConfigText::VanteroConfigText(VanteroConfigText &&other) noexcept = default;
VanteroConfigText &VanteroConfigText::operator=(const VanteroConfigText &other) = default;
VanteroConfigText &VanteroConfigText::operator=(VanteroConfigText &&other) noexcept = default;
VanteroConfigText::~VanteroConfigText() = default;

QString VanteroConfigText::text() const
{
    return m_data->text();
}

QString VanteroConfigText::originalText() const
{
    return m_data->original();
}

QVector<VanteroConfigText::Splice> VanteroConfigText::edits() const
{
    return m_data->splices();
}

bool VanteroConfigText::containsSection(const QString &section) const
{
    return m_data->containsSection(section);
}

QString VanteroConfigText::value(const QString &section, const QString &key, int index) const
{
    return m_data->value(section, key, index);
}

QStringList VanteroConfigText::values(const QString &section, const QString &key) const
{
    return m_data->values(section, key);
}

VanteroConfigText::Result VanteroConfigText::setValue(const QString &section, const QString &key,
                                                      const QString &value, int index)
{
    return m_data->setValue(section, key, value, index);
}

VanteroConfigText::Result VanteroConfigText::addValue(const QString &section, const QString &key,
                                                      const QString &value)
{
    return m_data->addValue(section, key, value);
}

VanteroConfigText::Result VanteroConfigText::removeValue(const QString &section, const QString &key,
                                                         int index)
{
    return m_data->removeValue(section, key, index);
}

VanteroConfigText::Result VanteroConfigText::removeKey(const QString &section, const QString &key)
{
    return m_data->removeKey(section, key);
}

VanteroConfigText::Result VanteroConfigText::removeSection(const QString &section)
{
    return m_data->removeSection(section);
}

VanteroConfigText::Result VanteroConfigText::addSection(const QString &section,
                                                        const VanteroConfigMap::Section &content)
{
    return m_data->addSection(section, content);
}

} // namespace vn
