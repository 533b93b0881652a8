// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_TEXTPANE_H
#define BROWSER_TEXTPANE_H

#include "Document.h"

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

namespace browser {

class EmptyState;
class FindingsView;
class MessageBar;

/** The text of one camera, with what the library finds in it. */
class TextPane : public QWidget
{
    Q_OBJECT

public:
    explicit TextPane(QWidget *parent = nullptr);

    void setDocument(Document *document);

protected:
    void showEvent(QShowEvent *event) override;

private:
    /** Reads the text once it is looked at. */
    void update();

    QPointer<Document> m_document;
    bool m_isStale = false;
    EmptyState *m_pages;
    MessageBar *m_message;
    FindingsView *m_view;
};

} // namespace browser

#endif // BROWSER_TEXTPANE_H
