#include "ZkProjectClip.h"

#include "../timeline/ZkStudioEffectList.h"
#include "../timeline/ZkStudioTimeline.h"
#include "ZkMediaEntry.h"

#include <QFileInfo>

namespace zk::datamodel {

namespace {

ZkTimelineFormat formatOf(const zk::media::MediaInfo &info)
{
    return {info.size, info.frameRateNum, info.frameRateDen};
}

} // namespace

ProjectClip::ProjectClip(qint64 id, const MediaEntry &media, qint64 inFrame, qint64 frameCount)
    : m_id(id)
    , m_mediaId(media.id)
    , m_isOffline(media.isMissing())
    , m_timeline(std::make_unique<ZkStudioTimeline>(formatOf(media.info)))
{
    m_timeline->setClip(
        std::make_unique<ZkStudioClip>(m_timeline.get(), media.info, inFrame, frameCount));
}

ProjectClip::~ProjectClip() = default;

ZkStudioClip *ProjectClip::clip() const
{
    return m_timeline->clip();
}

QString ProjectClip::name() const
{
    return QFileInfo(clip()->media().path).fileName();
}

bool ProjectClip::isCutOut() const
{
    return clip()->matteTrack() && clip()->studioEffects()->cutoutEffect();
}

void ProjectClip::setMedia(const MediaEntry &media)
{
    setMedia(media, clip()->inFrame());
}

void ProjectClip::setMedia(const MediaEntry &media, qint64 inFrame)
{
    m_mediaId = media.id;
    m_isOffline = media.isMissing();
    clip()->setMedia(media.info, inFrame);
}

} // namespace zk::datamodel
