#include "EditBench.h"
#include "ZkTestMain.h"
#include "segmentation/ZkStrokeMap.h"

using namespace zk::datamodel;
using namespace zk::test;

namespace {

const QRect everywhere(QPoint(), EditClip::size);

// Whether the mask has that value wherever the stroke was painted.
bool hasValueUnder(const QImage &stroke, const QImage &mask, int value)
{
    const QImage map = strokeMap(stroke, mask.size()).pixels;
    for (int y = 0; y < mask.height(); ++y) {
        for (int x = 0; x < mask.width(); ++x) {
            if (map.constScanLine(y)[x] && mask.constScanLine(y)[x] != value)
                return false;
        }
    }
    return !mask.isNull();
}

} // namespace

class ZkStudioEditControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { bench.emplace(); }
    void cleanup() { bench.reset(); }

    void initialFrameIsClamped()
    {
        QString error;
        const auto project = ZkStudioTimeline::fromMediaFile(EditClip::instance().path(), &error);
        for (qint64 frame : {5, -3, 99}) {
            const qint64 expected = qBound<qint64>(0, frame, EditClip::frames - 1);
            IZkSmartKeyingEditController *controller = createSmartKeyingEditController();
            const auto initialise = [&] {
                return controller->initialise(
                    project->clip(), nullptr, &frame, ZKSMARTKEYING::SmartCutout);
            };
            QVERIFY(initialise());
            QCOMPARE(frame, expected);
            QCOMPARE(controller->editTimeline()->playhead()->position(), expected);
            QVERIFY(!initialise()); // once
            releaseSmartKeyingEditController(controller);
        }
    }

    void initialisationFails()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("gone.mkv"));
        QVERIFY(QFile::copy(EditClip::instance().path(), path));
        QString error;
        const auto project = ZkStudioTimeline::fromMediaFile(path, &error);
        QVERIFY(QFile::remove(path));
        IZkSmartKeyingEditController *controller = createSmartKeyingEditController();
        qint64 frame = 3;
        QVERIFY(
            !controller->initialise(project->clip(), nullptr, &frame, ZKSMARTKEYING::SmartCutout));
        QVERIFY(!controller->initialise(nullptr, nullptr, &frame, ZKSMARTKEYING::SmartCutout));
        // Everything else is harmless then.
        QVERIFY(!controller->editClip() && !controller->editTimeline());
        QVERIFY(!controller->addMask(0, strokeOn(everywhere)));
        controller->stopTracking();
        controller->apply();
        releaseSmartKeyingEditController(controller);
        releaseSmartKeyingEditController(nullptr);
    }

    void strokesMakeTheMask()
    {
        bench->edits.onChange = [&] {
            QCOMPARE(bench->undo()->undoText(), QStringLiteral("Add mask"));
        };
        const QImage keep = EditClip::instance().keepStroke();
        QVERIFY(bench->controller->addMask(0, keep));
        QVERIFY2(bench->agreement(0) > 0.5, qPrintable(QString::number(bench->agreement(0))));
        QCOMPARE(bench->observer.nodes, (QVector<qint64> {0}));
        QCOMPARE(bench->edits.count(ZKTIMELINE::SegmentChange), 1);
        QVERIFY(bench->projectChanges.sets.isEmpty());

        const QImage corner = strokeOn(QRect(140, 70, 20, 20), QSize(320, 180));
        QVERIFY(bench->controller->addMask(0, corner));
        QVERIFY(hasValueUnder(corner, bench->segments().matteAt(0), 255));
        bench->edits.onChange = nullptr;
        QVERIFY(bench->controller->subtractMask(0, corner)); // the last word counts
        QVERIFY(hasValueUnder(corner, bench->segments().matteAt(0), 0));
        QVERIFY(hasValueUnder(keep, bench->segments().matteAt(0), 255));
        const SegmentNodePtr node = bench->segments().node(0);
        QCOMPARE(node->remove.decoded(), strokeMap(corner, EditClip::size).pixels);
        QCOMPARE(node->keep.decoded(), strokeMap(keep, EditClip::size).pixels);
        QCOMPARE(bench->service()->maskItemCount(), 1);
        QCOMPARE(bench->undo()->undoText(), QStringLiteral("Remove mask"));
    }

    void erasedStaysErased()
    {
        QVERIFY(bench->controller->addMask(0, EditClip::instance().keepStroke()));
        const QRect lower(0, 45, 160, 45);
        const QImage before = bench->segments().matteAt(0).copy(lower);
        const QImage upper = strokeOn(QRect(0, 0, 160, 45));
        QVERIFY(bench->controller->eraseMask(0, upper));
        QCOMPARE(bench->undo()->undoText(), QStringLiteral("Erase mask"));
        QVERIFY(hasValueUnder(upper, bench->segments().matteAt(0), 0));
        QCOMPARE(bench->segments().matteAt(0).copy(lower), before);
        QVERIFY(bench->controller->addMask(0, strokeOn(QRect(70, 50, 6, 6))));
        QVERIFY(hasValueUnder(upper, bench->segments().matteAt(0), 0));
        const QImage again = strokeOn(QRect(70, 20, 10, 6));
        QVERIFY(bench->controller->addMask(0, again));
        QVERIFY(hasValueUnder(again, bench->segments().matteAt(0), 255));
    }

    void everyStepIsUndoneExactly()
    {
        IZkSmartKeyingEditController *controller = bench->controller;
        const QImage keep = EditClip::instance().keepStroke();
        const QVector<std::function<bool()>> steps {
            [&] { return controller->addMask(2, keep); },
            [&] { return controller->subtractMask(2, strokeOn(QRect(60, 30, 20, 20))); },
            [&] { return controller->eraseMask(2, keep); },
            [&] { return bench->giveTruth(2); }};
        QVector<SegmentNodePtr> states {bench->segments().node(2)};
        for (const auto &step : steps) {
            QVERIFY(step());
            states.append(bench->segments().node(2));
        }
        for (int i = steps.size(); i-- > 0;) {
            QVERIFY(bench->undo()->undo());
            QCOMPARE(bench->segments().node(2), states.at(i));
        }
        QCOMPARE(bench->service()->maskItemCount(), 0);
        for (int i = 1; i < states.size(); ++i) {
            QVERIFY(bench->undo()->redo());
            QCOMPARE(bench->segments().node(2), states.at(i));
        }
        QCOMPARE(bench->edits.count(ZKTIMELINE::SegmentChange), 3 * steps.size());
        QCOMPARE(bench->observer.nodes, QVector<qint64>(3 * steps.size(), 2));
    }

    void strokeOnATrackedFrame()
    {
        QVERIFY(bench->giveTruth(0));
        QCOMPARE(bench->track(0), 0);
        const QImage tracked = bench->segments().matteAt(3);
        QVERIFY(bench->controller->eraseMask(3, strokeOn(QRect(0, 0, 80, 90))));
        const QRect right(80, 0, 80, 90);
        QCOMPARE(bench->segments().matteAt(3).copy(right), tracked.copy(right));
        QVERIFY(bench->undo()->undo());
        QCOMPARE(bench->segments().matteAt(3), tracked);
        QVERIFY(bench->controller->subtractMask(3, strokeOn(QRect(0, 0, 9, 9))));
        QVERIFY(bench->agreement(3) > 0.5); // the tracked mask is what was corrected
    }

    void failuresReportToo()
    {
        const QImage painted = strokeOn(everywhere);
        QVERIFY(!bench->controller->addMask(-1, painted));
        QVERIFY(!bench->controller->addMask(EditClip::frames, painted));
        QVERIFY(!bench->controller->addMask(0, QImage()));
        QVERIFY(!bench->controller->addMask(0, strokeOn(QRect())));
        QVERIFY(!bench->controller->subtractMask(0, painted)); // there is nothing to take away from
        QVERIFY(!bench->controller->eraseMask(0, painted));
        QVERIFY(!bench->controller->setMatte(0, QImage()));
        QCOMPARE(bench->edits.count(ZKTIMELINE::SegmentChange), 7);
        bench->service()->setEnabled(false);
        bench->edits.sets.clear();
        QVERIFY(!bench->controller->addMask(0, painted));
        QCOMPARE(bench->edits.count(ZKTIMELINE::SegmentChange), 1);
        bench->service()->setEnabled(true);
        QVERIFY(!bench->undo()->canUndo() && bench->segments().isEmpty());
        QVERIFY(bench->observer.nodes.isEmpty());
        // So does what changes nothing.
        QImage large(EditClip::size * 2, QImage::Format_RGB32);
        large.fill(QColor(90, 90, 90));
        QVERIFY(bench->controller->setMatte(0, large)); // is scaled
        bench->edits.sets.clear();
        QVERIFY(bench->controller->setMatte(0, maskOf(everywhere, 90)));
        QCOMPARE(bench->undo()->undoStepCount(), 1);
        const QImage stroke = strokeOn(QRect(0, 0, 3, 3));
        QVERIFY(bench->controller->eraseMask(0, stroke) && bench->controller->eraseMask(0, stroke));
        QCOMPARE(bench->edits.count(ZKTIMELINE::SegmentChange), 3);
        QCOMPARE(bench->undo()->undoStepCount(), 2);
    }

    void recordsComeInsideAMacro()
    {
        {
            ZkUndoRedoCommander macro(bench->undo(), QStringLiteral("two frames"), QString());
            QVERIFY(bench->giveTruth(0));
            QCOMPARE(bench->edits.count(ZKTIMELINE::SegmentChange), 1);
            QVERIFY(bench->giveTruth(1));
        }
        QCOMPARE(bench->undo()->undoStepCount(), 1);
        QVERIFY(bench->undo()->undo() && bench->segments().isEmpty());
        QCOMPARE(bench->observer.nodes.size(), 4);
    }

    void observerMayReleaseTheController()
    {
        bench->edits.onChange = [&] {
            QCoreApplication::processEvents();
            releaseSmartKeyingEditController(bench->controller);
            bench->controller = nullptr;
        };
        QVERIFY(bench->giveTruth(0));
        QVERIFY(!bench->controller && bench->observer.nodes.isEmpty());
    }

    void trimmedClipEditsItsOwnFrames()
    {
        EditBench bench(EditClip::instance().path(), ZKSMARTKEYING::SmartCutout, {5, 8});
        QVERIFY(!bench.giveTruth(4)); // there are only four
        QVERIFY(bench.controller->setMatte(0, EditClip::instance().matte(5)));
        QCOMPARE(bench.track(0), 0);
        const QImage last = bench.segments().matteAt(3);
        QVERIFY(agreementOf(last, EditClip::instance().matte(8)) > 0.7);
    }

private:
    std::optional<EditBench> bench;
};

ZK_TEST_MAIN(ZkStudioEditControllerTest)
#include "ZkStudioEditControllerTest.moc"
