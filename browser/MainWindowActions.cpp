// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "MainWindow.h"

#include "CamerasPane.h"
#include "HelpDialogs.h"
#include "Settings.h"
#include "StartPage.h"
#include "ValueEditing.h"
#include "ValuesPane.h"

#include <QtCore/QDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

namespace browser {

void MainWindow::makeActions()
{
    makeFileMenu();
    makeEditMenu();
    makeViewMenu();
    makeHelpMenu();
    makeToolBar();
    makeStatusBar();
    m_startPage = new StartPage(m_openFiles, m_openFolder);
    m_pages->addWidget(m_startPage);
    connect(m_startPage, &StartPage::chosen, this, [this](const QString &path) { open({path}); });
    showStartPage(true);
}

void MainWindow::makeFileMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&File"));
    m_openFiles = menu->addAction(style()->standardIcon(QStyle::SP_FileIcon), tr("&Open Files…"),
                                  this, &MainWindow::chooseFiles, QKeySequence::Open);
    m_openFolder =
        menu->addAction(style()->standardIcon(QStyle::SP_DirOpenIcon), tr("Open &Folder…"), this,
                        &MainWindow::chooseFolder, QKeySequence(tr("Ctrl+Shift+O")));
    m_recent = menu->addMenu(tr("Open &Recent"));
    connect(m_recent, &QMenu::aboutToShow, this, &MainWindow::fillRecentMenu);
    menu->addSeparator();
    m_save = menu->addAction(style()->standardIcon(QStyle::SP_DialogSaveButton), tr("&Save"), this,
                             &MainWindow::save, QKeySequence::Save);
    m_saveAll = menu->addAction(tr("Save A&ll"), this, &MainWindow::saveAll,
                                QKeySequence(tr("Ctrl+Alt+S")));
    m_saveCopy = menu->addAction(tr("Save a &Copy…"), this, &MainWindow::saveCopy,
                                 QKeySequence(tr("Ctrl+Shift+S")));
    m_reload = menu->addAction(style()->standardIcon(QStyle::SP_BrowserReload), tr("R&eload"), this,
                               &MainWindow::reload, QKeySequence::Refresh);
    m_reload->setToolTip(tr("Reads the file anew and drops what was edited"));
    menu->addSeparator();
    menu->addAction(tr("Compare &Two Folders…"), this, &MainWindow::compareFolders,
                    QKeySequence(tr("Ctrl+D")));
    m_exportCameras = menu->addAction(tr("Export Ca&meras as CSV…"), this,
                                      &MainWindow::exportCameras, QKeySequence(tr("Ctrl+E")));
    m_exportShown = menu->addAction(tr("E&xport the Shown Table as CSV…"), this,
                                    &MainWindow::exportShown, QKeySequence(tr("Ctrl+Shift+E")));
    m_archive = menu->addAction(tr("Archive of the Selected Cameras…"), this,
                                &MainWindow::archiveSelected, QKeySequence(tr("Ctrl+Shift+A")));
    menu->addSeparator();
    m_closeAll = menu->addAction(tr("Close &All"), this, &MainWindow::closeAll,
                                 QKeySequence(tr("Ctrl+Shift+W")));
    menu->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
}

void MainWindow::fillRecentMenu()
{
    m_recent->clear();
    const QStringList paths = settings::recentPaths();
    for (const QString &path : paths)
        m_recent->addAction(
            QDir::toNativeSeparators(path).replace(QLatin1Char('&'), QStringLiteral("&&")), this,
            [this, path] { open({path}); });
    if (paths.isEmpty())
        m_recent->addAction(tr("Nothing yet"))->setEnabled(false);
    m_recent->addSeparator();
    m_recent->addAction(tr("&Forget Them"), this, &settings::clearRecentPaths)
        ->setEnabled(!paths.isEmpty());
}

void MainWindow::makeEditMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Edit"));
    m_undo = menu->addAction(style()->standardIcon(QStyle::SP_ArrowBack), tr("&Undo"), this,
                             &MainWindow::undo, QKeySequence::Undo);
    m_redo = menu->addAction(style()->standardIcon(QStyle::SP_ArrowForward), tr("&Redo"), this,
                             &MainWindow::redo, QKeySequence(tr("Ctrl+Shift+Z")));
    connect(&m_cameras.undoStack(), &QUndoStack::indexChanged, this, &MainWindow::updateActions);
    menu->addSeparator();
    m_valueEditing = new ValueEditing(*m_valuesPane, m_cameras.undoStack(), this);
    m_valueEditing->addTo(menu);
    menu->addSeparator();
    m_changeSelected = menu->addAction(tr("Change the Selected Ca&meras…"), this,
                                       &MainWindow::changeSelected, QKeySequence(tr("Ctrl+B")));
}

