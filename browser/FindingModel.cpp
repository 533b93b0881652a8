// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "FindingModel.h"

#include "Colors.h"

#include <QtGui/QBrush>

namespace browser {

FindingModel::FindingModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void FindingModel::setFindings(const vn::Findings &findings)
{
    beginResetModel();
    m_findings = findings;
    endResetModel();
}

int FindingModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_findings.size();
}

int FindingModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant FindingModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const vn::Finding &finding = m_findings.at(index.row());
    if (role == Qt::BackgroundRole && index.column() == Severity) {
        switch (finding.severity) {
        case vn::Finding::Severity::Error:
            return QBrush(colors::bad());
        case vn::Finding::Severity::Warning:
            return QBrush(colors::notice());
        case vn::Finding::Severity::Note:
            break;
        }
    }
    if (role == SortRole)
        return index.column() == Severity ? QVariant(int(finding.severity))
                                          : data(index, Qt::DisplayRole);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    switch (index.column()) {
    case Severity:
        switch (finding.severity) {
        case vn::Finding::Severity::Error:
            return tr("Error");
        case vn::Finding::Severity::Warning:
            return tr("Warning");
        case vn::Finding::Severity::Note:
            return tr("Note");
        }
        break;
    case Line:
        return finding.range.line;
    case Message:
        return tr("%1 (%2)").arg(finding.message, finding.code);
    }
    return {};
}

QVariant FindingModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Severity:
        return tr("Severity");
    case Line:
        return tr("Line");
    case Message:
        return tr("Finding");
    }
    return {};
}

} // namespace browser
