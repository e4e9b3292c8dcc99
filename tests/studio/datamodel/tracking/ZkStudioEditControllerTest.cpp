#include "EditBench.h"
#include "ZkTestMain.h"
#include "segmentation/ZkStrokeMap.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QPainter>

using namespace zk::datamodel;
using namespace zk::test;

namespace {

QSize frameSize()
{
    return EditClip::instance().size();
}

// The sample's own stroke of that mode, as a stroke image.
QImage sampleStroke(const QString &mode)
{
    QImage image(frameSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const QJsonObject strokes = EditClip::instance().sample().strokes();
    for (const QJsonValue &stroke : strokes.value(QLatin1String("strokes")).toArray()) {
        if (stroke[QLatin1String("mode")].toString() != mode)
            continue;
        QPolygonF line;
        for (const QJsonValue &point : stroke[QLatin1String("points")].toArray())
            line.append(QPointF(point[0].toDouble(), point[1].toDouble()));
        painter.setPen(QPen(Qt::cyan, stroke[QLatin1String("width")].toDouble()));
        painter.drawPolyline(line);
    }
    return image;
}

QImage everything()
{
    return strokeOn(QRect(QPoint(), frameSize()), frameSize(), frameSize());
}

// Whether the mask has that value wherever the stroke was painted.
bool hasValueUnder(const QImage &stroke, const QImage &mask, int value)
{
    const QImage map = strokeMap(stroke, mask.size());
    for (int y = 0; y < mask.height(); ++y) {
        for (int x = 0; x < mask.width(); ++x) {
            if (map.constScanLine(y)[x] && mask.constScanLine(y)[x] != value)
                return false;
        }
    }
    return true;
}

} // namespace

class ZkStudioEditControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initialFrameIsClamped_data();
    void initialFrameIsClamped();
    void initialisationFails();
    void keepStrokeFindsTheObject();
    void correctionsObeyTheStrokes();
    void erasedStaysErased();
    void givenMatteIsScaled();
    void everyStepIsUndoneExactly();
    void strokeOnATrackedFrame();
    void failuresReportToo_data();
    void failuresReportToo();
    void nothingChangedReportsToo();
    void recordComesInsideAMacro();
    void observerMayReleaseTheController();
    void workModes();
    void trimmedClipEditsItsOwnFrames();
};

void ZkStudioEditControllerTest::initialFrameIsClamped_data()
{
    QTest::addColumn<qint64>("position");
    QTest::addColumn<qint64>("frame");
    QTest::newRow("inside") << qint64(5) << qint64(5);
    QTest::newRow("before") << qint64(-3) << qint64(0);
    QTest::newRow("after") << qint64(99) << qint64(EditClip::frames - 1);
}

void ZkStudioEditControllerTest::initialFrameIsClamped()
{
    QFETCH(qint64, position);
    QString error;
    const auto project = ZkStudioTimeline::fromMediaFile(EditClip::instance().path(), &error);
    IZkSmartKeyingEditController *controller = createSmartKeyingEditController();
    QVERIFY(
        controller->initialise(project->clip(), nullptr, &position, ZKSMARTKEYING::SmartCutout));
    QTEST(position, "frame");
    QTEST(controller->editTimeline()->playhead()->position(), "frame");
    QVERIFY(
        !controller->initialise(project->clip(), nullptr, &position, ZKSMARTKEYING::SmartCutout));
    QVERIFY(controller->editClip() != project->clip());
    releaseSmartKeyingEditController(controller);
}

void ZkStudioEditControllerTest::initialisationFails()
{
    releaseSmartKeyingEditController(nullptr);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("gone.mkv"));
    QVERIFY(QFile::copy(EditClip::instance().path(), path));
    QString error;
    const auto project = ZkStudioTimeline::fromMediaFile(path, &error);
    QVERIFY(QFile::remove(path));
    IZkSmartKeyingEditController *controller = createSmartKeyingEditController();
    qint64 frame = 3;
    QVERIFY(!controller->initialise(project->clip(), nullptr, &frame, ZKSMARTKEYING::SmartCutout));
    QVERIFY(!controller->initialise(nullptr, nullptr, &frame, ZKSMARTKEYING::SmartCutout));
    QVERIFY(!controller->editClip() && !controller->editTimeline());
    QVERIFY(!controller->addMask(0, everything()));
    QCOMPARE(controller->startTracking(0, ZKSMARTKEYING::TrackBoth, ZKSMARTKEYING::TrackToClipEnd),
             int(ZKSMARTKEYING::TrackingFailed));
    controller->switchWorkMode(ZKSMARTKEYING::PlayingMode);
    controller->stopTracking();
    controller->apply();
    controller->cancelApply();
    controller->releaseMediaPlayer();
    releaseSmartKeyingEditController(controller);
}

