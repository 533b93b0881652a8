// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "CsvExport.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QStringList>

#include <algorithm>

namespace browser {

namespace {

QString quoted(const QString &cell)
{
    const bool needsQuotes = std::any_of(
        cell.begin(), cell.end(), [](QChar c) { return QStringLiteral(",\"\r\n").contains(c); });
    if (!needsQuotes)
        return cell;
    QString doubled = cell;
    doubled.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + doubled + QLatin1Char('"');
}

} // namespace

QByteArray csvOf(const QAbstractItemModel &table)
{
    QByteArray csv;
    const int columns = table.columnCount();
    const auto addLine = [&](auto cellAt) {
        QStringList cells;
        for (int column = 0; column < columns; ++column)
            cells += quoted(cellAt(column));
        csv += cells.join(QLatin1Char(',')).toUtf8() + "\r\n";
    };
    addLine([&](int column) { return table.headerData(column, Qt::Horizontal).toString(); });
    for (int row = 0; row < table.rowCount(); ++row)
        addLine([&](int column) { return table.index(row, column).data().toString(); });
    return csv;
}

} // namespace browser
