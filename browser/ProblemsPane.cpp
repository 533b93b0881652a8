// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ProblemsPane.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

namespace browser {

ProblemsPane::ProblemsPane(QWidget *parent)
    : QWidget(parent)
    , m_title(new QLabel)
{
    QFont font = m_title->font();
    font.setBold(true);
    m_title->setFont(font);
    m_title->setObjectName(QStringLiteral("problemsTitle"));
    auto *clearButton = new QToolButton;
    clearButton->setText(tr("Clear"));
    clearButton->setAutoRaise(true);
    connect(clearButton, &QToolButton::clicked, this, &ProblemsPane::clear);

    auto *table = new QTableView;
    table->setObjectName(QStringLiteral("problems"));
    table->setAccessibleName(tr("Problems"));
    m_sorted.setSourceModel(&m_model);
    table->setModel(&m_sorted);
    setUpTable(table);
    setUpSorting(table);
    setColumnWidths(table, {26, 26});
    table->setMinimumHeight(60);

    auto *header = new QHBoxLayout;
    header->addWidget(m_title, 1);
    header->addWidget(clearButton);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 4, 10, 6);
    layout->addLayout(header);
    layout->addWidget(table, 1);
    hide();
}

void ProblemsPane::add(const std::vector<Problem> &problems)
{
    m_model.add(problems);
    m_title->setText(tr("Problems: %1").arg(count()));
    if (!problems.empty())
        show();
}

void ProblemsPane::clear()
{
    m_model.clear();
    hide();
}

} // namespace browser
