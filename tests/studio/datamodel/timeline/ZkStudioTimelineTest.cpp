#include "EditBench.h"
#include "ZkTestMain.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"

using namespace zk::test;

namespace {

class Playhead : public ZkStudioPlayhead, public IZkPlayheadObserver
{
public:
    explicit Playhead(qint64 last)
    {
        setFrameRange({0, last});
        addObserver(this);
    }
    QVector<qint64> moves;
    std::function<void(qint64)> onMoved;
    void onPlayheadMoved(qint64 frame) override
    {
        moves.append(frame);
        if (onMoved)
            onMoved(frame);
    }
};

} // namespace

class ZkStudioTimelineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void playheadStaysInItsRange()
    {
        Playhead playhead(0);
        playhead.setPosition(3);
        playhead.setFrameRange({2, 9});
        playhead.setPosition(50);
        playhead.setPosition(9);
        playhead.setFrameRange({4, 1});
        playhead.setPosition(-1);
        QCOMPARE(playhead.moves, (QVector<qint64> {2, 9, 4}));
    }

    void connectedPlayheads()
    {
        Playhead edit(20);
        Playhead player(10);
        Playhead other(20);
        edit.setPosition(4);
        player.setPosition(8);
        ZkPlayheadConnector connector;
        connector.addPlayhead(&edit, ZkPlayheadConnector::EditTimelineRole);
        connector.addPlayhead(&player, ZkPlayheadConnector::PlayerRole);
        edit.setPosition(6);
        player.setPosition(7);
        QCOMPARE(edit.moves, (QVector<qint64> {4, 6, 7}));
        QCOMPARE(player.moves, (QVector<qint64> {8, 4, 6, 7}));
        edit.setPosition(15); // further than the player can follow: they meet where it stops
        QCOMPARE(player.position(), qint64(10));
        QCOMPARE(edit.position(), qint64(10));
        connector.addPlayhead(&other, ZkPlayheadConnector::PlayerRole); // in the place of the first
        edit.setPosition(3);
        QCOMPARE(other.position(), qint64(3));
        QCOMPARE(player.position(), qint64(10));
    }

    void playheadObserversMayDoAnything()
    {
        Playhead edit(20);
        auto player = std::make_unique<Playhead>(20);
        auto connector = std::make_unique<ZkPlayheadConnector>();
        connector->addPlayhead(&edit, ZkPlayheadConnector::EditTimelineRole);
        connector->addPlayhead(player.get(), ZkPlayheadConnector::PlayerRole);
        edit.onMoved = [&](qint64 frame) { edit.setPosition(qMin<qint64>(frame + 1, 5)); };
        edit.setPosition(4);
        QCOMPARE(player->moves, (QVector<qint64> {5})); // never a frame that is left by then
        edit.onMoved = [&](qint64) {
            connector.reset();
            player.reset();
        };
        edit.setPosition(2);
        QVERIFY(!player);
    }

    void mediaFiles()
    {
        QString error;
        const EditClip &clip = EditClip::instance();
        QVERIFY(!ZkStudioTimeline::fromMediaFile(QStringLiteral("/nowhere/clip.mp4"), &error));
        QVERIFY(!error.isEmpty());
        const auto still = ZkStudioTimeline::fromMediaFile(clip.stillPath(), &error);
        QCOMPARE(still->clip()->type(), 4);
        QCOMPARE(still->playheadRange(), (ZkRange<qint64> {0, 0}));
        auto video = ZkStudioTimeline::fromMediaFile(clip.path(), &error);
        QCOMPARE(video->clip()->type(), 1);
        QCOMPARE(video->playheadRange(), (ZkRange<qint64> {0, EditClip::frames - 1}));
        QCOMPARE(video->frameSize(), EditClip::size);
        const ZkStudioClip overhanging(video.get(), video->clip()->media(), 15, 99);
        QCOMPARE(overhanging.frameCount(), qint64(1));
        const ZkTimelineHandle handle = video->handle();
        QCOMPARE(ZkStudioTimeline::fromHandle(handle), video.get());
        video.reset();
        QVERIFY(!ZkStudioTimeline::fromHandle(handle));
    }

    void effectsAreUndoable()
    {
        EditBench bench;
        ZkStudioEffectList *effects = bench.clip()->studioEffects();
        const ZkEffectPtr plain = ZkStudioEffect::plainCutout();
        QVERIFY(effects->add(plain));
        QVERIFY(effects->add(ZkStudioEffect::plainCutout()));
        const qint64 second = effects->effectAt(1)->id();
        plain->setEnabled(false);
        plain->setEnabled(false); // no change, no step
        QVERIFY(!effects->add(plain) && !effects->add({}) && !effects->removeById(-5));
        QVERIFY(!bench.project->clip()->effects()->add(plain)); // it has a clip
        QVERIFY(effects->removeById(plain->id()));
        QCOMPARE(effects->cutoutEffect()->id(), second);
        const QVector<int> subKinds {2, 2, 10, 3};
        QCOMPARE(bench.edits.sets.size(), subKinds.size());
        for (int i = 0; i < subKinds.size(); ++i)
            QVERIFY(bench.edits.sets.at(i).contains(ZKTIMELINE::EffectChange, subKinds.at(i)));

        QVERIFY(bench.undo()->undo());
        QCOMPARE(effects->effectAt(0), plain.data());
        QVERIFY(!plain->isEnabled());
        QVERIFY(bench.undo()->undo());
        QVERIFY(plain->isEnabled());
        while (bench.undo()->undo()) { }
        QCOMPARE(effects->count(), 0);
        while (bench.undo()->redo()) { }
        QCOMPARE(effects->count(), 1);
        QCOMPARE(effects->effectAt(0)->id(), second);
    }

    void clipCopyIsIndependent()
    {
        EditBench bench;
        QVERIFY(bench.giveTruth(2));
        bench.clip()->effects()->add(ZkStudioEffect::plainCutout());
        ZkStudioTimeline other(bench.timeline()->format());
        other.setWorkspace(ZKSMARTKEYING::SmartCutout);
        other.setClip(bench.clip()->copyTo(&other));
        QCOMPARE(other.shownService()->maskItemCount(), 1);
        other.shownService()->reset();
        other.clip()->effects()->effectAt(0)->setEnabled(false);
        QCOMPARE(bench.service()->maskItemCount(), 1);
        QVERIFY(bench.clip()->effects()->effectAt(0)->isEnabled());
    }
};

ZK_TEST_MAIN(ZkStudioTimelineTest)
#include "ZkStudioTimelineTest.moc"
