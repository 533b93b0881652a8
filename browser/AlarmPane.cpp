// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "AlarmPane.h"

#include "EmptyState.h"
#include "FindingsView.h"
#include "MessageBar.h"

#include "base/FileUtils.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace browser {

AlarmPane::AlarmPane(QWidget *parent)
    : QWidget(parent)
    , m_files(new QComboBox)
    , m_error(new MessageBar)
    , m_showsText(new QCheckBox(tr("&Text and findings")))
    , m_tree(new QTreeView)
    , m_text(new FindingsView(QStringLiteral("alarm")))
{
    m_files->setObjectName(QStringLiteral("alarmFiles"));
    m_files->setAccessibleName(tr("Alarm list"));
    m_error->setObjectName(QStringLiteral("alarmError"));
    m_showsText->setObjectName(QStringLiteral("alarmShowsText"));
    m_tree->setObjectName(QStringLiteral("alarms"));
    m_tree->setAccessibleName(tr("Alarm list as a tree"));
    m_sorted.setSourceModel(&m_model);
    m_tree->setModel(&m_sorted);
    setUpSorting(m_tree);
    m_tree->setAlternatingRowColors(true);
    m_tree->setUniformRowHeights(true);

    auto *top = new QHBoxLayout;
    top->addWidget(m_files, 1);
    top->addWidget(m_showsText);
    auto *views = new QSplitter(Qt::Vertical);
    views->setObjectName(QStringLiteral("alarmSplitter2"));
    views->setChildrenCollapsible(false);
    views->addWidget(m_tree);
    views->addWidget(m_text);
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addLayout(top);
    layout->addWidget(m_error);
    layout->addWidget(views, 1);

    m_pages = new EmptyState(content);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_pages);

    connect(m_files, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &AlarmPane::showList);
    connect(m_showsText, &QCheckBox::toggled, m_text, &QWidget::setVisible);
    clear();
}

void AlarmPane::add(const std::vector<AlarmList> &lists)
{
    for (const AlarmList &list : lists) {
        auto place = std::find_if(m_lists.begin(), m_lists.end(),
                                  [&](const AlarmList &each) { return each.path == list.path; });
        const int index = int(place - m_lists.begin());
        const QSignalBlocker blocker(m_files);
        if (place != m_lists.end()) {
            *place = list;
        } else {
            m_lists.push_back(list);
            m_files->addItem(QFileInfo(list.path).fileName());
            m_files->setItemData(index, QDir::toNativeSeparators(list.path), Qt::ToolTipRole);
        }
        m_files->setCurrentIndex(index);
    }
    if (!lists.empty())
        showList(m_files->currentIndex());
}

void AlarmPane::clear()
{
    const QSignalBlocker blocker(m_files);
    m_files->clear();
    m_lists.clear();
    m_pages->showWords(tr("No alarm list"),
                       tr("Open a file that ends with \".alarms\", or a folder "
                          "that holds one."));
}

void AlarmPane::showList(int index)
{
    const AlarmList &list = m_lists[std::size_t(index)];
    m_pages->showContent();
    m_tree->setVisible(list.isValid());
    m_error->showNote(
        list.isValid() ? QString() : tr("No alarm list: %1, %2.").arg(list.errorPlace, list.error));
    m_text->setSource(vn::FileUtils::decodeText(list.bytes), list.findings);
    m_showsText->setChecked(!list.findings.isEmpty());
    m_showsText->setEnabled(list.isValid()); // else there is nothing else to see
    m_text->setVisible(m_showsText->isChecked());
    m_model.setTree(list.tree);
    m_tree->expandToDepth(2);
    m_tree->resizeColumnToContents(AlarmModel::Name);
    m_tree->setColumnWidth(AlarmModel::Name, m_tree->columnWidth(AlarmModel::Name) + 24);
}

} // namespace browser
