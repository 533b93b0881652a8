// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "BulkEditDialog.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

namespace browser {

BulkEditDialog::BulkEditDialog(std::vector<Document *> documents, QWidget *parent)
    : QDialog(parent)
    , m_model(std::move(documents))
    , m_kind(new QComboBox)
    , m_section(new QLineEdit)
    , m_key(new QLineEdit)
    , m_value(new QLineEdit)
    , m_counts(new QLabel)
{
    setWindowTitle(tr("Change the Selected Cameras"));
    m_kind->setObjectName(QStringLiteral("bulkKind"));
    m_kind->addItem(tr("Set a value"), int(BulkEditModel::Kind::SetValue));
    m_kind->addItem(tr("Add a value"), int(BulkEditModel::Kind::AddValue));
    m_kind->addItem(tr("Remove a key"), int(BulkEditModel::Kind::RemoveKey));
    m_section->setObjectName(QStringLiteral("bulkSection"));
    m_key->setObjectName(QStringLiteral("bulkKey"));
    m_value->setObjectName(QStringLiteral("bulkValue"));
    m_counts->setObjectName(QStringLiteral("bulkCounts"));
    m_counts->setWordWrap(true);
    m_sorted.setSourceModel(&m_model);
    auto *table = new QTableView;
    table->setObjectName(QStringLiteral("bulkChanges"));
    table->setAccessibleName(tr("What would change"));
    table->setModel(&m_sorted);
    setUpTable(table);
    setUpSorting(table);
    setColumnWidths(table, {26, 22, 22});
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_apply = buttons->addButton(tr("C&hange"), QDialogButtonBox::AcceptRole);

    auto *form = new QFormLayout;
    form->addRow(tr("&What to do:"), m_kind);
    form->addRow(tr("&Section:"), m_section);
    form->addRow(tr("&Key:"), m_key);
    form->addRow(tr("&Value:"), m_value);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_counts);
    layout->addWidget(table, 1);
    layout->addWidget(buttons);
    resize(760, 560);

    for (QLineEdit *line : {m_section, m_key, m_value})
        connect(line, &QLineEdit::textChanged, this, &BulkEditDialog::preview);
    connect(m_kind, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &BulkEditDialog::preview);
    connect(&m_model, &BulkEditModel::ready, this, &BulkEditDialog::showCounts);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_section->setFocus();
    preview();
}

BulkEditModel::Change BulkEditDialog::change() const
{
    return {BulkEditModel::Kind(m_kind->currentData().toInt()), m_section->text(), m_key->text(),
            m_value->text()};
}

void BulkEditDialog::preview()
{
    const BulkEditModel::Change wanted = change();
    m_value->setEnabled(wanted.kind != BulkEditModel::Kind::RemoveKey);
    m_apply->setEnabled(false);
    m_counts->setText(wanted.section.isEmpty() || wanted.key.isEmpty()
                          ? tr("Enter a section and a key to see what would change.")
                          : tr("Looking…"));
    m_model.setChange(wanted);
}

void BulkEditDialog::showCounts()
{
    if (m_model.rowCount() == 0)
        return;
    m_counts->setText(tr("Cameras that change: %L1. Cameras where it is not possible: %L2. Nothing "
                         "is written before you save.")
                          .arg(m_model.changeCount())
                          .arg(m_model.refusalCount()));
    m_apply->setEnabled(m_model.changeCount() > 0);
}

} // namespace browser
