// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_MAINWINDOW_H
#define BROWSER_MAINWINDOW_H

#include "CameraModel.h"
#include "LoadQueue.h"

#include <QtCore/QPointer>
#include <QtWidgets/QMainWindow>

class QAction;
class QLabel;
class QProgressBar;
class QStackedWidget;
class QTabWidget;
class QTableView;
class QToolButton;

namespace browser {

class AlarmPane;
class CamerasPane;
class DifferencesPane;
class ProblemsPane;
class StartPage;
class TextPane;
class UpdatePane;
class ValueEditing;
class ValuesPane;

/** The window: what was opened on the left, what is known of the selected
 * camera on the right. */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /** Opens files, folders and archives in the background. */
    void open(const QStringList &paths);

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    // MainWindowActions.cpp
    void makeActions();
    void makeFileMenu();
    void makeEditMenu();
    void makeViewMenu();
    void makeHelpMenu();
    void makeToolBar();
    void makeStatusBar();
    void fillRecentMenu();
    void updateActions();

    void makePanes();
    void connectLoading();

    // MainWindowSelection.cpp
    void changeSelected();
    void exportCameras();
    void exportShown();
    void exportTable(QTableView *table, const QString &name);
    void archiveSelected();
    void compareFolders();

    // MainWindowFiles.cpp
    void chooseFiles();
    void chooseFolder();
    void save();
    void saveAll();
    void saveCopy();
    void reload();
    void closeAll();
    bool saveDocument(Document *document);
    /** Lists what a file that was written at @p path could not keep of the one before it. */
    void tellLosses(const QString &path, const QStringList &losses);
    /** Whether what is edited was saved, or need not be. */
    bool settleEdits();

    void take(const LoadBatch &batch);
    void askForPassword(const QString &archive, bool wasWrong);
    void endLoading(bool wasCancelled);
    void showStartPage(bool isShown);
    void showSelection();
    void updateTitle();
    void undo();
    void redo();
    /** Shows the camera that undo or redo was about. */
    void showEdited();
    Document *currentDocument() const;

    CameraModel m_cameras;
    LoadQueue m_queue;
    QPointer<Document> m_edited; // the last one

    QStackedWidget *m_pages = nullptr;
    StartPage *m_startPage = nullptr;
    CamerasPane *m_camerasPane = nullptr;
    QTabWidget *m_tabs = nullptr;
    ValuesPane *m_valuesPane = nullptr;
    TextPane *m_textPane = nullptr;
    DifferencesPane *m_differencesPane = nullptr;
    UpdatePane *m_updatePane = nullptr;
    AlarmPane *m_alarmPane = nullptr;
    ProblemsPane *m_problemsPane = nullptr;
    ValueEditing *m_valueEditing = nullptr;

    QAction *m_openFiles = nullptr;
    QAction *m_openFolder = nullptr;
    QMenu *m_recent = nullptr;
    QAction *m_save = nullptr;
    QAction *m_saveAll = nullptr;
    QAction *m_saveCopy = nullptr;
    QAction *m_reload = nullptr;
    QAction *m_closeAll = nullptr;
    QAction *m_exportCameras = nullptr;
    QAction *m_exportShown = nullptr;
    QAction *m_archive = nullptr;
    QAction *m_changeSelected = nullptr;
    QAction *m_undo = nullptr;
    QAction *m_redo = nullptr;
    QAction *m_stopLoading = nullptr;

    QProgressBar *m_progress = nullptr;
    QToolButton *m_stop = nullptr;
    QLabel *m_summary = nullptr;
};

} // namespace browser

#endif // BROWSER_MAINWINDOW_H
