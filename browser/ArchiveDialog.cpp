// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ArchiveDialog.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace browser {

ArchiveDialog::ArchiveDialog(int cameras, QWidget *parent)
    : QDialog(parent)
    , m_isEncrypted(new QCheckBox(tr("&Encrypt it (AES-256)")))
    , m_password(new QLineEdit)
    , m_again(new QLineEdit)
{
    setWindowTitle(tr("Archive of the Selected Cameras"));
    m_isEncrypted->setObjectName(QStringLiteral("archiveEncrypted"));
    m_password->setObjectName(QStringLiteral("archivePassword"));
    m_again->setObjectName(QStringLiteral("archivePasswordAgain"));
    for (QLineEdit *line : {m_password, m_again}) {
        line->setEchoMode(QLineEdit::Password);
        line->setMinimumWidth(260);
        connect(line, &QLineEdit::textChanged, this, &ArchiveDialog::update);
    }
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_go = buttons->addButton(tr("&Choose a File…"), QDialogButtonBox::AcceptRole);
    connect(m_isEncrypted, &QCheckBox::toggled, this, &ArchiveDialog::update);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QFormLayout(this);
    layout->addRow(new QLabel(tr("Configurations that go into it: %L1").arg(cameras)));
    layout->addRow(m_isEncrypted);
    layout->addRow(tr("&Password:"), m_password);
    layout->addRow(tr("&Again:"), m_again);
    layout->addRow(buttons);
    update();
}

QByteArray ArchiveDialog::password() const
{
    return m_isEncrypted->isChecked() ? m_password->text().toUtf8() : QByteArray();
}

void ArchiveDialog::update()
{
    const bool isEncrypted = m_isEncrypted->isChecked();
    m_password->setEnabled(isEncrypted);
    m_again->setEnabled(isEncrypted);
    m_go->setEnabled(!isEncrypted ||
                     (!m_password->text().isEmpty() && m_password->text() == m_again->text()));
}

} // namespace browser
