// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "MainWindow.h"

#include "AlarmPane.h"
#include "CamerasPane.h"
#include "DifferencesPane.h"
#include "PasswordDialog.h"
#include "ProblemsPane.h"
#include "Settings.h"
#include "StartPage.h"
#include "TextPane.h"
#include "UpdatePane.h"
#include "ValuesPane.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QCloseEvent>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolButton>

namespace browser {

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
{
    setAcceptDrops(true);
    makePanes();
    makeActions();
    settings::restoreLayout(*this);
    connectLoading();
    connect(m_camerasPane, &CamerasPane::selectionChanged, this, &MainWindow::showSelection);
    connect(m_valuesPane, &ValuesPane::reloadWanted, this, &MainWindow::reload);
    connect(&m_cameras, &CameraModel::documentChanged, this, &MainWindow::updateActions);
    connect(&m_cameras, &CameraModel::documentEdited, this,
            [this](Document *document) { m_edited = document; });
    updateActions();
}

MainWindow::~MainWindow()
{
    // The panes look at the cameras, which go before the widgets do.
    m_cameras.disconnect(this);
    m_cameras.undoStack().disconnect();
    m_camerasPane->disconnect(this);
    m_valuesPane->disconnect();
    delete takeCentralWidget();
}

void MainWindow::makePanes()
{
    m_camerasPane = new CamerasPane(m_cameras);
    m_valuesPane = new ValuesPane;
    m_textPane = new TextPane;
    m_differencesPane = new DifferencesPane;
    m_updatePane = new UpdatePane(m_cameras);
    m_alarmPane = new AlarmPane;
    m_problemsPane = new ProblemsPane;

    m_tabs = new QTabWidget;
    m_tabs->setObjectName(QStringLiteral("tabs"));
    m_tabs->setDocumentMode(true);
    m_tabs->addTab(m_valuesPane, tr("Values"));
    m_tabs->addTab(m_textPane, tr("Text"));
    m_tabs->addTab(m_differencesPane, tr("Differences"));
    m_tabs->addTab(m_updatePane, tr("Update"));
    m_tabs->addTab(m_alarmPane, tr("Alarm list"));

    auto *across = new QSplitter(Qt::Horizontal);
    across->setObjectName(QStringLiteral("across"));
    across->setChildrenCollapsible(false);
    across->addWidget(m_camerasPane);
    across->addWidget(m_tabs);
    across->setSizes({570, 670});
    m_pages = new QStackedWidget; // the start page comes with its actions
    m_pages->addWidget(across);
    auto *down = new QSplitter(Qt::Vertical);
    down->setObjectName(QStringLiteral("down"));
    down->setChildrenCollapsible(false);
    down->addWidget(m_pages);
    down->addWidget(m_problemsPane);
    down->setStretchFactor(0, 1);
    down->setSizes({640, 130});
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

void MainWindow::showStartPage(bool isShown)
{
    if (isShown)
        m_startPage->setRecent(settings::recentPaths());
    m_pages->setCurrentIndex(isShown ? 1 : 0);
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
    if (!batch.configurations.empty() || !batch.alarmLists.empty())
        showStartPage(false);
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
    m_summary->setText(wasCancelled ? tr("Stopped. Configurations so far: %L1").arg(count)
                                    : tr("Configurations: %L1").arg(count));
    updateActions();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->setAccepted(settleEdits());
    if (event->isAccepted())
        settings::saveLayout(*this);
}

// ---- The selected camera

Document *MainWindow::currentDocument() const
{
    return m_cameras.document(m_camerasPane->currentRow());
}

void MainWindow::showSelection()
{
    const QList<int> rows = m_camerasPane->selectedRows();
    Document *current = currentDocument();
    if (m_valuesPane->document() != current) {
        m_valuesPane->setDocument(current);
        m_textPane->setDocument(current);
    }
    m_valuesPane->setSelectedCount(rows.size());
    m_updatePane->setSelection(m_camerasPane->currentRow(), rows);
    m_differencesPane->setDocuments(m_camerasPane->selectedDocuments());
    updateActions();
}

void MainWindow::undo()
{
    m_cameras.undoStack().undo();
    showEdited();
}

void MainWindow::redo()
{
    m_cameras.undoStack().redo();
    showEdited();
}

void MainWindow::showEdited()
{
    if (m_edited && m_edited != currentDocument())
        m_camerasPane->select(m_edited);
}

/** The name of the program stands behind it, which Qt sees to. */
void MainWindow::updateTitle()
{
    const Document *document = currentDocument();
    setWindowTitle(
        (document ? document->title().replace(QLatin1String("[*]"), QString()) : QString()) +
        QStringLiteral("[*]"));
    setWindowModified(m_cameras.isModified());
}

} // namespace browser
