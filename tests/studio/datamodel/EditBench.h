// A clip on disk and an edit controller on it, with observers that take notes.
#pragma once

#include "ZkDataModel.h"
#include "ZkMediaPlayer.h"
#include "ZkPlayerFeedback.h"
#include "ZkSampleClip.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioTimeline.h"

#include <QStringList>
#include <QTemporaryDir>

#include <functional>

namespace zk::test {

// The sample clip at 160 x 90, written once per program, without loss.
class EditClip
{
public:
    static constexpr int frames = 16;
    static constexpr QSize size {160, 90};
    static const EditClip &instance();

    QString path() const { return m_folder.filePath(QStringLiteral("clip.mkv")); }
    // A picture of its first frame, for still clips.
    QString stillPath() const { return m_folder.filePath(QStringLiteral("still.png")); }
    QImage frame(qint64 frame) const { return m_sample.frame(int(frame)); }
    QImage matte(qint64 frame) const { return m_sample.matte(int(frame)); }
    // The sample's own keep stroke on frame 0.
    QImage keepStroke() const;

private:
    EditClip();

    QTemporaryDir m_folder;
    media::SampleClip m_sample;
};

// Notes the calls of a player, and the work mode that the service is in by then.
class NotingPlayer : public IZkMediaPlayer, public datamodel::PlayerFeedback
{
public:
    QStringList notes; // "started 2", "finished 1"
    QVector<qint64> frames;
    QVector<int> percents;
    const IZkSmartKeyingService *service = nullptr;
    std::function<void(qint64)> onFrame;

    bool open(const ZkMediaPlayerOpenParam &) override { return true; }
    void stop() override { }
    void detachSource() override { }
    void setMode(int, int) override { }
    void trackingStarted() override { note(QStringLiteral("started %1")); }
    void showTrackedFrame(qint64 frame) override;
    void trackingProgress(int percent) override { percents.append(percent); }
    void trackingFinished() override { note(QStringLiteral("finished %1")); }

private:
    void note(const QString &what) { notes.append(what.arg(service->workMode())); }
};

// Keeps the change records of a timeline.
class NotingTimelineObserver : public IZkTimelineEventObserver
{
public:
    QVector<ZkTimelineChanges> sets;
    std::function<void()> onChange;

    void onTimelineChangedEvent(const ZkTimelineChanges &changes) override;
    int count(int kind) const; // of the sets with such a record
};

class NotingControllerObserver : public IZkSmartKeyingEditControllerObserver
{
public:
    QVector<int> progress;
    QVector<int> results;
    QVector<qint64> nodes;

    void onSavingProgressEvent(int percent) override { progress.append(percent); }
    void onSaveFinishedEvent(int result) override { results.append(result); }
    void onNodeChangedEvent(qint64 frame) override { nodes.append(frame); }
};

// A project timeline with the clip (or a stretch of it), and a controller that edits it, switched on.
class EditBench
{
public:
    explicit EditBench(const QString &path = EditClip::instance().path(),
                       ZKSMARTKEYING::ZkSmartKeyingBusinessType type = ZKSMARTKEYING::SmartCutout,
                       const ZkRange<qint64> &stretch = {0, 9999});
    ~EditBench();

    NotingPlayer player;
    NotingControllerObserver observer;
    NotingTimelineObserver edits;
    NotingTimelineObserver projectChanges;
    std::unique_ptr<ZkStudioTimeline> project;
    IZkSmartKeyingEditController *controller = nullptr;

    ZkStudioTimeline *timeline() const;
    ZkStudioClip *clip() const { return timeline()->clip(); }
    ZkStudioSmartKeyingService *service() const { return timeline()->shownService(); }
    const datamodel::Segments &segments() const { return service()->segments(); }
    ZkStudioUndoRedoService *undo() const { return timeline()->undoRedoService(); }

    // Makes the true matte of the frame its mask.
    bool giveTruth(qint64 frame);
    bool giveTruthEverywhere();
    // Intersection over union of the mask of the frame and the true one.
    double agreement(qint64 frame) const;
    QVector<qint64> trackedFrames() const { return segments().tracked().keys().toVector(); }
    // The result of startTracking; forward to the end of the clip unless it says otherwise.
    int start(qint64 frame, int direction = 1, int type = 1);
    // Starts and waits for the end.
    int track(qint64 frame, int direction = 1, int type = 1);
    bool applyAndWait();

private:
    Q_DISABLE_COPY(EditBench)
};

// A stroke image of the whole frame with a painted box, whose place is in pixels of the frame.
QImage strokeOn(const QRect &box, const QSize &imageSize = EditClip::size);
// A mask of the frame with that value in the box.
QImage maskOf(const QRect &box, int value = 255, const QSize &size = EditClip::size);
double agreementOf(const QImage &matte, const QImage &truth);

} // namespace zk::test
