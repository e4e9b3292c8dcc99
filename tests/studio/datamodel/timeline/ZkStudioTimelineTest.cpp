#include "EditBench.h"
#include "ZkTestMain.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"

using namespace zk::test;

namespace {

class Observer : public IZkPlayheadObserver
{
public:
    explicit Observer(IZkPlayhead *playhead)
        : m_playhead(playhead)
    {
        m_playhead->addObserver(this);
    }
    ~Observer() override { m_playhead->removeObserver(this); }
    QVector<qint64> frames;
    std::function<void(qint64)> onMoved;
    void onPlayheadMoved(qint64 frame) override
    {
        frames.append(frame);
        if (onMoved)
            onMoved(frame);
    }

private:
    Q_DISABLE_COPY(Observer)
    IZkPlayhead *const m_playhead;
};

ZkStudioPlayhead *playheadOf(qint64 last)
{
    auto *playhead = new ZkStudioPlayhead;
    playhead->setFrameRange({0, last});
    return playhead;
}

} // namespace

class ZkStudioTimelineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void playheadStaysInItsRange();
    void playheadMovedByAnObserver();
    void connectedPlayheads();
    void connectorSurvivesWhatObserversDo();
    void handles();
    void mediaFiles_data();
    void mediaFiles();
    void trimmedClip();
    void effectsAreUndoable();
    void effectListRefuses();
    void looks();
    void clipCopyIsIndependent();
};

void ZkStudioTimelineTest::playheadStaysInItsRange()
{
    ZkStudioPlayhead playhead;
    Observer observer(&playhead);
    playhead.setPosition(3);
    QCOMPARE(playhead.position(), qint64(0));
    playhead.setFrameRange({2, 9});
    playhead.setPosition(50);
    playhead.setPosition(9);
    playhead.setFrameRange({4, 1});
    playhead.setPosition(-1);
    QCOMPARE(observer.frames, (QVector<qint64> {2, 9, 4}));
}

void ZkStudioTimelineTest::playheadMovedByAnObserver()
{
    const std::unique_ptr<ZkStudioPlayhead> playhead(playheadOf(9));
    Observer first(playhead.get());
    Observer second(playhead.get());
    first.onMoved = [&](qint64 frame) { playhead->setPosition(qMin<qint64>(frame + 1, 5)); };
    playhead->setPosition(4);
    QCOMPARE(playhead->position(), qint64(5));
    QCOMPARE(second.frames, (QVector<qint64> {5})); // never the frame that it has left by then
}

void ZkStudioTimelineTest::connectedPlayheads()
{
    const std::unique_ptr<ZkStudioPlayhead> edit(playheadOf(20));
    const std::unique_ptr<ZkStudioPlayhead> player(playheadOf(10));
    edit->setPosition(4);
    player->setPosition(8);
    ZkPlayheadConnector connector;
    connector.addPlayhead(edit.get(), ZkPlayheadConnector::EditTimelineRole);
    connector.addPlayhead(player.get(), ZkPlayheadConnector::PlayerRole);
    QCOMPARE(player->position(), qint64(4));
    Observer editMoves(edit.get());
    Observer playerMoves(player.get());
    edit->setPosition(6);
    player->setPosition(7);
    QCOMPARE(editMoves.frames, (QVector<qint64> {6, 7}));
    QCOMPARE(playerMoves.frames, (QVector<qint64> {6, 7}));
    edit->setPosition(15); // further than the player can follow: they meet where it stops
    QCOMPARE(player->position(), qint64(10));
    QCOMPARE(edit->position(), qint64(10));
    // A second playhead in a role replaces the first.
    const std::unique_ptr<ZkStudioPlayhead> other(playheadOf(20));
    connector.addPlayhead(other.get(), ZkPlayheadConnector::PlayerRole);
    QCOMPARE(other->position(), qint64(10));
    edit->setPosition(3);
    QCOMPARE(other->position(), qint64(3));
    QCOMPARE(player->position(), qint64(10));
    connector.clear();
    edit->setPosition(1);
    QCOMPARE(other->position(), qint64(3));
}

void ZkStudioTimelineTest::connectorSurvivesWhatObserversDo()
{
    const std::unique_ptr<ZkStudioPlayhead> edit(playheadOf(20));
    std::unique_ptr<ZkStudioPlayhead> player(playheadOf(20));
    auto connector = std::make_unique<ZkPlayheadConnector>();
    Observer closing(edit.get()); // hears of a move before the connector does
    closing.onMoved = [&](qint64) {
        connector.reset();
        player.reset();
    };
    connector->addPlayhead(edit.get(), ZkPlayheadConnector::EditTimelineRole);
    connector->addPlayhead(player.get(), ZkPlayheadConnector::PlayerRole);
    edit->setPosition(2);
    QVERIFY(!player);
    closing.onMoved = nullptr;
    edit->setPosition(3);
    QCOMPARE(closing.frames.size(), 2);
}

void ZkStudioTimelineTest::handles()
{
    auto first = std::make_unique<ZkStudioTimeline>(ZkTimelineFormat {QSize(4, 4), 25, 1});
    ZkStudioTimeline second(ZkTimelineFormat {QSize(4, 4), 30000, 1001});
    const ZkTimelineHandle handle = first->handle();
    QVERIFY(handle != 0 && handle != second.handle());
    QCOMPARE(ZkStudioTimeline::fromHandle(handle), first.get());
    first.reset();
    QVERIFY(!ZkStudioTimeline::fromHandle(handle));
    QVERIFY(!ZkStudioTimeline::fromHandle(0));
    QVERIFY(qAbs(second.frameRate() - 29.97) < 0.01);
    QCOMPARE(second.playheadRange(), (ZkRange<qint64> {0, 0}));
}

