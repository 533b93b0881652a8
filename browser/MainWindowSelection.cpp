// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "ArchiveDialog.h"
#include "ArchiveJob.h"
#include "BulkEditDialog.h"
#include "CamerasPane.h"
#include "CsvExport.h"
#include "FolderDialog.h"
#include "MainWindow.h"
#include "ProblemsPane.h"
#include "SafeSave.h"
#include "Settings.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>

namespace browser {

void MainWindow::changeSelected()
{
    BulkEditDialog dialog(m_camerasPane->selectedDocuments(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_cameras.undoStack().beginMacro(dialog.name());
    const int changed = dialog.apply();
    m_cameras.undoStack().endMacro();
    QApplication::restoreOverrideCursor();
    m_summary->setText(tr("Changed, not saved yet: %L1").arg(changed));
}

void MainWindow::compareFolders()
{
    FolderDialog(this).exec();
}

void MainWindow::exportCameras()
{
    exportTable(m_camerasPane->table(), QStringLiteral("cameras.csv"));
}

void MainWindow::exportShown()
{
    const auto tables = m_tabs->currentWidget()->findChildren<QTableView *>();
    for (QTableView *table : tables)
        if (table->isVisible())
            return exportTable(table, table->objectName() + QStringLiteral(".csv"));
    m_summary->setText(tr("There is no table to export"));
}

void MainWindow::exportTable(QTableView *table, const QString &name)
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Export as CSV"),
                                                      QDir(settings::lastFolder()).filePath(name),
                                                      tr("CSV tables (*.csv);;All files (*)"));
    if (path.isEmpty())
        return;
    const Written written = writeBytes(path, csvOf(*table->model()));
    tellLosses(path, written.losses);
    if (written.isDone())
        m_summary->setText(tr("Exported rows: %L1").arg(table->model()->rowCount()));
    else
        m_problemsPane->add({{path, QString(), tr("not exported: %1").arg(written.reason)}});
}

void MainWindow::archiveSelected()
{
    const std::vector<Document *> documents = m_camerasPane->selectedDocuments();
    ArchiveDialog dialog(int(documents.size()), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString path = QFileDialog::getSaveFileName(
        this, tr("Archive of the Selected Cameras"),
        QDir(settings::lastFolder()).filePath(QStringLiteral("cameras.zip")),
        tr("Archives (*.zip);;All files (*)"));
    if (path.isEmpty())
        return;

    ArchiveJob job(path, dialog.password(), archiveEntriesOf(documents));
    QProgressDialog progress(tr("Writing the archive…"), tr("Stop"), 0, int(documents.size()),
                             this);
    progress.setWindowModality(Qt::WindowModal);
    QEventLoop loop;
    connect(&job, &ArchiveJob::progressed, &progress, &QProgressDialog::setValue);
    connect(&progress, &QProgressDialog::canceled, &job, &ArchiveJob::stop);
    connect(&job, &QThread::finished, &loop, &QEventLoop::quit);
    job.start();
    loop.exec();
    tellLosses(path, job.losses());
    if (!job.error().isNull())
        m_problemsPane->add({{path, QString(), tr("not written: %1").arg(job.error())}});
    else if (job.wasStopped())
        m_summary->setText(tr("Stopped. There is no archive"));
    else
        m_summary->setText(
            tr("Put into %1: %L2").arg(QFileInfo(path).fileName()).arg(int(documents.size())));
}

} // namespace browser
