#include "EditBench.h"
#include "ZkTestMain.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"

using namespace zk::datamodel;
using namespace zk::test;

namespace {

constexpr qint64 last = EditClip::frames - 1;

QVector<qint64> range(qint64 from, qint64 to)
{
    QVector<qint64> frames;
    for (qint64 frame = from; frame <= to; ++frame)
        frames.append(frame);
    return frames;
}

const QStringList wholeRun {QStringLiteral("started 2"), QStringLiteral("finished 1")};

} // namespace

class ZkTrackingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runs_data();
    void runs();
    void refused_data();
    void refused();
    void nodesOnTheWayAreTheTruth();
    void trackedFromBothSides();
    void runIsOneStep();
    void everythingElseWaits();
    void stopKeepsWhatThereIs();
    void stopFromTheProgress();
    void stopWhenIdleDoesNothing();
    void startsAgainAtOnce();
    void brokenMediaEndsTheRun();
    void effectComesBack();
    void withoutAPlayer();
    void releaseInTheMiddle();
};

void ZkTrackingTest::runs_data()
{
    QTest::addColumn<int>("seed");
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("lastTracked");
    QTest::newRow("forward") << 3 << 3 << 1 << 1 << 3 << int(last);
    QTest::newRow("forward, seed before") << 3 << 7 << 1 << 1 << 3 << int(last);
    QTest::newRow("backward") << 12 << 12 << 2 << 1 << 0 << 12;
    QTest::newRow("both") << 7 << 7 << 3 << 1 << 0 << int(last);
    QTest::newRow("whole clip") << 5 << 9 << 1 << 0 << 0 << int(last);
}

void ZkTrackingTest::runs()
{
    QFETCH(int, seed);
    QFETCH(int, frame);
    QFETCH(int, direction);
    QFETCH(int, type);
    QFETCH(int, first);
    QFETCH(int, lastTracked);
    EditBench bench;
    QVERIFY(bench.giveTruth(seed));
    bench.edits->segmentRecords = 0;
    QCOMPARE(bench.track(frame,
                         ZKSMARTKEYING::ZkSegmentToTrackDirect(direction),
                         ZKSMARTKEYING::ZkSegmentToTrackType(type)),
             0);
    QCOMPARE(bench.trackedFrames(), range(first, lastTracked));
    for (qint64 tracked : bench.trackedFrames())
        QVERIFY2(bench.agreement(tracked) > 0.6,
                 qPrintable(QStringLiteral("%1: %2").arg(tracked).arg(bench.agreement(tracked))));
    QCOMPARE(bench.player.notes, wholeRun);
    QVERIFY(std::is_sorted(bench.player.percents.cbegin(), bench.player.percents.cend()));
    QCOMPARE(bench.player.percents.last(), 100);
    QVector<qint64> shown = bench.player.frames;
    std::sort(shown.begin(), shown.end());
    shown.erase(std::unique(shown.begin(), shown.end()), shown.end());
    QCOMPARE(shown, range(first, lastTracked));
    QCOMPARE(bench.edits->segmentRecords, 1);
    QVERIFY(bench.service()->isTracked());
}

void ZkTrackingTest::refused_data()
{
    QTest::addColumn<int>("seed");
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("result");
    QTest::newRow("no mask") << -1 << 3 << 2;
    QTest::newRow("nothing before") << 9 << 1 << 2;
    QTest::newRow("nothing after") << 2 << 2 << 2;
    QTest::newRow("switched off") << 5 << 3 << 1;
}

void ZkTrackingTest::refused()
{
    QFETCH(int, seed);
    QFETCH(int, direction);
    QFETCH(int, result);
    EditBench bench;
    QVERIFY(seed < 0 || bench.giveTruth(seed));
    bench.service()->setEnabled(result != ZKSMARTKEYING::TrackingFailed);
    QCOMPARE(bench.track(5, ZKSMARTKEYING::ZkSegmentToTrackDirect(direction)), result);
    QVERIFY(bench.player.notes.isEmpty());
    QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::EditingMode);
    QVERIFY(!bench.service()->isLocked());
    // A still picture has no frame to go to.
    EditBench still(EditClip::instance().stillPath());
    QVERIFY(still.giveTruth(0));
    QCOMPARE(still.track(0, ZKSMARTKEYING::TrackBoth), int(ZKSMARTKEYING::NothingToTrack));
}

