// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#ifndef BROWSER_MAINWINDOW_H
#define BROWSER_MAINWINDOW_H

#include "CameraModel.h"
#include "LoadQueue.h"

#include <QtWidgets/QMainWindow>

class QAction;
class QLabel;
class QProgressBar;
class QSplitter;
class QTabWidget;
class QToolButton;

namespace browser {

class AlarmPane;
class CamerasPane;
class DifferencesPane;
class ProblemsPane;
class UpdatePane;
class ValuesPane;

/** The window: what was opened on the left, what is known of the selected camera on the right. */
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
    void makeViewMenu();
    void makeStatusBar();

    void makePanes();
    void connectLoading();

    void chooseFiles();
    void chooseFolder();
    void save();
    void saveCopy();
    void reload();
    void closeAll();
    bool saveDocument(Document *document);
    /** Whether what is edited was saved, or need not be. */
    bool settleEdits();

    void take(const LoadBatch &batch);
    void askForPassword(const QString &archive, bool wasWrong);
    void endLoading(bool wasCancelled);
    void showSelection();
    void updateActions();
    Document *currentDocument() const;

    CameraModel m_cameras;
    LoadQueue m_queue;

    CamerasPane *m_camerasPane = nullptr;
    QTabWidget *m_tabs = nullptr;
    ValuesPane *m_valuesPane = nullptr;
    DifferencesPane *m_differencesPane = nullptr;
    UpdatePane *m_updatePane = nullptr;
    AlarmPane *m_alarmPane = nullptr;
    ProblemsPane *m_problemsPane = nullptr;

    QAction *m_save = nullptr;
    QAction *m_saveCopy = nullptr;
    QAction *m_reload = nullptr;
    QAction *m_closeAll = nullptr;

    QProgressBar *m_progress = nullptr;
    QToolButton *m_stop = nullptr;
    QLabel *m_summary = nullptr;
};

} // namespace browser

#endif // BROWSER_MAINWINDOW_H
