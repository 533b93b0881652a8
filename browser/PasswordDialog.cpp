// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "PasswordDialog.h"

#include "MessageBar.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace browser {

PasswordDialog::PasswordDialog(const QString &archive, bool wasWrong, QWidget *parent)
    : QDialog(parent)
    , m_password(new QLineEdit)
{
    setWindowTitle(tr("Password"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *question = new QLabel(tr("The archive <b>%1</b> is encrypted.")
                                    .arg(QFileInfo(archive).fileName().toHtmlEscaped()));
    question->setToolTip(archive);
    auto *message = new MessageBar;
    message->setObjectName(QStringLiteral("passwordMessage"));
    if (wasWrong)
        message->showNote(tr("That was not its password, or the archive is damaged."));

    m_password->setObjectName(QStringLiteral("password"));
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setMinimumWidth(280);
    auto *label = new QLabel(tr("&Password:"));
    label->setBuddy(m_password);
    auto *show = new QCheckBox(tr("&Show the password"));
    connect(show, &QCheckBox::toggled, this, [this](bool isShown) {
        m_password->setEchoMode(isShown ? QLineEdit::Normal : QLineEdit::Password);
    });

    auto *buttons = new QDialogButtonBox;
    QPushButton *open = buttons->addButton(tr("&Open"), QDialogButtonBox::AcceptRole);
    buttons->addButton(tr("S&kip the Archive"), QDialogButtonBox::RejectRole);
    open->setEnabled(false);
    connect(m_password, &QLineEdit::textChanged, open,
            [open](const QString &text) { open->setEnabled(!text.isEmpty()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(question);
    layout->addWidget(message);
    layout->addWidget(label);
    layout->addWidget(m_password);
    layout->addWidget(show);
    layout->addWidget(buttons);
}

QByteArray PasswordDialog::password() const
{
    return m_password->text().toUtf8();
}

} // namespace browser
