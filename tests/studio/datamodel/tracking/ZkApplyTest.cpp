#include "EditBench.h"
#include "ZkFrameRenderer.h"
#include "ZkTestMain.h"
#include "segmentation/ZkMatteTrack.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"

using namespace zk::datamodel;
using namespace zk::test;

namespace {

void giveWholeTruth(EditBench *bench)
{
    for (qint64 frame = 0; frame < EditClip::frames; ++frame)
        QVERIFY(bench->giveTruth(frame));
}

// What the clip of the project holds, to be compared.
QString stateOf(const EditBench &bench)
{
    const ZkStudioClip *clip = bench.project->clip();
    const ZkStudioSmartKeyingService *service = clip->studioService(ZKSMARTKEYING::SmartCutout);
    return QStringLiteral("%1 masks, invert %2, track %3, %4 effects")
        .arg(service->maskItemCount())
        .arg(service->isMaskInverted())
        .arg(clip->matteTrack() ? clip->matteTrack()->byteCount() : -1)
        .arg(clip->effects()->count());
}

} // namespace

class ZkApplyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesTheMattes();
    void isOneStepOfTheProject();
    void invertedAndIncomplete();
    void takesTheLookAlong();
    void editingGoesOn();
    void noMaskTakesTheCutoutAway();
    void cancelLeavesTheClip();
    void cancelAfterTheLastProgress();
    void damagedMaskFails();
    void erasingKeepsItsMasksOnly();
};

void ZkApplyTest::writesTheMattes()
{
    EditBench bench;
    giveWholeTruth(&bench);
    bench.controller->apply();
    bench.controller->apply(); // ignored
    QVERIFY(bench.observer.progress.isEmpty() && bench.observer.results.isEmpty());
    QTRY_COMPARE(bench.observer.results.size(), 1);
    QTest::qWait(20);
    QCOMPARE(bench.observer.results, (QVector<int> {ZKSMARTKEYING::SaveSucceeded}));
    QCOMPARE(bench.observer.progress.first(), 0);
    QCOMPARE(bench.observer.progress.last(), 100);
    QVERIFY(std::is_sorted(bench.observer.progress.cbegin(), bench.observer.progress.cend()));
    const auto track = bench.project->clip()->matteTrack();
    QVERIFY(track);
    for (int frame = 0; frame < EditClip::frames; ++frame)
        QCOMPARE(track->matteAt(frame), EditClip::instance().sample().matte(frame));
    // The plain cutout makes the clip show it.
    const IZkEffect *effect = bench.project->clip()->effects()->effectAt(0);
    QCOMPARE(effect->descriptor()->type(), int(ZKTIMELINE::SmartKeyingEffect));
    QVERIFY(effect->descriptor()->slug().isEmpty() && effect->isEnabled());
    QCOMPARE(bench.undo()->undoStepCount(), EditClip::frames);
}

void ZkApplyTest::isOneStepOfTheProject()
{
    EditBench bench;
    giveWholeTruth(&bench);
    const QString before = stateOf(bench);
    QVERIFY(bench.applyAndWait());
    const QString after = stateOf(bench);
    QVERIFY(after != before);
    ZkStudioUndoRedoService *undo = bench.project->undoRedoService();
    QCOMPARE(undo->undoStepCount(), 1);
    QCOMPARE(undo->undoText(), QStringLiteral("Smart Cutout"));
    QCOMPARE(bench.projectChanges->sets.size(), 1);
    QVERIFY(bench.projectChanges->sets.first().contains(ZKTIMELINE::SegmentChange));
    QVERIFY(bench.projectChanges->sets.first().contains(ZKTIMELINE::EffectChange,
                                                        ZKTIMELINE::EffectAdded));
    QVERIFY(undo->undo());
    QCOMPARE(stateOf(bench), before);
    QVERIFY(undo->redo());
    QCOMPARE(stateOf(bench), after);
    QVERIFY(bench.applyAndWait()); // replaces the first one
    QCOMPARE(stateOf(bench), after);
    QCOMPARE(undo->undoStepCount(), 2);
}

void ZkApplyTest::invertedAndIncomplete()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(2));
    const ExpectedMessage expected(QStringLiteral("frames have no mask"));
    const QRegularExpression message(QStringLiteral("15 of 16 frames have no mask"));
    QTest::ignoreMessage(QtWarningMsg, message);
    QVERIFY(bench.applyAndWait());
    auto track = bench.project->clip()->matteTrack();
    QVERIFY(EncodedMatte(track->matteAt(0)).isEmpty());
    bench.service()->setMaskInverted(true);
    QTest::ignoreMessage(QtWarningMsg, message);
    QVERIFY(bench.applyAndWait());
    track = bench.project->clip()->matteTrack();
    QImage inverted = EditClip::instance().sample().matte(2);
    inverted.invertPixels();
    QCOMPARE(track->matteAt(2), inverted);
    QCOMPARE(EncodedMatte(track->matteAt(0)).objectPixels(), 160 * 90);
    QVERIFY(track->byteCount() < 20000);
}

