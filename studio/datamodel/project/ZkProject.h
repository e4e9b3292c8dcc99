// The open project: the media bin, the clips in their order, one undo history, and the file.
#pragma once

#include "ZkMediaEntry.h"
#include "ZkProjectClip.h"
#include "ZkProjectSnapshot.h"

#include <QObject>
#include <QVector>

#include <functional>
#include <memory>

class ZkStudioProjectManager;
class ZkStudioTimeline;
class ZkStudioUndoRedoService;

namespace zk::datamodel {

class EditWatch;
class ProjectHistory;
class SnapshotWriter;

// Reads a project file. False, with a text for the user (or an empty one when it was cancelled), when that
// fails.
using SnapshotReading =
    std::function<bool(const QString &path, ProjectSnapshot *snapshot, QString *error)>;
// All of it, with a look for the media, which is slow where they were changed; any thread may call it.
ZKDATAMODEL_EXPORT bool readSnapshot(const QString &path,
                                     ProjectSnapshot *snapshot,
                                     QString *error,
                                     const ReadingStep &step);

// There is one for the life of a window; startNew(), open() and recover() replace its content, after
// which only reset() is emitted for it. GUI thread only.
//
// Undo: undoRedoService() has one step for each import, clip that is added, removed or moved, and for
// each step that is made on a clip's own timeline (an applied cutout, an effect that is switched),
// in the order in which they were made. A clip's own service must not be undone or redone past it:
// that would be noticed, and the history begins anew.
//
// Signals come after the step that caused them is closed, so receivers may undo, save or replace the
// project. Moving a playhead or choosing the current clip is kept in the file, but does not make the
// project dirty.
class ZKDATAMODEL_EXPORT Project : public QObject
{
    Q_OBJECT

public:
    // The manager (may be null) is told which project is open; it must outlive the project.
    explicit Project(ZkStudioProjectManager *manager = nullptr, QObject *parent = nullptr);
    // Waits for a save that is under way.
    ~Project() override;

    // An empty project without a file.
    void startNew();
    // False, with a text for the user, when the file is missing, no project, damaged or of a newer
    // program; the project that is open stays as it is then. Missing media do not make it fail: see
    // missingMedia(). The reading may be done elsewhere, such as in a worker; until it has returned the
    // project is as it was, and may be changed.
    bool open(const QString &path, QString *error, const SnapshotReading &reading = {});
    // Opens an autosave as the project that it was made of: path() is that one's, and it is dirty.
    bool recover(const QString &autosaveFile, QString *error, const SnapshotReading &reading = {});

    QString id() const { return m_id; } // a UUID without braces
    QString path() const { return m_path; } // absolute; empty: it was never saved
    QString displayName() const; // of the file, without its suffix, or "Untitled"
    bool isDirty() const;
    // A change that is no undo step.
    void markModified();

    // Saving is complete, or the file is as it was. With a new path the project belongs there from then
    // on. save() returns when it is done; startSaving() works in a thread, the project may be edited
    // meanwhile, and savingFinished() follows, never from inside the call.
    bool save(const QString &path, QString *error);
    // False while another one is under way.
    bool startSaving(const QString &path);
    bool isSaving() const;
    // Until the save that is under way is done and savingFinished() has been emitted.
    void waitForSaving();
    ProjectSnapshot snapshot() const; // without an origin

    const QVector<MediaEntry> &media() const { return m_media; } // in the order of their import
    const MediaEntry *findMedia(qint64 id) const; // null: none; valid until the next change
    // An undo step. A file that is in the bin already is not added again: its id is returned. 0, with a
    // sentence for the user, when the file cannot be read. importMedia(path) probes on this thread;
    // probe in a worker and hand the entry (its id is ignored) over where that would take too long.
    qint64 importMedia(const QString &path, QString *error);
    qint64 importMedia(const MediaEntry &probed);
    // An undo step; false, and nothing has changed, while a clip uses it.
    bool removeMedia(qint64 id);
    bool isMediaUsed(qint64 id) const;
    // The entries whose clips are offline.
    QVector<qint64> missingMedia() const;
    // Takes another file for the entry, in all clips that use it. Not an undo step. False, with a
    // sentence for the user, when the file cannot be read or does not fit.
    bool relinkMedia(qint64 id, const QString &path, QString *error);
    // Looks for the files again; mediaChanged() and clipChanged() tell what is new.
    void checkMedia();

