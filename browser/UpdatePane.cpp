// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "UpdatePane.h"

#include "Colors.h"
#include "EmptyState.h"
#include "MessageBar.h"
#include "Settings.h"

#include "base/Exceptions.h"
#include "base/FileUtils.h"

#include "version/VanteroSoftwareVersion.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QAction>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

namespace browser {

namespace {

QColor tintOf(UpdateVerdict::Answer answer)
{
    switch (answer) {
    case UpdateVerdict::Answer::Safe:
        return colors::good();
    case UpdateVerdict::Answer::NotSafe:
        return colors::bad();
    case UpdateVerdict::Answer::Depends:
    case UpdateVerdict::Answer::Unknown:
        break;
    }
    return colors::notice();
}

} // namespace

void ChosenRows::choose(const QList<int> &rows)
{
    const QSet<int> chosen(rows.begin(), rows.end());
    if (chosen == m_rows)
        return;
    m_rows = chosen;
    invalidateFilter();
}

bool ChosenRows::filterAcceptsRow(int row, const QModelIndex &) const
{
    return m_rows.isEmpty() || m_rows.contains(row);
}

UpdatePane::UpdatePane(const CameraModel &cameras, QWidget *parent)
    : QWidget(parent)
    , m_cameras(cameras)
    , m_model(cameras)
    , m_message(new MessageBar)
    , m_table(new QTableView)
{
    m_message->setObjectName(QStringLiteral("updateMessage"));
    m_table->setObjectName(QStringLiteral("updates"));
    m_table->setAccessibleName(tr("Verdicts for all cameras"));
    m_sorted.setSourceModel(&m_model);
    m_table->setModel(&m_sorted);
    setUpTable(m_table);
    setUpSorting(m_table);
    setColumnWidths(m_table, {16, 9, 13, 11, 22, 80});
    m_table->horizontalHeader()->setStretchLastSection(false); // the reasons are whole sentences
    m_table->sortByColumn(UpdateModel::Address, Qt::AscendingOrder);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked);
    auto *enterModel = new QAction(tr("Enter the Model"), m_table);
    enterModel->setShortcut(Qt::Key_F2);
    enterModel->setShortcutContext(Qt::WidgetShortcut);
    m_table->addAction(enterModel);
    connect(enterModel, &QAction::triggered, this, [this] {
        const QModelIndex current = m_table->currentIndex();
        if (current.isValid())
            m_table->edit(current.sibling(current.row(), UpdateModel::Model));
    });

    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addLayout(makeTargetRow());
    layout->addWidget(m_message);
    layout->addWidget(makeCard());
    layout->addLayout(makeModelRow());
    layout->addWidget(m_table, 1);

    m_pages = new EmptyState(content);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_pages);

    connect(&m_model, &QAbstractItemModel::dataChanged, this, &UpdatePane::update);
    connect(&m_model, &QAbstractItemModel::rowsInserted, this, &UpdatePane::update);
    connect(&m_model, &QAbstractItemModel::modelReset, this, &UpdatePane::update);
    update();
}

QLayout *UpdatePane::makeTargetRow()
{
    m_target = new QLineEdit;
    m_target->setObjectName(QStringLiteral("target"));
    m_target->setPlaceholderText(tr("A version, such as VN-3.0.6.29"));
    m_target->setClearButtonEnabled(true);
    auto *label = new QLabel(tr("Update to &version:"));
    label->setBuddy(m_target);
    auto *package = new QPushButton(tr("From &package…"));
    package->setToolTip(tr("Take the version that a firmware package names"));
    connect(m_target, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_message->hide();
        m_model.setTarget(text);
        update();
    });
    connect(package, &QPushButton::clicked, this, &UpdatePane::choosePackages);

    auto row = std::make_unique<QHBoxLayout>();
    row->addWidget(label);
    row->addWidget(m_target, 1);
    row->addWidget(package);
    return row.release(); // for the layout that it is added to
}

QLayout *UpdatePane::makeModelRow()
{
    m_scope = new QLabel;
    m_scope->setObjectName(QStringLiteral("updatesScope"));
    m_scope->setWordWrap(true);
    auto *models = new QPushButton(tr("Models from &CSV…"));
    models->setToolTip(tr("Take models from a table with the columns address and model"));
    connect(models, &QPushButton::clicked, this, &UpdatePane::chooseModels);
    auto *counts = new RowCounts(m_table);
    counts->setObjectName(QStringLiteral("updatesCount"));

    auto row = std::make_unique<QHBoxLayout>();
    row->addWidget(m_scope, 1);
    row->addWidget(counts);
    row->addWidget(models);
    return row.release(); // for the layout that it is added to
}

