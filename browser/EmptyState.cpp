// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "EmptyState.h"

#include "SecondaryLabel.h"

#include <QtWidgets/QVBoxLayout>

namespace browser {

EmptyState::EmptyState(QWidget *content, QWidget *parent)
    : QStackedWidget(parent)
    , m_title(new SecondaryLabel)
    , m_text(new SecondaryLabel)
{
    QFont font = m_title->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    font.setBold(true);
    m_title->setFont(font);
    for (QLabel *label : {m_title, m_text}) {
        label->setAlignment(Qt::AlignCenter);
        label->setWordWrap(true);
    }

    auto *words = new QWidget;
    auto *layout = new QVBoxLayout(words);
    layout->setContentsMargins(24, 24, 24, 24);
    layout->addStretch(2);
    layout->addWidget(m_title);
    layout->addWidget(m_text);
    layout->addStretch(3);

    addWidget(content);
    addWidget(words);
}

void EmptyState::showContent()
{
    setCurrentIndex(0);
}

void EmptyState::showWords(const QString &title, const QString &text)
{
    m_title->setText(title);
    m_text->setText(text);
    setCurrentIndex(1);
}

} // namespace browser
