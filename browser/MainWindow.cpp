// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "MainWindow.h"

#include "AlarmPane.h"
#include "CamerasPane.h"
#include "DifferencesPane.h"
#include "PasswordDialog.h"
#include "ProblemsPane.h"
#include "SafeSave.h"
#include "UpdatePane.h"
#include "ValuesPane.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QCloseEvent>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QAction>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolButton>

#include <algorithm>

namespace browser {

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
{
    setWindowTitle(tr("Camera Configurations") + QStringLiteral("[*]"));
    setAcceptDrops(true);
    resize(1200, 780);
    makePanes();
    makeActions();
    connectLoading();
    connect(m_camerasPane, &CamerasPane::selectionChanged, this, &MainWindow::showSelection);
    connect(&m_cameras, &CameraModel::documentChanged, this, &MainWindow::updateActions);
    updateActions();
}

MainWindow::~MainWindow() = default;

void MainWindow::makePanes()
{
    m_camerasPane = new CamerasPane(m_cameras);
    m_valuesPane = new ValuesPane;
    m_differencesPane = new DifferencesPane;
    m_updatePane = new UpdatePane(m_cameras);
    m_alarmPane = new AlarmPane;
    m_problemsPane = new ProblemsPane;

    m_tabs = new QTabWidget;
    m_tabs->setObjectName(QStringLiteral("tabs"));
    m_tabs->setDocumentMode(true);
    m_tabs->addTab(m_valuesPane, tr("Values"));
    m_tabs->addTab(m_differencesPane, tr("Differences"));
    m_tabs->addTab(m_updatePane, tr("Update"));
    m_tabs->addTab(m_alarmPane, tr("Alarm list"));

    auto *across = new QSplitter(Qt::Horizontal);
    across->setChildrenCollapsible(false);
    across->addWidget(m_camerasPane);
    across->addWidget(m_tabs);
    across->setSizes({610, 590});
    auto *down = new QSplitter(Qt::Vertical);
    down->setChildrenCollapsible(false);
    down->addWidget(across);
    down->addWidget(m_problemsPane);
    down->setStretchFactor(0, 1);
    down->setSizes({620, 120});
    setCentralWidget(down);
}

void MainWindow::connectLoading()
{
    connect(&m_queue, &LoadQueue::started, this, [this] {
        m_progress->setRange(0, 0);
        m_progress->show();
        m_stop->show();
        m_summary->setText(tr("Loading…"));
        updateActions();
    });
    connect(&m_queue, &LoadQueue::loaded, this, &MainWindow::take);
    connect(&m_queue, &LoadQueue::passwordWanted, this, &MainWindow::askForPassword);
    connect(&m_queue, &LoadQueue::finished, this, &MainWindow::endLoading);
}

// ---- Opening
// -------------------------------------------------------------------------------------

void MainWindow::open(const QStringList &paths)
{
    if (!paths.isEmpty())
        m_queue.open(paths);
}

void MainWindow::chooseFiles()
{
    open(QFileDialog::getOpenFileNames(
        this, tr("Open Configurations, Archives and Alarm Lists"), QString(),
        tr("Configurations, archives, alarm lists (*.cfg *.zip *.alarms);;All files (*)")));
}

void MainWindow::chooseFolder()
{
    const QString path =
        QFileDialog::getExistingDirectory(this, tr("Open All Configurations of a Folder"));
    if (!path.isEmpty())
        open({path});
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    QStringList paths;
    const QList<QUrl> urls = event->mimeData()->urls();
    for (const QUrl &url : urls)
        if (url.isLocalFile())
            paths += url.toLocalFile();
    open(paths);
    event->acceptProposedAction();
}

void MainWindow::take(const LoadBatch &batch)
{
    m_cameras.add(batch.configurations);
    m_problemsPane->add(batch.problems);
    m_alarmPane->add(batch.alarmLists);
    if (batch.total > 0) {
        m_progress->setRange(0, batch.total);
        m_progress->setValue(batch.done);
    }
    if (!batch.alarmLists.empty() && m_cameras.rowCount() == 0)
        m_tabs->setCurrentWidget(m_alarmPane);
    m_camerasPane->selectAny();
}

void MainWindow::askForPassword(const QString &archive, bool wasWrong)
{
    auto *dialog = new PasswordDialog(archive, wasWrong, this); // deletes itself
    connect(dialog, &QDialog::accepted, &m_queue,
            [this, dialog] { m_queue.unlock(dialog->password()); });
    connect(dialog, &QDialog::rejected, &m_queue, &LoadQueue::skip);
    dialog->open();
}

void MainWindow::endLoading(bool wasCancelled)
{
    m_progress->hide();
    m_stop->hide();
    const int count = m_cameras.rowCount();
    m_summary->setText(wasCancelled ? tr("Stopped. Configurations so far: %1").arg(count)
                                    : tr("Configurations: %1").arg(count));
    updateActions();
}

// ---- Saving
// --------------------------------------------------------------------------------------

void MainWindow::save()
{
    if (Document *document = currentDocument())
        (void)saveDocument(document);
}

bool MainWindow::saveDocument(Document *document)
{
    const QString reason = document->save();
    if (reason.isNull()) {
        m_summary->setText(tr("Saved %1").arg(document->configuration().sourceName()));
        return true;
    }
    m_camerasPane->select(document);
    m_tabs->setCurrentWidget(m_valuesPane);
    m_valuesPane->showError(tr("Not saved. %1").arg(reason));
    return false;
}

void MainWindow::saveCopy()
{
    const Document *document = currentDocument();
    if (!document)
        return;
    const QString name =
        QFileInfo(document->configuration().isArchiveEntry() ? document->configuration().entry
                                                             : document->configuration().path)
            .fileName();
    const QString path = QFileDialog::getSaveFileName(this, tr("Save a Copy"), name,
                                                      tr("Configurations (*.cfg);;All files (*)"));
    if (path.isEmpty())
        return;
    const QString reason = writeText(path, document->text());
    if (reason.isNull())
        m_summary->setText(tr("Saved a copy as %1").arg(QFileInfo(path).fileName()));
    else
        m_valuesPane->showError(tr("No copy was saved. %1").arg(reason));
}

void MainWindow::reload()
{
    Document *document = currentDocument();
    if (!document)
        return;
    if (document->isModified() &&
        QMessageBox::question(this, tr("Reload"),
                              tr("Drop what was edited in %1?").arg(document->title())) !=
            QMessageBox::Yes)
        return;
    const QString reason = document->reload();
    if (reason.isNull())
        m_summary->setText(tr("Reloaded %1").arg(document->configuration().sourceName()));
    else
        m_valuesPane->showError(tr("Not reloaded. %1").arg(reason));
}

bool MainWindow::settleEdits()
{
    const std::vector<Document *> edited = m_cameras.modifiedDocuments();
    if (edited.empty())
        return true;
    QStringList titles;
    for (const Document *document : edited)
        titles += document->configuration().sourceName();
    QMessageBox question(QMessageBox::Question, tr("Edited Configurations"),
                         tr("Save what was edited?"),
                         QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    question.setDefaultButton(QMessageBox::Save);
    question.setInformativeText(titles.join(QLatin1Char('\n')));
    switch (question.exec()) {
    case QMessageBox::Save:
        return std::all_of(edited.begin(), edited.end(),
                           [this](Document *document) { return saveDocument(document); });
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}

void MainWindow::closeAll()
{
    if (!settleEdits())
        return;
    m_valuesPane->setDocument(nullptr);
    m_differencesPane->setDocuments(nullptr, nullptr);
    m_updatePane->setCurrentRow(-1);
    m_cameras.clear();
    m_alarmPane->clear();
    m_problemsPane->clear();
    m_summary->clear();
    updateActions();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->setAccepted(settleEdits());
}

// ---- The selected camera
// -------------------------------------------------------------------------

Document *MainWindow::currentDocument() const
{
    return m_cameras.document(m_camerasPane->currentRow());
}

void MainWindow::showSelection()
{
    const QList<int> rows = m_camerasPane->selectedRows();
    m_valuesPane->setDocument(currentDocument());
    m_updatePane->setCurrentRow(m_camerasPane->currentRow());
    const bool isPair = rows.size() == 2;
    m_differencesPane->setDocuments(isPair ? m_cameras.document(rows.first()) : nullptr,
                                    isPair ? m_cameras.document(rows.last()) : nullptr);
    updateActions();
}

void MainWindow::updateActions()
{
    const Document *document = currentDocument();
    m_save->setEnabled(document != nullptr && document->isModified());
    m_saveCopy->setEnabled(document != nullptr);
    m_reload->setEnabled(document != nullptr && !document->configuration().isArchiveEntry());
    m_closeAll->setEnabled(!m_queue.isBusy());
    setWindowModified(!m_cameras.modifiedDocuments().empty());
}

} // namespace browser
