// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ValueEditing.h"

#include "ValueDialog.h"
#include "ValuesPane.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTableView>
#include <QtWidgets/QUndoStack>

#include <algorithm>

namespace browser {

ValueEditing::ValueEditing(ValuesPane &pane, QUndoStack &undo, QObject *parent)
    : QObject(parent)
    , m_pane(pane)
    , m_undo(undo)
{
    m_edit = makeAction(tr("&Edit the Value"), &ValueEditing::edit, Qt::Key_F2);
    m_addValue = makeAction(tr("&Add a Value…"), &ValueEditing::addValue, Qt::Key_Insert);
    m_remove = makeAction(tr("Remove the &Values"), &ValueEditing::remove, QKeySequence::Delete);
    m_renameKey =
        makeAction(tr("Rename the &Key…"), &ValueEditing::renameKey, QKeySequence(tr("Shift+F2")));
    m_moveUp = makeAction(tr("Move Value &Up"), &ValueEditing::moveUp, QKeySequence(tr("Alt+Up")));
    m_moveDown =
        makeAction(tr("Move Value &Down"), &ValueEditing::moveDown, QKeySequence(tr("Alt+Down")));
    m_moveUp->setToolTip(tr("Exchanges the value with the one before it of the same key"));
    m_moveDown->setToolTip(tr("Exchanges the value with the next one of the same key"));
    m_addSection = makeAction(tr("Add a &Section…"), &ValueEditing::addSection);
    m_renameSection = makeAction(tr("Rename the S&ection…"), &ValueEditing::renameSection);
    m_removeSection = makeAction(tr("Remove the Se&ction"), &ValueEditing::removeSection);
    connect(&pane, &ValuesPane::selectionChanged, this, &ValueEditing::update);
    connect(&undo, &QUndoStack::indexChanged, this, &ValueEditing::update);
    update();
}

QAction *ValueEditing::makeAction(const QString &text, void (ValueEditing::*action)(),
                                  const QKeySequence &shortcut)
{
    auto *made = new QAction(text, this);
    made->setShortcut(shortcut);
    made->setShortcutContext(Qt::WidgetWithChildrenShortcut); // keys of texts stay theirs
    connect(made, &QAction::triggered, this, action);
    m_actions += made;
    return made;
}

void ValueEditing::addTo(QMenu *menu)
{
    menu->addActions(m_actions);
    menu->insertSeparator(m_addSection);
    m_pane.table()->addActions(m_actions);
    m_pane.table()->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void ValueEditing::update()
{
    m_selected = m_pane.selectedValues();
    const Document *document = m_pane.document();
    const bool isEditable = document && document->readOnlyReason().isNull();
    const auto canEdit = [&](const EntryModel::Row &row) {
        return isEditable && document->isEditable(row.section);
    };
    const bool isOne = m_selected.size() == 1 && canEdit(m_selected.front());
    const bool isValue = isOne && !m_selected.front().key.isNull();
    const bool isSection =
        !m_selected.empty() && canEdit(m_selected.front()) &&
        std::all_of(m_selected.begin(), m_selected.end(), [&](const EntryModel::Row &row) {
            return row.section == m_selected.front().section;
        });
    m_edit->setEnabled(isEditable);
    m_addValue->setEnabled(isEditable);
    m_addSection->setEnabled(isEditable);
    m_remove->setEnabled(!m_selected.empty() &&
                         std::all_of(m_selected.begin(), m_selected.end(), canEdit) &&
                         std::none_of(m_selected.begin(), m_selected.end(),
                                      [](const EntryModel::Row &row) { return row.key.isNull(); }));
    m_renameKey->setEnabled(isValue);
    const auto hasNeighbour = [&](int steps) {
        EntryModel::Row other = isValue ? m_selected.front() : EntryModel::Row();
        other.index += steps;
        return isValue && m_pane.entries().find(other) >= 0;
    };
    m_moveUp->setEnabled(hasNeighbour(1)); // the newest value stands last
    m_moveDown->setEnabled(hasNeighbour(-1));
    m_renameSection->setEnabled(isSection);
    m_removeSection->setEnabled(isSection);
}

bool ValueEditing::apply(const Edit &edit, const QString &name)
{
    const QString reason = m_pane.document()->edit(edit, name);
    if (!reason.isNull())
        m_pane.showError(reason);
    return reason.isNull();
}

QString ValueEditing::ask(const QString &title, const QString &label, const QString &before)
{
    bool isGiven = false;
    const QString text =
        QInputDialog::getText(&m_pane, title, label, QLineEdit::Normal, before, &isGiven);
    return isGiven ? text : QString();
}

/** Whatever cell is the current one: the row is what is seen. */
void ValueEditing::edit()
{
    QTableView *table = m_pane.table();
    const QModelIndex current = table->currentIndex();
    const QModelIndex value = current.sibling(current.row(), EntryModel::Value);
    if (!(value.flags() & Qt::ItemIsEditable))
        return;
    // Who comes here by Tab has a current row that is not selected.
    table->selectionModel()->setCurrentIndex(value, QItemSelectionModel::ClearAndSelect |
                                                        QItemSelectionModel::Rows);
    table->edit(value);
}

void ValueEditing::addValue()
{
    EntryModel::Row near;
    if (!m_selected.empty() && m_pane.document()->isEditable(m_selected.front().section))
        near = m_selected.front();
    ValueDialog dialog(m_pane.entries().sections(), near.section, QString(), &m_pane);
    if (dialog.exec() != QDialog::Accepted)
        return;
    EntryModel::Row added;
    added.section = dialog.section();
    added.key = dialog.key();
    if (apply(edits::addValue(added.section, added.key, dialog.value()),
              tr("New value of %1").arg(added.key)))
        m_pane.select(added);
}

void ValueEditing::remove()
{
    const std::vector<EntryModel::Row> removed = m_selected; // each edit changes the selection
    const QString name = removed.size() == 1 ? tr("Removal of %1").arg(removed.front().key)
                                             : tr("Removal of values: %1").arg(removed.size());
    // Older values first: the index of a value counts the newer ones.
    m_undo.beginMacro(name);
    for (const EntryModel::Row &row : removed)
        if (!apply(edits::removeValue(row.section, row.key, row.index), name))
            break;
    m_undo.endMacro();
}

void ValueEditing::renameKey()
{
    EntryModel::Row renamed = m_selected.front();
    const QString name =
        ask(tr("Rename the Key"), tr("New name of %1:").arg(renamed.key), renamed.key);
    if (name.isNull() || !apply(edits::renameKey(renamed.section, renamed.key, name),
                                tr("Rename of %1").arg(renamed.key)))
        return;
    renamed.key = name;
    m_pane.select(renamed);
}

void ValueEditing::moveUp()
{
    move(1);
}

void ValueEditing::moveDown()
{
    move(-1);
}

void ValueEditing::move(int steps)
{
    EntryModel::Row moved = m_selected.front();
    const int from = moved.index;
    moved.index += steps;
    if (apply(edits::swapValues(moved.section, moved.key, from, moved.index),
              tr("Move of a value of %1").arg(moved.key)))
        m_pane.select(moved);
}

void ValueEditing::addSection()
{
    EntryModel::Row added;
    added.section = ask(tr("Add a Section"), tr("Name of the section:"));
    if (!added.section.isNull() &&
        apply(edits::addSection(added.section), tr("New section %1").arg(added.section)))
        m_pane.select(added);
}

void ValueEditing::renameSection()
{
    EntryModel::Row renamed = m_selected.front();
    const QString name =
        ask(tr("Rename the Section"), tr("New name of %1:").arg(renamed.section), renamed.section);
    if (name.isNull() || !apply(edits::renameSection(renamed.section, name),
                                tr("Rename of %1").arg(renamed.section)))
        return;
    renamed.section = name;
    m_pane.select(renamed);
}

void ValueEditing::removeSection()
{
    const QString section = m_selected.front().section;
    apply(edits::removeSection(section), tr("Removal of %1").arg(section));
}

} // namespace browser
