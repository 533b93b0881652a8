// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "StartPage.h"

#include "Colors.h"
#include "SecondaryLabel.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QPainter>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace browser {

namespace {

constexpr int kFrameMargin = 18;
constexpr int kRecentWidth = 460;

} // namespace

StartPage::StartPage(QAction *openFiles, QAction *openFolder, QWidget *parent)
    : QFrame(parent)
    , m_recentTitle(new QLabel(tr("Opened before")))
    , m_recent(new QVBoxLayout)
{
    auto *title = new QLabel(tr("Look into the configurations of cameras"));
    title->setObjectName(QStringLiteral("startTitle"));
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.8);
    font.setBold(true);
    title->setFont(font);
    auto *words = new SecondaryLabel;
    words->setObjectName(QStringLiteral("startWords"));
    words->setText(tr("Open configurations, archives, camera images and alarm lists, or a folder "
                      "with all that is in it."));
    auto *drop = new SecondaryLabel;
    drop->setText(tr("Or drop files and folders here."));
    for (QLabel *label : {title, static_cast<QLabel *>(words), static_cast<QLabel *>(drop)}) {
        label->setAlignment(Qt::AlignCenter);
        label->setWordWrap(true);
    }
    font = m_recentTitle->font();
    font.setBold(true);
    m_recentTitle->setFont(font);
    m_recentTitle->setAlignment(Qt::AlignCenter);
    m_recent->setSpacing(2);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(makeButton(openFiles));
    buttons->addSpacing(8);
    buttons->addWidget(makeButton(openFolder));
    buttons->addStretch();

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(48, 48, 48, 48);
    layout->addStretch(3);
    layout->addWidget(title);
    layout->addSpacing(6);
    layout->addWidget(words);
    layout->addSpacing(18);
    layout->addLayout(buttons);
    layout->addSpacing(10);
    layout->addWidget(drop);
    layout->addSpacing(24);
    layout->addWidget(m_recentTitle);
    layout->addLayout(m_recent);
    layout->addStretch(4);
    setRecent({});
}

QWidget *StartPage::makeButton(QAction *action)
{
    auto *button = new QPushButton(action->icon(), action->text());
    button->setToolTip(action->shortcut().toString(QKeySequence::NativeText));
    button->setMinimumHeight(button->sizeHint().height() + 8);
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    return button;
}

void StartPage::setRecent(const QStringList &paths)
{
    while (QLayoutItem *item = m_recent->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (const QString &path : paths) {
        auto *button = new QPushButton;
        button->setObjectName(QStringLiteral("recent"));
        button->setFlat(true);
        button->setMaximumWidth(kRecentWidth);
        const QString shown = QDir::toNativeSeparators(path);
        button->setText(button->fontMetrics()
                            .elidedText(shown, Qt::ElideMiddle, kRecentWidth - 24)
                            .replace(QLatin1Char('&'), QStringLiteral("&&")));
        button->setToolTip(shown);
        button->setAccessibleName(tr("Open %1").arg(shown));
        connect(button, &QPushButton::clicked, this, [this, path] { Q_EMIT chosen(path); });
        m_recent->addWidget(button, 0, Qt::AlignHCenter);
    }
    m_recentTitle->setVisible(!paths.isEmpty());
}

/** The dashed frame says that things may be dropped. */
void StartPage::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(colors::secondary(palette()), 1.5, Qt::DashLine);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.setOpacity(0.5);
    painter.drawRoundedRect(
        rect().adjusted(kFrameMargin, kFrameMargin, -kFrameMargin, -kFrameMargin), 10, 10);
}

} // namespace browser
