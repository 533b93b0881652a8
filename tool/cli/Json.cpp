// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/cli/Json.h"

#include <QtCore/QLocale>
#include <QtCore/QtNumeric>

#include <algorithm>

namespace vn::tool {

namespace {

void writeEscaped(QByteArray &out, ushort unit)
{
    out += "\\u";
    out += QByteArray::number(unit, 16).rightJustified(4, '0');
}

void writeString(QByteArray &out, const QString &text)
{
    out += '"';
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            out += text.mid(i, 2).toUtf8();
            ++i;
            continue;
        }
        switch (c.unicode()) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (c.unicode() < 0x20 || c.unicode() == 0x7f || c.isSurrogate())
                writeEscaped(out, c.unicode());
            else
                out += QString(c).toUtf8();
        }
    }
    out += '"';
}

} // namespace

Json::Json(bool value)
    : m_scalar(value ? "true" : "false")
{
}

Json::Json(int value)
    : m_scalar(QByteArray::number(value))
{
}

Json::Json(unsigned value)
    : m_scalar(QByteArray::number(value))
{
}

Json::Json(qint64 value)
    : m_scalar(QByteArray::number(value))
{
}

Json::Json(quint64 value)
    : m_scalar(QByteArray::number(value))
{
}

Json::Json(double value)
{
    if (qIsFinite(value))
        m_scalar = QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
}

Json::Json(const QString &value)
    : m_kind(value.isNull() ? Kind::Scalar : Kind::String)
    , m_string(value)
{
}

Json::Json(const char *value)
    : Json(QString::fromUtf8(value))
{
}

Json Json::array(std::vector<Json> items)
{
    Json result;
    result.m_kind = Kind::Array;
    for (Json &item : items)
        result.append(std::move(item));
    return result;
}

Json Json::array(const QStringList &items)
{
    Json result = array();
    for (const QString &item : items)
        result.append(item);
    return result;
}

Json Json::object()
{
    Json result;
    result.m_kind = Kind::Object;
    return result;
}

Json Json::object(std::initializer_list<std::pair<const char *, Json>> members)
{
    Json result = object();
    for (const auto &member : members)
        result.insert(QString::fromUtf8(member.first), member.second);
    return result;
}

void Json::append(Json item)
{
    m_members.emplace_back(QString(), std::move(item));
}

void Json::insert(const QString &name, Json value)
{
    m_members.emplace_back(name, std::move(value));
}

Json Json::listed(const char *list, const Json &items, bool isOnly, const Json *errors)
{
    Json result = isOnly ? items.m_members.front().second : object();
    result.insert(QString::fromUtf8(list), items);
    if (errors)
        result.insert(QStringLiteral("errors"), *errors);
    return result;
}

QByteArray Json::toText() const
{
    QByteArray out;
    write(out, 0);
    out += '\n';
    return out;
}

QByteArray Json::toLine() const
{
    QByteArray out;
    writeLine(out);
    out += '\n';
    return out;
}

void Json::writeLine(QByteArray &out) const
{
    if (m_kind == Kind::Scalar || m_kind == Kind::String)
        return write(out, 0);
    const bool isObject = m_kind == Kind::Object;
    out += isObject ? '{' : '[';
    for (const Member &member : m_members) {
        out += &member == &m_members.front() ? "" : ",";
        if (isObject) {
            writeString(out, member.first);
            out += ':';
        }
        member.second.writeLine(out);
    }
    out += isObject ? '}' : ']';
}

void Json::write(QByteArray &out, int level) const
{
    if (m_kind == Kind::Scalar) {
        out += m_scalar;
        return;
    }
    if (m_kind == Kind::String) {
        writeString(out, m_string);
        return;
    }
    const bool isObject = m_kind == Kind::Object;
    const auto isPlain = [](const Member &member) {
        return member.second.m_kind == Kind::Scalar || member.second.m_kind == Kind::String;
    };
    if (!isObject && std::all_of(m_members.begin(), m_members.end(), isPlain)) {
        out += '[';
        for (const Member &member : m_members) {
            out += &member == &m_members.front() ? "" : ", ";
            member.second.write(out, level);
        }
        out += ']';
        return;
    }
    out += isObject ? '{' : '[';
    const char *separator = "\n";
    for (const Member &member : m_members) {
        out += separator;
        separator = ",\n";
        out += QByteArray(2 * (level + 1), ' ');
        if (isObject) {
            writeString(out, member.first);
            out += ": ";
        }
        member.second.write(out, level + 1);
    }
    if (!m_members.empty())
        out += '\n' + QByteArray(2 * level, ' ');
    out += isObject ? '}' : ']';
}

} // namespace vn::tool
