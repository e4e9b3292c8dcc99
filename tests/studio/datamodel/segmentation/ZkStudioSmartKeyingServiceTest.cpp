#include "EditBench.h"
#include "ZkTestMain.h"

using namespace zk::datamodel;
using namespace zk::test;

class ZkStudioSmartKeyingServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settingsReportOnce();
    void invertIsUndoable();
    void questionsAboutMasks();
    void minimumPenWidth_data();
    void minimumPenWidth();
    void resetDiscardsAll();
    void servicesOfTheWorkspacesAreApart();
    void serialisedAndBack();
    void damagedDataChangesNothing();
    void memoryIsThatOfTheCompressedMasks();
};

void ZkStudioSmartKeyingServiceTest::settingsReportOnce()
{
    EditBench bench;
    ZkStudioSmartKeyingService *service = bench.service();
    service->setPreviewType(ZKSMARTKEYING::AlphaPreview);
    service->setPreviewType(ZKSMARTKEYING::AlphaPreview);
    service->setMaskRegionColor(Qt::green);
    service->setMaskRegionColor(QColor());
    service->setMaskRegionAlpha(300);
    service->setMaskRegionAlpha(255);
    QCOMPARE(bench.edits->segmentRecords, 3);
    QCOMPARE(service->previewType(), ZKSMARTKEYING::AlphaPreview);
    QCOMPARE(service->maskRegionColor(), QColor(Qt::green));
    QCOMPARE(service->maskRegionAlpha(), 255);
    QVERIFY(!bench.undo()->canUndo());
}

void ZkStudioSmartKeyingServiceTest::invertIsUndoable()
{
    EditBench bench;
    bench.service()->setMaskInverted(false);
    QVERIFY(!bench.undo()->canUndo());
    bench.service()->setMaskInverted(true);
    QCOMPARE(bench.undo()->undoText(), QStringLiteral("Invert mask"));
    QVERIFY(bench.undo()->undo());
    QVERIFY(!bench.service()->isMaskInverted());
    QVERIFY(bench.undo()->redo());
    QVERIFY(bench.service()->isMaskInverted());
    QCOMPARE(bench.edits->segmentRecords, 3);
    bench.service()->setLocked(true);
    bench.service()->setMaskInverted(false);
    bench.service()->reset();
    QVERIFY(bench.service()->isMaskInverted());
    QCOMPARE(bench.undo()->undoStepCount(), 1);
}

void ZkStudioSmartKeyingServiceTest::questionsAboutMasks()
{
    EditBench bench;
    const QSize size = EditClip::instance().size();
    const QImage stroke = strokeOn(QRect(10, 10, 10, 10), QSize(320, 180), size);
    QCOMPARE(bench.service()->maskItemCount(), 0);
    QVERIFY(!bench.service()->isEraseEnabled(0));
    QVERIFY(!bench.service()->overlapsMask(stroke, 0));
    QImage faint(size, QImage::Format_Grayscale8);
    faint.fill(0);
    faint.scanLine(15)[15] = 1;
    QVERIFY(bench.controller->setMatte(0, faint));
    QCOMPARE(bench.service()->maskItemCount(), 1);
    QVERIFY(bench.service()->isEraseEnabled(0));
    QVERIFY(!bench.service()->isEraseEnabled(1));
    QVERIFY(bench.service()->overlapsMask(stroke, 0));
    QVERIFY(!bench.service()->overlapsMask(strokeOn(QRect(16, 16, 9, 9), size, size), 0));
    QVERIFY(!bench.service()->overlapsMask(QImage(), 0));
    QVERIFY(!bench.service()->isTracked());
}

void ZkStudioSmartKeyingServiceTest::minimumPenWidth_data()
{
    QTest::addColumn<int>("shownWidth");
    QTest::addColumn<int>("width");
    QTest::newRow("hidden") << 0 << 1;
    QTest::newRow("smaller") << 80 << 1;
    QTest::newRow("as it is") << 160 << 1;
    QTest::newRow("a little larger") << 161 << 2;
    QTest::newRow("800 percent") << 1280 << 8;
}

void ZkStudioSmartKeyingServiceTest::minimumPenWidth()
{
    static const EditBench bench;
    QFETCH(int, shownWidth);
    QTEST(bench.service()->minimumPenWidth(QSize(shownWidth, 1)), "width");
}

