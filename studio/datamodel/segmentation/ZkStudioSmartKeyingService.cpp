#include "ZkStudioSmartKeyingService.h"

#include "../timeline/ZkStudioTimeline.h"
#include "ZkDoubt.h"
#include "ZkPixels.h"

#include <algorithm>

using namespace zk::datamodel;

class ZkStudioSmartKeyingService::TrackItem : public IZkUndoRedoItem
{
public:
    TrackItem(ZkStudioSmartKeyingService *service,
              const QMap<qint64, TrackedMattes> &before,
              const QString &text)
        : m_service(service)
        , m_before(before)
        , m_after(service->m_segments.tracked())
        , m_text(text)
    { }

    void redo() override { restore(m_after); }
    void undo() override { restore(m_before); }
    QString description() const override { return m_text; }

private:
    void restore(const QMap<qint64, TrackedMattes> &tracked)
    {
        m_service->setTracked(tracked);
        m_service->reportChange();
    }

    ZkStudioSmartKeyingService *const m_service;
    const QMap<qint64, TrackedMattes> m_before;
    const QMap<qint64, TrackedMattes> m_after;
    const QString m_text;
};

class ZkStudioSmartKeyingService::InvertItem : public IZkUndoRedoItem
{
public:
    InvertItem(ZkStudioSmartKeyingService *service, bool inverted)
        : m_service(service)
        , m_inverted(inverted)
    { }

    void redo() override { restore(m_inverted); }
    void undo() override { restore(!m_inverted); }
    QString description() const override { return ZkStudioSmartKeyingService::tr("Invert mask"); }

private:
    void restore(bool inverted)
    {
        m_service->m_settings.invert = inverted;
        m_service->reportChange();
    }

    ZkStudioSmartKeyingService *const m_service;
    const bool m_inverted;
};

ZkStudioSmartKeyingService::ZkStudioSmartKeyingService(ZkStudioClip *clip)
    : m_clip(clip)
{ }

ZkStudioSmartKeyingService::~ZkStudioSmartKeyingService() = default;

ZkStudioTimeline *ZkStudioSmartKeyingService::timeline() const
{
    return m_clip->studioTimeline();
}

void ZkStudioSmartKeyingService::setState(const Segments &segments, const SegmentSettings &settings)
{
    m_segments = segments;
    m_settings = settings;
    ++m_change;
    shownAreas();
}

void ZkStudioSmartKeyingService::replaceState(const Segments &segments,
                                              const SegmentSettings &settings,
                                              bool isQuiet)
{
    m_settings = settings;
    restoreSegments(segments, isQuiet);
}

void ZkStudioSmartKeyingService::setTracked(const QMap<qint64, TrackedMattes> &tracked)
{
    m_segments.setTracked(tracked);
    ++m_change;
}

void ZkStudioSmartKeyingService::beginTracking(const QMap<qint64, TrackedMattes> &tracked)
{
    m_sceneCuts.clear();
    setTracked(tracked);
}

void ZkStudioSmartKeyingService::storeTracked(qint64 frame, bool isForward, const TrackedSide &side)
{
    ++m_change;
    m_segments.setTracked(frame, isForward, side);
    m_trackedObservers.forEach([=](TrackedObserver *observer) { observer->onTrackedEvent(frame); });
}

void ZkStudioSmartKeyingService::storeSceneCut(qint64 frame, qint64 skippedTo, bool isForward)
{
    const auto range = std::minmax(frame, skippedTo);
    ++m_change;
    m_segments.removeTracked(range.first, range.second, isForward);
    m_sceneCuts.append(frame);
    m_trackedObservers.forEach([=](TrackedObserver *observer) { observer->onTrackedEvent(frame); });
}

QVector<qint64> ZkStudioSmartKeyingService::sceneCuts() const
{
    QVector<qint64> frames;
    std::copy_if(m_sceneCuts.cbegin(),
                 m_sceneCuts.cend(),
                 std::back_inserter(frames),
                 [this](qint64 frame) { return !m_segments.hasMask(frame); });
    std::sort(frames.begin(), frames.end());
    return frames;
}

