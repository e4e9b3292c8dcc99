// A clip on disk and an edit controller on it, with observers that take notes.
#pragma once

#include "ZkDataModel.h"
#include "ZkMediaPlayer.h"
#include "ZkPlayerFeedback.h"
#include "ZkSampleClip.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioTimeline.h"

#include <QElapsedTimer>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

namespace zk::test {

// The sample clip at 160 x 90, written once per program, without loss.
class EditClip
{
public:
    static constexpr int frames = 16;
    static const EditClip &instance();

    QString path() const { return m_path; }
    // A picture of one frame, for still clips.
    QString stillPath() const { return m_stillPath; }
    const zk::media::SampleClip &sample() const { return m_sample; }
    QSize size() const { return m_sample.options().size; }

private:
    EditClip();

    QTemporaryDir m_folder;
    zk::media::SampleClip m_sample;
    QString m_path;
    QString m_stillPath;
};

// Notes the calls of a player, and the work mode that the service is in by then.
class NotingPlayer : public IZkMediaPlayer, public zk::datamodel::PlayerFeedback
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
    void trackingStarted() override { note("started"); }
    void showTrackedFrame(qint64 frame) override;
    void trackingProgress(int percent) override { percents.append(percent); }
    void trackingFinished() override { note("finished"); }

private:
    void note(const char *what);
};

// Counts the change records of a timeline and looks at what can be undone by then.
class NotingTimelineObserver : public IZkTimelineEventObserver
{
public:
    explicit NotingTimelineObserver(IZkTimeline *timeline);
    ~NotingTimelineObserver() override;
    int segmentRecords = 0;
    int effectRecords = 0;
    QVector<ZkTimelineChanges> sets;
    QStringList undoTexts; // on top of the history when the records came
    std::function<void()> onChange;

    void onTimelineChangedEvent(const ZkTimelineChanges &changes) override;

private:
    Q_DISABLE_COPY(NotingTimelineObserver)
    IZkTimeline *const m_timeline;
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

// A project timeline with the clip, and a controller that edits it, switched on.
class EditBench
{
public:
    explicit EditBench(const QString &path = EditClip::instance().path(),
                       ZKSMARTKEYING::ZkSmartKeyingBusinessType type = ZKSMARTKEYING::SmartCutout);
    ~EditBench();

    NotingPlayer player;
    NotingControllerObserver observer;
    std::unique_ptr<ZkStudioTimeline> project;
    IZkSmartKeyingEditController *controller = nullptr;
    std::unique_ptr<NotingTimelineObserver> edits;
    std::unique_ptr<NotingTimelineObserver> projectChanges;

    ZkStudioTimeline *timeline() const;
    ZkStudioClip *clip() const { return timeline()->clip(); }
    ZkStudioSmartKeyingService *service() const { return timeline()->shownService(); }
    ZkStudioUndoRedoService *undo() const { return timeline()->undoRedoService(); }

    // Makes the true matte of the frame its mask.
    bool giveTruth(qint64 frame);
    // How well the mask of the frame agrees with the true one: intersection over union.
    double agreement(qint64 frame) const;
    QVector<qint64> trackedFrames() const;
    // Tracks and waits for the end. The result of startTracking.
    int track(qint64 frame,
              ZKSMARTKEYING::ZkSegmentToTrackDirect direct,
              ZKSMARTKEYING::ZkSegmentToTrackType type = ZKSMARTKEYING::TrackToClipEnd);
    bool applyAndWait();

private:
    Q_DISABLE_COPY(EditBench)
};

// A stroke image of the whole frame with one painted box, in pixels of the frame's size.
QImage strokeOn(const QRect &box, const QSize &imageSize, const QSize &frameSize);

double agreementOf(const QImage &matte, const QImage &truth);

} // namespace zk::test