    int clipCount() const { return m_clips.size(); }
    ProjectClip *clipAt(int index) const; // null outside
    ProjectClip *findClip(qint64 id) const;
    int indexOf(const ProjectClip *clip) const; // -1: none of the project now
    // Each is an undo step. addClip() puts the whole file at the index (-1: the end); null for an
    // unknown or missing file. The others are false, and nothing has changed, for a wrong index.
    ProjectClip *addClip(qint64 mediaId, int index = -1);
    bool removeClip(int index);
    bool moveClip(int from, int to);

    ProjectClip *currentClip() const; // null: none
    void setCurrentClip(const ProjectClip *clip);

    // What is done on the edit timeline of a workspace of that clip is part of the project from now on: it
    // makes it dirty, and is in its file and its autosave, as a draft beside what was applied. A draft
    // that the clip has is put on the timeline at once, as one undo step there. Ended by
    // endEditing(), before the timeline dies. One workspace at a time.
    void beginEditing(ProjectClip *clip, ZkStudioTimeline *edit);
    enum class DraftFate { Kept, Dropped };
    // Does nothing while none is open.
    void endEditing(DraftFate fate);
    // The clips that a workspace was left on, or is open on, with work that was not applied.
    QVector<ProjectClip *> clipsWithDrafts() const;

    ZkStudioUndoRedoService *undoRedoService() const;

Q_SIGNALS:
    void aboutToReset(); // the clips of before are alive until reset() has been emitted
    void reset(); // everything is another one
    void clipAdded(zk::datamodel::ProjectClip *clip);
    void clipRemoved(zk::datamodel::ProjectClip *clip); // it is alive during the call
    void clipMoved(zk::datamodel::ProjectClip *clip);
    // Its cutout, its effects or the state of its file.
    void clipChanged(zk::datamodel::ProjectClip *clip);
    void currentClipChanged(zk::datamodel::ProjectClip *clip); // may be null
    void mediaAdded(qint64 id);
    void mediaRemoved(qint64 id);
    void mediaChanged(qint64 id);
    void undoRedoChanged();
    // Anything that a save would write, but for playheads and the current clip.
    void contentChanged();
    void dirtyChanged(bool dirty);
    void pathChanged(const QString &path);
    void savingFinished(bool success, const QString &error);

private:
    class PlaceMediaItem;
    class PlaceClipItem;
    class MoveClipItem;

    // A state of the content, so that a save knows which one it has saved.
    struct Mark
    {
        quint64 step = 0; // of the history
        quint64 modifications = 0; // that are no undo steps
        QByteArray drafts; // fingerprints
        bool operator==(const Mark &other) const
        {
            return step == other.step && modifications == other.modifications
                && drafts == other.drafts;
        }
    };
    Mark mark() const;
    void updateDirty();
    void onHistoryChanged();
    QVector<ProjectSnapshot::Draft> draftsOf(const ProjectClip &clip) const;
    QByteArray draftMark() const;
    void onDraftsChanged();

    void replace(const ProjectSnapshot &snapshot, const QString &path, bool isSaved);
    void take(const ProjectSnapshot &snapshot);
    void onSaved(const QString &path, const Mark &mark);
    void onWritten(bool success, const QString &error);

    MediaEntry *mediaEntry(qint64 id);
    void setMediaEntry(const MediaEntry &entry);
    void putMedia(const MediaEntry &entry, int index);
    void takeMedia(qint64 id);
    void putClip(const ProjectClipPtr &clip, int index);
    void takeClip(const ProjectClipPtr &clip);
    void shiftClip(int from, int to);

    ZkStudioProjectManager *const m_manager;
    QString m_id;
    QString m_path;
    QVector<MediaEntry> m_media;
    QVector<ProjectClipPtr> m_clips;
    qint64 m_currentClip = 0;
    qint64 m_lastId = 0; // of media and clips
    quint64 m_modifications = 0;
    QByteArray m_drafts; // fingerprints
    Mark m_saved;
    bool m_wasDirty = false;
    QString m_savingPath;
    Mark m_saving;
    std::unique_ptr<ProjectHistory> m_history;
    std::unique_ptr<SnapshotWriter> m_writer;
    std::unique_ptr<EditWatch> m_edit; // null: no workspace is open
};

} // namespace zk::datamodel
