// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_SOURCEVIEW_H
#define BROWSER_SOURCEVIEW_H

#include "base/Finding.h"

#include <QtWidgets/QPlainTextEdit>

namespace browser {

/** A text that is only read, with the numbers of its lines and marks at the places of findings. */
class SourceView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit SourceView(QWidget *parent = nullptr);

    void setSource(const QString &text, const vn::Findings &findings);
    void jumpTo(const vn::TextRange &range);

    int numbersWidth() const;
    void paintNumbers(QPaintEvent *event);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QTextCursor cursorAt(const vn::TextRange &range) const;

    QWidget *m_numbers;
};

} // namespace browser

#endif // BROWSER_SOURCEVIEW_H