void ZkStudioTimelineTest::mediaFiles_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("clipType");
    QTest::addColumn<int>("frames");
    QTest::newRow("video") << EditClip::instance().path() << 1 << EditClip::frames;
    QTest::newRow("still") << EditClip::instance().stillPath() << 4 << 1;
    QTest::newRow("missing") << QStringLiteral("/nowhere/clip.mp4") << 0 << 0;
}

void ZkStudioTimelineTest::mediaFiles()
{
    QFETCH(QString, path);
    QFETCH(int, frames);
    QString error;
    const auto timeline = ZkStudioTimeline::fromMediaFile(path, &error);
    QCOMPARE(timeline == nullptr, frames == 0);
    QCOMPARE(error.isEmpty(), frames > 0);
    if (!timeline)
        return;
    QTEST(timeline->clip()->type(), "clipType");
    QCOMPARE(timeline->frameCount(), qint64(frames));
    QCOMPARE(timeline->playhead()->frameRange(), (ZkRange<qint64> {0, frames - 1}));
    QCOMPARE(timeline->frameSize(), EditClip::instance().size());
    QCOMPARE(timeline->clip()->source()->filePath(), path);
    QVERIFY(!timeline->shownService());
}

void ZkStudioTimelineTest::trimmedClip()
{
    QString error;
    const auto timeline = ZkStudioTimeline::fromMediaFile(EditClip::instance().path(), &error);
    const zk::media::MediaInfo media = timeline->clip()->media();
    const ZkStudioClip inside(timeline.get(), media, 3, 5);
    QCOMPARE(inside.frameCount(), qint64(5));
    const ZkStudioClip overhanging(timeline.get(), media, 12, 100);
    QCOMPARE(overhanging.frameCount(), qint64(EditClip::frames - 12));
}

void ZkStudioTimelineTest::effectsAreUndoable()
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
    QCOMPARE(effects->count(), 1);
    QCOMPARE(effects->cutoutEffect()->id(), second);
    QCOMPARE(bench.edits->effectRecords, 4);
    const QVector<int> subKinds {2, 2, 10, 3};
    for (int i = 0; i < 4; ++i)
        QVERIFY(bench.edits->sets.at(i).contains(ZKTIMELINE::EffectChange, subKinds.at(i)));
    QCOMPARE(bench.undo()->undoStepCount(), 4);

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
    QCOMPARE(bench.edits->effectRecords, 12);
}

void ZkStudioTimelineTest::effectListRefuses()
{
    EditBench bench;
    ZkStudioEffectList *effects = bench.clip()->studioEffects();
    const ZkEffectPtr effect = ZkStudioEffect::plainCutout();
    QVERIFY(!effects->add({}));
    QVERIFY(effects->add(effect));
    QVERIFY(!effects->add(effect));
    QVERIFY(!bench.project->clip()->effects()->add(effect));
    QVERIFY(!effects->removeById(-5));
    QVERIFY(!effects->effectAt(-1) && !effects->effectAt(1));
    QCOMPARE(bench.undo()->undoStepCount(), 1);
    // An effect of no clip changes without a step.
    effects->removeById(effect->id());
    effect->setEnabled(false);
    QVERIFY(!effect->isEnabled());
    QCOMPARE(bench.undo()->undoStepCount(), 2);
}

void ZkStudioTimelineTest::looks()
{
    zk::effects::Look look;
    look.slug = QStringLiteral("glow");
    look.name = QStringLiteral("Glow");
    look.category = QStringLiteral("Light");
    look.matte.featherPx = 3;
    QString error;
    const ZkEffectPtr effect =
        ZkStudioEffect::fromLookJson(look.toJson(), QStringLiteral("glow-2"), &error);
    QVERIFY2(effect, qPrintable(error));
    effect->setEnabled(false);
    const ZkEffectPtr copy = effect->createInstance();
    QVERIFY(copy->id() != effect->id());
    QVERIFY(!copy->isEnabled());
    QCOMPARE(copy->descriptor()->type(), 55);
    QCOMPARE(copy->descriptor()->slug(), QStringLiteral("glow-2"));
    QCOMPARE(copy.staticCast<ZkStudioEffect>()->lookJson(), look.toJson());
    QVERIFY(!ZkStudioEffect::fromLookJson("{]", QString(), &error));
    QVERIFY(!error.isEmpty());
}

void ZkStudioTimelineTest::clipCopyIsIndependent()
{
    EditBench bench;
    QVERIFY(bench.giveTruth(2));
    bench.clip()->effects()->add(ZkStudioEffect::plainCutout());
    ZkStudioTimeline other(bench.timeline()->format());
    other.setWorkspace(ZKSMARTKEYING::SmartCutout);
    other.setClip(bench.clip()->copyTo(&other));
    QCOMPARE(other.shownService()->maskItemCount(), 1);
    QCOMPARE(other.clip()->effects()->count(), 1);
    QVERIFY(other.clip()->effects()->effectAt(0)->id()
            != bench.clip()->effects()->effectAt(0)->id());
    QVERIFY(!other.undoRedoService()->canUndo());
    other.shownService()->reset();
    other.clip()->effects()->effectAt(0)->setEnabled(false);
    QCOMPARE(bench.service()->maskItemCount(), 1);
    QVERIFY(bench.clip()->effects()->effectAt(0)->isEnabled());
}

ZK_TEST_MAIN(ZkStudioTimelineTest)
#include "ZkStudioTimelineTest.moc"
