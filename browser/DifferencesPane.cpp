// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "DifferencesPane.h"

#include "EmptyState.h"
#include "TableLook.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace browser {

DifferencesPane::DifferencesPane(QWidget *parent)
    : QWidget(parent)
    , m_summary(new QLabel)
    , m_table(new QTableView)
{
    m_summary->setObjectName(QStringLiteral("differencesSummary"));
    m_table->setObjectName(QStringLiteral("differences"));
    m_table->setAccessibleName(tr("Differences"));
    m_table->setModel(&m_model);
    setUpTable(m_table);
    setColumnWidths(m_table, {14, 22, 28});

    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addWidget(m_summary);
    layout->addWidget(m_table, 1);

    m_pages = new EmptyState(content);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_pages);
    update();
}

void DifferencesPane::setDocuments(Document *first, Document *second)
{
    for (Document *document : {m_first.data(), m_second.data()})
        if (document)
            document->disconnect(this);
    m_first = first;
    m_second = second;
    for (Document *document : {first, second})
        if (document)
            connect(document, &Document::changed, this, &DifferencesPane::update);
    update();
}

void DifferencesPane::update()
{
    if (!m_first || !m_second) {
        m_model.clear();
        m_pages->showWords(tr("Nothing to compare"),
                           tr("Select two cameras on the left: hold Ctrl and click the second."));
        return;
    }
    m_model.compare(m_first->title(), m_first->map(), m_second->title(), m_second->map());
    if (m_model.rowCount() == 0) {
        m_pages->showWords(tr("No differences"), tr("Both cameras have the same values."));
        return;
    }
    m_summary->setText(tr("Keys that differ: %1").arg(m_model.rowCount()));
    m_pages->showContent();
}

} // namespace browser