void MainWindow::makeViewMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&View"));
    for (int i = 0; i < m_tabs->count(); ++i) {
        const QKeySequence keys(int(Qt::ALT) + int(Qt::Key_1) + i);
        menu->addAction(
            m_tabs->tabText(i), this, [this, i] { m_tabs->setCurrentIndex(i); }, keys);
    }
    menu->addSeparator();
    menu->addAction(
        tr("Filter the &Cameras"), this, [this] { m_camerasPane->focusFilter(); },
        QKeySequence(tr("Ctrl+Shift+F")));
    menu->addAction(
        tr("&Filter the Values"), this,
        [this] {
            m_tabs->setCurrentWidget(m_valuesPane);
            m_valuesPane->focusFilter();
        },
        QKeySequence::Find);
    m_stopLoading = menu->addAction(tr("&Stop Loading"), &m_queue, &LoadQueue::cancel,
                                    QKeySequence(Qt::Key_Escape));
}

void MainWindow::makeHelpMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Help"));
    menu->addAction(
        tr("&Keyboard Shortcuts"), this, [this] { showShortcuts(*this); },
        QKeySequence::HelpContents);
    menu->addAction(tr("&About"), this, [this] { showAbout(*this); });
    menu->addAction(tr("About &Qt"), qApp, &QApplication::aboutQt);
}

void MainWindow::makeToolBar()
{
    QToolBar *tools = addToolBar(tr("Tools"));
    tools->setObjectName(QStringLiteral("tools"));
    tools->setMovable(false);
    const int iconSize = style()->pixelMetric(QStyle::PM_SmallIconSize);
    tools->setIconSize(QSize(iconSize, iconSize));
    tools->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    tools->setContextMenuPolicy(Qt::PreventContextMenu); // would hide it for good
    tools->addActions({m_openFiles, m_openFolder});
    tools->addSeparator();
    tools->addActions({m_save, m_reload});
    tools->addSeparator();
    tools->addActions({m_undo, m_redo});
}

void MainWindow::makeStatusBar()
{
    m_summary = new QLabel;
    m_summary->setObjectName(QStringLiteral("summary"));
    m_summary->setContentsMargins(8, 0, 0, 0); // under the tables' words
    m_progress = new QProgressBar;
    m_progress->setAccessibleName(tr("Progress of loading"));
    m_progress->setMaximumWidth(260);
    m_stop = new QToolButton;
    m_stop->setObjectName(QStringLiteral("stop"));
    m_stop->setText(tr("Stop"));
    m_stop->setToolTip(tr("Stop loading (Esc); what was read stays"));
    connect(m_stop, &QToolButton::clicked, &m_queue, &LoadQueue::cancel);
    m_progress->hide();
    m_stop->hide();
    statusBar()->addWidget(m_summary, 1);
    statusBar()->addPermanentWidget(m_progress);
    statusBar()->addPermanentWidget(m_stop);
}

void MainWindow::updateActions()
{
    const Document *document = currentDocument();
    m_save->setEnabled(document && document->isModified());
    m_saveAll->setEnabled(m_cameras.isModified());
    m_saveCopy->setEnabled(document);
    m_reload->setEnabled(document && !document->configuration().isArchiveEntry() &&
                         !document->configuration().isImage());
    m_closeAll->setEnabled(!m_queue.isBusy());
    m_stopLoading->setEnabled(m_queue.isBusy());
    m_exportCameras->setEnabled(m_cameras.rowCount() > 0);
    m_exportShown->setEnabled(m_cameras.rowCount() > 0);
    m_archive->setEnabled(document);
    m_changeSelected->setEnabled(document);
    const QUndoStack &undo = m_cameras.undoStack();
    const auto name = [](const QString &action, const QString &step) {
        return step.isEmpty() ? action : tr("%1: %2").arg(action, step);
    };
    m_undo->setEnabled(undo.canUndo());
    m_undo->setText(name(tr("&Undo"), undo.undoText()));
    m_undo->setIconText(tr("Undo"));
    m_redo->setEnabled(undo.canRedo());
    m_redo->setText(name(tr("&Redo"), undo.redoText()));
    m_redo->setIconText(tr("Redo"));
    updateTitle();
}

} // namespace browser
