#include "ZkStudioClip.h"

#include "../segmentation/ZkStudioSmartKeyingService.h"
#include "ZkStudioEffectList.h"
#include "ZkStudioMediaSource.h"
#include "ZkStudioTimeline.h"

ZkStudioClip::ZkStudioClip(ZkStudioTimeline *timeline, const zk::media::MediaInfo &media)
    : ZkStudioClip(timeline, media, 0, media.frameCount)
{ }

ZkStudioClip::ZkStudioClip(ZkStudioTimeline *timeline,
                           const zk::media::MediaInfo &media,
                           qint64 inFrame,
                           qint64 frameCount)
    : m_timeline(timeline)
    , m_source(std::make_unique<ZkStudioMediaSource>(media))
    , m_inFrame(qBound<qint64>(0, inFrame, media.frameCount))
    , m_frameCount(qBound<qint64>(0, frameCount, media.frameCount - m_inFrame))
    , m_effects(std::make_unique<ZkStudioEffectList>(timeline))
    , m_cutoutService(std::make_unique<ZkStudioSmartKeyingService>(this))
    , m_erasingService(std::make_unique<ZkStudioSmartKeyingService>(this))
{ }

ZkStudioClip::~ZkStudioClip() = default;

std::unique_ptr<ZkStudioClip> ZkStudioClip::copyTo(ZkStudioTimeline *timeline) const
{
    auto copy = std::make_unique<ZkStudioClip>(timeline, media(), m_inFrame, m_frameCount);
    copy->m_effects->copyFrom(*m_effects);
    copy->m_cutoutService->setState(m_cutoutService->segments(), m_cutoutService->settings());
    copy->m_erasingService->setState(m_erasingService->segments(), m_erasingService->settings());
    copy->m_mattes = m_mattes;
    return copy;
}

const zk::media::MediaInfo &ZkStudioClip::media() const
{
    return m_source->info();
}

void ZkStudioClip::setMedia(const zk::media::MediaInfo &media)
{
    m_source->setInfo(media);
}

void ZkStudioClip::setMedia(const zk::media::MediaInfo &media, qint64 inFrame)
{
    setMedia(media);
    m_inFrame = inFrame;
}

ZkStudioSmartKeyingService *
ZkStudioClip::studioService(ZKSMARTKEYING::ZkSmartKeyingBusinessType type) const
{
    return type == ZKSMARTKEYING::AIErasing ? m_erasingService.get() : m_cutoutService.get();
}

void ZkStudioClip::setMatteTrack(std::shared_ptr<const zk::datamodel::MatteTrack> mattes)
{
    m_mattes = std::move(mattes);
}

int ZkStudioClip::type() const
{
    return media().isStill ? ZKTIMELINE::ImageClip : ZKTIMELINE::VideoClip;
}

IZkMediaSource *ZkStudioClip::source() const
{
    return m_source.get();
}

IZkEffectList *ZkStudioClip::effects() const
{
    return m_effects.get();
}

IZkTimeline *ZkStudioClip::timeline() const
{
    return m_timeline;
}

IZkSmartKeyingService *
ZkStudioClip::smartKeyingService(ZKSMARTKEYING::ZkSmartKeyingBusinessType type) const
{
    return studioService(type);
}
