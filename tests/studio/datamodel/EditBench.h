// A clip on disk and an edit controller on it, with observers that take notes.
#pragma once

#include "ZkDataModel.h"
#include "ZkMediaPlayer.h"
#include "ZkPlayerFeedback.h"
#include "ZkSampleClip.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioTimeline.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <optional>

namespace zk::test {

// The sample clip at 160 x 90, written once per program, without loss.
class EditClip
{
public:
    static constexpr int frames = 16;
    static constexpr QSize size {160, 90};
    static const EditClip &instance()
    {
        static const EditClip clip;
        return clip;
    }

    QString path() const { return m_folder.filePath(QStringLiteral("clip.mkv")); }
    // A picture of its first frame, for still clips.
    QString stillPath() const { return m_folder.filePath(QStringLiteral("still.png")); }
    QImage frame(qint64 frame) const { return m_sample.frame(int(frame)); }
    QImage matte(qint64 frame) const { return m_sample.matte(int(frame)); }
    // The sample's own keep stroke on frame 0.
    QImage keepStroke() const
    {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        const QJsonObject stroke =
            m_sample.strokes().value(QLatin1String("strokes")).toArray().first().toObject();
        QPolygonF line;
        for (const QJsonValue &point : stroke.value(QLatin1String("points")).toArray())
            line.append(QPointF(point[0].toDouble(), point[1].toDouble()));
        painter.setPen(QPen(Qt::cyan, stroke.value(QLatin1String("width")).toDouble()));
        painter.drawPolyline(line);
        return image;
    }

private:
    EditClip()
        : m_sample({size, frames, 24})
    {
        QString error;
        if (!m_sample.write(path(), QString(), &error) || !m_sample.frame(0).save(stillPath()))
            qFatal("The test clip cannot be written: %s", qPrintable(error));
    }

    QTemporaryDir m_folder;
    media::SampleClip m_sample;
};

// A stroke image of the whole frame with a painted box, whose place is in pixels of the frame.
inline QImage strokeOn(const QRect &box, const QSize &imageSize = EditClip::size)
{
    QImage image(imageSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(double(imageSize.width()) / EditClip::size.width(),
                  double(imageSize.height()) / EditClip::size.height());
    painter.fillRect(box, QColor(0, 200, 200, 128));
    return image;
}

// A mask of the frame with that value in the box.
inline QImage maskOf(const QRect &box, int value = 255, const QSize &size = EditClip::size)
{
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(0);
    for (int y = box.top(); y <= box.bottom(); ++y)
        std::fill_n(image.scanLine(y) + box.left(), box.width(), uchar(value));
    return image;
}

inline double agreementOf(const QImage &matte, const QImage &truth)
{
    int both = 0;
    int either = 0;
    for (int y = 0; y < truth.height() && matte.size() == truth.size(); ++y) {
        for (int x = 0; x < truth.width(); ++x) {
            const bool isIn = matte.constScanLine(y)[x] >= 128;
            const bool shouldBe = truth.constScanLine(y)[x] >= 128;
            both += isIn && shouldBe ? 1 : 0;
            either += isIn || shouldBe ? 1 : 0;
        }
    }
    return either > 0 ? double(both) / either : 0;
}

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
    void showTrackedFrame(qint64 frame) override
    {
        frames.append(frame);
        if (onFrame)
            onFrame(frame);
    }
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

    void onTimelineChangedEvent(const ZkTimelineChanges &changes) override
    {
        sets.append(changes);
        if (onChange)
            onChange();
    }
    // Of the sets with such a record.
    int count(int kind) const
    {
        const auto has = [=](const ZkTimelineChanges &set) { return set.contains(kind); };
        return int(std::count_if(sets.cbegin(), sets.cend(), has));
    }
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
                       const ZkRange<qint64> &stretch = {0, 9999})
        : controller(createSmartKeyingEditController())
    {
        QString error;
        project = ZkStudioTimeline::fromMediaFile(path, &error);
        if (!project)
            qFatal("The test clip cannot be read: %s", qPrintable(error));
        const media::MediaInfo media = project->clip()->media();
        project->setClip(std::make_unique<ZkStudioClip>(
            project.get(), media, stretch.minimum, stretch.maximum - stretch.minimum + 1));
        qint64 frame = 0;
        controller->addObserver(&observer);
        if (!controller->initialise(project->clip(), &player, &frame, type))
            qFatal("The controller cannot edit the test clip");
        service()->setEnabled(true);
        player.service = service();
        timeline()->addEventObserver(&edits);
        project->addEventObserver(&projectChanges);
    }
    ~EditBench() { releaseSmartKeyingEditController(controller); }

    NotingPlayer player;
    NotingControllerObserver observer;
    NotingTimelineObserver edits;
    NotingTimelineObserver projectChanges;
    std::unique_ptr<ZkStudioTimeline> project;
    IZkSmartKeyingEditController *controller = nullptr;

    ZkStudioTimeline *timeline() const
    {
        return static_cast<ZkStudioTimeline *>(controller->editTimeline());
    }
    ZkStudioClip *clip() const { return timeline()->clip(); }
    ZkStudioSmartKeyingService *service() const { return timeline()->shownService(); }
    const datamodel::Segments &segments() const { return service()->segments(); }
    ZkStudioUndoRedoService *undo() const { return timeline()->undoRedoService(); }

    // Makes the true matte of the frame its mask.
    bool giveTruth(qint64 frame)
    {
        return controller->setMatte(frame, EditClip::instance().matte(frame));
    }
    bool giveTruthEverywhere()
    {
        bool isGiven = true;
        for (qint64 frame = 0; frame < EditClip::frames; ++frame)
            isGiven = giveTruth(frame) && isGiven;
        return isGiven;
    }
    // Intersection over union of the mask of the frame and the true one.
    double agreement(qint64 frame) const
    {
        return agreementOf(segments().matteAt(frame), EditClip::instance().matte(frame));
    }
    QVector<qint64> trackedFrames() const { return segments().tracked().keys().toVector(); }
    // The result of startTracking; forward to the end of the clip unless it says otherwise.
    int start(qint64 frame, int direction = 1, int type = 1)
    {
        return controller->startTracking(frame,
                                         ZKSMARTKEYING::ZkSegmentToTrackDirect(direction),
                                         ZKSMARTKEYING::ZkSegmentToTrackType(type));
    }
    // Starts and waits for the end.
    int track(qint64 frame, int direction = 1, int type = 1)
    {
        const int started = start(frame, direction, type);
        const auto isOver = [&] { return service()->workMode() != ZKSMARTKEYING::TrackingMode; };
        return QTest::qWaitFor(isOver, 300000) ? started : -1;
    }
    bool applyAndWait()
    {
        const int before = observer.results.size();
        controller->apply();
        return QTest::qWaitFor([&] { return observer.results.size() > before; }, 100000);
    }

private:
    Q_DISABLE_COPY(EditBench)
};

} // namespace zk::test
