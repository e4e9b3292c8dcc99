#include "ZkStudioEditController.h"

#include "../ZkPlayerFeedback.h"
#include "../segmentation/ZkPixels.h"
#include "../segmentation/ZkStudioSmartKeyingService.h"

#include "ZkMediaPlayer.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcEdit, "zk.edit")

using namespace zk::datamodel;

ZkStudioEditController::ZkStudioEditController()
    : m_context(std::make_unique<QObject>())
{ }

ZkStudioEditController::~ZkStudioEditController()
{
    releaseMediaPlayer();
}

void ZkStudioEditController::addObserver(IZkSmartKeyingEditControllerObserver *observer)
{
    m_observers.add(observer);
}

void ZkStudioEditController::removeObserver(IZkSmartKeyingEditControllerObserver *observer)
{
    m_observers.remove(observer);
}

bool ZkStudioEditController::initialise(IZkClip *clip,
                                        IZkMediaPlayer *player,
                                        qint64 *initialFrame,
                                        ZKSMARTKEYING::ZkSmartKeyingBusinessType type)
{
    auto *projectClip = dynamic_cast<ZkStudioClip *>(clip);
    if (m_timeline || !projectClip || projectClip->frameCount() == 0)
        return false;
    QString error;
    const zk::engine::EngineBackendsPtr engine = projectClip->studioTimeline()->engine();
    m_editor = NodeEditor::open(projectClip->media(), projectClip->inFrame(), engine, &error);
    if (!m_editor) {
        qCInfo(lcEdit) << "The clip cannot be edited:" << error;
        return false;
    }
    const zk::media::MediaInfo &media = projectClip->media();
    m_timeline = std::make_unique<ZkStudioTimeline>(
        ZkTimelineFormat {media.size, media.frameRateNum, media.frameRateDen});
    m_timeline->setWorkspace(type);
    m_timeline->setEngine(engine);
    m_timeline->setClip(projectClip->copyTo(m_timeline.get()));
    m_timeline->playhead()->setPosition(*initialFrame);
    *initialFrame = m_timeline->playhead()->position();
    service()->setNodeListener([this](qint64 frame) { notifyNodeChanged(frame); });
    service()->setObjectFinder([this](qint64 frame, const QRect &box) {
        return m_editor->objectIn(frame, box, service()->segments().isSingleObject());
    });
    m_projectClip = projectClip;
    m_player = dynamic_cast<PlayerFeedback *>(player);
    m_type = type;
    return true;
}

IZkClip *ZkStudioEditController::editClip() const
{
    return m_timeline ? m_timeline->clip() : nullptr;
}

void ZkStudioEditController::switchWorkMode(ZKSMARTKEYING::ZkSegmentWorkMode mode)
{
    if (m_timeline && !isTracking() && mode != ZKSMARTKEYING::TrackingMode)
        service()->setWorkMode(mode);
}

bool ZkStudioEditController::addMask(qint64 frame, const QImage &strokes)
{
    return applyStroke(frame, strokes, NodeEditor::KeepStroke, tr("Add mask"));
}

bool ZkStudioEditController::subtractMask(qint64 frame, const QImage &strokes)
{
    return applyStroke(frame, strokes, NodeEditor::RemoveStroke, tr("Remove mask"));
}

bool ZkStudioEditController::eraseMask(qint64 frame, const QImage &strokes)
{
    return applyStroke(frame, strokes, NodeEditor::EraseStroke, tr("Erase mask"));
}

bool ZkStudioEditController::setMatte(qint64 frame, const QImage &matte)
{
    Outcome outcome;
    if (canEdit(frame))
        outcome = m_editor->given(service()->segments().node(frame), matte);
    return commit(frame, outcome, tr("Set matte"));
}

bool ZkStudioEditController::canEdit(qint64 frame) const
{
    return m_timeline && service()->isEnabled() && !service()->isLocked() && frame >= 0
        && frame < m_timeline->frameCount();
}

bool ZkStudioEditController::applyStroke(qint64 frame,
                                         const QImage &strokes,
                                         Stroke stroke,
                                         const QString &text)
{
    Outcome outcome;
    if (canEdit(frame)) {
        const StrokeMap map = service()->strokeMapOf(strokes);
        if (!map.box.isEmpty())
            outcome = m_editor->stroked(service()->segments(), frame, stroke, map);
    }
    return commit(frame, outcome, text);
}

// The presenter waits for the change record of every stroke, so there is one whatever came of it. An
// observer may delete the controller: nothing of it is used after the report.
bool ZkStudioEditController::commit(qint64 frame, const Outcome &outcome, const QString &text)
{
    if (!m_timeline)
        return false;
    const bool hasChanged = outcome.succeeded && outcome.node != service()->segments().node(frame);
    if (hasChanged)
        service()->changeNode(frame, outcome.node, text);
    else
        service()->reportChange();
    return outcome.succeeded;
}

bool ZkStudioEditController::deleteSegment(qint64 frame)
{
    if (!m_timeline || service()->isLocked() || !service()->segments().node(frame))
        return false;
    service()->changeNode(frame, {}, tr("Delete object"));
    return true;
}

QImage ZkStudioEditController::segmentThumbnail(int index) const
{
    const qint64 frame = m_timeline ? service()->segmentNodeAt(index) : -1;
    const SegmentNodePtr node = frame < 0 ? nullptr : service()->segments().node(frame);
    if (!node)
        return {};
    return m_thumbnails.find(frame, *node, service()->settings(), [this](qint64 frameToRead) {
        return m_editor->picture(frameToRead);
    });
}

void ZkStudioEditController::notifyNodeChanged(qint64 frame)
{
    m_observers.forEach([=](IZkSmartKeyingEditControllerObserver *observer) {
        observer->onNodeChangedEvent(frame);
    });
}

void ZkStudioEditController::releaseMediaPlayer()
{
    m_player = nullptr;
    abandonRuns();
    m_oldTrackings.clear(); // their destructors wait for the workers
    m_oldApplyings.clear();
}

extern "C" {

IZkSmartKeyingEditController *createSmartKeyingEditController()
{
    return new ZkStudioEditController;
}

void releaseSmartKeyingEditController(IZkSmartKeyingEditController *controller)
{
    delete controller;
}
}
