// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_VALUEEDITING_H
#define BROWSER_VALUEEDITING_H

#include "EntryModel.h"

#include <QtCore/QObject>
#include <QtGui/QKeySequence>

class QAction;
class QMenu;
class QUndoStack;

namespace browser {

class ValuesPane;

/** The actions that edit the values which are shown. */
class ValueEditing : public QObject
{
    Q_OBJECT

public:
    /** Both must outlive this object. */
    ValueEditing(ValuesPane &pane, QUndoStack &undo, QObject *parent = nullptr);

    /** Puts the actions into a menu, and into that of the table. */
    void addTo(QMenu *menu);

private:
    QAction *makeAction(const QString &text, void (ValueEditing::*action)(),
                        const QKeySequence &shortcut = QKeySequence());
    void update();
    /** Does an edit and says why, if it is not possible. */
    bool apply(const Edit &edit, const QString &name);
    QString ask(const QString &title, const QString &label, const QString &before = QString());

    void edit();
    void addValue();
    void remove();
    void renameKey();
    void moveUp();
    void moveDown();
    void move(int steps);
    void addSection();
    void renameSection();
    void removeSection();

    ValuesPane &m_pane;
    QUndoStack &m_undo;
    std::vector<EntryModel::Row> m_selected;
    QList<QAction *> m_actions;
    QAction *m_edit;
    QAction *m_addValue;
    QAction *m_remove;
    QAction *m_renameKey;
    QAction *m_moveUp;
    QAction *m_moveDown;
    QAction *m_addSection;
    QAction *m_renameSection;
    QAction *m_removeSection;
};

} // namespace browser

#endif // BROWSER_VALUEEDITING_H
