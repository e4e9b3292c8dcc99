#include "EditBench.h"

#include <QPainter>
#include <QtTest>

namespace zk::test {

EditClip::EditClip()
    : m_sample({QSize(160, 90), frames, 24})
    , m_path(m_folder.filePath(QStringLiteral("clip.mkv")))
    , m_stillPath(m_folder.filePath(QStringLiteral("still.png")))
{
    QString error;
    if (!m_sample.write(m_path, QString(), &error) || !m_sample.frame(0).save(m_stillPath))
        qFatal("The test clip cannot be written: %s", qPrintable(error));
}

const EditClip &EditClip::instance()
{
    static const EditClip clip;
    return clip;
}

void NotingPlayer::showTrackedFrame(qint64 frame)
{
    frames.append(frame);
    if (onFrame)
        onFrame(frame);
}

void NotingPlayer::note(const char *what)
{
    notes.append(QStringLiteral("%1 %2").arg(QLatin1String(what)).arg(service->workMode()));
}

NotingTimelineObserver::NotingTimelineObserver(IZkTimeline *timeline)
    : m_timeline(timeline)
{
    m_timeline->addEventObserver(this);
}

NotingTimelineObserver::~NotingTimelineObserver()
{
    m_timeline->removeEventObserver(this);
}

void NotingTimelineObserver::onTimelineChangedEvent(const ZkTimelineChanges &changes)
{
    segmentRecords += changes.contains(ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData) ? 1 : 0;
    effectRecords += changes.contains(ZKTIMELINE::EffectChange) ? 1 : 0;
    sets.append(changes);
    undoTexts.append(m_timeline->undoRedoService()->undoText());
    if (onChange)
        onChange();
}

EditBench::EditBench(const QString &path, ZKSMARTKEYING::ZkSmartKeyingBusinessType type)
    : controller(createSmartKeyingEditController())
{
    QString error;
    project = ZkStudioTimeline::fromMediaFile(path, &error);
    if (!project)
        qFatal("The test clip cannot be read: %s", qPrintable(error));
    qint64 frame = 0;
    controller->addObserver(&observer);
    if (!controller->initialise(project->clip(), &player, &frame, type))
        qFatal("The controller cannot edit the test clip");
    service()->setEnabled(true);
    player.service = service();
    edits = std::make_unique<NotingTimelineObserver>(timeline());
    projectChanges = std::make_unique<NotingTimelineObserver>(project.get());
}

EditBench::~EditBench()
{
    edits.reset();
    releaseSmartKeyingEditController(controller);
}

ZkStudioTimeline *EditBench::timeline() const
{
    return static_cast<ZkStudioTimeline *>(controller->editTimeline());
}

bool EditBench::giveTruth(qint64 frame)
{
    return controller->setMatte(frame, EditClip::instance().sample().matte(int(frame)));
}

double EditBench::agreement(qint64 frame) const
{
    return agreementOf(service()->segments().matteAt(frame),
                       EditClip::instance().sample().matte(int(frame)));
}

QVector<qint64> EditBench::trackedFrames() const
{
    return service()->segments().tracked().keys().toVector();
}

int EditBench::track(qint64 frame,
                     ZKSMARTKEYING::ZkSegmentToTrackDirect direct,
                     ZKSMARTKEYING::ZkSegmentToTrackType type)
{
    const int started = controller->startTracking(frame, direct, type);
    if (started == ZKSMARTKEYING::TrackingStarted
        && !QTest::qWaitFor([&] { return service()->workMode() != ZKSMARTKEYING::TrackingMode; },
                            20000))
        return -1;
    return started;
}

bool EditBench::applyAndWait()
{
    const int before = observer.results.size();
    controller->apply();
    return QTest::qWaitFor([&] { return observer.results.size() > before; }, 10000);
}

QImage strokeOn(const QRect &box, const QSize &imageSize, const QSize &frameSize)
{
    QImage image(imageSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(double(imageSize.width()) / frameSize.width(),
                  double(imageSize.height()) / frameSize.height());
    painter.fillRect(box, QColor(0, 200, 200, 128));
    return image;
}

double agreementOf(const QImage &matte, const QImage &truth)
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

} // namespace zk::test
