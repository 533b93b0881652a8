// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_VALUEDIALOG_H
#define BROWSER_VALUEDIALOG_H

#include <QtWidgets/QDialog>

class QComboBox;
class QLineEdit;

namespace browser {

/** Asks for a new value: its section, key and text. */
class ValueDialog : public QDialog
{
    Q_OBJECT

public:
    ValueDialog(const QStringList &sections, const QString &section, const QString &key,
                QWidget *parent = nullptr);

    QString section() const;
    QString key() const;
    QString value() const;

private:
    QComboBox *m_section;
    QLineEdit *m_key;
    QLineEdit *m_value;
};

} // namespace browser

#endif // BROWSER_VALUEDIALOG_H
