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
        connector.clear();
        edit.setPosition(1);
        QCOMPARE(other.position(), qint64(3));
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

    void handles()
    {
        auto first = std::make_unique<ZkStudioTimeline>(ZkTimelineFormat {QSize(4, 4), 25, 1});
        const ZkStudioTimeline second(ZkTimelineFormat {QSize(4, 4), 30000, 1001});
        const ZkTimelineHandle handle = first->handle();
        QVERIFY(handle != 0 && handle != second.handle());
        QCOMPARE(ZkStudioTimeline::fromHandle(handle), first.get());
        first.reset();
        QVERIFY(!ZkStudioTimeline::fromHandle(handle) && !ZkStudioTimeline::fromHandle(0));
        QCOMPARE(second.playheadRange(), (ZkRange<qint64> {0, 0}));
    }

    void mediaFiles_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("clipType");
        QTest::addColumn<int>("frames");
        QTest::newRow("video") << EditClip::instance().path() << 1 << EditClip::frames;
        QTest::newRow("still") << EditClip::instance().stillPath() << 4 << 1;
        QTest::newRow("missing") << QStringLiteral("/nowhere/clip.mp4") << 0 << 0;
    }
    void mediaFiles()
    {
        QFETCH(QString, path);
        QFETCH(int, frames);
        QString error;
        const auto timeline = ZkStudioTimeline::fromMediaFile(path, &error);
        QCOMPARE(error.isEmpty(), frames > 0);
        QCOMPARE(timeline == nullptr, frames == 0);
        if (!timeline)
            return;
        QTEST(timeline->clip()->type(), "clipType");
        QCOMPARE(timeline->playhead()->frameRange(), (ZkRange<qint64> {0, frames - 1}));
        QCOMPARE(timeline->frameSize(), EditClip::size);
        QCOMPARE(timeline->clip()->source()->filePath(), path);
        const ZkStudioClip overhanging(timeline.get(), timeline->clip()->media(), frames - 1, 99);
        QCOMPARE(overhanging.frameCount(), qint64(1));
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
        QCOMPARE(bench.edits.count(ZKTIMELINE::EffectChange), 12);
    }

    void effectListRefuses()
    {
        EditBench bench;
        ZkStudioEffectList *effects = bench.clip()->studioEffects();
        const ZkEffectPtr effect = ZkStudioEffect::plainCutout();
        QVERIFY(effects->add(effect));
        QVERIFY(!effects->add(effect) && !effects->add({}) && !effects->removeById(-5));
        QVERIFY(!bench.project->clip()->effects()->add(effect)); // it has a clip
        QVERIFY(!effects->effectAt(-1) && !effects->effectAt(1));
        effects->removeById(effect->id());
        effect->setEnabled(false); // of no clip: no step
        QVERIFY(!effect->isEnabled());
        QCOMPARE(bench.undo()->undoStepCount(), 2);
    }

    void looks()
    {
        zk::effects::Look look;
        look.slug = look.name = look.category = QStringLiteral("glow");
        look.matte.featherPx = 3;
        QString error;
        const ZkEffectPtr effect =
            ZkStudioEffect::fromLookJson(look.toJson(), QStringLiteral("glow-2"), &error);
        QVERIFY2(effect, qPrintable(error));
        effect->setEnabled(false);
        const ZkEffectPtr copy = effect->createInstance();
        QVERIFY(copy->id() != effect->id() && !copy->isEnabled());
        QCOMPARE(copy->descriptor()->type(), 55);
        QCOMPARE(copy->descriptor()->slug(), QStringLiteral("glow-2"));
        QCOMPARE(copy.staticCast<ZkStudioEffect>()->lookJson(), look.toJson());
        QVERIFY(!ZkStudioEffect::fromLookJson("{]", QString(), &error));
        QVERIFY(!error.isEmpty());
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
        QVERIFY(!other.undoRedoService()->canUndo());
        other.shownService()->reset();
        other.clip()->effects()->effectAt(0)->setEnabled(false);
        QCOMPARE(bench.service()->maskItemCount(), 1);
        QVERIFY(bench.clip()->effects()->effectAt(0)->isEnabled());
    }
};

ZK_TEST_MAIN(ZkStudioTimelineTest)
#include "ZkStudioTimelineTest.moc"
