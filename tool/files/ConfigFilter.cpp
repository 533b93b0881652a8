// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/ConfigFilter.h"

#include "tool/cli/Closest.h"
#include "tool/cli/ToolError.h"

#include "config/ConfigSelection.h"
#include "config/VanteroConfigFile.h"

#include <algorithm>

namespace vn::tool {

namespace {

const char kOperatorCharacters[] = "=!~<>";

/** A usage error of an option, with its text and a caret below the character at @p position. */
ToolError errorAt(const char *option, const QString &text, int position, const QString &message)
{
    const QString indent(2, QLatin1Char(' '));
    return ToolError(ExitCode::BadInput, QLatin1String(option) + QLatin1String(": ") + message)
        .showing(indent + text + QLatin1Char('\n') + indent + QString(position, QLatin1Char(' ')) +
                 QLatin1Char('^'));
}

/** Where the field of a condition ends: before the first character that an operator begins with. */
int endOfField(const QString &text)
{
    const auto *const end = std::find_if(text.begin(), text.end(), [](QChar c) {
        return QLatin1String(kOperatorCharacters).contains(c);
    });
    return int(end - text.begin());
}

} // namespace

// ---- ConfigField -------------------------------------------------------------------------------

ConfigField::ConfigField(const char *option, const QString &whole, int length)
    : m_name(whole.left(length))
    , m_section(VanteroConfigFile::HEAD_SECTION)
{
    if (m_name == QLatin1String("address")) {
        m_key = VanteroConfigFile::FACTORY_IP;
    } else if (m_name == QLatin1String("firmware")) {
        m_isFirmware = true;
        m_key = VanteroConfigFile::SOFTWARE_VERSION;
    } else {
        const int slash = m_name.indexOf(QLatin1Char('/'));
        if (slash < 0)
            throw errorAt(
                option, whole, length,
                QStringLiteral("neither \"address\" nor \"firmware\" nor SECTION/KEY") +
                    didYouMean(m_name, {QStringLiteral("address"), QStringLiteral("firmware")}));
        if (slash == 0)
            throw errorAt(option, whole, 0, QStringLiteral("no SECTION before the \"/\""));
        if (slash + 1 == length)
            throw errorAt(option, whole, length, QStringLiteral("no KEY behind the \"/\""));
        m_isEntry = true;
        m_section = m_name.left(slash);
        m_key = m_name.mid(slash + 1);
    }
}

QStringList ConfigField::valuesIn(const VanteroConfigMap &config) const
{
    if (m_isEntry)
        return config.values(m_section, m_key);
    const QString &value = config.value(m_section, m_key, 0); // a configuration has one address
    return value.isNull() ? QStringList() : QStringList(value);
}

void ConfigField::addTo(ConfigSelection &selection) const
{
    selection.add(m_section, m_key);
}

// ---- ConfigFilter ------------------------------------------------------------------------------

ConfigFilter::ConfigFilter(const QString &text)
    : m_operator(Operator::IsThere)
    , m_field("--where", text, endOfField(text))
{
    const struct
    {
        const char *text;
        Operator meaning;
    } operators[] = {
        // the longer one of two that begin alike first
        {"!=", Operator::Unequal},     {"=", Operator::Equal}, {"~", Operator::Like},
        {"<=", Operator::LessOrEqual}, {"<", Operator::Less},  {">=", Operator::GreaterOrEqual},
        {">", Operator::Greater},
    };
    const int at = endOfField(text);
    if (at == text.size())
        return;
    const auto *const found =
        std::find_if(std::begin(operators), std::end(operators), [&](const auto &each) {
            return text.midRef(at).startsWith(QLatin1String(each.text));
        });
    if (found == std::end(operators))
        throw errorAt("--where", text, at,
                      QStringLiteral("no operator; there are = != ~ < <= > >="));
    m_operator = found->meaning;
    const int valueAt = at + int(qstrlen(found->text));
    m_value = text.mid(valueAt);
    const bool hasOrder = m_operator != Operator::Like && m_operator != Operator::Equal &&
                          m_operator != Operator::Unequal;
    if (hasOrder && !m_field.isFirmware())
        throw errorAt("--where", text, at, QStringLiteral("only \"firmware\" has an order"));
    if (m_operator == Operator::Like) {
        m_pattern = QRegExp(m_value, Qt::CaseSensitive, QRegExp::WildcardUnix);
        if (!m_pattern.isValid())
            throw errorAt("--where", text, valueAt, QStringLiteral("no pattern of the shell"));
    } else if (m_field.isFirmware()) {
        m_version = VanteroSoftwareVersion(m_value);
        if (!m_value.isEmpty() && m_version.platform().isNull())
            throw errorAt("--where", text, valueAt,
                          QStringLiteral("no version: it begins with no known platform"));
    }
}

bool ConfigFilter::matches(const QString &value) const
{
    if (m_operator == Operator::Like)
        return m_pattern.exactMatch(value);
    if (!m_field.isFirmware() || m_value.isEmpty()) // any version would equal an empty one
        return value == m_value;
    const VanteroSoftwareVersion version(value);
    switch (m_operator) {
    case Operator::Less:
        return version < m_version;
    case Operator::LessOrEqual:
        return version <= m_version;
    case Operator::Greater:
        return version > m_version;
    case Operator::GreaterOrEqual:
        return version >= m_version;
    default:
        return version == m_version;
    }
}

bool ConfigFilter::matches(const VanteroConfigMap &config) const
{
    QStringList values = m_field.valuesIn(config);
    if (m_operator == Operator::IsThere)
        return !values.isEmpty();
    if (values.isEmpty())
        values += QString();
    const bool isAny = std::any_of(values.begin(), values.end(),
                                   [this](const QString &value) { return matches(value); });
    return m_operator == Operator::Unequal ? !isAny : isAny;
}

} // namespace vn::tool
