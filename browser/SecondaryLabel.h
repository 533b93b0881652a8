// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_SECONDARYLABEL_H
#define BROWSER_SECONDARYLABEL_H

#include <QtWidgets/QLabel>

namespace browser {

/** Words that stand back behind others, and can be read in every palette. */
class SecondaryLabel : public QLabel
{
    Q_OBJECT

public:
    explicit SecondaryLabel(QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *event) override;

private:
    void tint();
};

} // namespace browser

#endif // BROWSER_SECONDARYLABEL_H
