// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/commands/AlarmTree.h"

#include "alarm/AlarmLint.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/SourceExcerpt.h"

#include <QtCore/QDateTime>
#include <QtCore/QMap>
#include <QtCore/QVariant>
#include <QtScript/QScriptValue>
#include <QtScript/QScriptValueIterator>

#include <algorithm>
#include <cmath>

namespace vn::tool {

namespace {

/** The string as JSON writes it; a null string is an empty one here. */
Json jsonString(const QString &text)
{
    return Json(text.isNull() ? QStringLiteral("") : text);
}

QString textOf(const Json &scalar)
{
    return QString::fromUtf8(scalar.toText().trimmed());
}

QString numberText(double number)
{
    if (std::isfinite(number))
        return textOf(Json(number));
    return QString::number(number); // inf, -inf
}

/** A key as it is when it is a word, quoted otherwise. */
QString keyText(const QString &key)
{
    const auto isWordCharacter = [](QChar c) {
        return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
               (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
               (c >= QLatin1Char('a') && c <= QLatin1Char('z')) || c == QLatin1Char('_') ||
               c == QLatin1Char('-') || c == QLatin1Char('.') || c == QLatin1Char('/');
    };
    const bool isWord = !key.isEmpty() && std::all_of(key.begin(), key.end(), isWordCharacter);
    return isWord ? key : textOf(jsonString(key));
}

} // namespace

AlarmTree::AlarmTree(const QVariant &value)
{
    switch (static_cast<int>(value.type())) {
    case QVariant::Map: {
        m_kind = Kind::Object;
        const QVariantMap map = value.toMap();
        for (auto entry = map.begin(); entry != map.end(); ++entry)
            m_children.emplace_back(entry.key(), AlarmTree(entry.value()));
        break;
    }
    case QVariant::List: {
        m_kind = Kind::List;
        const QVariantList list = value.toList();
        for (const QVariant &element : list)
            m_children.emplace_back(QString(), AlarmTree(element));
        break;
    }
    case QVariant::String:
        m_json = jsonString(value.toString());
        m_text = textOf(m_json);
        break;
    case QVariant::Double:
        m_json = Json(value.toDouble());
        m_text = numberText(value.toDouble());
        break;
    case QVariant::Bool:
        m_json = Json(value.toBool());
        m_text = textOf(m_json);
        break;
    default:
        m_text = textOf(m_json); // null
    }
}

AlarmTree::AlarmTree(const QScriptValue &value)
{
    if (value.isDate()) {
        const QDateTime date = value.toDateTime();
        const QString text = date.toString(Qt::ISODate);
        m_json = date.isValid() ? Json(text) : Json();
        m_text = date.isValid() ? text : QStringLiteral("invalid date");
    } else if (value.isArray()) {
        m_kind = Kind::List;
        const quint32 length = value.property(QStringLiteral("length")).toUInt32();
        for (quint32 i = 0; i < length; ++i)
            m_children.emplace_back(QString(), AlarmTree(value.property(i)));
    } else if (value.isObject()) {
        m_kind = Kind::Object;
        QScriptValueIterator property(value);
        while (property.hasNext()) {
            property.next();
            m_children.emplace_back(property.name(), AlarmTree(property.value()));
        }
    } else if (value.isNumber()) {
        m_json = Json(static_cast<double>(value.toNumber()));
        m_text = numberText(value.toNumber());
    } else if (value.isBool()) {
        m_json = Json(value.toBool());
        m_text = textOf(m_json);
    } else {
        m_json = jsonString(value.toString());
        m_text = textOf(m_json);
    }
}

Json AlarmTree::toJson() const
{
    if (m_kind == Kind::Scalar)
        return m_json;
    Json json = m_kind == Kind::List ? Json::array() : Json::object();
    for (const auto &[name, child] : m_children) {
        if (m_kind == Kind::List)
            json.append(child.toJson());
        else
            json.insert(name, child.toJson());
    }
    return json;
}

QString AlarmTree::toText() const
{
    QString text;
    if (isBlock())
        write(text, 0);
    else
        text = (m_kind == Kind::List ? QStringLiteral("[]") : QStringLiteral("{}")) +
               QLatin1Char('\n');
    return text;
}

void AlarmTree::write(QString &text, int level) const
{
    for (const auto &[name, child] : m_children) {
        text += QString(2 * level, QLatin1Char(' '));
        text += m_kind == Kind::List ? QStringLiteral("-") : keyText(name) + QLatin1Char(':');
        if (child.isBlock()) {
            text += QLatin1Char('\n');
            child.write(text, level + 1);
        } else if (child.m_kind == Kind::Scalar) {
            text += QLatin1Char(' ') + child.m_text + QLatin1Char('\n');
        } else {
            text += QLatin1Char(' ') + child.toText();
        }
    }
}

ToolError alarmError(const ParseException &exception, const QString &name, const QByteArray &bytes)
{
    const TextRange range = alarmTextRange(bytes, exception.startColumn(), exception.endColumn());
    const SourceExcerpt excerpt = sourceExcerpt(FileUtils::decodeText(bytes), range);
    const ToolError error =
        ToolError(ExitCode::BadInput, exception.message()).at(name, range.line, range.column);
    return excerpt.line.isEmpty() ? error
                                  : error.showing(excerpt.line + QLatin1Char('\n') + excerpt.mark);
}

} // namespace vn::tool
