#include "ZkStudioSmartKeyingService.h"

#include "../timeline/ZkStudioTimeline.h"
#include "ZkPixels.h"
#include "ZkStrokeMap.h"

using namespace zk::datamodel;

class ZkStudioSmartKeyingService::NodeItem : public IZkUndoRedoItem
{
public:
    NodeItem(ZkStudioSmartKeyingService *service,
             qint64 frame,
             const SegmentNodePtr &after,
             const QString &text)
        : m_service(service)
        , m_frame(frame)
        , m_before(service->m_segments.node(frame))
        , m_after(after)
        , m_text(text)
    { }

    void redo() override { m_service->restoreNode(m_frame, m_after); }
    void undo() override { m_service->restoreNode(m_frame, m_before); }
    QString description() const override { return m_text; }

private:
    ZkStudioSmartKeyingService *const m_service;
    const qint64 m_frame;
    const SegmentNodePtr m_before;
    const SegmentNodePtr m_after;
    const QString m_text;
};

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
        m_service->m_segments.setTracked(tracked);
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
}

void ZkStudioSmartKeyingService::changeNode(qint64 frame,
                                            const SegmentNodePtr &node,
                                            const QString &text)
{
    timeline()->undoRedoService()->push(new NodeItem(this, frame, node, text));
}

void ZkStudioSmartKeyingService::restoreNode(qint64 frame, const SegmentNodePtr &node)
{
    m_segments.setNode(frame, node);
    reportChange();
    timeline()->undoRedoService()->runAfterStep([this, frame, alive = std::weak_ptr<int>(m_alive)] {
        if (!alive.expired() && m_nodeListener)
            m_nodeListener(frame);
    });
}

bool ZkStudioSmartKeyingService::removeNodes(const QVector<qint64> &frames, const QString &text)
{
    QVector<qint64> nodes;
    for (qint64 frame : frames) {
        if (m_segments.node(frame) && !nodes.contains(frame))
            nodes.append(frame);
    }
    if (m_isLocked || nodes.isEmpty())
        return false;
    ZkStudioUndoRedoService *undo = timeline()->undoRedoService();
    // The step is closed before the change is reported.
    const ZkPauseEventCommander pause(undo);
    const ZkUndoRedoCommander step(
        undo, text, QStringLiteral("ZkStudioSmartKeyingService::removeNodes"));
    for (qint64 frame : qAsConst(nodes))
        changeNode(frame, {}, text);
    return true;
}

void ZkStudioSmartKeyingService::storeTracked(qint64 frame, bool isForward, const TrackedSide &side)
{
    m_segments.setTracked(frame, isForward, side);
    m_trackedObservers.forEach([=](TrackedObserver *observer) { observer->onTrackedEvent(frame); });
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
    return !m_segments.tracked().isEmpty();
}

bool ZkStudioSmartKeyingService::isEraseEnabled(qint64 frame) const
{
    return m_segments.hasAnything(frame);
}

bool ZkStudioSmartKeyingService::overlapsMask(const QImage &strokes, qint64 frame) const
{
    const QImage mask = m_segments.matteAt(frame);
    const QImage map = strokeMap(strokes, mask.size());
    return !map.isNull() && cv::countNonZero(pixelsOf(map) & pixelsOf(mask)) > 0;
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
    m_segments = Segments();
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
