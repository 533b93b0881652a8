// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/commands/AlarmTree.h"

#include "alarm/AlarmDocument.h"
#include "alarm/AlarmLint.h"
#include "base/Exceptions.h"
#include "base/FileUtils.h"
#include "base/SourceExcerpt.h"

#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QSet>
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

/** @p name as a part of a JSON pointer. */
QString pointerToken(QString name)
{
    return name.replace(QLatin1Char('~'), QLatin1String("~0"))
        .replace(QLatin1Char('/'), QLatin1String("~1"));
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

AlarmTree::AlarmTree(const AlarmValue &value)
{
    const QVector<AlarmMember> members = value.members();
    switch (value.kind()) {
    case AlarmValue::Kind::Object:
    case AlarmValue::Kind::Array:
        m_kind = value.kind() == AlarmValue::Kind::Object ? Kind::Object : Kind::List;
        for (const AlarmMember &member : members)
            m_children.emplace_back(member.key, AlarmTree(member.value));
        break;
    default: // all others are as programs get them
        *this = AlarmTree(value.toVariant());
    }
}

bool AlarmTree::hasRepeatedKeys() const
{
    QSet<QString> names;
    for (const auto &[name, child] : m_children) {
        if ((m_kind == Kind::Object && names.contains(name)) || child.hasRepeatedKeys())
            return true;
        names.insert(name);
    }
    return false;
}

Json AlarmTree::toJson(QStringList &repeated) const
{
    return toJson(QString(), repeated);
}

Json AlarmTree::toJson(const QString &pointer, QStringList &repeated) const
{
    if (m_kind == Kind::Scalar)
        return m_json;
    if (m_kind == Kind::List) {
        Json json = Json::array();
        for (std::size_t i = 0; i < m_children.size(); ++i)
            json.append(
                m_children[i].second.toJson(pointer + QStringLiteral("/%1").arg(i), repeated));
        return json;
    }
    QHash<QString, int> counts;
    for (const auto &[name, child] : m_children)
        ++counts[name];
    Json json = Json::object();
    for (auto child = m_children.begin(); child != m_children.end(); ++child) {
        const int count = counts.take(child->first); // 0: the values stand with the first one
        const QString place = pointer + QLatin1Char('/') + pointerToken(child->first);
        if (count == 1) {
            json.insert(child->first, child->second.toJson(place, repeated));
        } else if (count > 1) {
            repeated << place;
            Json values = Json::array();
            int number = 0;
            for (auto other = child; other != m_children.end(); ++other)
                if (other->first == child->first)
                    values.append(other->second.toJson(place + QStringLiteral("/%1").arg(number++),
                                                       repeated));
            json.insert(child->first, values);
        }
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

ToolError alarmError(const ParseException &exception, const QString &name, const QByteArray &bytes,
                     qint64 firstLine)
{
    const TextRange range = alarmTextRange(bytes, exception.startColumn(), exception.endColumn());
    const SourceExcerpt excerpt = sourceExcerpt(FileUtils::decodeText(bytes), range);
    const ToolError error = ToolError(ExitCode::BadInput, exception.message())
                                .at(name, int(firstLine) - 1 + range.line, range.column);
    return excerpt.line.isEmpty() ? error
                                  : error.showing(excerpt.line + QLatin1Char('\n') + excerpt.mark);
}

} // namespace vn::tool
