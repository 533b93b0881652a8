// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "SourceView.h"

#include "Colors.h"

#include <QtGui/QFontDatabase>
#include <QtGui/QPainter>
#include <QtGui/QTextBlock>

#include <algorithm>

namespace browser {

namespace {

constexpr int kNumbersMargin = 8;

/** The margin that holds the numbers. */
class LineNumbers : public QWidget
{
public:
    explicit LineNumbers(SourceView &view)
        : QWidget(&view)
        , m_view(view)
    {
    }

    QSize sizeHint() const override { return {m_view.numbersWidth(), 0}; }

protected:
    void paintEvent(QPaintEvent *event) override { m_view.paintNumbers(event); }

private:
    SourceView &m_view;
};

QColor tintOf(vn::Finding::Severity severity)
{
    return severity == vn::Finding::Severity::Error ? colors::bad() : colors::notice();
}

} // namespace

SourceView::SourceView(QWidget *parent)
    : QPlainTextEdit(parent)
    , m_numbers(new LineNumbers(*this))
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    connect(this, &QPlainTextEdit::blockCountChanged, this,
            [this] { setViewportMargins(numbersWidth(), 0, 0, 0); });
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect &rect, int scrolled) {
        if (scrolled != 0)
            m_numbers->scroll(0, scrolled);
        else
            m_numbers->update(0, rect.y(), m_numbers->width(), rect.height());
    });
}

void SourceView::setSource(const QString &text, const vn::Findings &findings)
{
    QString shown = text;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n")); // places are by line and column
    shown.replace(QLatin1Char('\r'), QChar(0x240D));
    setPlainText(shown);
    QList<QTextEdit::ExtraSelection> marks;
    for (const vn::Finding &finding : findings) {
        QTextEdit::ExtraSelection mark;
        mark.cursor = cursorAt(finding.range);
        mark.format.setBackground(tintOf(finding.severity));
        mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        mark.format.setUnderlineColor(
            finding.severity == vn::Finding::Severity::Error ? Qt::red : Qt::darkYellow);
        marks += mark;
    }
    setExtraSelections(marks);
}

void SourceView::jumpTo(const vn::TextRange &range)
{
    QTextCursor cursor = cursorAt(range);
    cursor.setPosition(cursor.selectionStart());
    setTextCursor(cursor);
    centerCursor();
}

QTextCursor SourceView::cursorAt(const vn::TextRange &range) const
{
    const auto positionOf = [this](int line, int column) {
        const QTextBlock block =
            document()->findBlockByNumber(std::min(line, document()->blockCount()) - 1);
        return block.position() + std::clamp(column - 1, 0, std::max(0, block.length() - 1));
    };
    QTextCursor cursor(document());
    cursor.setPosition(positionOf(range.line, range.column));
    cursor.setPosition(positionOf(range.endLine, range.endColumn), QTextCursor::KeepAnchor);
    if (!cursor.hasSelection()) // a place between two characters shows at the one behind it
        cursor.movePosition(cursor.atBlockEnd() ? QTextCursor::PreviousCharacter
                                                : QTextCursor::NextCharacter,
                            QTextCursor::KeepAnchor);
    return cursor;
}

int SourceView::numbersWidth() const
{
    const int digits = std::max(2, QString::number(blockCount()).size());
    return digits * fontMetrics().horizontalAdvance(QLatin1Char('9')) + 2 * kNumbersMargin;
}

void SourceView::paintNumbers(QPaintEvent *event)
{
    QPainter painter(m_numbers);
    painter.fillRect(event->rect(), palette().color(QPalette::AlternateBase));
    painter.setFont(font());
    painter.setPen(colors::secondary(palette()));
    QTextBlock block = firstVisibleBlock();
    double top = blockBoundingGeometry(block).translated(contentOffset()).top();
    while (block.isValid() && top <= event->rect().bottom()) {
        const double height = blockBoundingRect(block).height();
        const QRectF place(0, top, m_numbers->width() - kNumbersMargin, height);
        painter.drawText(place, Qt::AlignRight, QString::number(block.blockNumber() + 1));
        top += height;
        block = block.next();
    }
}

void SourceView::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    const QRect area = contentsRect();
    m_numbers->setGeometry(area.left(), area.top(), numbersWidth(), area.height());
}

} // namespace browser
