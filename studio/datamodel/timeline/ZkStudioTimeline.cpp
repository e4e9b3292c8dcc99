#include "ZkStudioTimeline.h"

#include "ZkMediaReader.h"
#include "ZkStudioMediaSource.h"
#include "backend/ZkEngineBackends.h"

#include <QHash>

namespace {

// Handles are never used twice, so that one of a timeline that is gone finds nothing.
class HandleRegistry
{
public:
    ZkTimelineHandle add(ZkStudioTimeline *timeline)
    {
        m_timelines.insert(++m_last, timeline);
        return m_last;
    }
    void remove(ZkTimelineHandle handle) { m_timelines.remove(handle); }
    ZkStudioTimeline *find(ZkTimelineHandle handle) const { return m_timelines.value(handle); }

private:
    QHash<ZkTimelineHandle, ZkStudioTimeline *> m_timelines;
    ZkTimelineHandle m_last = 0;
};

Q_GLOBAL_STATIC(HandleRegistry, registry)

} // namespace

ZkStudioTimeline::ZkStudioTimeline(const ZkTimelineFormat &format)
    : m_format(format)
    , m_handle(registry->add(this))
    , m_playhead(std::make_unique<ZkStudioPlayhead>())
    , m_undo(std::make_unique<ZkStudioUndoRedoService>([this](const ZkTimelineChanges &changes) {
        ++m_deliveries;
        m_observers.forEach(
            [&](IZkTimelineEventObserver *observer) { observer->onTimelineChangedEvent(changes); });
    }))
    , m_engine(zk::engine::classicalBackends())
{ }

ZkStudioTimeline::~ZkStudioTimeline()
{
    registry->remove(m_handle);
    // Undo steps refer to the clip.
    m_undo.reset();
}

std::unique_ptr<ZkStudioTimeline> ZkStudioTimeline::fromMediaFile(const QString &path,
                                                                  QString *error)
{
    zk::media::StillOptions oneFrame;
    oneFrame.frameCount = 1;
    const auto reader = zk::media::MediaReader::open(path, error, oneFrame);
    if (!reader)
        return nullptr;
    const zk::media::MediaInfo &info = reader->info();
    auto timeline = std::make_unique<ZkStudioTimeline>(
        ZkTimelineFormat {info.size, info.frameRateNum, info.frameRateDen});
    timeline->setClip(std::make_unique<ZkStudioClip>(timeline.get(), info));
    return timeline;
}

ZkStudioTimeline *ZkStudioTimeline::fromHandle(ZkTimelineHandle handle)
{
    return registry->find(handle);
}

void ZkStudioTimeline::setEngine(std::shared_ptr<const zk::engine::EngineBackends> engine)
{
    m_engine = engine ? std::move(engine) : zk::engine::classicalBackends();
}

ZkStudioClip *ZkStudioTimeline::clip() const
{
    return m_clip.get();
}

void ZkStudioTimeline::setClip(std::unique_ptr<ZkStudioClip> clip)
{
    // Undo steps refer to the clip that goes.
    m_undo->clearHistory();
    m_clip = std::move(clip);
    m_playhead->setFrameRange(playheadRange());
}

qint64 ZkStudioTimeline::frameCount() const
{
    return m_clip ? m_clip->frameCount() : 0;
}

void ZkStudioTimeline::setWorkspace(ZKSMARTKEYING::ZkSmartKeyingBusinessType type)
{
    m_workspace = type;
    m_isEditTimeline = true;
}

ZkStudioSmartKeyingService *ZkStudioTimeline::shownService() const
{
    return m_isEditTimeline && m_clip ? m_clip->studioService(m_workspace) : nullptr;
}

void ZkStudioTimeline::reportChanges(const ZkTimelineChanges &changes)
{
    m_undo->report(changes);
}

IZkPlayhead *ZkStudioTimeline::playhead() const
{
    return m_playhead.get();
}

ZkRange<qint64> ZkStudioTimeline::playheadRange() const
{
    return {0, qMax<qint64>(0, frameCount() - 1)};
}

void ZkStudioTimeline::addEventObserver(IZkTimelineEventObserver *observer)
{
    m_observers.add(observer);
}

void ZkStudioTimeline::removeEventObserver(IZkTimelineEventObserver *observer)
{
    m_observers.remove(observer);
}
