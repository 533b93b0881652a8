// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "MainWindow.h"

#include "AlarmPane.h"
#include "CamerasPane.h"
#include "DifferencesPane.h"
#include "ProblemsPane.h"
#include "SafeSave.h"
#include "Settings.h"
#include "TextPane.h"
#include "UpdatePane.h"
#include "ValuesPane.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QTabWidget>

#include <algorithm>

namespace browser {

void MainWindow::open(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    settings::setLastFolderOf(paths.first());
    settings::addRecentPaths(paths);
    m_queue.open(paths);
}

void MainWindow::chooseFiles()
{
    open(QFileDialog::getOpenFileNames(
        this, tr("Open Configurations, Archives, Images and Alarm Lists"), settings::lastFolder(),
        tr("Configurations, archives, images, alarm lists (*.cfg *.zip *.jpg *.jpeg *.alarms);;"
           "All files (*)")));
}

void MainWindow::chooseFolder()
{
    const QString path = QFileDialog::getExistingDirectory(
        this, tr("Open All Configurations of a Folder"), settings::lastFolder());
    if (!path.isEmpty())
        open({path});
}

void MainWindow::save()
{
    if (Document *document = currentDocument())
        (void)saveDocument(document);
}

void MainWindow::saveAll()
{
    const std::vector<Document *> edited = m_cameras.modifiedDocuments();
    std::vector<Problem> problems;
    for (Document *document : edited) {
        const QString path = document->configuration().path();
        const Written written = document->save();
        if (!written.isDone())
            problems.push_back({path, QString(), tr("not saved: %1").arg(written.reason)});
        tellLosses(path, written.losses);
    }
    m_problemsPane->add(problems);
    m_summary->setText(tr("Saved: %L1").arg(int(edited.size() - problems.size())));
}

bool MainWindow::saveDocument(Document *document)
{
    const Written written = document->save();
    tellLosses(document->configuration().path(), written.losses);
    if (written.isDone()) {
        m_summary->setText(tr("Saved %1").arg(document->configuration().sourceName()));
        return true;
    }
    m_camerasPane->select(document);
    m_tabs->setCurrentWidget(m_valuesPane);
    m_valuesPane->showError(tr("Not saved. %1").arg(written.reason));
    return false;
}

void MainWindow::tellLosses(const QString &path, const QStringList &losses)
{
    std::vector<Problem> problems;
    for (const QString &loss : losses)
        problems.push_back({path, QString(), tr("written, but %1").arg(loss)});
    m_problemsPane->add(problems);
}

void MainWindow::saveCopy()
{
    const Document *document = currentDocument();
    if (!document)
        return;
    const Configuration &configuration = document->configuration();
    const QString name =
        QFileInfo(configuration.fileName()).completeBaseName() + QStringLiteral(".cfg");
    const QString path = QFileDialog::getSaveFileName(this, tr("Save a Copy"),
                                                      QDir(settings::lastFolder()).filePath(name),
                                                      tr("Configurations (*.cfg);;All files (*)"));
    if (path.isEmpty())
        return;
    const Written written = writeBytes(path, document->isModified() ? document->text().toUtf8()
                                                                    : configuration.bytes());
    tellLosses(path, written.losses);
    if (written.isDone())
        m_summary->setText(tr("Saved a copy as %1").arg(QFileInfo(path).fileName()));
    else
        m_valuesPane->showError(tr("No copy was saved. %1").arg(written.reason));
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
    constexpr int kMostNames = 12;
    QStringList titles;
    for (const Document *document : edited)
        if (titles.size() < kMostNames)
            titles += document->configuration().sourceName();
    if (int(edited.size()) > kMostNames)
        titles += tr("and others: %L1").arg(int(edited.size()) - kMostNames);
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
    m_textPane->setDocument(nullptr);
    m_differencesPane->setDocuments({});
    m_updatePane->setSelection(-1, {});
    m_cameras.clear();
    m_alarmPane->clear();
    m_problemsPane->clear();
    m_summary->clear();
    showStartPage(true);
    updateActions();
}

} // namespace browser