void ZkStudioEditControllerTest::keepStrokeFindsTheObject()
{
    EditBench bench;
    QVERIFY(bench.controller->addMask(0, sampleStroke(QStringLiteral("keep"))));
    QVERIFY2(bench.agreement(0) > 0.5, qPrintable(QString::number(bench.agreement(0))));
    QCOMPARE(bench.observer.nodes, (QVector<qint64> {0}));
    QCOMPARE(bench.edits->segmentRecords, 1);
    QCOMPARE(bench.edits->undoTexts, (QStringList {QStringLiteral("Add mask")}));
    QCOMPARE(bench.projectChanges->sets.size(), 0);
}

void ZkStudioEditControllerTest::correctionsObeyTheStrokes()
{
    EditBench bench;
    const QImage keep = sampleStroke(QStringLiteral("keep"));
    QVERIFY(bench.controller->addMask(0, keep));
    const QImage corner = strokeOn(QRect(140, 70, 20, 20), QSize(320, 180), frameSize());
    QVERIFY(bench.controller->addMask(0, corner));
    QVERIFY(hasValueUnder(corner, bench.service()->segments().matteAt(0), 255));
    QVERIFY(hasValueUnder(keep, bench.service()->segments().matteAt(0), 255));
    QVERIFY(bench.controller->subtractMask(0, corner)); // the last word counts
    QVERIFY(hasValueUnder(corner, bench.service()->segments().matteAt(0), 0));
    QVERIFY(hasValueUnder(keep, bench.service()->segments().matteAt(0), 255));
    const SegmentNodePtr node = bench.service()->segments().node(0);
    QCOMPARE(node->remove.decoded(), strokeMap(corner, frameSize()));
    QCOMPARE(node->keep.decoded(), strokeMap(keep, frameSize()));
    QCOMPARE(bench.service()->maskItemCount(), 1);
    QCOMPARE(bench.undo()->undoText(), QStringLiteral("Remove mask"));
}

void ZkStudioEditControllerTest::erasedStaysErased()
{
    EditBench bench;
    const QImage keep = sampleStroke(QStringLiteral("keep"));
    QVERIFY(bench.controller->addMask(0, keep));
    const QImage before = bench.service()->segments().matteAt(0);
    const QImage half = strokeOn(QRect(0, 0, 160, 45), frameSize(), frameSize());
    QVERIFY(bench.controller->eraseMask(0, half));
    QCOMPARE(bench.undo()->undoText(), QStringLiteral("Erase mask"));
    const QImage erased = bench.service()->segments().matteAt(0);
    QVERIFY(hasValueUnder(half, erased, 0));
    // Below the stroke nothing has changed.
    QCOMPARE(erased.copy(0, 45, 160, 45), before.copy(0, 45, 160, 45));
    const QImage low = strokeOn(QRect(70, 50, 6, 6), frameSize(), frameSize());
    QVERIFY(bench.controller->addMask(0, low));
    QVERIFY(hasValueUnder(half, bench.service()->segments().matteAt(0), 0));
    const QImage high = strokeOn(QRect(70, 20, 10, 6), frameSize(), frameSize());
    QVERIFY(bench.controller->addMask(0, high));
    QVERIFY(hasValueUnder(high, bench.service()->segments().matteAt(0), 255));
}

