#pragma once

#include "ZkProjectReading.h"
#include "ZkRecentFiles.h"

#include "project/ZkAutosave.h"

#include <QObject>

class QWidget;

namespace zk::datamodel {
class Project;
}

namespace zk::app {

// Opens and saves the project of a window, and asks the user about it. Whoever calls it has closed the
// workspace before.
class ProjectController : public QObject
{
    Q_OBJECT

public:
    // Project and window must outlive it. An empty folder: the user's.
    ProjectController(datamodel::Project *project, const QString &autosaveFolder, QWidget *window);
    ~ProjectController() override;

    // True: nothing is unsaved that the user wants. Asks, and saves if that is the answer.
    bool mayLeave();
    // The same at the end of the window: what is not wanted is not offered again.
    bool mayClose();
    // Each asks before unsaved changes are lost. False: nothing has changed.
    bool startNew();
    bool open(); // asks which
    bool open(const QString &path);

    // Saves in a thread; what goes wrong is told when it does. False: the user has not said where to.
    bool save();
    bool saveAs();

    // Offers what crashed editors have left, the latest first.
    void offerRecovery();

    QString title() const; // of the window, with the place of the mark "[*]"
    RecentFiles *recentFiles() { return &m_recent; }
    // What was set has changed.
    void readPreferences();

Q_SIGNALS:
    void titleChanged();
    void notice(const QString &text);
    // One of the recent projects was chosen; nothing has been asked yet.
    void openRequested(const QString &path);

private:
    bool openNow(const QString &path);
    bool saveNow();
    QString askForPath();
    bool startSaving(const QString &path);
    void onSaved(bool success, const QString &error);
    void reportMissingMedia();
    QString unfinishedWork() const;
    void recover(const datamodel::RecoverableProject &project);

    datamodel::Project *const m_project;
    QWidget *const m_window;
    const QString m_autosaveFolder;
    datamodel::Autosave m_autosave;
    ProjectReading m_reading;
    RecentFiles m_recent;
    QString m_savingTo; // in the thread; empty: nothing
    bool m_isAsking = false;
};

// Suffix of project files, with the dot.
QString projectSuffix();

} // namespace zk::app
