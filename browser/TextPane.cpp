// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "TextPane.h"

#include "EmptyState.h"
#include "FindingsView.h"
#include "MessageBar.h"

#include <QtWidgets/QVBoxLayout>

namespace browser {

TextPane::TextPane(QWidget *parent)
    : QWidget(parent)
    , m_message(new MessageBar)
    , m_view(new FindingsView(QStringLiteral("text")))
{
    m_message->setObjectName(QStringLiteral("textMessage"));
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addWidget(m_message);
    layout->addWidget(m_view, 1);
    m_pages = new EmptyState(content);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_pages);
    setDocument(nullptr);
}

void TextPane::setDocument(Document *document)
{
    if (m_document)
        m_document->disconnect(this);
    m_document = document;
    if (document) {
        connect(document, &Document::changed, this, &TextPane::update);
        m_pages->showContent();
    } else {
        m_pages->showWords(tr("No camera selected"),
                           tr("Select a camera on the left to see its text and what is found in "
                              "it."));
    }
    update();
}

void TextPane::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_isStale)
        update();
}

void TextPane::update()
{
    m_isStale = !isVisible();
    if (m_isStale)
        return;
    if (!m_document)
        return m_view->setSource(QString(), {});
    const vn::VanteroConfigText text(m_document->text(), m_document->configuration().form());
    const vn::Findings findings = text.findings();
    m_view->setSource(text.text(), findings);
    m_message->showNote(findings.isEmpty() ? tr("Nothing is wrong with this text.") : QString());
}

} // namespace browser
