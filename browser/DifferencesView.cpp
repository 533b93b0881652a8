// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "DifferencesView.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

#include <memory>

namespace browser {

namespace {

constexpr int kWholeLines = 4;

} // namespace

DifferencesView::DifferencesView(const QString &name, QWidget *parent)
    : QWidget(parent)
    , m_table(new QTableView)
    , m_first(new QPlainTextEdit)
    , m_second(new QPlainTextEdit)
{
    m_table->setObjectName(name);
    m_table->setAccessibleName(tr("Differences"));
    m_sorted.setSourceModel(&m_model);
    m_table->setModel(&m_sorted);
    setUpTable(m_table);
    setUpSorting(m_table);
    setColumnWidths(m_table, {11, 23});
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    // Both values are in view, whatever the width.
    QHeaderView *header = m_table->horizontalHeader();
    header->setSectionResizeMode(DifferenceModel::First, QHeaderView::Stretch);
    header->setSectionResizeMode(DifferenceModel::Second, QHeaderView::Stretch);

    auto *whole = new QHBoxLayout;
    for (QPlainTextEdit *text : {m_first, m_second}) {
        text->setReadOnly(true);
        text->setTabChangesFocus(true);
        text->setFixedHeight(kWholeLines * text->fontMetrics().lineSpacing() + 12);
        whole->addWidget(text);
    }
    m_first->setObjectName(name + QStringLiteral("First"));
    m_first->setAccessibleName(tr("Whole value of the first camera"));
    m_second->setObjectName(name + QStringLiteral("Second"));
    m_second->setAccessibleName(tr("Whole value of the second camera"));

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addLayout(makeTop(name));
    layout->addWidget(m_table, 1);
    layout->addLayout(whole);

    connect(&m_model, &QAbstractItemModel::modelReset, this, &DifferencesView::update);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &DifferencesView::showWhole);
    update();
}

QLayout *DifferencesView::makeTop(const QString &name)
{
    m_summary = new QLabel;
    m_summary->setObjectName(name + QStringLiteral("Summary"));
    m_showsAll = new QCheckBox(tr("A&ll keys"));
    m_showsAll->setObjectName(name + QStringLiteral("All"));
    connect(m_showsAll, &QCheckBox::toggled, &m_model, &DifferenceModel::setShowsAll);
    auto *previous = new QPushButton(tr("&Previous"));
    previous->setShortcut(QKeySequence(tr("Shift+F8")));
    previous->setToolTip(tr("Previous difference (Shift+F8)"));
    connect(previous, &QPushButton::clicked, this, [this] { step(-1); });
    auto *next = new QPushButton(tr("&Next"));
    next->setShortcut(QKeySequence(tr("F8")));
    next->setToolTip(tr("Next difference (F8)"));
    connect(next, &QPushButton::clicked, this, [this] { step(1); });
    auto *counts = new RowCounts(m_table);
    counts->setObjectName(name + QStringLiteral("Count"));

    auto top = std::make_unique<QHBoxLayout>();
    top->addWidget(m_summary, 1);
    top->addWidget(counts);
    top->addSpacing(8);
    top->addWidget(m_showsAll);
    top->addWidget(previous);
    top->addWidget(next);
    return top.release(); // for the layout that it is added to
}

void DifferencesView::step(int direction)
{
    const int rows = m_sorted.rowCount();
    const QModelIndex current = m_table->currentIndex();
    const int first = direction > 0 ? 0 : rows - 1;
    for (int row = current.isValid() ? current.row() + direction : first; row >= 0 && row < rows;
         row += direction) {
        const QModelIndex index = m_sorted.index(row, 0);
        if (!m_model.isDifferent(m_sorted.mapToSource(index).row()))
            continue;
        m_table->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                              QItemSelectionModel::Rows);
        m_table->scrollTo(index);
        return;
    }
}

void DifferencesView::update()
{
    m_summary->setText(tr("Keys that differ: %L1").arg(m_model.differenceCount()));
    m_first->setPlaceholderText(m_model.title(DifferenceModel::First));
    m_second->setPlaceholderText(m_model.title(DifferenceModel::Second));
    showWhole();
}

void DifferencesView::showWhole()
{
    const int row = m_sorted.mapToSource(m_table->currentIndex()).row();
    const auto whole = [&](DifferenceModel::Column column) {
        return row < 0 ? QString() : m_model.wholeValue(row, column);
    };
    m_first->setPlainText(whole(DifferenceModel::First));
    m_second->setPlainText(whole(DifferenceModel::Second));
}

} // namespace browser
