#include "ErasingBench.h"
#include "ZkFrameRenderer.h"
#include "ZkProjectRecords.h"
#include "ZkTestMain.h"
#include "project/ZkProjectSnapshot.h"
#include "tracking/ZkEditTime.h"

#include <limits>

using namespace zk::datamodel;
using namespace zk::test;

namespace {

const QRect patch(110, 64, 20, 20); // far from the sample's object
const QRect everywhere(QPoint(), EditClip::size);

// The share of the pixels in the first mask that are in the second one, too.
double shareOf(const QImage &part, const QImage &whole)
{
    int in = 0;
    int all = 0;
    for (int y = 0; y < part.height() && whole.size() == part.size(); ++y) {
        for (int x = 0; x < part.width(); ++x) {
            const bool isPart = part.constScanLine(y)[x] >= 128;
            all += isPart ? 1 : 0;
            in += isPart && whole.constScanLine(y)[x] >= 128 ? 1 : 0;
        }
    }
    return all > 0 ? double(in) / all : 0;
}

} // namespace

class ZkErasingNodesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { bench.emplace(); }
    void cleanup() { bench.reset(); }

    void nodesByIndexAndFrame()
    {
        const ZkStudioSmartKeyingService *service = bench->service();
        QVERIFY(bench->giveTruth(7) && bench->giveTruth(2));
        QVERIFY(service->segmentCount() == 2 && service->maskItemCount() == 2);
        QVERIFY(service->segmentNodeAt(0) == 2 && service->segmentNodeAt(1) == 7);
        QVERIFY(service->segmentNodeAt(-1) == -1 && service->segmentNodeAt(2) == -1);
        QVERIFY(service->segmentIndexAt(7) == 1 && service->segmentIndexAt(3) == -1);
        QVERIFY(bench->service()->selectSegmentNode(7) && !bench->service()->selectSegmentNode(3));
        QCOMPARE(service->selectedSegmentNode(), 7);
        bench->journal.take();
        QVERIFY(bench->controller->deleteSegment(7) && !bench->controller->deleteSegment(7));
        QCOMPARE(bench->journal.take(), QStringList({"13", "node 7"}));
        QCOMPARE(service->selectedSegmentNode(), -1);
        // The service's own removal is told nobody else at first.
        QVERIFY(bench->service()->removeSegmentNode(2) && !bench->service()->removeSegmentNode(2));
        QCOMPARE(bench->journal.take(), QStringList({"13"}));
        QVERIFY(bench->undo()->undo());
        QCOMPARE(bench->journal.take(), QStringList({"13", "node 2"}));
    }

    void resultsOutliveTheirNodes()
    {
        ZkStudioSmartKeyingService *service = bench->service();
        service->addArea(fractions(patch));
        const QImage mask = bench->maskAt(0);
        const ZkSegmentResultPtr result = service->nodeResult(0);
        QVERIFY(result && !service->nodeResult(1));
        {
            const ZkDisableUndoRedoCommander off(bench->undo());
            QVERIFY(service->removeSegmentNode(0) && service->segmentCount() == 0);
            bench->journal.take();
            QVERIFY(service->setNodeResult(0, result));
            QCOMPARE(bench->journal.take(), QStringList({"13", "node 0"}));
        }
        QCOMPARE(bench->maskAt(0), mask);
        QCOMPARE(service->areaCount(), 0);
        QCOMPARE(bench->undo()->undoStepCount(), 1);
        QVERIFY(service->setNodeResult(3, result) && bench->undo()->undo());
        QVERIFY(service->segmentCount() == 1 && bench->undo()->redo());
        QCOMPARE(bench->maskAt(3), mask);
        QVERIFY(!service->setNodeResult(0, {}));
        QVERIFY(!service->setNodeResult(EditClip::frames, result)
                && !service->setNodeResult(-1, result));
        // Of another frame size, and after the clip that it came from is gone.
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("small.png"));
        QVERIFY(EditClip::instance().frame(0).copy(0, 0, 80, 80).save(path));
        ZkSegmentResultPtr other;
        {
            ErasingBench small(path);
            small.service()->addArea({0, 0, 0.5, 0.5});
            other = small.service()->nodeResult(0);
        }
        QVERIFY(other && !service->setNodeResult(0, other));
    }

    void severalObjectsAreTrackedTogether()
    {
        // One that is marked late, and one whose node is passed on the way.
        QVERIFY(bench->giveTruth(0) && bench->controller->setMatte(8, maskOf(patch)));
        QCOMPARE(bench->track(EditClip::frames - 1, 3, 1), 0); // wherever the player stands
        for (qint64 frame : {0, 4, 8, 12, 15})
            QVERIFY(shareOf(EditClip::instance().matte(frame), bench->maskAt(frame)) > 0.7);
        for (qint64 frame : {7, 8, 9})
            QVERIFY(shareOf(maskOf(patch), bench->maskAt(frame)) > 0.5);
        // What is erased on a frame goes with what was tracked into it.
        QVERIFY(bench->controller->eraseMask(8, strokeOn(EditClip::instance().frame(0).rect())));
        QVERIFY(!bench->service()->isEraseEnabled(8) && bench->service()->segmentCount() == 2);
        QVERIFY(bench->undo()->undo() && bench->service()->isEraseEnabled(8));
        // The next run replaces what was there, and undoing it brings that back.
        const QImage before = bench->maskAt(12);
        QVERIFY(bench->controller->deleteSegment(8));
        QCOMPARE(bench->track(0), 0);
        QVERIFY(shareOf(maskOf(patch), bench->maskAt(8)) < 0.1);
        QVERIFY(bench->undo()->undo() && bench->undo()->undo());
        QCOMPARE(bench->maskAt(12), before);
    }

    void resetIsUndone()
    {
        ZkStudioSmartKeyingService *service = bench->service();
        QVERIFY(bench->giveTruth(9) && service->addArea(fractions(patch)) == 0);
        QCOMPARE(bench->track(0), 0);
        const QImage tracked = bench->maskAt(5);
        bench->journal.take();
        service->clearTrackingResults();
        QCOMPARE(bench->journal.take(), QStringList({"89", "13", "node 0", "node 9"}));
        QVERIFY(!service->isTracked() && service->segmentCount() == 0 && service->areaCount() == 0);
        QVERIFY(service->eraseMasks().isEmpty());
        service->clearTrackingResults();
        QVERIFY(bench->journal.take().isEmpty());
        QVERIFY(bench->undo()->undo());
        QCOMPARE(bench->journal.take(), QStringList({"88", "13", "node 0", "node 9"}));
        QVERIFY(service->isTracked() && bench->hasArea(0, fractions(patch)));
        QCOMPARE(bench->maskAt(5), tracked);
        QVERIFY(bench->undo()->redo() && service->eraseMasks().isEmpty());
    }

    void savedSelectionsAreErasedWithTheNext()
    {
        ZkStudioSmartKeyingService *service = bench->service();
        QVERIFY(bench->giveTruth(0));
        QCOMPARE(bench->track(0), 0);
        const QImage first = bench->maskAt(10);
        leave();
        QVERIFY(service->savedSelectionCount() == 1 && service->segmentCount() == 0);
        QCOMPARE(bench->maskAt(10), first);
        // It stays when the next selection is discarded.
        QVERIFY(bench->controller->setMatte(3, maskOf(patch)));
        QCOMPARE(bench->track(0), 0);
        const EraseMasks both = service->eraseMasks();
        QVERIFY(shareOf(first, both.at(10).decoded()) == 1);
        QVERIFY(shareOf(maskOf(patch), both.at(3).decoded()) == 1);
        leave();
        QCOMPARE(service->savedSelectionCount(), 2);
        discard();
        QCOMPARE(service->savedSelectionCount(), 1);
        QCOMPARE(bench->maskAt(10), first);
        QVERIFY(shareOf(maskOf(patch), both.at(3).decoded()) == 1); // as it was taken
        discard();
        QCOMPARE(service->savedSelectionCount(), 1);
        QVERIFY(service->discardSavedSelections() && service->eraseMasks().isEmpty());
        QVERIFY(!service->discardSavedSelections() && bench->undo()->undo());
        QCOMPARE(bench->maskAt(10), first);
        // A reset leaves nothing, and can be undone.
        service->clearTrackingResults();
        QVERIFY(service->eraseMasks().isEmpty() && bench->undo()->undo());
        // The clip gets them with the rest of the edit.
        QVERIFY(bench->applyAndWait());
        const auto *applied = bench->project->clip()->studioService(ZKSMARTKEYING::AIErasing);
        QCOMPARE(applied->eraseMasks().at(10).decoded(), first);
    }

    void removalsThatAreRecordedSaveNothing()
    {
        QVERIFY(bench->giveTruth(0));
        QCOMPARE(bench->track(0), 0);
        QVERIFY(bench->service()->removeSegmentNode(0));
        QCOMPARE(bench->service()->savedSelectionCount(), 0);
        QVERIFY(bench->undo()->undo());
        leave();
        discard(); // undoing the save
        QVERIFY(bench->service()->eraseMasks().isEmpty() && !bench->service()->isTracked());
    }

    void projectFilesKeepAll()
    {
        QVERIFY(bench->giveTruth(0));
        QCOMPARE(bench->track(0), 0);
        leave();
        QVERIFY(bench->controller->addMask(0, strokeOn(QRect(120, 40, 10, 10))));
        bench->service()->addArea(fractions(patch));
        MediaEntry media;
        media.id = 1;
        media.info = bench->clip()->media();
        ProjectSnapshot::Clip clip;
        clip.id = 2;
        clip.media = media.id;
        clip.frameCount = EditClip::frames;
        clip.segmentations = {{ZKSMARTKEYING::AIErasing, bench->segments(), {}}};
        ProjectSnapshot snapshot;
        snapshot.id = QStringLiteral("test");
        snapshot.media = {media};
        snapshot.clips = {clip};
        ProjectSnapshot read;
        const QString folder = QDir::tempPath();
        QVERIFY(read.fromRecord(snapshot.toRecord(folder), folder, [](int, int) { return true; }));
        const Segments segments = read.clips.first().segmentations.first().segments;
        for (qint64 frame = 0; frame < EditClip::frames; ++frame)
            QCOMPARE(EraseMasks(segments).at(frame).decoded(), bench->maskAt(frame));
        const SegmentNodePtr node = segments.node(0);
        QVERIFY(node->areas.first()->id == bench->idOf(0) && node->areas.size() == 1);
        QCOMPARE(node->areas.first()->rect, fractions(patch));
        QCOMPARE(node->brush, bench->segments().node(0)->brush);
    }

    void thumbnails()
    {
        QVERIFY(bench->controller->setMatte(4, maskOf(QRect(0, 0, 80, 90))));
        bench->service()->setMaskRegionColor(Qt::green);
        bench->service()->setMaskRegionAlpha(255);
        const QImage picture = bench->controller->segmentThumbnail(0);
        QCOMPARE(picture.size(), EditClip::size);
        QCOMPARE(picture.pixelColor(20, 20), QColor(Qt::green));
        QVERIFY(picture.pixelColor(140, 20) != QColor(Qt::green));
        QCOMPARE(bench->controller->segmentThumbnail(0).cacheKey(), picture.cacheKey());
        QVERIFY(bench->controller->setMatte(4, maskOf(QRect(80, 0, 80, 90))));
        QVERIFY(bench->controller->segmentThumbnail(0).pixelColor(20, 20) != QColor(Qt::green));
        QVERIFY(bench->controller->segmentThumbnail(1).isNull());
    }

    void areaMasksMayBeHidden()
    {
        ZkStudioSmartKeyingService *service = bench->service();
        service->setObjectFinder({});
        service->addArea(fractions(patch));
        service->setMaskRegionColor(Qt::green);
        service->setMaskRegionAlpha(255);
        const auto isGreen = [&](const QPoint &point) {
            const RenderSnapshot snapshot(*bench->timeline());
            return FrameRenderer().preview(snapshot, 0).pixelColor(point) == QColor(Qt::green);
        };
        const QPoint inside = patch.center();
        QVERIFY(isGreen(inside));
        service->setRenderAllAreaMasks(false, false);
        QVERIFY(!isGreen(inside));
        service->setRenderAllAreaMasks(false, true);
        QVERIFY(!isGreen(inside) && isGreen({patch.left(), inside.y()}));
    }

    void editTimes()
    {
        IZkSmartKeyingEditController *controller = bench->controller;
        qint64 begin = -7;
        qint64 end = -7;
        QVERIFY(!controller->changeEditTime(1, 2) && !controller->changeEditTimeCns(1, 2));
        QVERIFY(!controller->getEditTime(begin, end) && begin == -7);
        QVERIFY(!controller->registerEditTime(5, 5) && !controller->registerEditTime(-1, 5));
        QVERIFY(!controller->registerEditTime(0, std::numeric_limits<qint64>::max()));
        QVERIFY(controller->registerEditTime(1000, 4000));
        QVERIFY(controller->changeEditTimeCns(15, 31) && !controller->changeEditTimeCns(4, 3));
        QVERIFY(controller->getEditTime(begin, end) && begin == 1 && end == 4);
        QVERIFY(controller->changeEditTime(2, 3) && !controller->changeEditTime(3, 3));
        QVERIFY(controller->getEditTime(begin, end) && begin == 2 && end == 3);
    }

private:
    // As the erasing workspace saves, and begins to discard.
    void leave()
    {
        const ZkDisableUndoRedoCommander off(bench->undo());
        for (int i = bench->service()->segmentCount() - 1; i >= 0; --i)
            bench->service()->removeSegmentNode(bench->service()->segmentNodeAt(i));
    }
    void discard()
    {
        const ZkDisableUndoRedoCommander off(bench->undo());
        bench->service()->clearTrackingResults();
    }

    std::optional<ErasingBench> bench;
};

ZK_TEST_MAIN(ZkErasingNodesTest)
#include "ZkErasingNodesTest.moc"
