// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ValueDialog.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace browser {

ValueDialog::ValueDialog(const QStringList &sections, const QString &section, const QString &key,
                         QWidget *parent)
    : QDialog(parent)
    , m_section(new QComboBox)
    , m_key(new QLineEdit(key))
    , m_value(new QLineEdit)
{
    setWindowTitle(tr("Add a Value"));
    m_section->setObjectName(QStringLiteral("newSection"));
    m_section->setEditable(true);
    m_section->addItems(sections);
    m_section->setCurrentText(section);
    m_key->setObjectName(QStringLiteral("newKey"));
    m_value->setObjectName(QStringLiteral("newValue"));
    m_value->setMinimumWidth(280);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    QPushButton *add = buttons->addButton(tr("&Add"), QDialogButtonBox::AcceptRole);
    const auto update = [this, add] {
        add->setEnabled(!m_section->currentText().isEmpty() && !m_key->text().isEmpty());
    };
    connect(m_section, &QComboBox::currentTextChanged, this, update);
    connect(m_key, &QLineEdit::textChanged, this, update);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    update();

    auto *layout = new QFormLayout(this);
    layout->addRow(tr("&Section:"), m_section);
    layout->addRow(tr("&Key:"), m_key);
    layout->addRow(tr("&Value:"), m_value);
    layout->addRow(buttons);
    (key.isEmpty() ? m_key : m_value)->setFocus();
}

QString ValueDialog::section() const
{
    return m_section->currentText();
}

QString ValueDialog::key() const
{
    return m_key->text();
}

QString ValueDialog::value() const
{
    return m_value->text();
}

} // namespace browser