void ZkStudioEditControllerTest::givenMatteIsScaled()
{
    EditBench bench;
    QImage large(320, 180, QImage::Format_RGB32);
    large.fill(QColor(90, 90, 90));
    QVERIFY(bench.controller->setMatte(4, large));
    const QImage matte = bench.service()->segments().matteAt(4);
    QCOMPARE(matte.size(), frameSize());
    QVERIFY(hasValueUnder(everything(), matte, 90));
    QCOMPARE(bench.undo()->undoText(), QStringLiteral("Set matte"));
}

void ZkStudioEditControllerTest::everyStepIsUndoneExactly()
{
    EditBench bench;
    const QImage keep = sampleStroke(QStringLiteral("keep"));
    const QImage part = strokeOn(QRect(60, 30, 20, 20), frameSize(), frameSize());
    using Step = std::function<bool()>;
    const QVector<Step> steps {[&] { return bench.controller->addMask(2, keep); },
                               [&] { return bench.controller->subtractMask(2, part); },
                               [&] { return bench.controller->eraseMask(2, keep); },
                               [&] { return bench.giveTruth(2); }};
    QVector<SegmentNodePtr> states {bench.service()->segments().node(2)};
    for (const Step &step : steps) {
        QVERIFY(step());
        states.append(bench.service()->segments().node(2));
    }
    QCOMPARE(bench.undo()->undoStepCount(), steps.size());
    for (int i = states.size() - 2; i >= 0; --i) {
        QVERIFY(bench.undo()->undo());
        QCOMPARE(bench.service()->segments().node(2), states.at(i));
    }
    QCOMPARE(bench.service()->maskItemCount(), 0);
    for (int i = 1; i < states.size(); ++i) {
        QVERIFY(bench.undo()->redo());
        QCOMPARE(bench.service()->segments().node(2), states.at(i));
    }
    QCOMPARE(bench.edits->segmentRecords, 3 * steps.size());
    QCOMPARE(bench.observer.nodes, QVector<qint64>(3 * steps.size(), 2));
}

void ZkStudioEditControllerTest::strokeOnATrackedFrame()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(0));
    QCOMPARE(bench.track(0, ZKSMARTKEYING::TrackForward), 0);
    const QImage tracked = bench.service()->segments().matteAt(3);
    const QImage part = strokeOn(QRect(0, 0, 80, 90), frameSize(), frameSize());
    QVERIFY(bench.controller->eraseMask(3, part));
    QCOMPARE(bench.service()->segments().matteAt(3).copy(80, 0, 80, 90),
             tracked.copy(80, 0, 80, 90));
    QVERIFY(bench.undo()->undo());
    QCOMPARE(bench.service()->segments().matteAt(3), tracked);
    // A remove stroke has the tracked mask to correct, too.
    QVERIFY(
        bench.controller->subtractMask(3, strokeOn(QRect(0, 0, 9, 9), frameSize(), frameSize())));
    QVERIFY(bench.agreement(3) > 0.5);
}

void ZkStudioEditControllerTest::failuresReportToo_data()
{
    QTest::addColumn<int>("frame");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QImage>("image");
    const QImage painted = everything();
    QImage clear(8, 8, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    const QString add = QStringLiteral("add");
    QTest::newRow("before the clip") << -1 << add << painted;
    QTest::newRow("after the clip") << EditClip::frames << add << painted;
    QTest::newRow("no image") << 0 << add << QImage();
    QTest::newRow("nothing painted") << 0 << add << clear;
    QTest::newRow("nothing to remove from") << 0 << QStringLiteral("subtract") << painted;
    QTest::newRow("nothing to erase") << 0 << QStringLiteral("erase") << painted;
    QTest::newRow("no matte") << 0 << QStringLiteral("matte") << QImage();
    QTest::newRow("switched off") << 0 << QStringLiteral("off") << painted;
}

void ZkStudioEditControllerTest::failuresReportToo()
{
    EditBench bench;
    QFETCH(int, frame);
    QFETCH(QString, operation);
    QFETCH(QImage, image);
    bool result = true;
    if (operation == QStringLiteral("subtract"))
        result = bench.controller->subtractMask(frame, image);
    else if (operation == QStringLiteral("erase"))
        result = bench.controller->eraseMask(frame, image);
    else if (operation == QStringLiteral("matte"))
        result = bench.controller->setMatte(frame, image);
    else {
        bench.service()->setEnabled(operation == QStringLiteral("add"));
        result = bench.controller->addMask(frame, image);
    }
    QVERIFY(!result);
    QCOMPARE(bench.edits->segmentRecords, 1);
    QVERIFY(!bench.undo()->canUndo());
    QCOMPARE(bench.service()->maskItemCount(), 0);
    QVERIFY(bench.observer.nodes.isEmpty());
}

void ZkStudioEditControllerTest::nothingChangedReportsToo()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(0));
    QVERIFY(bench.giveTruth(0));
    QVERIFY(bench.controller->eraseMask(0, strokeOn(QRect(0, 0, 3, 3), frameSize(), frameSize())));
    QCOMPARE(bench.edits->segmentRecords, 3);
    QCOMPARE(bench.undo()->undoStepCount(), 1);
    QCOMPARE(bench.observer.nodes.size(), 1);
}