void ZkStudioSmartKeyingServiceTest::resetDiscardsAll()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(0));
    bench.service()->setMaskInverted(true);
    bench.service()->setPreviewType(ZKSMARTKEYING::GridPreview);
    bench.service()->storeTracked(1, true, {EncodedMatte(EditClip::instance().sample().matte(1))});
    QVERIFY(bench.service()->isTracked());
    bench.edits->segmentRecords = 0;
    bench.service()->reset();
    QCOMPARE(bench.service()->maskItemCount(), 0);
    QVERIFY(!bench.service()->isTracked() && !bench.service()->isMaskInverted());
    QVERIFY(!bench.undo()->canUndo() && !bench.undo()->canRedo());
    QCOMPARE(bench.edits->segmentRecords, 1);
    QCOMPARE(bench.service()->previewType(), ZKSMARTKEYING::GridPreview);
    QVERIFY(bench.service()->isEnabled());
}

void ZkStudioSmartKeyingServiceTest::servicesOfTheWorkspacesAreApart()
{
    EditBench bench(EditClip::instance().path(), ZKSMARTKEYING::AIErasing);
    QVERIFY(bench.giveTruth(0));
    QCOMPARE(bench.clip()->smartKeyingService(ZKSMARTKEYING::AIErasing), bench.service());
    const IZkSmartKeyingService *cutout =
        bench.clip()->smartKeyingService(ZKSMARTKEYING::SmartCutout);
    QCOMPARE(cutout->maskItemCount(), 0);
    QVERIFY(!cutout->isEnabled());
}

void ZkStudioSmartKeyingServiceTest::serialisedAndBack()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(0));
    const QSize size = EditClip::instance().size();
    QVERIFY(bench.controller->eraseMask(0, strokeOn(QRect(0, 0, 160, 20), size, size)));
    QCOMPARE(bench.track(0, ZKSMARTKEYING::TrackForward), 0);
    bench.service()->setMaskInverted(true);
    bench.service()->setMaskRegionAlpha(11);
    EditBench other;
    QVERIFY(other.service()->restore(bench.service()->serialised()));
    QCOMPARE(other.edits->segmentRecords, 1);
    QVERIFY(!other.undo()->canUndo());
    QCOMPARE(other.trackedFrames(), bench.trackedFrames());
    for (qint64 frame = 0; frame < EditClip::frames; ++frame)
        QCOMPARE(other.service()->segments().matteAt(frame),
                 bench.service()->segments().matteAt(frame));
    const SegmentNodePtr node = other.service()->segments().node(0);
    QVERIFY(node->erase == bench.service()->segments().node(0)->erase && !node->erase.isEmpty());
    QVERIFY(other.service()->isMaskInverted());
    QCOMPARE(other.service()->maskRegionAlpha(), 11);
}

void ZkStudioSmartKeyingServiceTest::damagedDataChangesNothing()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(3));
    const QByteArray data = bench.service()->serialised();
    EditBench other;
    QVERIFY(other.giveTruth(5));
    other.edits->segmentRecords = 0;
    for (int length = 0; length < data.size(); length += 7)
        QVERIFY(!other.service()->restore(data.left(length)));
    QByteArray later = data;
    later[7] = 2; // the version
    QVERIFY(!other.service()->restore(later));
    QVERIFY(!other.service()->restore(data + data));
    other.service()->setLocked(true);
    QVERIFY(!other.service()->restore(data));
    QCOMPARE(other.edits->segmentRecords, 0);
    QVERIFY(other.service()->segments().node(5));
}

void ZkStudioSmartKeyingServiceTest::memoryIsThatOfTheCompressedMasks()
{
    const QImage matte = zk::media::SampleClip({QSize(1280, 720), 1, 24}).matte(0);
    const qint64 bytes = EncodedMatte(matte).byteCount();
    QVERIFY2(bytes * 20 < matte.sizeInBytes(), qPrintable(QString::number(bytes)));
    Segments segments;
    constexpr int frames = 50;
    for (int frame = 0; frame < frames; ++frame)
        segments.setTracked(frame, true, {EncodedMatte(matte), 1, 0, 0, 1});
    QCOMPARE(segments.byteCount(), frames * bytes);
    const Segments copy = segments;
    for (int frame = 0; frame < frames; ++frame)
        QVERIFY(copy.storedAt(frame).isSharedWith(segments.storedAt(frame)));
}

ZK_TEST_MAIN(ZkStudioSmartKeyingServiceTest)
#include "ZkStudioSmartKeyingServiceTest.moc"
