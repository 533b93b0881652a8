// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "DifferencesPane.h"

#include "DifferencesView.h"
#include "EmptyState.h"

#include <QtWidgets/QVBoxLayout>

namespace browser {

DifferencesPane::DifferencesPane(QWidget *parent)
    : QWidget(parent)
    , m_view(new DifferencesView(QStringLiteral("differences")))
{
    m_pages = new EmptyState(m_view);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_pages);
    update();
}

QTableView *DifferencesPane::table()
{
    return m_view->table();
}

void DifferencesPane::setDocuments(const std::vector<Document *> &documents)
{
    m_count = int(documents.size());
    Document *first = m_count == 2 ? documents.front() : nullptr;
    Document *second = m_count == 2 ? documents.back() : nullptr;
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
    DifferenceModel &model = m_view->model();
    if (!m_first || !m_second) {
        model.clear();
        m_pages->showWords(
            tr("Nothing to compare"),
            (m_count > 2 ? tr("Selected cameras: %L1.").arg(m_count) + QLatin1Char(' ')
                         : QString()) +
                tr("Select two cameras on the left: hold Ctrl and click the second."));
        return;
    }
    model.compare(m_first->title(), m_first->map(), m_second->title(), m_second->map());
    if (model.differenceCount() == 0)
        m_pages->showWords(tr("No differences"), tr("Both cameras have the same values."));
    else
        m_pages->showContent();
}

} // namespace browser
