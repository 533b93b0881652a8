// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "FolderDialog.h"

#include "DifferencesView.h"
#include "Settings.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTableView>

#include <algorithm>

namespace browser {

FolderDialog::FolderDialog(QWidget *parent)
    : QDialog(parent)
    , m_compare(new QPushButton(tr("C&ompare")))
    , m_summary(new QLabel)
    , m_table(new QTableView)
    , m_differences(new DifferencesView(QStringLiteral("folderDifferences")))
{
    setWindowTitle(tr("Compare Two Folders"));
    m_summary->setObjectName(QStringLiteral("foldersSummary"));
    m_summary->setWordWrap(true);
    m_table->setObjectName(QStringLiteral("folders"));
    m_table->setAccessibleName(tr("Cameras of both folders"));
    m_sorted.setSourceModel(&m_model);
    m_table->setModel(&m_sorted);
    setUpTable(m_table);
    setUpSorting(m_table);
    setColumnWidths(m_table, {15, 17});

    auto *across = new QSplitter(Qt::Horizontal);
    across->setChildrenCollapsible(false);
    across->addWidget(m_table);
    across->addWidget(m_differences);
    across->setSizes({340, 620});
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto *layout = new QGridLayout(this);
    m_first = makeFolder(layout, 0, tr("&First folder:"), QStringLiteral("firstFolder"));
    m_second = makeFolder(layout, 1, tr("&Second folder:"), QStringLiteral("secondFolder"));
    layout->addWidget(m_summary, 2, 0, 1, 2);
    layout->addWidget(m_compare, 2, 2);
    layout->addWidget(across, 3, 0, 1, 3);
    layout->addWidget(buttons, 4, 0, 1, 3);
    layout->setRowStretch(3, 1);
    resize(980, 640);

    m_compare->setDefault(true);
    m_compare->setEnabled(false);
    connect(m_compare, &QPushButton::clicked, this, &FolderDialog::compare);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &FolderDialog::showCamera);
}

FolderDialog::~FolderDialog() = default;

QLineEdit *FolderDialog::makeFolder(QGridLayout *layout, int row, const QString &label,
                                    const QString &name)
{
    auto *line = new QLineEdit;
    line->setObjectName(name);
    auto *words = new QLabel(label);
    words->setBuddy(line);
    auto *choose = new QPushButton(tr("Choose…"));
    choose->setAutoDefault(false);
    connect(choose, &QPushButton::clicked, this, [this, line] {
        const QString path =
            QFileDialog::getExistingDirectory(this, tr("Choose a Folder"), settings::lastFolder());
        if (!path.isEmpty())
            line->setText(path);
    });
    connect(line, &QLineEdit::textChanged, this, [this] {
        m_compare->setEnabled(!m_first->text().isEmpty() && !m_second->text().isEmpty());
    });
    layout->addWidget(words, row, 0);
    layout->addWidget(line, row, 1);
    layout->addWidget(choose, row, 2);
    return line;
}

void FolderDialog::compare()
{
    m_differences->model().clear();
    m_model.setCameras({});
    m_summary->setText(tr("Reading…"));
    m_comparison = std::make_unique<FolderComparison>(m_first->text(), m_second->text());
    connect(m_comparison.get(), &QThread::finished, this, &FolderDialog::showResult);
    m_comparison->start();
}

void FolderDialog::showResult()
{
    using State = ComparedCamera::State;
    std::vector<ComparedCamera> cameras = m_comparison->takeCameras();
    const auto count = [&](State state) {
        return int(std::count_if(cameras.begin(), cameras.end(),
                                 [&](const auto &camera) { return camera.state == state; }));
    };
    QString text = tr("Different: %L1. Only in the first: %L2. Only in the "
                      "second: %L3. Same: %L4.")
                       .arg(count(State::Different))
                       .arg(count(State::OnlyInFirst))
                       .arg(count(State::OnlyInSecond))
                       .arg(count(State::Same));
    if (m_comparison->leftOut() + m_comparison->unreadable() > 0)
        text += tr(" Left out, as they have no address or another of it came "
                   "later: %L1. Could not "
                   "be read: %L2.")
                    .arg(m_comparison->leftOut())
                    .arg(m_comparison->unreadable());
    m_summary->setText(text);
    m_model.setCameras(std::move(cameras));
    m_table->selectRow(0);
}

void FolderDialog::showCamera()
{
    const int row = m_sorted.mapToSource(m_table->currentIndex()).row();
    if (row < 0)
        return m_differences->model().clear();
    const ComparedCamera &camera = m_model.camera(row);
    const auto map = [](const std::optional<Configuration> &configuration) {
        return configuration ? mapOf(configuration->text(), configuration->form())
                             : vn::VanteroConfigMap();
    };
    m_differences->model().compare(tr("First"), map(camera.first), tr("Second"),
                                   map(camera.second));
}

} // namespace browser
