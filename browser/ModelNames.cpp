// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ModelNames.h"

#include "base/FileUtils.h"
#include "version/UpdateRules.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSettings>
#include <QtCore/QVariant>

namespace browser {

namespace {

const char *const kKey = "models";

QString unquoted(QString cell)
{
    cell = cell.trimmed();
    if (cell.size() < 2 || !cell.startsWith(QLatin1Char('"')) || !cell.endsWith(QLatin1Char('"')))
        return cell;
    return cell.mid(1, cell.size() - 2).replace(QStringLiteral("\"\""), QStringLiteral("\""));
}

} // namespace

ModelNames::ModelNames()
{
    const QVariantMap kept = QSettings().value(QLatin1String(kKey)).toMap();
    for (auto it = kept.begin(); it != kept.end(); ++it)
        m_names.insert(it.key(), it.value().toString());
}

void ModelNames::set(const QString &address, const QString &model)
{
    if (model.isEmpty())
        m_names.remove(address);
    else
        m_names.insert(address, model);
    save();
}

int ModelNames::readCsv(const QByteArray &csv)
{
    const QRegularExpression address(QStringLiteral("^\\d{1,3}(\\.\\d{1,3}){3}$"));
    const QRegularExpression between(QStringLiteral("[,;\t]"));
    const QRegularExpression lineEnd(QStringLiteral("\r\n|\n|\r"));
    int count = 0;
    const QStringList lines = vn::FileUtils::decodeText(csv).split(lineEnd);
    for (const QString &line : lines) {
        const QStringList cells = line.split(between);
        if (cells.size() < 2)
            continue;
        const QString first = unquoted(cells.at(0));
        const QString model = unquoted(cells.at(1));
        if (!address.match(first).hasMatch() || model.isEmpty())
            continue;
        m_names.insert(first, model);
        ++count;
    }
    save();
    return count;
}

void ModelNames::save() const
{
    QVariantMap kept;
    for (auto it = m_names.begin(); it != m_names.end(); ++it)
        kept.insert(it.key(), it.value());
    QSettings().setValue(QLatin1String(kKey), kept);
}

bool isNamedByRules(const QString &model)
{
    return vn::UpdateRules::modelClass(model) != vn::UpdateRules::modelClasses().size() - 1;
}

} // namespace browser