void ZkStudioEditControllerTest::recordComesInsideAMacro()
{
    EditBench bench;
    {
        ZkUndoRedoCommander macro(bench.undo(), QStringLiteral("two frames"), QString());
        QVERIFY(bench.giveTruth(0));
        QCOMPARE(bench.edits->segmentRecords, 1);
        QVERIFY(bench.giveTruth(1));
    }
    QCOMPARE(bench.undo()->undoStepCount(), 1);
    QVERIFY(bench.undo()->undo());
    QCOMPARE(bench.service()->maskItemCount(), 0);
    QCOMPARE(bench.observer.nodes.size(), 4);
}

void ZkStudioEditControllerTest::observerMayReleaseTheController()
{
    auto bench = std::make_unique<EditBench>();
    bench->edits->onChange = [&] {
        bench->edits->onChange = nullptr;
        QCoreApplication::processEvents();
        NotingTimelineObserver *notes = bench->edits.release();
        bench->timeline()->removeEventObserver(notes);
        releaseSmartKeyingEditController(bench->controller);
        bench->controller = nullptr;
    };
    QVERIFY(bench->giveTruth(0));
    QVERIFY(!bench->controller);
    QVERIFY(bench->observer.nodes.isEmpty());
}

void ZkStudioEditControllerTest::workModes()
{
    EditBench bench;
    QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::EditingMode);
    bench.controller->switchWorkMode(ZKSMARTKEYING::PlayingMode);
    QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::PlayingMode);
    bench.controller->switchWorkMode(ZKSMARTKEYING::TrackingMode);
    QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::PlayingMode);
    bench.controller->switchWorkMode(ZKSMARTKEYING::EditingMode);
    QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::EditingMode);
}

void ZkStudioEditControllerTest::trimmedClipEditsItsOwnFrames()
{
    QString error;
    const auto project = ZkStudioTimeline::fromMediaFile(EditClip::instance().path(), &error);
    const zk::media::MediaInfo media = project->clip()->media();
    project->setClip(std::make_unique<ZkStudioClip>(project.get(), media, 5, 4));
    IZkSmartKeyingEditController *controller = createSmartKeyingEditController();
    qint64 frame = 0;
    QVERIFY(controller->initialise(project->clip(), nullptr, &frame, ZKSMARTKEYING::SmartCutout));
    auto *timeline = static_cast<ZkStudioTimeline *>(controller->editTimeline());
    timeline->shownService()->setEnabled(true);
    QCOMPARE(timeline->frameCount(), qint64(4));
    QVERIFY(!controller->addMask(4, everything()));
    const zk::media::SampleClip &sample = EditClip::instance().sample();
    QVERIFY(controller->setMatte(0, sample.matte(5)));
    QCOMPARE(
        controller->startTracking(0, ZKSMARTKEYING::TrackForward, ZKSMARTKEYING::TrackToClipEnd),
        0);
    QTRY_COMPARE(timeline->shownService()->workMode(), ZKSMARTKEYING::EditingMode);
    const QImage last = timeline->shownService()->segments().matteAt(3);
    QVERIFY(agreementOf(last, sample.matte(8)) > 0.7);
    releaseSmartKeyingEditController(controller);
}

ZK_TEST_MAIN(ZkStudioEditControllerTest)
#include "ZkStudioEditControllerTest.moc"
