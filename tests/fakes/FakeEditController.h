// The edit controller that createSmartKeyingEditController() hands out.
#pragma once

#include "FakeEffects.h"

namespace zk::fake {

class EditController : public IZkSmartKeyingEditController
{
public:
    ZKFAKES_EXPORT static EditController *living;

    void addObserver(IZkSmartKeyingEditControllerObserver *who) override { observers.add(who); }
    void removeObserver(IZkSmartKeyingEditControllerObserver *who) override { observers.drop(who); }
    // Fails for a clip without media, as the host does. The edit timeline starts 100 frames into the
    // project's.
    bool initialise(IZkClip *source,
                    IZkMediaPlayer *player,
                    qint64 *initialFrame,
                    ZKSMARTKEYING::ZkSmartKeyingBusinessType type) override
    {
        note("controller.initialise", player != nullptr, *initialFrame, int(type));
        initialised = source->source() != nullptr;
        businessType = type;
        *initialFrame -= 100;
        return initialised;
    }
    IZkClip *editClip() const override { return initialised ? &clip : nullptr; }
    IZkTimeline *editTimeline() const override { return initialised ? &clip.line : nullptr; }
    void switchWorkMode(ZKSMARTKEYING::ZkSegmentWorkMode mode) override
    {
        note("controller.switchWorkMode", int(mode));
        service().mode = mode;
    }
    bool addMask(qint64 frame, const QImage &) override { return edit("addMask", frame); }
    bool subtractMask(qint64 frame, const QImage &) override { return edit("subtractMask", frame); }
    bool eraseMask(qint64 frame, const QImage &) override { return edit("eraseMask", frame); }
    bool setMatte(qint64 frame, const QImage &) override { return edit("setMatte", frame); }
    int startTracking(qint64 frame,
                      ZKSMARTKEYING::ZkSegmentToTrackDirect direct,
                      ZKSMARTKEYING::ZkSegmentToTrackType type) override
    {
        note("controller.startTracking", frame, int(direct), int(type));
        if (trackingResult == ZKSMARTKEYING::TrackingStarted)
            service().mode = ZKSMARTKEYING::TrackingMode;
        return trackingResult;
    }
    void stopTracking() override
    {
        note("controller.stopTracking");
        service().mode = ZKSMARTKEYING::EditingMode;
    }
    void apply() override { note("controller.apply"); }
    void cancelApply() override
    {
        note("controller.cancelApply");
        finishSave(ZKSMARTKEYING::SaveCancelled);
    }
    bool deleteSegment(qint64 frame) override
    {
        note("controller.deleteSegment", frame);
        return service().removeSegmentNode(frame);
    }
    QImage segmentThumbnail(int) const override { return QImage(); }
    bool registerEditTime(qint64 begin, qint64 end) override
    {
        return time("registerEditTime", begin, end);
    }
    bool changeEditTime(qint64 begin, qint64 end) override
    {
        return time("changeEditTime", begin, end);
    }
    bool changeEditTimeCns(qint64 begin, qint64 end) override
    {
        return time("changeEditTimeCns", begin, end);
    }
    bool getEditTime(qint64 &begin, qint64 &end) const override
    {
        begin = 3;
        end = 9;
        return editTimeAnswer;
    }
    void setUndoManager(IZkUndoRedoService *edit, IZkUndoRedoService *project) override
    {
        undoManagers = {edit, project};
    }
    void releaseMediaPlayer() override { note("controller.releaseMediaPlayer"); }

    void finishSave(int result)
    {
        const auto listeners = observers;
        for (IZkSmartKeyingEditControllerObserver *observer : listeners)
            observer->onSaveFinishedEvent(result);
    }

    SmartKeyingService &service() { return businessType == 1 ? clip.cutout : clip.erasing; }

    bool initialised = false;
    int businessType = ZKSMARTKEYING::SmartCutout;
    bool editTimeAnswer = true;
    QPair<IZkUndoRedoService *, IZkUndoRedoService *> undoManagers;
    bool reportsMasks = true;
    int trackingResult = ZKSMARTKEYING::TrackingStarted;
    mutable Clip clip {"edit"};
    Observers<IZkSmartKeyingEditControllerObserver> observers {"controller"};

private:
    bool time(const char *call, qint64 begin, qint64 end)
    {
        note(QByteArray("controller.") + call, begin, end);
        return editTimeAnswer;
    }
    bool edit(const char *call, qint64 frame)
    {
        note(QByteArray("controller.") + call, frame);
        if (reportsMasks)
            clip.line.report({ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData});
        return true;
    }
};

} // namespace zk::fake
