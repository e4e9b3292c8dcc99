#include "ZkProject.h"

#include "../library/ZkStudioProjectManager.h"
#include "../segmentation/ZkStudioSmartKeyingService.h"
#include "../timeline/ZkStudioEffect.h"
#include "../timeline/ZkStudioEffectList.h"
#include "../timeline/ZkStudioTimeline.h"
#include "ZkEditWatch.h"
#include "ZkProjectHistory.h"
#include "ZkProjectStore.h"
#include "ZkSnapshotWriter.h"

#include <QDir>
#include <QFileInfo>
#include <QUuid>

namespace zk::datamodel {

namespace {

constexpr ZKSMARTKEYING::ZkSmartKeyingBusinessType businessTypes[] = {ZKSMARTKEYING::SmartCutout,
                                                                      ZKSMARTKEYING::AIErasing};

ProjectSnapshot::Clip snapshotOf(const ProjectClip &projectClip)
{
    const ZkStudioClip &clip = *projectClip.clip();
    ProjectSnapshot::Clip snapshot;
    snapshot.id = projectClip.id();
    snapshot.media = projectClip.mediaId();
    snapshot.inFrame = clip.inFrame();
    snapshot.frameCount = clip.frameCount();
    snapshot.playhead = projectClip.timeline()->playhead()->position();
    snapshot.mattes = clip.matteTrack();
    snapshot.effects = effectsOf(clip);
    for (auto type : businessTypes)
        snapshot.segmentations.append(segmentationOf(clip, type));
    return snapshot;
}

ProjectClipPtr restored(const ProjectSnapshot::Clip &snapshot, const MediaEntry &media)
{
    const auto projectClip =
        std::make_shared<ProjectClip>(snapshot.id, media, snapshot.inFrame, snapshot.frameCount);
    ZkStudioClip *clip = projectClip->clip();
    clip->setMatteTrack(snapshot.mattes);
    for (const ProjectSnapshot::Effect &from : snapshot.effects) {
        const auto effect = QSharedPointer<ZkStudioEffect>::create(from.look, from.slug);
        effect->restoreEnabled(from.isEnabled);
        clip->studioEffects()->restore(effect);
    }
    for (const ProjectSnapshot::Segmentation &from : snapshot.segmentations)
        clip->studioService(from.type)->setState(from.segments, from.settings);
    projectClip->timeline()->playhead()->setPosition(snapshot.playhead);
    projectClip->setDrafts(snapshot.drafts);
    return projectClip;
}

QString newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

} // namespace

Project::Project(ZkStudioProjectManager *manager, QObject *parent)
    : QObject(parent)
    , m_manager(manager)
    , m_id(manager ? manager->projectId() : newId())
    , m_writer(std::make_unique<SnapshotWriter>())
{
    ProjectHistory::Listener listener;
    listener.changed = [this] { onHistoryChanged(); };
    listener.clipChanged = [this](ProjectClip *clip) { Q_EMIT clipChanged(clip); };
    listener.modified = [this] { markModified(); };
    m_history = std::make_unique<ProjectHistory>(listener);
    m_saved = mark();
    connect(m_writer.get(), &SnapshotWriter::finished, this, &Project::onWritten);
}

Project::~Project()
{
    m_writer.reset();
    m_edit.reset();
    m_history.reset(); // its steps refer to the clips
}

QString Project::displayName() const
{
    return m_path.isEmpty() ? tr("Untitled") : QFileInfo(m_path).completeBaseName();
}

Project::Mark Project::mark() const
{
    return {m_history->service()->stateId(), m_modifications, m_drafts};
}

bool Project::isDirty() const
{
    return !(mark() == m_saved);
}

void Project::updateDirty()
{
    const bool isDirtyNow = isDirty();
    if (isDirtyNow == m_wasDirty)
        return;
    m_wasDirty = isDirtyNow;
    Q_EMIT dirtyChanged(isDirtyNow);
}

void Project::markModified()
{
    ++m_modifications;
    updateDirty();
    Q_EMIT contentChanged();
}

void Project::onHistoryChanged()
{
    updateDirty();
    Q_EMIT undoRedoChanged();
    Q_EMIT contentChanged();
}

ZkStudioUndoRedoService *Project::undoRedoService() const
{
    return m_history->service();
}

ProjectSnapshot Project::snapshot() const
{
    ProjectSnapshot snapshot;
    snapshot.id = m_id;
    snapshot.media = m_media;
    snapshot.currentClip = m_currentClip;
    for (const ProjectClipPtr &clip : m_clips) {
        snapshot.clips.append(snapshotOf(*clip));
        snapshot.clips.last().drafts = draftsOf(*clip);
    }
    return snapshot;
}

// Drafts.

void Project::beginEditing(ProjectClip *clip, ZkStudioTimeline *edit)
{
    const int index = indexOf(clip);
    if (m_edit || index < 0)
        return;
    m_edit = std::make_unique<EditWatch>(m_clips.at(index), edit, [this] { onDraftsChanged(); });
    onDraftsChanged();
}

void Project::endEditing(DraftFate fate)
{
    if (!m_edit)
        return;
    ProjectClip *const clip = findClip(m_edit->clip()->id());
    if (clip)
        clip->setDrafts(fate == DraftFate::Kept ? m_edit->drafts() : m_edit->otherDrafts());
    m_edit.reset();
    onDraftsChanged();
}

QVector<ProjectSnapshot::Draft> Project::draftsOf(const ProjectClip &clip) const
{
    return m_edit && m_edit->clip() == &clip ? m_edit->drafts() : clip.drafts();
}

QVector<ProjectClip *> Project::clipsWithDrafts() const
{
    QVector<ProjectClip *> clips;
    for (const ProjectClipPtr &clip : m_clips) {
        if (!draftsOf(*clip).isEmpty())
            clips.append(clip.get());
    }
    return clips;
}

QByteArray Project::draftMark() const
{
    QByteArray mark;
    for (const ProjectClipPtr &clip : m_clips) {
        const QVector<ProjectSnapshot::Draft> drafts = draftsOf(*clip);
        for (const ProjectSnapshot::Draft &draft : drafts)
            mark += QByteArray::number(clip->id()) + ':' + fingerprintOf(draft);
    }
    return mark;
}

// Where a stroke was undone, or the work was applied, the project may be as it was saved again.
void Project::onDraftsChanged()
{
    const QByteArray drafts = draftMark();
    if (drafts == m_drafts)
        return;
    m_drafts = drafts;
    updateDirty();
    Q_EMIT contentChanged();
}

void Project::replace(const ProjectSnapshot &snapshot, const QString &path, bool isSaved)
{
    Q_EMIT aboutToReset();
    m_edit.reset();
    const QVector<ProjectClipPtr> before = m_clips;
    {
        const QSignalBlocker quiet(this); // everything is told at once
        for (const ProjectClipPtr &clip : before)
            m_history->unwatch(clip.get());
        m_history->clear();
    }
    m_path = path;
    take(snapshot);
    m_saved = mark();
    m_modifications += isSaved ? 0 : 1;
    m_wasDirty = isDirty();
    Q_EMIT reset();
    Q_EMIT pathChanged(m_path);
    Q_EMIT currentClipChanged(currentClip());
    Q_EMIT undoRedoChanged();
    Q_EMIT dirtyChanged(m_wasDirty);
}

void Project::take(const ProjectSnapshot &snapshot)
{
    m_id = snapshot.id;
    m_media = snapshot.media;
    m_clips.clear();
    m_currentClip = snapshot.currentClip;
    m_lastId = 0;
    for (const MediaEntry &entry : qAsConst(m_media))
        m_lastId = qMax(m_lastId, entry.id);
    for (const ProjectSnapshot::Clip &clip : snapshot.clips) {
        m_clips.append(restored(clip, *findMedia(clip.media)));
        m_history->watch(m_clips.last());
        m_lastId = qMax(m_lastId, clip.id);
    }
    if (!currentClip() && !m_clips.isEmpty())
        m_currentClip = m_clips.first()->id();
    m_drafts = draftMark();
}

void Project::startNew()
{
    waitForSaving();
    ProjectSnapshot empty;
    empty.id = newId();
    if (m_manager)
        m_manager->startProject(empty.id);
    replace(empty, QString(), true);
}

// Of an autosave the media are found from where the project's own file is.
bool readSnapshot(const QString &path,
                  ProjectSnapshot *snapshot,
                  QString *error,
                  const ReadingStep &step)
{
    using zk::storage::ProjectStore;
    zk::storage::ProjectRecord record;
    if (ProjectStore::load(path, &record, error) != ProjectStore::OpenResult::Opened)
        return false;
    const QString home = record.origin.isEmpty() ? path : record.origin;
    bool isCancelled = false;
    const ReadingStep untilCancelled = [&](int done, int count) {
        isCancelled = step && !step(done, count);
        return !isCancelled;
    };
    if (snapshot->fromRecord(record, QFileInfo(home).absolutePath(), untilCancelled))
        return true;
    *error = isCancelled
        ? QString()
        : Project::tr("%1 holds contradictory data and cannot be opened. The file was not "
                      "changed.")
              .arg(QDir::toNativeSeparators(path));
    return false;
}

namespace {

bool readWith(const SnapshotReading &reading,
              const QString &path,
              ProjectSnapshot *snapshot,
              QString *error)
{
    return reading ? reading(path, snapshot, error) : readSnapshot(path, snapshot, error, {});
}

} // namespace

bool Project::open(const QString &path, QString *error, const SnapshotReading &reading)
{
    ProjectSnapshot snapshot;
    if (!readWith(reading, path, &snapshot, error))
        return false;
    waitForSaving();
    if (m_manager)
        m_manager->setOpenedProject(snapshot.id);
    replace(snapshot, QFileInfo(path).absoluteFilePath(), true);
    return true;
}

bool Project::recover(const QString &autosaveFile, QString *error, const SnapshotReading &reading)
{
    ProjectSnapshot snapshot;
    if (!readWith(reading, autosaveFile, &snapshot, error))
        return false;
    waitForSaving();
    if (m_manager && snapshot.origin.isEmpty())
        m_manager->startProject(snapshot.id);
    else if (m_manager)
        m_manager->setOpenedProject(snapshot.id);
    replace(snapshot, snapshot.origin, false);
    return true;
}

bool Project::save(const QString &path, QString *error)
{
    waitForSaving();
    const QString target = QFileInfo(path).absoluteFilePath();
    const Mark state = mark();
    if (!writeSnapshot(snapshot(), target, error))
        return false;
    onSaved(target, state);
    return true;
}

bool Project::startSaving(const QString &path)
{
    if (isSaving())
        return false;
    m_savingPath = QFileInfo(path).absoluteFilePath();
    m_saving = mark();
    m_writer->write(snapshot(), m_savingPath);
    return true;
}

bool Project::isSaving() const
{
    return m_writer->isBusy();
}

void Project::waitForSaving()
{
    m_writer->wait();
}

void Project::onWritten(bool success, const QString &error)
{
    if (success)
        onSaved(m_savingPath, m_saving);
    Q_EMIT savingFinished(success, error);
}

void Project::onSaved(const QString &path, const Mark &state)
{
    m_saved = state;
    if (m_manager)
        m_manager->setProjectSaved();
    if (path != m_path) {
        m_path = path;
        Q_EMIT pathChanged(path);
    }
    updateDirty();
}

} // namespace zk::datamodel
