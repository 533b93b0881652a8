// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "FindingsView.h"

#include "SourceView.h"

#include "base/SourceExcerpt.h"

#include <QtGui/QFontDatabase>
#include <QtWidgets/QLabel>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

namespace browser {

FindingsView::FindingsView(const QString &name, QWidget *parent)
    : QSplitter(Qt::Vertical, parent)
    , m_source(new SourceView)
    , m_below(new QWidget)
    , m_table(new QTableView)
    , m_title(new QLabel)
    , m_message(new QLabel)
    , m_excerpt(new QLabel)
{
    setObjectName(name + QStringLiteral("Splitter"));
    setChildrenCollapsible(false);
    m_source->setObjectName(name + QStringLiteral("Source"));
    m_source->setAccessibleName(tr("Text"));
    m_title->setObjectName(name + QStringLiteral("FindingsTitle"));
    m_message->setObjectName(name + QStringLiteral("Message"));
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setAccessibleName(tr("Whole finding"));
    m_excerpt->setObjectName(name + QStringLiteral("Excerpt"));
    m_excerpt->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_excerpt->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_excerpt->setTextFormat(Qt::PlainText);
    m_excerpt->setAccessibleName(tr("Place of the finding"));
    m_table->setObjectName(name + QStringLiteral("Findings"));
    m_table->setAccessibleName(tr("Findings"));
    m_sorted.setSourceModel(&m_model);
    m_sorted.setSortRole(FindingModel::SortRole);
    m_table->setModel(&m_sorted);
    setUpTable(m_table);
    setUpSorting(m_table);
    setColumnWidths(m_table, {10, 6});
    m_table->setMinimumHeight(80);

    auto *layout = new QVBoxLayout(m_below);
    layout->setContentsMargins(0, 4, 0, 0);
    layout->addWidget(m_title);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_message);
    layout->addWidget(m_excerpt);
    addWidget(m_source);
    addWidget(m_below);
    setStretchFactor(0, 1);
    setSizes({420, 180});

    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &FindingsView::showFinding);
    connect(m_table, &QTableView::activated, this, [this](const QModelIndex &index) {
        showFinding(index);
        m_source->setFocus();
    });
}

void FindingsView::setSource(const QString &text, const vn::Findings &findings)
{
    m_text = text;
    m_source->setSource(text, findings);
    m_model.setFindings(findings);
    m_message->clear();
    m_excerpt->clear();
    m_excerpt->hide();
    m_below->setVisible(!findings.isEmpty());
    m_title->setText(tr("Findings: %1").arg(findings.size()));
    if (!findings.isEmpty()) // the first one is the one to begin with
        m_table->selectRow(0);
}

void FindingsView::showFinding(const QModelIndex &index)
{
    const int row = m_sorted.mapToSource(index).row();
    if (row < 0)
        return;
    const vn::TextRange &range = m_model.findings().at(row).range;
    m_source->jumpTo(range);
    const vn::SourceExcerpt excerpt = vn::sourceExcerpt(m_text, range);
    m_message->setText(m_model.index(row, FindingModel::Message).data().toString());
    m_excerpt->setText(excerpt.line + QLatin1Char('\n') + excerpt.mark);
    m_excerpt->setVisible(!excerpt.line.isEmpty());
}

} // namespace browser
