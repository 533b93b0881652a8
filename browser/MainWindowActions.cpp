// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "MainWindow.h"

#include "ValuesPane.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

namespace browser {

void MainWindow::makeActions()
{
    makeFileMenu();
    makeViewMenu();
    makeStatusBar();
}

void MainWindow::makeFileMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&File"));
    QAction *openFiles =
        menu->addAction(style()->standardIcon(QStyle::SP_FileIcon), tr("&Open Files…"), this,
                        &MainWindow::chooseFiles, QKeySequence::Open);
    QAction *openFolder =
        menu->addAction(style()->standardIcon(QStyle::SP_DirOpenIcon), tr("Open &Folder…"), this,
                        &MainWindow::chooseFolder, QKeySequence(tr("Ctrl+Shift+O")));
    menu->addSeparator();
    m_save = menu->addAction(style()->standardIcon(QStyle::SP_DialogSaveButton), tr("&Save"), this,
                             &MainWindow::save, QKeySequence::Save);
    m_saveCopy = menu->addAction(tr("Save a &Copy…"), this, &MainWindow::saveCopy,
                                 QKeySequence(tr("Ctrl+Shift+S")));
    m_reload = menu->addAction(style()->standardIcon(QStyle::SP_BrowserReload), tr("&Reload"), this,
                               &MainWindow::reload, QKeySequence::Refresh);
    m_reload->setToolTip(tr("Reads the file anew and drops what was edited"));
    menu->addSeparator();
    m_closeAll = menu->addAction(tr("Close &All"), this, &MainWindow::closeAll,
                                 QKeySequence(tr("Ctrl+Shift+W")));
    menu->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);

    QToolBar *tools = addToolBar(tr("Tools"));
    tools->setObjectName(QStringLiteral("tools"));
    tools->setMovable(false);
    const int iconSize = style()->pixelMetric(QStyle::PM_SmallIconSize);
    tools->setIconSize(QSize(iconSize, iconSize));
    tools->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    tools->setContextMenuPolicy(Qt::PreventContextMenu); // would hide it for good
    tools->addActions({openFiles, openFolder});
    tools->addSeparator();
    tools->addActions({m_save, m_reload});
}

void MainWindow::makeViewMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&View"));
    for (int i = 0; i < m_tabs->count(); ++i) {
        const QKeySequence keys(Qt::ALT + Qt::Key_1 + i);
        menu->addAction(
            m_tabs->tabText(i), this, [this, i] { m_tabs->setCurrentIndex(i); }, keys);
    }
    menu->addSeparator();
    menu->addAction(
        tr("&Filter the Values"), this,
        [this] {
            m_tabs->setCurrentWidget(m_valuesPane);
            m_valuesPane->focusFilter();
        },
        QKeySequence::Find);
    menu->addAction(tr("&Stop Loading"), &m_queue, &LoadQueue::cancel,
                    QKeySequence(Qt::Key_Escape));
}

void MainWindow::makeStatusBar()
{
    m_summary = new QLabel;
    m_summary->setObjectName(QStringLiteral("summary"));
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

} // namespace browser
