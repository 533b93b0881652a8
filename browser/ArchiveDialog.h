// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_ARCHIVEDIALOG_H
#define BROWSER_ARCHIVEDIALOG_H

#include <QtWidgets/QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace browser {

/** Asks whether an archive is to be encrypted, and with which password. */
class ArchiveDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ArchiveDialog(int cameras, QWidget *parent = nullptr);

    /** Empty for an archive without encryption. */
    QByteArray password() const;

private:
    void update();

    QCheckBox *m_isEncrypted;
    QLineEdit *m_password;
    QLineEdit *m_again;
    QPushButton *m_go;
};

} // namespace browser

#endif // BROWSER_ARCHIVEDIALOG_H