qint64 ZkStudioSmartKeyingService::frameToCorrect() const
{
    if (m_isLocked)
        return -1;
    if (!m_doubt || m_doubt->change != m_change)
        m_doubt = Doubt {m_change, zk::datamodel::frameToCorrect(m_segments, m_checked)};
    return m_doubt->frame;
}

void ZkStudioSmartKeyingService::setChecked(qint64 frame)
{
    m_checked[frame] = m_segments.confidenceAt(frame);
    m_doubt.reset();
}

void ZkStudioSmartKeyingService::closeTracking(const QMap<qint64, TrackedMattes> &before,
                                               const QString &text)
{
    timeline()->undoRedoService()->push(new TrackItem(this, before, text));
}

void ZkStudioSmartKeyingService::addTrackedObserver(TrackedObserver *observer)
{
    m_trackedObservers.add(observer);
}

void ZkStudioSmartKeyingService::removeTrackedObserver(TrackedObserver *observer)
{
    m_trackedObservers.remove(observer);
}

void ZkStudioSmartKeyingService::reportChange()
{
    timeline()->reportChanges({ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData});
}

int ZkStudioSmartKeyingService::maskItemCount() const
{
    return m_segments.nodes().size();
}

bool ZkStudioSmartKeyingService::isTracked() const
{
    return !m_segments.tracked().isEmpty() || !m_segments.saved().isEmpty();
}

bool ZkStudioSmartKeyingService::isEraseEnabled(qint64 frame) const
{
    return m_segments.hasAnything(frame);
}

bool ZkStudioSmartKeyingService::overlapsMask(const QImage &strokes, qint64 frame) const
{
    const QImage mask = m_segments.matteAt(frame);
    if (mask.isNull() || strokes.isNull())
        return false;
    const StrokeMap map = strokeMapOf(strokes);
    const cv::Rect box = rectOf(map.box);
    return !box.empty() && cv::countNonZero(pixelsOf(map.pixels)(box) & pixelsOf(mask)(box)) > 0;
}

StrokeMap ZkStudioSmartKeyingService::strokeMapOf(const QImage &strokes) const
{
    if (m_strokesKey != strokes.cacheKey() || m_strokeMap.pixels.isNull()) {
        m_strokeMap = strokeMap(strokes, m_clip->frameSize());
        m_strokesKey = strokes.cacheKey();
    }
    return m_strokeMap;
}

int ZkStudioSmartKeyingService::minimumPenWidth(const QSize &shownSize) const
{
    const int sourceWidth = qMax(1, m_clip->frameSize().width());
    return qMax(1, (shownSize.width() + sourceWidth - 1) / sourceWidth);
}

void ZkStudioSmartKeyingService::reset()
{
    if (m_isLocked)
        return;
    const bool isSingle = m_segments.isSingleObject();
    m_segments = Segments();
    m_segments.setSingleObject(isSingle);
    ++m_change;
    m_settings.invert = false;
    const std::weak_ptr<int> alive = m_alive;
    timeline()->undoRedoService()->clearHistory();
    if (!alive.expired())
        reportChange();
}

template<typename T>
void ZkStudioSmartKeyingService::changeSetting(T SegmentSettings::*setting, T value)
{
    if (m_settings.*setting == value)
        return;
    m_settings.*setting = value;
    reportChange();
}

void ZkStudioSmartKeyingService::setPreviewType(ZKSMARTKEYING::ZkPreviewType type)
{
    changeSetting(&SegmentSettings::type, zk::effects::PreviewType(type));
}

ZKSMARTKEYING::ZkPreviewType ZkStudioSmartKeyingService::previewType() const
{
    return ZKSMARTKEYING::ZkPreviewType(m_settings.type);
}

void ZkStudioSmartKeyingService::setMaskRegionColor(const QColor &color)
{
    if (color.isValid())
        changeSetting(&SegmentSettings::overlayColour, color);
}

void ZkStudioSmartKeyingService::setMaskRegionAlpha(int alpha)
{
    changeSetting(&SegmentSettings::overlayAlpha, qBound(0, alpha, 255));
}

void ZkStudioSmartKeyingService::setMaskInverted(bool inverted)
{
    if (!m_isLocked && inverted != m_settings.invert)
        timeline()->undoRedoService()->push(new InvertItem(this, inverted));
}
