// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "AlarmPane.h"

#include "Colors.h"
#include "EmptyState.h"
#include "MessageBar.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSignalBlocker>
#include <QtGui/QFontDatabase>
#include <QtGui/QTextBlock>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace browser {

AlarmPane::AlarmPane(QWidget *parent)
    : QWidget(parent)
    , m_files(new QComboBox)
    , m_error(new MessageBar)
    , m_views(new QStackedWidget)
    , m_tree(new QTreeView)
    , m_text(new QPlainTextEdit)
{
    m_files->setObjectName(QStringLiteral("alarmFiles"));
    m_files->setAccessibleName(tr("Alarm list"));
    m_error->setObjectName(QStringLiteral("alarmError"));
    m_tree->setObjectName(QStringLiteral("alarms"));
    m_tree->setAccessibleName(tr("Alarm list as a tree"));
    m_tree->setModel(&m_model);
    m_tree->setAlternatingRowColors(true);
    m_tree->setUniformRowHeights(true);
    m_text->setObjectName(QStringLiteral("alarmText"));
    m_text->setAccessibleName(tr("Text of the alarm list"));
    m_text->setReadOnly(true);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_views->addWidget(m_tree);
    m_views->addWidget(m_text);

    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addWidget(m_files);
    layout->addWidget(m_error);
    layout->addWidget(m_views, 1);

    m_pages = new EmptyState(content);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_pages);

    connect(m_files, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &AlarmPane::showList);
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
                       tr("Open a file that ends with \".alarms\", or a folder that holds one."));
}

void AlarmPane::showList(int index)
{
    const AlarmList &list = m_lists[std::size_t(index)];
    m_pages->showContent();
    m_views->setCurrentWidget(list.isValid() ? static_cast<QWidget *>(m_tree) : m_text);
    if (!list.isValid())
        return showError(list);
    m_error->hide();
    m_model.setTree(list.tree);
    m_tree->expandToDepth(2);
    m_tree->resizeColumnToContents(AlarmModel::Name);
    m_tree->setColumnWidth(AlarmModel::Name, m_tree->columnWidth(AlarmModel::Name) + 24);
}

/** Shows the text, and in it the token at which reading stopped. */
void AlarmPane::showError(const AlarmList &list)
{
    m_error->showNote(tr("No alarm list: %1, %2.").arg(list.errorPlace(), list.error));
    m_text->setPlainText(QString::fromLatin1(list.bytes)); // a character is a byte
    const int line = list.bytes.left(list.errorStart).count('\n');
    const int lineStart =
        list.errorStart == 0 ? 0 : list.bytes.lastIndexOf('\n', list.errorStart - 1) + 1;
    const QTextBlock block = m_text->document()->findBlockByNumber(line);
    // Line ends of two bytes are one position of the document, so the place is taken in its line.
    const int column = std::min(list.errorStart - lineStart, std::max(0, block.length() - 1));
    const int size = std::max(1, list.errorEnd - list.errorStart);

    QTextEdit::ExtraSelection mark;
    mark.cursor = QTextCursor(block);
    mark.cursor.setPosition(block.position() + column);
    mark.cursor.movePosition(QTextCursor::Right, QTextCursor::KeepAnchor, size);
    mark.format.setBackground(colors::bad());
    mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    mark.format.setUnderlineColor(Qt::red);
    m_text->setExtraSelections({mark});
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + column);
    m_text->setTextCursor(cursor);
    m_text->centerCursor();
}

} // namespace browser
