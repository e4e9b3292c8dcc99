#include "EditBench.h"
#include "ZkShoutingTranslator.h"
#include "ZkTestMain.h"
#include "segmentation/ZkMatteTrack.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"

using namespace zk::datamodel;
using namespace zk::test;

namespace {

const QVector<int> succeeded {ZKSMARTKEYING::SaveSucceeded};
const QVector<int> cancelled {ZKSMARTKEYING::SaveCancelled};

// What the clip of the project holds, to be compared.
QString stateOf(const EditBench &bench)
{
    const ZkStudioClip *clip = bench.project->clip();
    const auto *service = clip->studioService(ZKSMARTKEYING::SmartCutout);
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
    void init() { bench.emplace(); }
    void cleanup() { bench.reset(); }

    void writesTheMattes()
    {
        QVERIFY(bench->giveTruthEverywhere());
        bench->controller->apply();
        bench->controller->apply(); // ignored
        QTRY_VERIFY(!bench->observer.results.isEmpty());
        QTest::qWait(20);
        QCOMPARE(bench->observer.results, succeeded);
        QCOMPARE(bench->observer.progress.first(), 0);
        QCOMPARE(bench->observer.progress.last(), 100);
        QVERIFY(std::is_sorted(bench->observer.progress.cbegin(), bench->observer.progress.cend()));
        const auto track = bench->project->clip()->matteTrack();
        QVERIFY(track);
        for (int frame = 0; frame < EditClip::frames; ++frame)
            QCOMPARE(track->matteAt(frame), EditClip::instance().matte(frame));
        // The plain cutout makes the clip show it.
        QVERIFY(bench->project->clip()->effects()->effectAt(0)->isEnabled());
    }

    void isOneStepOfTheProject()
    {
        QVERIFY(bench->giveTruthEverywhere());
        const QString before = stateOf(*bench);
        QVERIFY(bench->applyAndWait());
        const QString after = stateOf(*bench);
        QVERIFY(after != before);
        ZkStudioUndoRedoService *undo = bench->project->undoRedoService();
        QCOMPARE(undo->undoText(), QStringLiteral("Smart Cutout"));
        QCOMPARE(bench->projectChanges.sets.size(), 1);
        const ZkTimelineChanges changes = bench->projectChanges.sets.first();
        QVERIFY(changes.contains(13, 1) && changes.contains(5, 2));
        QVERIFY(undo->undo());
        QCOMPARE(stateOf(*bench), before);
        QVERIFY(undo->redo());
        QCOMPARE(stateOf(*bench), after);
        QVERIFY(bench->applyAndWait()); // replaces the first one
        QCOMPARE(stateOf(*bench), after);
        QCOMPARE(undo->undoStepCount(), 2);
        // Without any mask the cutout goes away.
        bench->service()->reset();
        QVERIFY(bench->applyAndWait());
        QCOMPARE(stateOf(*bench), before);
        QVERIFY(bench->applyAndWait()); // nothing there, nothing done
        QCOMPARE(bench->observer.results.last(), int(ZKSMARTKEYING::SaveSucceeded));
        QCOMPARE(undo->undoStepCount(), 3);
    }

    void namesItsStepsInTheUsersLanguage()
    {
        const ShoutingTranslator translator;
        QVERIFY(bench->giveTruthEverywhere());
        QCOMPARE(bench->undo()->undoText(), QStringLiteral("SET MATTE"));
        bench->service()->setMaskInverted(true);
        QCOMPARE(bench->undo()->undoText(), QStringLiteral("INVERT MASK"));
        bench->clip()->effects()->add(ZkStudioEffect::plainCutout());
        QCOMPARE(bench->undo()->undoText(), QStringLiteral("ADD EFFECT"));
        bench->clip()->effects()->effectAt(0)->setEnabled(false);
        QCOMPARE(bench->undo()->undoText(), QStringLiteral("DISABLE EFFECT"));
        QVERIFY(bench->applyAndWait());
        QCOMPARE(bench->project->undoRedoService()->undoText(), QStringLiteral("SMART CUTOUT"));
    }

    void invertedAndIncomplete()
    {
        QVERIFY(bench->giveTruth(2));
        const ExpectedMessage expected(QStringLiteral("15 of 16 frames have no mask"));
        QVERIFY(bench->applyAndWait());
        QVERIFY(expected.seen());
        QCOMPARE(bench->project->clip()->matteTrack()->matteAt(0), maskOf(QRect(), 0));
        bench->service()->setMaskInverted(true);
        QVERIFY(bench->applyAndWait());
        QImage inverted = EditClip::instance().matte(2);
        inverted.invertPixels();
        QCOMPARE(bench->project->clip()->matteTrack()->matteAt(2), inverted);
        QCOMPARE(bench->project->clip()->matteTrack()->matteAt(0),
                 maskOf(QRect(QPoint(), EditClip::size)));
    }

    void editingGoesOn()
    {
        QVERIFY(bench->giveTruthEverywhere());
        zk::effects::Look look;
        look.matte.shiftPx = 20;
        const ZkEffectPtr effect(new ZkStudioEffect(look, QStringLiteral("grown")));
        QVERIFY(bench->clip()->effects()->add(effect));
        effect->setEnabled(false); // as a stroke leaves it
        QVERIFY(bench->applyAndWait());
        QVERIFY(effect->isEnabled());
        IZkSmartKeyingEditController *again = createSmartKeyingEditController();
        qint64 frame = 0;
        QVERIFY(
            again->initialise(bench->project->clip(), nullptr, &frame, ZKSMARTKEYING::SmartCutout));
        const auto *timeline = static_cast<const ZkStudioTimeline *>(again->editTimeline());
        QCOMPARE(timeline->shownService()->maskItemCount(), EditClip::frames);
        const ZkStudioEffect *applied = timeline->clip()->studioEffects()->cutoutEffect();
        QVERIFY(applied && applied->isEnabled());
        QCOMPARE(applied->lookJson(), look.toJson());
        releaseSmartKeyingEditController(again);
    }

    void cancelLeavesTheClip()
    {
        for (const ulong delay : {0UL, 300UL}) { // ms: the result is on its way by then
            EditBench bench;
            QVERIFY(bench.giveTruthEverywhere());
            const QString before = stateOf(bench);
            bench.controller->cancelApply(); // nothing to cancel
            bench.controller->apply();
            QThread::msleep(delay); // not one event is delivered
            bench.controller->cancelApply();
            QTRY_VERIFY(!bench.observer.results.isEmpty());
            QTest::qWait(100);
            QCOMPARE(bench.observer.results, cancelled);
            QVERIFY(bench.observer.progress.isEmpty() && bench.projectChanges.sets.isEmpty());
            QCOMPARE(stateOf(bench), before);
            QVERIFY(bench.applyAndWait());
            QCOMPARE(bench.observer.results, cancelled + succeeded);
        }
    }

    void damagedMaskFails()
    {
        Segments segments;
        const QImage wrongSize = maskOf(QRect(0, 0, 9, 9), 255, QSize(10, 10));
        segments.setTracked(0, true, {EncodedMatte(wrongSize), 1});
        bench->service()->setState(segments, {});
        const ExpectedMessage expected(QStringLiteral("mask is damaged"));
        QVERIFY(bench->applyAndWait());
        QVERIFY(expected.seen());
        QCOMPARE(bench->observer.results, (QVector<int> {ZKSMARTKEYING::SaveFailed}));
        QVERIFY(!bench->project->undoRedoService()->canUndo());
    }

    void erasingKeepsItsMasksOnly()
    {
        EditBench bench(EditClip::instance().path(), ZKSMARTKEYING::AIErasing);
        QVERIFY(bench.giveTruthEverywhere() && bench.applyAndWait());
        const ZkStudioClip *clip = bench.project->clip();
        QCOMPARE(clip->studioService(ZKSMARTKEYING::AIErasing)->maskItemCount(), EditClip::frames);
        QVERIFY(!clip->matteTrack());
        QCOMPARE(clip->effects()->count(), 0);
    }

private:
    std::optional<EditBench> bench;
};

ZK_TEST_MAIN(ZkApplyTest)
#include "ZkApplyTest.moc"
