#pragma once

#include "ZkProjectSnapshot.h"

#include "ZkGlobal.h"

#include <QMetaType>
#include <QString>

#include <memory>

class ZkStudioClip;
class ZkStudioTimeline;

namespace zk::datamodel {

// One clip of a project, alone on a timeline of its own. A clip that was removed stays alive in the
// undo history. GUI thread only.
class ZKDATAMODEL_EXPORT ProjectClip
{
public:
    // The frames [inFrame, inFrame + frameCount) of the file, clamped to it. The file is not opened.
    ProjectClip(qint64 id, const MediaEntry &media, qint64 inFrame, qint64 frameCount);
    ~ProjectClip();

    qint64 id() const { return m_id; } // positive, unique in the project, kept in its file
    qint64 mediaId() const { return m_mediaId; }
    ZkStudioTimeline *timeline() const { return m_timeline.get(); }
    ZkStudioClip *clip() const;
    QString name() const; // of its file
    // Its file is missing: there are no pictures, but everything that was made of it is kept.
    bool isOffline() const { return m_isOffline; }
    // Whether a cutout was applied to it, enabled or not.
    bool isCutOut() const;

    // Work of earlier workspaces that was neither applied nor given up, at most one of each kind. The
    // workspace goes on from there when it is opened again.
    const QVector<ProjectSnapshot::Draft> &drafts() const { return m_drafts; }
    void setDrafts(const QVector<ProjectSnapshot::Draft> &drafts) { m_drafts = drafts; }

    // Takes the file of the entry instead, which must fit; neither an undo step nor reported.
    void setMedia(const MediaEntry &media);
    // The same for an entry with the clip's pictures from that frame on.
    void setMedia(const MediaEntry &media, qint64 inFrame);

private:
    Q_DISABLE_COPY(ProjectClip)

    const qint64 m_id;
    qint64 m_mediaId;
    bool m_isOffline;
    QVector<ProjectSnapshot::Draft> m_drafts;
    const std::unique_ptr<ZkStudioTimeline> m_timeline;
};

using ProjectClipPtr = std::shared_ptr<ProjectClip>;

} // namespace zk::datamodel

Q_DECLARE_METATYPE(zk::datamodel::ProjectClip *)
