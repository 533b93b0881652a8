// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "MessageBar.h"

#include "Colors.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>

namespace browser {

MessageBar::MessageBar(QWidget *parent)
    : QFrame(parent)
    , m_label(new QLabel)
    , m_action(new QPushButton)
    , m_close(new QToolButton)
{
    m_label->setWordWrap(true);
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_close->setAutoRaise(true);
    m_close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    m_close->setAccessibleName(tr("Close the message"));
    connect(m_close, &QToolButton::clicked, this, &QWidget::hide);
    connect(m_action, &QPushButton::clicked, this, &MessageBar::activated);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 6, 6, 6);
    layout->addWidget(m_label, 1);
    layout->addWidget(m_action);
    layout->addWidget(m_close);
    setAutoFillBackground(true);
    setAccessibleName(tr("Message"));
    hide();
}

void MessageBar::showNote(const QString &text)
{
    showText(text, colors::notice(), false);
}

void MessageBar::showError(const QString &text)
{
    showText(text, colors::bad(), true);
}

void MessageBar::showChoice(const QString &text, const QString &action)
{
    m_action->setText(action);
    showText(text, colors::notice(), true);
    m_action->show();
}

QString MessageBar::text() const
{
    return isHidden() ? QString() : m_label->text();
}

void MessageBar::showText(const QString &text, const QColor &tint, bool canBeClosed)
{
    m_label->setText(text);
    m_action->hide();
    m_close->setVisible(canBeClosed);
    QPalette tinted;
    tinted.setColor(QPalette::Window, tint);
    setPalette(tinted);
    setVisible(!text.isEmpty());
}

} // namespace browser
