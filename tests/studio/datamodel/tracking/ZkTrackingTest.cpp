#include "EditBench.h"
#include "ZkCutClip.h"
#include "ZkTestMain.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"

#include <numeric>
#include <tuple>

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
    void init() { bench.emplace(); }
    void cleanup() { bench.reset(); }

    void runs()
    {
        const std::tuple<int, int, QVector<qint64>> rows[] = {
            {3, ZKSMARTKEYING::TrackForward, range(3, last)},
            {12, ZKSMARTKEYING::TrackBackward, range(0, 12)},
            {7, ZKSMARTKEYING::TrackBoth, range(0, last)}};
        for (const auto &[seed, direction, frames] : rows) {
            bench.emplace();
            QVERIFY(bench->giveTruth(seed));
            bench->edits.sets.clear();
            QCOMPARE(bench->track(seed, direction), 0);
            QCOMPARE(bench->trackedFrames(), frames);
            for (const qint64 tracked : frames)
                QVERIFY2(bench->agreement(tracked) > 0.6, qPrintable(QString::number(tracked)));
            QCOMPARE(bench->player.notes, wholeRun);
            QVERIFY(std::is_sorted(bench->player.percents.cbegin(), bench->player.percents.cend()));
            QCOMPARE(bench->player.percents.last(), 100);
            QVector<qint64> shown = bench->player.frames;
            std::sort(shown.begin(), shown.end());
            shown.erase(std::unique(shown.begin(), shown.end()), shown.end());
            QCOMPARE(shown, frames);
            QCOMPARE(bench->edits.count(ZKTIMELINE::SegmentChange), 1);
        }
    }

    void refused()
    {
        QCOMPARE(bench->track(5, 3), int(ZKSMARTKEYING::NothingToTrack));
        QVERIFY(bench->giveTruth(5));
        bench->service()->setEnabled(false);
        QCOMPARE(bench->track(5, 3), int(ZKSMARTKEYING::TrackingFailed));
        QVERIFY(bench->player.notes.isEmpty() && !bench->service()->isLocked());
        QCOMPARE(bench->service()->workMode(), ZKSMARTKEYING::EditingMode);
        // A still picture has no frame to go to.
        EditBench still(EditClip::instance().stillPath());
        QVERIFY(still.giveTruth(0));
        QCOMPARE(still.track(0, 3), int(ZKSMARTKEYING::NothingToTrack));
    }

    void nodesOnTheWayAreTheTruth()
    {
        const QImage patch = maskOf(QRect(10, 60, 30, 20)); // something else altogether
        QVERIFY(bench->giveTruth(0));
        QVERIFY(bench->controller->setMatte(6, patch));
        QCOMPARE(bench->track(0), 0);
        QCOMPARE(bench->segments().matteAt(6), patch);
        QVERIFY(bench->agreement(5) > 0.6);
        QVERIFY(agreementOf(bench->segments().matteAt(7), patch) > 0.5);
        // It stands among the results, too, so that there is no hole when the node is taken away.
        QCOMPARE(bench->segments().tracked().value(6).forward.matte.decoded(), patch);
    }

    void correctionsSpreadToTheNodesAround()
    {
        QVERIFY(bench->giveTruth(0) && bench->giveTruth(11));
        QCOMPARE(bench->track(0), 0);
        QVERIFY(bench->giveTruth(6));
        const auto before = bench->segments().tracked();
        QCOMPARE(bench->track(6, ZKSMARTKEYING::TrackBoth), 0);
        for (qint64 frame = 0; frame <= last; ++frame) {
            const TrackedMattes now = bench->segments().tracked().value(frame);
            const bool isAnew = now.forward.serial != before.value(frame).forward.serial;
            QCOMPARE(isAnew, frame >= 6 && frame <= 11);
            QCOMPARE(!now.backward.matte.isNull(), frame <= 6);
            QVERIFY(bench->agreement(frame) > 0.6);
        }
        QVERIFY(bench->segments().storedAt(3).isNull()); // blended
    }

    void earlierNodesAreRemembered()
    {
        const auto tracked = [this](const QVector<qint64> &nodes) {
            bench.emplace();
            for (const qint64 node : nodes)
                bench->giveTruth(node);
            return bench->track(nodes.last()) == 0 ? bench->segments().tracked().value(last).forward
                                                   : TrackedSide();
        };
        const TrackedSide alone = tracked({9});
        QVERIFY(alone.matte == tracked({9}).matte); // nothing else makes a difference
        const TrackedSide withMemory = tracked({0, 9});
        QVERIFY(withMemory.matte != alone.matte && withMemory.seed == 9);
        QVERIFY(bench->agreement(last) > 0.6);
    }

    // Nodes, where the run starts and how, the frames that have a mask afterwards, and what is told.
    void anotherSceneEndsTheWay_data()
    {
        using namespace ZKSMARTKEYING;
        QTest::addColumn<QVector<qint64>>("nodes");
        QTest::addColumn<int>("direction");
        QTest::addColumn<int>("type");
        QTest::addColumn<QVector<qint64>>("tracked");
        QTest::addColumn<QVector<qint64>>("cuts");
        using Frames = QVector<qint64>;
        const int end = TrackToClipEnd;
        QTest::newRow("forward") << Frames {0} << int(TrackForward) << end << range(0, 6)
                                 << Frames {7};
        QTest::newRow("backward") << Frames {12} << int(TrackBackward) << end << range(7, 12)
                                  << Frames {6};
        QTest::newRow("the other way goes on")
            << Frames {3} << int(TrackBoth) << end << range(0, 6) << Frames {7};
        QTest::newRow("up to the next node") << Frames {3, 10} << int(TrackForward) << end
                                             << range(3, 6) + range(10, last) << Frames {7};
        QTest::newRow("a node in every scene") << Frames {3, 10} << int(TrackBoth)
                                               << int(TrackWholeClip) << range(0, last) << Frames();
    }
    void anotherSceneEndsTheWay()
    {
        QFETCH(QVector<qint64>, nodes);
        QFETCH(int, direction);
        QFETCH(int, type);
        QFETCH(QVector<qint64>, tracked);
        QFETCH(QVector<qint64>, cuts);
        QTemporaryDir folder;
        const CutClip clip(EditClip::size, EditClip::frames, 7);
        const QString path = folder.filePath(QStringLiteral("cut.mkv"));
        clip.write(path);
        EditBench bench(path);
        for (const qint64 node : nodes)
            QVERIFY(bench.controller->setMatte(node, clip.matte(int(node))));
        // From before the clip was cut, say.
        bench.service()->storeTracked(
            8, direction != ZKSMARTKEYING::TrackBackward, {EncodedMatte(clip.matte(8)), 1});
        QCOMPARE(bench.track(nodes.first(), direction, type), 0);
        if (direction == ZKSMARTKEYING::TrackBackward)
            QVERIFY(bench.segments().hasMask(8));
        QCOMPARE(bench.trackedFrames(), tracked);
        QCOMPARE(bench.service()->sceneCuts(), cuts);
        QCOMPARE(bench.player.notes, wholeRun);
        QVERIFY(std::is_sorted(bench.player.percents.cbegin(), bench.player.percents.cend()));
        QCOMPARE(bench.player.percents.last(), 100);
        for (const qint64 frame : tracked)
            QVERIFY(agreementOf(bench.segments().matteAt(frame), clip.matte(int(frame))) > 0.6);
        QCOMPARE(bench.undo()->undoText(), QStringLiteral("Track"));
        QVERIFY(bench.undo()->undo());
        QCOMPARE(bench.trackedFrames(), range(8, 8));
    }

    void flashIsBridged()
    {
        QTemporaryDir folder;
        const CutClip clip(EditClip::size, EditClip::frames, 7, 9);
        const QString path = folder.filePath(QStringLiteral("flash.mkv"));
        clip.write(path);
        EditBench bench(path);
        QVERIFY(bench.controller->setMatte(0, clip.matte(0)));
        QCOMPARE(bench.track(0), 0);
        QCOMPARE(bench.trackedFrames(), range(0, last));
        QVERIFY(bench.service()->sceneCuts().isEmpty());
        for (const qint64 flash : {7, 8}) {
            QCOMPARE(bench.segments().matteAt(flash), bench.segments().matteAt(6));
            QCOMPARE(bench.segments().confidenceAt(flash), 0.0F);
        }
        QVERIFY(bench.agreement(9) > 0.6 && bench.segments().confidenceAt(9) > 0);
        QVERIFY(std::is_sorted(bench.player.frames.cbegin(), bench.player.frames.cend()));
    }

    void runIsOneStep()
    {
        QVERIFY(bench->giveTruth(4));
        QCOMPARE(bench->track(4, 1), 0);
        const QImage matte = bench->segments().matteAt(9);
        QCOMPARE(bench->track(4, 2), 0);
        QCOMPARE(bench->undo()->undoStepCount(), 3);
        QCOMPARE(bench->undo()->undoText(), QStringLiteral("Track"));
        QVERIFY(bench->undo()->undo());
        QCOMPARE(bench->trackedFrames(), range(4, last));
        QVERIFY(bench->undo()->undo() && !bench->service()->isTracked());
        QVERIFY(bench->undo()->redo());
        QCOMPARE(bench->segments().matteAt(9), matte);
    }

    void everythingElseWaits()
    {
        QVERIFY(bench->giveTruth(0));
        QCOMPARE(bench->start(0), 0);
        QCOMPARE(bench->service()->workMode(), ZKSMARTKEYING::TrackingMode);
        QCOMPARE(bench->start(0), int(ZKSMARTKEYING::TrackingFailed));
        bench->edits.sets.clear();
        QVERIFY(!bench->giveTruth(1));
        QCOMPARE(bench->edits.count(ZKTIMELINE::SegmentChange), 1);
        QVERIFY(!bench->undo()->undo());
        bench->service()->setMaskInverted(true);
        bench->service()->reset();
        bench->controller->switchWorkMode(ZKSMARTKEYING::EditingMode);
        QCOMPARE(bench->service()->workMode(), ZKSMARTKEYING::TrackingMode);
        QVERIFY(!bench->service()->isMaskInverted());
        QCOMPARE(bench->service()->maskItemCount(), 1);
        bench->controller->stopTracking();
        QVERIFY(bench->giveTruth(1) && bench->undo()->undo());
    }

    void stopKeepsWhatThereIs()
    {
        QVERIFY(bench->giveTruth(0));
        QCOMPARE(bench->start(0), 0);
        QTRY_VERIFY_WITH_TIMEOUT(bench->player.frames.size() >= 3, 60000);
        const QVector<qint64> shown = bench->player.frames;
        QElapsedTimer timer;
        timer.start();
        bench->controller->stopTracking();
        QVERIFY2(timer.elapsed() < 100, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(bench->service()->workMode(), ZKSMARTKEYING::EditingMode);
        QCOMPARE(bench->undo()->undoText(), QStringLiteral("Track"));
        QTest::qWait(300); // reports that were on their way are too late
        QCOMPARE(bench->trackedFrames(), shown);
        QCOMPARE(bench->player.frames, shown);
        QCOMPARE(bench->player.notes, wholeRun);
    }

    void stopFromTheProgress()
    {
        QVERIFY(bench->giveTruth(0));
        bench->player.onFrame = [&](qint64 frame) {
            if (frame == 2)
                bench->controller->stopTracking();
        };
        QCOMPARE(bench->track(0), 0);
        QCOMPARE(bench->trackedFrames(), range(0, 2));
        QCOMPARE(bench->player.percents.size(), 2); // nothing after "finished"
    }

    void startsAgainAtOnce()
    {
        QVERIFY(bench->giveTruth(0));
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(bench->start(0), 0);
            bench->controller->stopTracking();
        }
        QCOMPARE(bench->undo()->undoStepCount(), 1); // nothing was tracked, so there is no step
        QCOMPARE(bench->track(0), 0);
        QCOMPARE(bench->player.frames, range(0, last));
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
        QVERIFY(bench->giveTruth(12));
        bench->clip()->effects()->add(ZkStudioEffect::plainCutout());
        IZkEffect *effect = bench->clip()->effects()->effectAt(0);
        effect->setEnabled(false);
        const int steps = bench->undo()->undoStepCount();
        bench->edits.sets.clear();
        QCOMPARE(bench->track(12), 0);
        QVERIFY(effect->isEnabled());
        QCOMPARE(bench->undo()->undoStepCount(), steps + 1);
        // Mask and effect change in one set, when the player has already come to rest.
        QCOMPARE(bench->edits.sets.size(), 1);
        const ZkTimelineChanges changes = bench->edits.sets.first();
        QVERIFY(changes.contains(13, 1) && changes.contains(5, 10));
    }

    void releaseInTheMiddle()
    {
        QVERIFY(bench->giveTruth(0));
        QCOMPARE(bench->start(0), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!bench->player.frames.isEmpty(), 60000);
        const int frames = bench->player.frames.size();
        bench->controller->releaseMediaPlayer();
        QTest::qWait(50);
        QCOMPARE(bench->player.notes.size(), 1); // the start
        QCOMPARE(bench->player.frames.size(), frames);
        QCOMPARE(bench->track(0), 0); // nobody to tell, but it works
        QCOMPARE(bench->trackedFrames(), range(0, last));
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

private:
    std::optional<EditBench> bench;
};

ZK_TEST_MAIN(ZkTrackingTest)
#include "ZkTrackingTest.moc"