void ZkTrackingTest::nodesOnTheWayAreTheTruth()
{
    EditBench bench;
    const QSize size = EditClip::instance().size();
    QImage patch(size, QImage::Format_Grayscale8);
    patch.fill(0);
    for (int y = 60; y < 80; ++y)
        std::fill_n(patch.scanLine(y) + 10, 30, uchar(255));
    QVERIFY(bench.giveTruth(0));
    QVERIFY(bench.controller->setMatte(6, patch)); // something else altogether
    QCOMPARE(bench.track(0, ZKSMARTKEYING::TrackForward), 0);
    QCOMPARE(bench.service()->segments().matteAt(6), patch);
    QVERIFY(bench.agreement(5) > 0.6);
    QVERIFY(agreementOf(bench.service()->segments().matteAt(7), patch) > 0.5);
    // Without the node, what it stood for is still there: the run has been past it.
    QVERIFY(bench.undo()->undo() && bench.undo()->undo() && bench.undo()->redo());
    QVERIFY(bench.undo()->redo());
    QCOMPARE(bench.service()->segments().tracked().value(6).forward.matte.decoded(), patch);
}

void ZkTrackingTest::trackedFromBothSides()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(2));
    QVERIFY(bench.giveTruth(12));
    QCOMPARE(bench.track(2, ZKSMARTKEYING::TrackForward), 0);
    const QImage oneWay = bench.service()->segments().matteAt(10);
    QCOMPARE(bench.track(12, ZKSMARTKEYING::TrackBackward), 0);
    const Segments &segments = bench.service()->segments();
    QVERIFY(segments.storedAt(10).isNull()); // shared by both runs
    QVERIFY(segments.matteAt(10) != oneWay);
    const TrackedMattes &mattes = segments.tracked()[10];
    QCOMPARE(mattes.forward.seed, qint64(2));
    QCOMPARE(mattes.backward.seed, qint64(12));
    for (qint64 frame = 2; frame <= 12; ++frame)
        QVERIFY(bench.agreement(frame) > 0.7);
}

void ZkTrackingTest::runIsOneStep()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(4));
    QCOMPARE(bench.track(4, ZKSMARTKEYING::TrackForward), 0);
    const QVector<qint64> forward = bench.trackedFrames();
    const QImage matte = bench.service()->segments().matteAt(9);
    QCOMPARE(bench.track(4, ZKSMARTKEYING::TrackBackward), 0);
    QCOMPARE(bench.undo()->undoStepCount(), 3);
    QCOMPARE(bench.undo()->undoText(), QStringLiteral("Track"));
    QVERIFY(bench.undo()->undo());
    QCOMPARE(bench.trackedFrames(), forward);
    QVERIFY(bench.undo()->undo());
    QVERIFY(!bench.service()->isTracked());
    QVERIFY(bench.undo()->redo());
    QCOMPARE(bench.service()->segments().matteAt(9), matte);
}

void ZkTrackingTest::everythingElseWaits()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(0));
    QCOMPARE(bench.controller->startTracking(
                 0, ZKSMARTKEYING::TrackForward, ZKSMARTKEYING::TrackToClipEnd),
             0);
    QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::TrackingMode);
    bench.edits->segmentRecords = 0;
    QCOMPARE(bench.controller->startTracking(
                 0, ZKSMARTKEYING::TrackForward, ZKSMARTKEYING::TrackToClipEnd),
             int(ZKSMARTKEYING::TrackingFailed));
    QVERIFY(!bench.giveTruth(1));
    QCOMPARE(bench.edits->segmentRecords, 1);
    QVERIFY(!bench.undo()->undo());
    bench.service()->setMaskInverted(true);
    bench.service()->reset();
    bench.controller->switchWorkMode(ZKSMARTKEYING::EditingMode);
    QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::TrackingMode);
    QVERIFY(!bench.service()->isMaskInverted());
    QCOMPARE(bench.service()->maskItemCount(), 1);
    bench.controller->stopTracking();
    QVERIFY(bench.giveTruth(1));
    QVERIFY(bench.undo()->undo());
}

void ZkTrackingTest::stopKeepsWhatThereIs()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(0));
    QCOMPARE(bench.controller->startTracking(
                 0, ZKSMARTKEYING::TrackForward, ZKSMARTKEYING::TrackToClipEnd),
             0);
    QTRY_VERIFY(bench.player.frames.size() >= 3);
    const QVector<qint64> shown = bench.player.frames;
    QElapsedTimer timer;
    timer.start();
    bench.controller->stopTracking();
    QVERIFY2(timer.elapsed() < 100, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::EditingMode);
    QCOMPARE(bench.player.notes, wholeRun);
    QCOMPARE(bench.trackedFrames(), shown);
    QCOMPARE(bench.undo()->undoText(), QStringLiteral("Track"));
    QTest::qWait(300); // reports that were on their way are too late
    QCOMPARE(bench.trackedFrames(), shown);
    QCOMPARE(bench.player.frames, shown);
    QCOMPARE(bench.player.notes, wholeRun);
}

void ZkTrackingTest::stopFromTheProgress()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(0));
    bench.player.onFrame = [&](qint64 frame) {
        if (frame == 2)
            bench.controller->stopTracking();
    };
    QCOMPARE(bench.track(0, ZKSMARTKEYING::TrackForward), 0);
    QCOMPARE(bench.trackedFrames(), range(0, 2));
    QCOMPARE(bench.player.percents.size(), 2); // nothing after "finished"
}

