#include "EditBench.h"
#include "ZkTestMain.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"

#include <numeric>

using namespace zk::datamodel;
using namespace zk::test;

namespace {

constexpr qint64 last = EditClip::frames - 1;
const QStringList wholeRun {QStringLiteral("started 2"), QStringLiteral("finished 1")};

QVector<qint64> range(qint64 from, qint64 to)
{
    QVector<qint64> frames(int(to - from + 1));
    std::iota(frames.begin(), frames.end(), from);
    return frames;
}

} // namespace

class ZkTrackingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runs_data()
    {
        QTest::addColumn<int>("seed");
        QTest::addColumn<int>("frame");
        QTest::addColumn<int>("direction");
        QTest::addColumn<int>("type");
        QTest::addColumn<qint64>("from");
        QTest::addColumn<qint64>("to");
        QTest::newRow("forward") << 3 << 3 << 1 << 1 << qint64(3) << last;
        QTest::newRow("forward, seed before") << 3 << 7 << 1 << 1 << qint64(3) << last;
        QTest::newRow("backward") << 12 << 12 << 2 << 1 << qint64(0) << qint64(12);
        QTest::newRow("both") << 7 << 7 << 3 << 1 << qint64(0) << last;
        QTest::newRow("whole clip") << 5 << 9 << 1 << 0 << qint64(0) << last;
    }
    void runs()
    {
        QFETCH(int, seed);
        QFETCH(int, frame);
        QFETCH(int, direction);
        QFETCH(int, type);
        QFETCH(qint64, from);
        QFETCH(qint64, to);
        EditBench bench;
        QVERIFY(bench.giveTruth(seed));
        bench.edits.sets.clear();
        QCOMPARE(bench.track(frame, direction, type), 0);
        QCOMPARE(bench.trackedFrames(), range(from, to));
        for (qint64 tracked : bench.trackedFrames())
            QVERIFY2(bench.agreement(tracked) > 0.6, qPrintable(QString::number(tracked)));
        QCOMPARE(bench.player.notes, wholeRun);
        QVERIFY(std::is_sorted(bench.player.percents.cbegin(), bench.player.percents.cend()));
        QCOMPARE(bench.player.percents.last(), 100);
        QVector<qint64> shown = bench.player.frames;
        std::sort(shown.begin(), shown.end());
        shown.erase(std::unique(shown.begin(), shown.end()), shown.end());
        QCOMPARE(shown, range(from, to));
        QCOMPARE(bench.edits.count(ZKTIMELINE::SegmentChange), 1);
    }

    void refused_data()
    {
        QTest::addColumn<int>("seed");
        QTest::addColumn<int>("direction");
        QTest::addColumn<int>("result");
        QTest::newRow("no mask") << -1 << 3 << 2;
        QTest::newRow("nothing before") << 9 << 1 << 2;
        QTest::newRow("nothing after") << 2 << 2 << 2;
        QTest::newRow("switched off") << 5 << 3 << 1;
    }
    void refused()
    {
        QFETCH(int, seed);
        QFETCH(int, direction);
        QFETCH(int, result);
        EditBench bench;
        QVERIFY(seed < 0 || bench.giveTruth(seed));
        bench.service()->setEnabled(result != ZKSMARTKEYING::TrackingFailed);
        QCOMPARE(bench.track(5, direction), result);
        QVERIFY(bench.player.notes.isEmpty() && !bench.service()->isLocked());
        QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::EditingMode);
        // A still picture has no frame to go to.
        EditBench still(EditClip::instance().stillPath());
        QVERIFY(still.giveTruth(0));
        QCOMPARE(still.track(0, 3), int(ZKSMARTKEYING::NothingToTrack));
    }

    void nodesOnTheWayAreTheTruth()
    {
        EditBench bench;
        const QImage patch = maskOf(QRect(10, 60, 30, 20)); // something else altogether
        QVERIFY(bench.giveTruth(0));
        QVERIFY(bench.controller->setMatte(6, patch));
        QCOMPARE(bench.track(0), 0);
        QCOMPARE(bench.segments().matteAt(6), patch);
        QVERIFY(bench.agreement(5) > 0.6);
        QVERIFY(agreementOf(bench.segments().matteAt(7), patch) > 0.5);
        // It stands among the results, too, so that there is no hole when the node is taken away.
        QCOMPARE(bench.segments().tracked().value(6).forward.matte.decoded(), patch);
    }

    void trackedFromBothSides()
    {
        EditBench bench;
        QVERIFY(bench.giveTruth(2) && bench.giveTruth(12));
        QCOMPARE(bench.track(2, 1), 0);
        const QImage oneWay = bench.segments().matteAt(10);
        QCOMPARE(bench.track(12, 2), 0);
        QVERIFY(bench.segments().storedAt(10).isNull()); // shared by both runs
        QVERIFY(bench.segments().matteAt(10) != oneWay);
        const TrackedMattes &mattes = bench.segments().tracked()[10];
        QCOMPARE(mattes.forward.seed, qint64(2));
        QCOMPARE(mattes.backward.seed, qint64(12));
        for (qint64 frame = 2; frame <= 12; ++frame)
            QVERIFY(bench.agreement(frame) > 0.7);
    }

    void runIsOneStep()
    {
        EditBench bench;
        QVERIFY(bench.giveTruth(4));
        QCOMPARE(bench.track(4, 1), 0);
        const QImage matte = bench.segments().matteAt(9);
        QCOMPARE(bench.track(4, 2), 0);
        QCOMPARE(bench.undo()->undoStepCount(), 3);
        QCOMPARE(bench.undo()->undoText(), QStringLiteral("Track"));
        QVERIFY(bench.undo()->undo());
        QCOMPARE(bench.trackedFrames(), range(4, last));
        QVERIFY(bench.undo()->undo() && !bench.service()->isTracked());
        QVERIFY(bench.undo()->redo());
        QCOMPARE(bench.segments().matteAt(9), matte);
    }

    void everythingElseWaits()
    {
        EditBench bench;
        QVERIFY(bench.giveTruth(0));
        QCOMPARE(bench.start(0), 0);
        QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::TrackingMode);
        QCOMPARE(bench.start(0), int(ZKSMARTKEYING::TrackingFailed));
        bench.edits.sets.clear();
        QVERIFY(!bench.giveTruth(1));
        QCOMPARE(bench.edits.count(ZKTIMELINE::SegmentChange), 1);
        QVERIFY(!bench.undo()->undo());
        bench.service()->setMaskInverted(true);
        bench.service()->reset();
        bench.controller->switchWorkMode(ZKSMARTKEYING::EditingMode);
        QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::TrackingMode);
        QVERIFY(!bench.service()->isMaskInverted());
        QCOMPARE(bench.service()->maskItemCount(), 1);
        bench.controller->stopTracking();
        QVERIFY(bench.giveTruth(1) && bench.undo()->undo());
    }

    void stopKeepsWhatThereIs()
    {
        EditBench bench;
        QVERIFY(bench.giveTruth(0));
        QCOMPARE(bench.start(0), 0);
        QTRY_VERIFY(bench.player.frames.size() >= 3);
        const QVector<qint64> shown = bench.player.frames;
        QElapsedTimer timer;
        timer.start();
        bench.controller->stopTracking();
        QVERIFY2(timer.elapsed() < 100, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::EditingMode);
        QCOMPARE(bench.undo()->undoText(), QStringLiteral("Track"));
        QTest::qWait(300); // reports that were on their way are too late
        QCOMPARE(bench.trackedFrames(), shown);
        QCOMPARE(bench.player.frames, shown);
        QCOMPARE(bench.player.notes, wholeRun);
    }

    void stopFromTheProgress()
    {
        EditBench bench;
        QVERIFY(bench.giveTruth(0));
        bench.player.onFrame = [&](qint64 frame) {
            if (frame == 2)
                bench.controller->stopTracking();
        };
        QCOMPARE(bench.track(0), 0);
        QCOMPARE(bench.trackedFrames(), range(0, 2));
        QCOMPARE(bench.player.percents.size(), 2); // nothing after "finished"
    }

    void modesWhenIdle()
    {
        EditBench bench;
        bench.controller->switchWorkMode(ZKSMARTKEYING::PlayingMode);
        bench.controller->switchWorkMode(ZKSMARTKEYING::TrackingMode); // only a run has that one
        bench.controller->stopTracking();
        QCOMPARE(bench.service()->workMode(), ZKSMARTKEYING::PlayingMode);
        QVERIFY(bench.player.notes.isEmpty() && bench.edits.sets.isEmpty());
    }

    void startsAgainAtOnce()
    {
        EditBench bench;
        QVERIFY(bench.giveTruth(0));
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(bench.start(0), 0);
            bench.controller->stopTracking();
        }
        QCOMPARE(bench.undo()->undoStepCount(), 1); // nothing was tracked, so there is no step
        QCOMPARE(bench.track(0), 0);
        QCOMPARE(bench.player.frames, range(0, last));
    }

    void brokenMediaEndsTheRun()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("clip.mkv"));
        QVERIFY(QFile::copy(EditClip::instance().path(), path));
        EditBench bench(path);
        QVERIFY(bench.giveTruth(0));
        QVERIFY(QFile::resize(path, 0));
        const ExpectedMessage expected(QStringLiteral("Tracking broke off"));
        QCOMPARE(bench.track(0), 0);
        QVERIFY(expected.seen());
        QCOMPARE(bench.player.notes, wholeRun);
        QVERIFY(!bench.service()->isLocked() && !bench.undo()->isBlocked());
        QVERIFY(QFile::remove(path));
        QCOMPARE(bench.track(0), int(ZKSMARTKEYING::TrackingFailed));
    }

    void effectComesBack()
    {
        EditBench bench;
        QVERIFY(bench.giveTruth(12));
        bench.clip()->effects()->add(ZkStudioEffect::plainCutout());
        IZkEffect *effect = bench.clip()->effects()->effectAt(0);
        effect->setEnabled(false);
        const int steps = bench.undo()->undoStepCount();
        bench.edits.sets.clear();
        QCOMPARE(bench.track(12), 0);
        QVERIFY(effect->isEnabled());
        QCOMPARE(bench.undo()->undoStepCount(), steps + 1);
        // Mask and effect change in one set, when the player has already come to rest.
        QCOMPARE(bench.edits.sets.size(), 1);
        QVERIFY(bench.edits.sets.first().contains(13, 1)
                && bench.edits.sets.first().contains(5, 10));
    }

    void releaseInTheMiddle()
    {
        EditBench bench;
        QVERIFY(bench.giveTruth(0));
        QCOMPARE(bench.start(0), 0);
        QTRY_VERIFY(!bench.player.frames.isEmpty());
        const int frames = bench.player.frames.size();
        bench.controller->releaseMediaPlayer();
        QTest::qWait(50);
        QCOMPARE(bench.player.notes.size(), 1); // the start
        QCOMPARE(bench.player.frames.size(), frames);
        QCOMPARE(bench.track(0), 0); // nobody to tell, but it works
        QCOMPARE(bench.trackedFrames(), range(0, last));
        // And a controller that is deleted while it tracks, by whom it tells.
        EditBench second;
        QVERIFY(second.giveTruth(0));
        second.player.onFrame = [&](qint64) {
            releaseSmartKeyingEditController(second.controller);
            second.controller = nullptr;
        };
        QCOMPARE(second.start(0), 0);
        QTRY_VERIFY(!second.controller);
    }
};

ZK_TEST_MAIN(ZkTrackingTest)
#include "ZkTrackingTest.moc"
