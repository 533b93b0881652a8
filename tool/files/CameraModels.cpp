// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "tool/files/CameraModels.h"

#include "tool/cli/ToolError.h"
#include "tool/files/Input.h"

#include "base/FileUtils.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

#include <algorithm>

namespace vn::tool {

namespace {

ToolError malformed(const QString &message)
{
    return ToolError(ExitCode::BadInput, message);
}

QMap<QString, QString> modelsOfJson(const QByteArray &bytes, const QString &name)
{
    QJsonParseError error = {};
    const QJsonObject object = QJsonDocument::fromJson(bytes, &error).object();
    if (error.error != QJsonParseError::NoError) {
        const int line = 1 + int(std::count(bytes.begin(), bytes.begin() + error.offset, '\n'));
        throw malformed(error.errorString()).at(name, line);
    }
    QMap<QString, QString> models;
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (!it.value().isString())
            throw malformed(QStringLiteral("the model of %1 is no text").arg(it.key())).at(name);
        models.insert(it.key(), it.value().toString());
    }
    return models;
}

/** The fields of a line; false where a quote is not closed or something stands behind it. */
bool splitFields(const QString &line, QStringList &fields)
{
    const QLatin1Char quote('"');
    int i = 0;
    while (true) {
        QString field;
        if (i < line.size() && line.at(i) == quote) {
            for (++i;; ++i) {
                if (i >= line.size())
                    return false;
                if (line.at(i) == quote && (++i == line.size() || line.at(i) != quote))
                    break;
                field += line.at(i);
            }
            if (i < line.size() && line.at(i) != QLatin1Char(','))
                return false;
        } else {
            const int comma = line.indexOf(QLatin1Char(','), i);
            const int end = comma < 0 ? line.size() : comma;
            field = line.mid(i, end - i);
            i = end;
        }
        fields.append(field);
        if (i == line.size())
            return true;
        ++i;
    }
}

QMap<QString, QString> modelsOfCsv(const QByteArray &bytes, const QString &name)
{
    const QStringList expected{QStringLiteral("address"), QStringLiteral("model")};
    QMap<QString, QString> models;
    const QStringList lines = FileUtils::decodeText(bytes).split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        QString line = lines.at(i);
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        QStringList fields;
        const bool isComplete = splitFields(line, fields);
        if (i == 0) {
            if (fields != expected)
                throw malformed(QStringLiteral("the first line is not \"address,model\""))
                    .at(name, 1);
            continue;
        }
        if (line.isEmpty())
            continue;
        if (!isComplete || fields.size() != expected.size())
            throw malformed(QStringLiteral("not an address and a model")).at(name, i + 1);
        if (models.contains(fields.first()))
            throw malformed(QStringLiteral("%1 has a model already").arg(fields.first()))
                .at(name, i + 1);
        models.insert(fields.first(), fields.last());
    }
    return models;
}

} // namespace

QMap<QString, QString> readCameraModels(const QString &name)
{
    const QByteArray bytes = readInput(name);
    return bytes.trimmed().startsWith('{') ? modelsOfJson(bytes, name) : modelsOfCsv(bytes, name);
}

QString csvField(const QString &text)
{
    const bool isPlain = std::none_of(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char('"') || c == QLatin1Char(',') || c == QLatin1Char('\n') ||
               c == QLatin1Char('\r');
    });
    if (isPlain)
        return text;
    QString quoted = text;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

} // namespace vn::tool