void ZkTrackingTest::stopWhenIdleDoesNothing()
{
    EditBench bench;
    bench.controller->switchWorkMode(ZKSMARTKEYING::PlayingMode);
    bench.controller->stopTracking();
    QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::PlayingMode);
    QVERIFY(bench.player.notes.isEmpty());
    QVERIFY(bench.edits->sets.isEmpty());
    QVERIFY(!bench.undo()->canUndo());
}

void ZkTrackingTest::startsAgainAtOnce()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(0));
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(bench.controller->startTracking(
                     0, ZKSMARTKEYING::TrackForward, ZKSMARTKEYING::TrackToClipEnd),
                 0);
        bench.controller->stopTracking();
    }
    QCOMPARE(bench.undo()->undoStepCount(), 1); // nothing was tracked, so there is no step
    bench.player.frames.clear();
    QCOMPARE(bench.track(0, ZKSMARTKEYING::TrackForward), 0);
    QCOMPARE(bench.player.frames, range(0, last));
}

void ZkTrackingTest::brokenMediaEndsTheRun()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("clip.mkv"));
    QVERIFY(QFile::copy(EditClip::instance().path(), path));
    EditBench bench(path);
    QVERIFY(bench.giveTruth(0));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly)); // nothing left of it
    file.close();
    const ExpectedMessage expected(QStringLiteral("Tracking broke off"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("Tracking broke off")));
    QCOMPARE(bench.track(0, ZKSMARTKEYING::TrackForward), 0);
    QCOMPARE(bench.player.notes, wholeRun);
    QVERIFY(!bench.service()->isLocked() && !bench.undo()->isBlocked());
    QVERIFY(QFile::remove(path));
    QCOMPARE(bench.track(0, ZKSMARTKEYING::TrackForward), int(ZKSMARTKEYING::TrackingFailed));
}

void ZkTrackingTest::effectComesBack()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(12));
    bench.clip()->effects()->add(ZkStudioEffect::plainCutout());
    bench.clip()->effects()->effectAt(0)->setEnabled(false);
    const int steps = bench.undo()->undoStepCount();
    bench.edits->sets.clear();
    QCOMPARE(bench.track(12, ZKSMARTKEYING::TrackForward), 0);
    QVERIFY(bench.clip()->effects()->effectAt(0)->isEnabled());
    QCOMPARE(bench.undo()->undoStepCount(), steps + 1);
    // Mask and effect change in one set, when the player has already come to rest.
    QCOMPARE(bench.edits->sets.size(), 1);
    QVERIFY(bench.edits->sets.first().contains(ZKTIMELINE::SegmentChange));
    QVERIFY(bench.edits->sets.first().contains(ZKTIMELINE::EffectChange,
                                               ZKTIMELINE::EffectPropertyChanged));
}

void ZkTrackingTest::withoutAPlayer()
{
    QString error;
    const auto project = ZkStudioTimeline::fromMediaFile(EditClip::instance().path(), &error);
    IZkSmartKeyingEditController *controller = createSmartKeyingEditController();
    qint64 frame = 0;
    QVERIFY(controller->initialise(project->clip(), nullptr, &frame, ZKSMARTKEYING::SmartCutout));
    auto *service = static_cast<ZkStudioTimeline *>(controller->editTimeline())->shownService();
    service->setEnabled(true);
    QVERIFY(controller->setMatte(last - 2, EditClip::instance().sample().matte(int(last - 2))));
    QCOMPARE(
        controller->startTracking(last, ZKSMARTKEYING::TrackForward, ZKSMARTKEYING::TrackToClipEnd),
        0);
    QTRY_COMPARE(service->workMode(), ZKSMARTKEYING::EditingMode);
    QVERIFY(service->segments().hasObject(last));
    releaseSmartKeyingEditController(controller);
}

void ZkTrackingTest::releaseInTheMiddle()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(0));
    QCOMPARE(bench.controller->startTracking(
                 0, ZKSMARTKEYING::TrackForward, ZKSMARTKEYING::TrackToClipEnd),
             0);
    QTRY_VERIFY(!bench.player.frames.isEmpty());
    bench.player.notes.clear();
    const int frames = bench.player.frames.size();
    bench.controller->releaseMediaPlayer();
    QTest::qWait(50);
    QVERIFY(bench.player.notes.isEmpty());
    QCOMPARE(bench.player.frames.size(), frames);
    QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::EditingMode);
    // And a controller that is released while it tracks.
    EditBench second;
    QVERIFY(second.giveTruth(0));
    QCOMPARE(second.controller->startTracking(
                 0, ZKSMARTKEYING::TrackForward, ZKSMARTKEYING::TrackToClipEnd),
             0);
}

ZK_TEST_MAIN(ZkTrackingTest)
#include "ZkTrackingTest.moc"
