// Autosaves of projects, and what is left of them after a crash.
#pragma once

#include "ZkProject.h"

#include "ZkGlobal.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVector>

#include <memory>

class QLockFile;

namespace zk::datamodel {

class SnapshotWriter;

// An autosave whose editor is gone.
struct RecoverableProject
{
    QString file; // give it to Autosave::recover()
    QString origin; // the project's own file; empty: it was never saved
    QDateTime saved; // when the autosave was written, UTC
    int clipCount = 0;
    // The project's own file is newer than the autosave, so probably nothing is lost.
    bool isOlderThanOrigin = false;
};

// Keeps an autosave of one project while it has unsaved changes: written in a thread, at most every
// interval, and removed as soon as there is nothing unsaved. The folder has one file per open project
// and beside it a lock, which tells an editor that crashed from one that runs. GUI thread only.
class ZKDATAMODEL_EXPORT Autosave : public QObject
{
    Q_OBJECT

public:
    static constexpr int defaultSeconds = 60;

    // Of the user; made when it is missing.
    static QString defaultFolder();
    // The autosaves of crashed editors, the latest first. Those that cannot be read are left out.
    static QVector<RecoverableProject> recoverable(const QString &folder = defaultFolder());
    // False when another editor has taken it up meanwhile.
    static bool discard(const RecoverableProject &project);

    // The project must outlive it.
    explicit Autosave(Project *project,
                      const QString &folder = defaultFolder(),
                      QObject *parent = nullptr);
    // Leaves the autosave where it is, for recovery, when the project is dirty: a window that closes
    // in good order saves or calls drop() first.
    ~Autosave() override;

    void setInterval(int seconds); // 0: never
    int interval() const { return m_seconds; }
    // The autosave's file, whether it exists or not.
    QString file() const { return m_file; }

    // Opens the recovered project in place of the one that is open; its autosave is this one's from
    // then on. False, with a text for the user, and nothing has changed, when that fails.
    bool
    recover(const RecoverableProject &project, QString *error, const SnapshotReading &reading = {});
    // Writes now, if anything is unsaved, and waits for it.
    void flush();
    // The user does not want what is unsaved, and it is about to go: no autosave until the next change.
    void drop();

Q_SIGNALS:
    // Once until one succeeds again.
    void failed(const QString &error);

private:
    bool takeSlot(const QString &file);
    void schedule();
    void onContentChanged();
    void onDirtyChanged(bool dirty);
    void onReset();
    void write();
    void onWritten(bool success, const QString &error);

    Project *const m_project;
    const QString m_folder;
    QString m_file;
    int m_seconds = defaultSeconds;
    bool m_isWanted = false; // there are changes since the last write
    bool m_hasFailed = false;
    bool m_isRecovering = false;
    QTimer m_timer;
    std::unique_ptr<QLockFile> m_lock;
    std::unique_ptr<SnapshotWriter> m_writer;
};

} // namespace zk::datamodel
