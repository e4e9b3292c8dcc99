#include "EditBench.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QPainter>
#include <QtTest>

namespace zk::test {

EditClip::EditClip()
    : m_sample({size, frames, 24})
{
    QString error;
    if (!m_sample.write(path(), QString(), &error) || !m_sample.frame(0).save(stillPath()))
        qFatal("The test clip cannot be written: %s", qPrintable(error));
}

const EditClip &EditClip::instance()
{
    static const EditClip clip;
    return clip;
}

QImage EditClip::keepStroke() const
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

void NotingPlayer::showTrackedFrame(qint64 frame)
{
    frames.append(frame);
    if (onFrame)
        onFrame(frame);
}

void NotingTimelineObserver::onTimelineChangedEvent(const ZkTimelineChanges &changes)
{
    sets.append(changes);
    if (onChange)
        onChange();
}

int NotingTimelineObserver::count(int kind) const
{
    return int(std::count_if(sets.cbegin(), sets.cend(), [=](const ZkTimelineChanges &set) {
        return set.contains(kind);
    }));
}

EditBench::EditBench(const QString &path,
                     ZKSMARTKEYING::ZkSmartKeyingBusinessType type,
                     const ZkRange<qint64> &stretch)
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

EditBench::~EditBench()
{
    releaseSmartKeyingEditController(controller);
}

ZkStudioTimeline *EditBench::timeline() const
{
    return static_cast<ZkStudioTimeline *>(controller->editTimeline());
}

bool EditBench::giveTruth(qint64 frame)
{
    return controller->setMatte(frame, EditClip::instance().matte(frame));
}

bool EditBench::giveTruthEverywhere()
{
    bool isGiven = true;
    for (qint64 frame = 0; frame < EditClip::frames; ++frame)
        isGiven = giveTruth(frame) && isGiven;
    return isGiven;
}

double EditBench::agreement(qint64 frame) const
{
    return agreementOf(segments().matteAt(frame), EditClip::instance().matte(frame));
}

int EditBench::start(qint64 frame, int direction, int type)
{
    return controller->startTracking(frame,
                                     ZKSMARTKEYING::ZkSegmentToTrackDirect(direction),
                                     ZKSMARTKEYING::ZkSegmentToTrackType(type));
}

int EditBench::track(qint64 frame, int direction, int type)
{
    const int started = start(frame, direction, type);
    const auto isOver = [&] { return service()->workMode() != ZKSMARTKEYING::TrackingMode; };
    return QTest::qWaitFor(isOver, 30000) ? started : -1;
}

bool EditBench::applyAndWait()
{
    const int before = observer.results.size();
    controller->apply();
    return QTest::qWaitFor([&] { return observer.results.size() > before; }, 10000);
}

QImage strokeOn(const QRect &box, const QSize &imageSize)
{
    QImage image(imageSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(double(imageSize.width()) / EditClip::size.width(),
                  double(imageSize.height()) / EditClip::size.height());
    painter.fillRect(box, QColor(0, 200, 200, 128));
    return image;
}

QImage maskOf(const QRect &box, int value, const QSize &size)
{
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(0);
    for (int y = box.top(); y <= box.bottom(); ++y)
        std::fill_n(image.scanLine(y) + box.left(), box.width(), uchar(value));
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