QWidget *UpdatePane::makeCard()
{
    m_answer = new QLabel;
    m_answer->setObjectName(QStringLiteral("answer"));
    m_answer->setWordWrap(true);
    QFont font = m_answer->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    font.setBold(true);
    m_answer->setFont(font);
    m_reason = new QLabel;
    m_reason->setObjectName(QStringLiteral("reason"));
    m_reason->setWordWrap(true);

    m_wayOut = new QLabel;
    m_wayOut->setObjectName(QStringLiteral("wayOut"));
    m_wayOut->setWordWrap(true);

    m_card = new QFrame;
    m_card->setAutoFillBackground(true);
    m_card->setAccessibleName(tr("Verdict for the selected camera"));
    auto *layout = new QVBoxLayout(m_card);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->addWidget(m_answer);
    layout->addWidget(m_reason);
    layout->addWidget(m_wayOut);
    m_available = new QLabel;
    m_available->setObjectName(QStringLiteral("available"));
    m_available->setWordWrap(true);
    m_available->hide();
    layout->addWidget(m_available);
    return m_card;
}

void UpdatePane::setSelection(int current, const QList<int> &selected)
{
    m_row = current;
    m_sorted.choose(selected.size() > 1 ? selected : QList<int>());
    update();
}

void UpdatePane::readPackage(const QString &path)
{
    const vn::VanteroSoftwareVersion version = vn::VanteroSoftwareVersion::fromFwpFile(path);
    if (version.isNull())
        m_message->showError(
            tr("%1 cannot be read, or names no version.").arg(QFileInfo(path).fileName()));
    else {
        m_model.addAvailable(version);
        m_target->setText(version);
    }
}

void UpdatePane::readModels(const QString &path)
{
    try {
        const int count = m_model.readModels(vn::FileUtils::readBytes(path));
        if (count == 0)
            m_message->showError(
                tr("%1 has no line with an address and a model.").arg(QFileInfo(path).fileName()));
        else
            m_message->showNote(tr("Models that were read: %L1").arg(count));
    } catch (const vn::FileException &e) {
        m_message->showError(e.reason());
    }
}

void UpdatePane::choosePackages()
{
    const QStringList paths = QFileDialog::getOpenFileNames(
        this, tr("Take the Versions of Firmware Packages"), settings::lastFolder(),
        tr("Firmware packages (*.fwp);;All files (*)"));
    for (const QString &path : paths)
        readPackage(path);
}

void UpdatePane::chooseModels()
{
    const QString path =
        QFileDialog::getOpenFileName(this, tr("Take the Models of a Table"), settings::lastFolder(),
                                     tr("CSV tables (*.csv *.txt);;All files (*)"));
    if (!path.isEmpty())
        readModels(path);
}

void UpdatePane::update()
{
    if (m_model.rowCount() == 0) {
        m_pages->showWords(tr("No cameras to judge"),
                           tr("Open configurations, then choose a version to update them to."));
        return;
    }
    m_pages->showContent();
    m_scope->setText(m_sorted.isChoice()
                         ? tr("The same update for the selected cameras. No update is safe without "
                              "a model: double-click one, or press F2, to enter it.")
                         : tr("The same update for all cameras. No update is safe without a model: "
                              "double-click one, or press F2, to enter it."));
    const Document *document = m_cameras.document(m_row);
    m_card->setVisible(document);
    if (!document)
        return;

    const UpdateVerdict verdict = m_model.verdict(m_row);
    const QString firmware = document->summary().firmware;
    if (verdict.rule.isNull()) {
        m_answer->setText(verdict.answerText());
        m_reason->setText(verdict.reason.endsWith(QLatin1Char('?'))
                              ? verdict.reason
                              : verdict.reason + QLatin1Char('.'));
    } else {
        m_answer->setText(tr("%1: %2 → %3").arg(verdict.answerText(), firmware, m_model.target()));
        m_reason->setText(tr("%1, %2. %3 (rule \"%4\").")
                              .arg(document->title(), verdict.step, verdict.reason, verdict.rule));
    }
    m_wayOut->setText(verdict.wayOut);
    m_wayOut->setVisible(!verdict.wayOut.isEmpty());
    QStringList available;
    for (const vn::VanteroSoftwareVersion &version : m_model.available())
        available += QString(version);
    m_available->setText(tr("Versions at hand: %1").arg(available.join(QStringLiteral(", "))));
    m_available->setVisible(!available.isEmpty());
    QPalette tinted;
    tinted.setColor(QPalette::Window, tintOf(verdict.answer));
    m_card->setPalette(tinted);
}

} // namespace browser
