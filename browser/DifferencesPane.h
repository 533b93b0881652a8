// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_DIFFERENCESPANE_H
#define BROWSER_DIFFERENCESPANE_H

#include "Document.h"

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <vector>

class QTableView;

namespace browser {

class DifferencesView;
class EmptyState;

/** What differs between two cameras. */
class DifferencesPane : public QWidget
{
    Q_OBJECT

public:
    explicit DifferencesPane(QWidget *parent = nullptr);

    /** Compares two documents; any other number shows what to do. */
    void setDocuments(const std::vector<Document *> &documents);
    QTableView *table();

private:
    void update();

    int m_count = 0; // of what is selected
    QPointer<Document> m_first;
    QPointer<Document> m_second;
    EmptyState *m_pages;
    DifferencesView *m_view;
};

} // namespace browser

#endif // BROWSER_DIFFERENCESPANE_H
