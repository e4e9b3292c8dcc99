// What the user changes of a project: its bin and its clips.
#include "ZkProject.h"

#include "../timeline/ZkStudioTimeline.h"
#include "ZkProjectHistory.h"

#include "ZkDataModel.h"

#include <QDir>
#include <QFileInfo>

namespace zk::datamodel {

// Puts an entry in its place in the bin, or takes it from there.
class Project::PlaceMediaItem : public IZkUndoRedoItem
{
public:
    PlaceMediaItem(Project *project, const MediaEntry &entry, int index, bool isAdded)
        : m_project(project)
        , m_entry(entry)
        , m_index(index)
        , m_isAdded(isAdded)
    { }

    void redo() override { place(m_isAdded); }
    void undo() override { place(!m_isAdded); }
    QString description() const override
    {
        return m_isAdded ? Project::tr("Import media") : Project::tr("Remove media");
    }

private:
    void place(bool isIn)
    {
        if (isIn) {
            m_project->putMedia(m_entry, m_index);
            return;
        }
        m_entry = *m_project->findMedia(m_entry.id); // it may have been relinked meanwhile
        m_project->takeMedia(m_entry.id);
    }

    Project *const m_project;
    MediaEntry m_entry;
    const int m_index;
    const bool m_isAdded;
};

class Project::PlaceClipItem : public IZkUndoRedoItem
{
public:
    PlaceClipItem(Project *project, const ProjectClipPtr &clip, int index, bool isAdded)
        : m_project(project)
        , m_clip(clip)
        , m_index(index)
        , m_isAdded(isAdded)
    { }

    void redo() override { place(m_isAdded); }
    void undo() override { place(!m_isAdded); }
    QString description() const override
    {
        return m_isAdded ? Project::tr("Add clip") : Project::tr("Remove clip");
    }

private:
    void place(bool isIn)
    {
        if (isIn)
            m_project->putClip(m_clip, m_index);
        else
            m_project->takeClip(m_clip);
    }

    Project *const m_project;
    const ProjectClipPtr m_clip;
    const int m_index;
    const bool m_isAdded;
};

class Project::MoveClipItem : public IZkUndoRedoItem
{
public:
    MoveClipItem(Project *project, int from, int to)
        : m_project(project)
        , m_from(from)
        , m_to(to)
    { }

