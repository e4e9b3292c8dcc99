#pragma once

#include "ZkDataModel.h"
#include "ZkMediaInfo.h"

#include <QSize>

#include <memory>

class ZkStudioEffectList;
class ZkStudioMediaSource;
class ZkStudioSmartKeyingService;
class ZkStudioTimeline;

namespace zk::datamodel {
class MatteTrack;
}

// A stretch of a media file on a timeline, which it begins at frame 0 of. Its frames are counted from
// 0 at its in point. GUI thread only.
class ZKDATAMODEL_EXPORT ZkStudioClip : public IZkClip
{
public:
    // The whole file.
    ZkStudioClip(ZkStudioTimeline *timeline, const zk::media::MediaInfo &media);
    // The frames [inFrame, inFrame + frameCount) of the file, clamped to it.
    ZkStudioClip(ZkStudioTimeline *timeline,
                 const zk::media::MediaInfo &media,
                 qint64 inFrame,
                 qint64 frameCount);
    ~ZkStudioClip() override;

    // The same stretch with copies of the effects, the applied cutout and the segmentation, for that
    // timeline. Nothing of it is an undo step. Mattes are shared, so it costs next to nothing.
    std::unique_ptr<ZkStudioClip> copyTo(ZkStudioTimeline *timeline) const;

    const zk::media::MediaInfo &media() const;
    // Another file with the same pictures at another place; neither an undo step nor reported.
    void setMedia(const zk::media::MediaInfo &media);
    // The same with its pictures from that frame of the file on.
    void setMedia(const zk::media::MediaInfo &media, qint64 inFrame);
    QSize frameSize() const { return media().size; }
    qint64 inFrame() const { return m_inFrame; } // frame of the file
    qint64 frameCount() const { return m_frameCount; }

    ZkStudioTimeline *studioTimeline() const { return m_timeline; }
    ZkStudioEffectList *studioEffects() const { return m_effects.get(); }
    ZkStudioSmartKeyingService *studioService(ZKSMARTKEYING::ZkSmartKeyingBusinessType type) const;

    // The cutout that was applied last; null: none. Setting it is neither an undo step nor reported.
    const std::shared_ptr<const zk::datamodel::MatteTrack> &matteTrack() const { return m_mattes; }
    void setMatteTrack(std::shared_ptr<const zk::datamodel::MatteTrack> mattes);

    int type() const override;
    IZkMediaSource *source() const override;
    IZkEffectList *effects() const override;
    IZkTimeline *timeline() const override;
    IZkSmartKeyingService *
    smartKeyingService(ZKSMARTKEYING::ZkSmartKeyingBusinessType type) const override;

private:
    Q_DISABLE_COPY(ZkStudioClip)

    ZkStudioTimeline *const m_timeline;
    const std::unique_ptr<ZkStudioMediaSource> m_source;
    qint64 m_inFrame;
    const qint64 m_frameCount;
    std::unique_ptr<ZkStudioEffectList> m_effects;
    std::unique_ptr<ZkStudioSmartKeyingService> m_cutoutService;
    std::unique_ptr<ZkStudioSmartKeyingService> m_erasingService;
    std::shared_ptr<const zk::datamodel::MatteTrack> m_mattes;
};