void ZkApplyTest::takesTheLookAlong()
{
    EditBench bench;
    giveWholeTruth(&bench);
    zk::effects::Look look;
    look.matte.shiftPx = 20;
    const ZkEffectPtr effect(new ZkStudioEffect(look, QStringLiteral("grown")));
    QVERIFY(bench.clip()->effects()->add(effect));
    effect->setEnabled(false); // as a stroke leaves it
    QVERIFY(bench.applyAndWait());
    QVERIFY(effect->isEnabled());
    const ZkStudioEffect *applied = bench.project->clip()->studioEffects()->cutoutEffect();
    QCOMPARE(applied->descriptor()->slug(), QStringLiteral("grown"));
    QCOMPARE(applied->lookJson(), look.toJson());
    QVERIFY(applied->isEnabled());
}

void ZkApplyTest::editingGoesOn()
{
    EditBench bench;
    giveWholeTruth(&bench);
    QVERIFY(bench.applyAndWait());
    IZkSmartKeyingEditController *again = createSmartKeyingEditController();
    qint64 frame = 0;
    QVERIFY(again->initialise(bench.project->clip(), nullptr, &frame, ZKSMARTKEYING::SmartCutout));
    const auto *timeline = static_cast<const ZkStudioTimeline *>(again->editTimeline());
    QCOMPARE(timeline->shownService()->maskItemCount(), EditClip::frames);
    QCOMPARE(timeline->clip()->effects()->count(), 1);
    releaseSmartKeyingEditController(again);
}

void ZkApplyTest::noMaskTakesTheCutoutAway()
{
    EditBench bench;
    const QString bare = stateOf(bench);
    QVERIFY(bench.applyAndWait());
    QCOMPARE(bench.observer.results.last(), int(ZKSMARTKEYING::SaveSucceeded));
    QVERIFY(!bench.project->undoRedoService()->canUndo()); // nothing there, nothing done
    giveWholeTruth(&bench);
    QVERIFY(bench.applyAndWait());
    bench.service()->reset();
    QVERIFY(bench.applyAndWait());
    QCOMPARE(stateOf(bench), bare);
    QCOMPARE(bench.project->undoRedoService()->undoStepCount(), 2);
}

void ZkApplyTest::cancelLeavesTheClip()
{
    EditBench bench;
    giveWholeTruth(&bench);
    const QString before = stateOf(bench);
    bench.controller->cancelApply(); // nothing to cancel
    bench.controller->apply();
    bench.controller->cancelApply();
    bench.controller->cancelApply();
    QTRY_COMPARE(bench.observer.results.size(), 1);
    QTest::qWait(100);
    QCOMPARE(bench.observer.results, (QVector<int> {ZKSMARTKEYING::SaveCancelled}));
    QCOMPARE(stateOf(bench), before);
    QVERIFY(!bench.project->undoRedoService()->canUndo());
    QVERIFY(bench.projectChanges->sets.isEmpty());
    QVERIFY(bench.applyAndWait());
    QCOMPARE(bench.observer.results.last(), int(ZKSMARTKEYING::SaveSucceeded));
}

// The worker is through, its result is on the way: too late for it all the same.
void ZkApplyTest::cancelAfterTheLastProgress()
{
    EditBench bench;
    giveWholeTruth(&bench);
    bench.controller->apply();
    QThread::msleep(300);
    bench.controller->cancelApply();
    QTRY_VERIFY(!bench.observer.results.isEmpty());
    QTest::qWait(20);
    QCOMPARE(bench.observer.results, (QVector<int> {ZKSMARTKEYING::SaveCancelled}));
    QVERIFY(bench.observer.progress.isEmpty());
    QVERIFY(!bench.project->clip()->matteTrack());
}

void ZkApplyTest::damagedMaskFails()
{
    EditBench bench;
    Segments segments;
    QImage wrongSize(10, 10, QImage::Format_Grayscale8);
    wrongSize.fill(255);
    segments.setTracked(0, true, {EncodedMatte(wrongSize), 1});
    bench.service()->setState(segments, {});
    const ExpectedMessage expected(QStringLiteral("mask is damaged"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("mask is damaged")));
    QVERIFY(bench.applyAndWait());
    QCOMPARE(bench.observer.results, (QVector<int> {ZKSMARTKEYING::SaveFailed}));
    QVERIFY(!bench.project->undoRedoService()->canUndo());
}

void ZkApplyTest::erasingKeepsItsMasksOnly()
{
    EditBench bench(EditClip::instance().path(), ZKSMARTKEYING::AIErasing);
    giveWholeTruth(&bench);
    QVERIFY(bench.applyAndWait());
    const ZkStudioClip *clip = bench.project->clip();
    QCOMPARE(clip->studioService(ZKSMARTKEYING::AIErasing)->maskItemCount(), EditClip::frames);
    QVERIFY(!clip->matteTrack());
    QCOMPARE(clip->effects()->count(), 0);
}

ZK_TEST_MAIN(ZkApplyTest)
#include "ZkApplyTest.moc"
