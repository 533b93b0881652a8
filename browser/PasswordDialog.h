// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_PASSWORDDIALOG_H
#define BROWSER_PASSWORDDIALOG_H

#include <QtWidgets/QDialog>

class QLineEdit;

namespace browser {

/** Asks for the password of an archive. Delete it on close. */
class PasswordDialog : public QDialog
{
    Q_OBJECT

public:
    /** @p wasWrong says that the last password did not open @p archive. */
    PasswordDialog(const QString &archive, bool wasWrong, QWidget *parent = nullptr);

    QByteArray password() const;

private:
    QLineEdit *m_password;
};

} // namespace browser

#endif // BROWSER_PASSWORDDIALOG_H