    void redo() override { m_project->shiftClip(m_from, m_to); }
    void undo() override { m_project->shiftClip(m_to, m_from); }
    QString description() const override { return Project::tr("Move clip"); }

private:
    Project *const m_project;
    const int m_from;
    const int m_to;
};

// The bin.

const MediaEntry *Project::findMedia(qint64 id) const
{
    for (const MediaEntry &entry : m_media) {
        if (entry.id == id)
            return &entry;
    }
    return nullptr;
}

MediaEntry *Project::mediaEntry(qint64 id)
{
    for (MediaEntry &entry : m_media) {
        if (entry.id == id)
            return &entry;
    }
    return nullptr;
}

qint64 Project::importMedia(const QString &path, QString *error)
{
    MediaEntry entry;
    return probeMedia(path, &entry, error) ? importMedia(entry) : 0;
}

qint64 Project::importMedia(const MediaEntry &probed)
{
    for (const MediaEntry &entry : qAsConst(m_media)) {
        if (QFileInfo(entry.info.path) == QFileInfo(probed.info.path))
            return entry.id;
    }
    MediaEntry entry = probed;
    entry.id = ++m_lastId;
    undoRedoService()->push(new PlaceMediaItem(this, entry, m_media.size(), true));
    return entry.id;
}

bool Project::removeMedia(qint64 id)
{
    for (int i = 0; i < m_media.size(); ++i) {
        if (m_media.at(i).id == id && !isMediaUsed(id)) {
            undoRedoService()->push(new PlaceMediaItem(this, m_media.at(i), i, false));
            return true;
        }
    }
    return false;
}

bool Project::isMediaUsed(qint64 id) const
{
    return std::any_of(m_clips.begin(), m_clips.end(), [id](const ProjectClipPtr &clip) {
        return clip->mediaId() == id;
    });
}

QVector<qint64> Project::missingMedia() const
{
    QVector<qint64> ids;
    for (const MediaEntry &entry : m_media) {
        if (entry.isMissing())
            ids.append(entry.id);
    }
    return ids;
}

void Project::putMedia(const MediaEntry &entry, int index)
{
    m_media.insert(qBound(0, index, m_media.size()), entry);
    undoRedoService()->runAfterStep([this, id = entry.id] { Q_EMIT mediaAdded(id); });
}

void Project::takeMedia(qint64 id)
{
    m_media.erase(std::remove_if(m_media.begin(),
                                 m_media.end(),
                                 [id](const MediaEntry &entry) { return entry.id == id; }),
                  m_media.end());
    undoRedoService()->runAfterStep([this, id] { Q_EMIT mediaRemoved(id); });
}

void Project::setMediaEntry(const MediaEntry &entry)
{
    *mediaEntry(entry.id) = entry;
    QVector<ProjectClipPtr> changed;
    for (const ProjectClipPtr &clip : qAsConst(m_clips)) {
        if (clip->mediaId() == entry.id) {
            clip->setMedia(entry);
            changed.append(clip);
        }
    }
    Q_EMIT mediaChanged(entry.id);
    for (const ProjectClipPtr &clip : qAsConst(changed))
        Q_EMIT clipChanged(clip.get());
}

bool Project::relinkMedia(qint64 id, const QString &path, QString *error)
{
    const MediaEntry *known = findMedia(id);
    MediaEntry found;
    if (!known || !probeMedia(path, &found, error))
        return false;
    QString reason;
    if (!fitsInPlaceOf(*known, found, &reason)) {
        *error = tr("%1 does not fit: %2").arg(QDir::toNativeSeparators(path), reason);
        return false;
    }
    found.id = id;
    setMediaEntry(found);
    markModified();
    return true;
}

void Project::checkMedia()
{
    const QVector<MediaEntry> before = m_media;
    for (const MediaEntry &known : before) {
        const MediaEntry now = lookedUp(known, {known.info.path});
        const bool isAsBefore = now.state == known.state && now.fileSize == known.fileSize
            && now.modified == known.modified;
        if (!isAsBefore && findMedia(known.id))
            setMediaEntry(now);
    }
}

// Clips.

ProjectClip *Project::clipAt(int index) const
{
    return index >= 0 && index < m_clips.size() ? m_clips.at(index).get() : nullptr;
}

ProjectClip *Project::findClip(qint64 id) const
{
    for (const ProjectClipPtr &clip : m_clips) {
        if (clip->id() == id)
            return clip.get();
    }
    return nullptr;
}

int Project::indexOf(const ProjectClip *clip) const
{
    for (int i = 0; i < m_clips.size(); ++i) {
        if (m_clips.at(i).get() == clip)
            return i;
    }
    return -1;
}

ProjectClip *Project::addClip(qint64 mediaId, int index)
{
    const MediaEntry *media = findMedia(mediaId);
    if (!media || media->isMissing())
        return nullptr;
    const auto clip = std::make_shared<ProjectClip>(++m_lastId, *media, 0, media->info.frameCount);
    const int place = index < 0 ? clipCount() : qMin(index, clipCount());
    undoRedoService()->push(new PlaceClipItem(this, clip, place, true));
    return clip.get();
}

bool Project::removeClip(int index)
{
    if (!clipAt(index))
        return false;
    undoRedoService()->push(new PlaceClipItem(this, m_clips.at(index), index, false));
    return true;
}

bool Project::moveClip(int from, int to)
{
    if (!clipAt(from) || !clipAt(to) || from == to)
        return false;
    undoRedoService()->push(new MoveClipItem(this, from, to));
    return true;
}

void Project::putClip(const ProjectClipPtr &clip, int index)
{
    clip->setMedia(*findMedia(clip->mediaId())); // it may have been relinked meanwhile
    m_clips.insert(qBound(0, index, m_clips.size()), clip);
    m_history->watch(clip);
    undoRedoService()->runAfterStep([this, clip] { Q_EMIT clipAdded(clip.get()); });
    if (!currentClip())
        setCurrentClip(clip.get());
}

void Project::takeClip(const ProjectClipPtr &clip)
{
    const int index = indexOf(clip.get());
    m_history->unwatch(clip.get());
    m_clips.removeAt(index);
    undoRedoService()->runAfterStep([this, clip] { Q_EMIT clipRemoved(clip.get()); });
    if (clip->id() == m_currentClip)
        setCurrentClip(clipAt(qMin(index, clipCount() - 1)));
}

void Project::shiftClip(int from, int to)
{
    m_clips.move(from, to);
    const ProjectClipPtr clip = m_clips.at(to);
    undoRedoService()->runAfterStep([this, clip] { Q_EMIT clipMoved(clip.get()); });
}

ProjectClip *Project::currentClip() const
{
    return findClip(m_currentClip);
}

void Project::setCurrentClip(const ProjectClip *clip)
{
    const qint64 id = clip && indexOf(clip) >= 0 ? clip->id() : 0;
    if (id == m_currentClip)
        return;
    m_currentClip = id;
    undoRedoService()->runAfterStep([this] { Q_EMIT currentClipChanged(currentClip()); });
}

} // namespace zk::datamodel
