#include "EditBench.h"
#include "ZkTestMain.h"

using namespace zk::datamodel;
using namespace zk::test;

class ZkStudioSmartKeyingServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { bench.emplace(); }
    void cleanup() { bench.reset(); }

    void settingsReportOnce()
    {
        ZkStudioSmartKeyingService *service = bench->service();
        service->setPreviewType(ZKSMARTKEYING::AlphaPreview);
        service->setPreviewType(ZKSMARTKEYING::AlphaPreview);
        service->setMaskRegionColor(Qt::green);
        service->setMaskRegionColor(QColor());
        service->setMaskRegionAlpha(300);
        service->setMaskRegionAlpha(255);
        QCOMPARE(bench->edits.count(ZKTIMELINE::SegmentChange), 3);
        QCOMPARE(service->maskRegionColor(), QColor(Qt::green));
        QCOMPARE(service->maskRegionAlpha(), 255);
        service->setMaskInverted(false);
        QVERIFY(!bench->undo()->canUndo());
        service->setMaskInverted(true);
        QVERIFY(bench->undo()->undo() && !service->isMaskInverted());
        QVERIFY(bench->undo()->redo() && service->isMaskInverted());
        QCOMPARE(bench->edits.count(ZKTIMELINE::SegmentChange), 6);
    }

    void questionsAboutMasks()
    {
        const ZkStudioSmartKeyingService *service = bench->service();
        const QImage stroke = strokeOn(QRect(10, 10, 10, 10), QSize(320, 180));
        QVERIFY(!service->isEraseEnabled(0) && !service->overlapsMask(stroke, 0));
        QVERIFY(bench->controller->setMatte(0, maskOf(QRect(15, 15, 1, 1), 1)));
        QVERIFY(service->isEraseEnabled(0) && !service->isEraseEnabled(1));
        QVERIFY(service->overlapsMask(stroke, 0));
        QVERIFY(!service->overlapsMask(strokeOn(QRect(16, 16, 9, 9)), 0));
        // Shown width / source width, rounded up, at least 1.
        const QVector<QPair<int, int>> widths {{0, 1}, {80, 1}, {160, 1}, {161, 2}, {1280, 8}};
        for (const auto &width : widths)
            QCOMPARE(service->minimumPenWidth(QSize(width.first, 1)), width.second);
    }

    void resetDiscardsAll()
    {
        QVERIFY(bench->giveTruth(0));
        bench->service()->setMaskInverted(true);
        bench->service()->setPreviewType(ZKSMARTKEYING::GridPreview);
        bench->service()->storeTracked(1, true, {EncodedMatte(maskOf(QRect(0, 0, 9, 9)))});
        QVERIFY(bench->service()->isTracked());
        bench->service()->setLocked(true);
        bench->service()->reset();
        QVERIFY(bench->service()->isTracked() && bench->undo()->canUndo());
        bench->service()->setLocked(false);
        bench->edits.sets.clear();
        bench->service()->reset();
        QVERIFY(bench->segments().isEmpty() && !bench->service()->isMaskInverted());
        QVERIFY(!bench->undo()->canUndo() && !bench->undo()->canRedo());
        QCOMPARE(bench->edits.count(ZKTIMELINE::SegmentChange), 1);
        QCOMPARE(bench->service()->previewType(), ZKSMARTKEYING::GridPreview);
    }

private:
    std::optional<EditBench> bench;
};

ZK_TEST_MAIN(ZkStudioSmartKeyingServiceTest)
#include "ZkStudioSmartKeyingServiceTest.moc"
