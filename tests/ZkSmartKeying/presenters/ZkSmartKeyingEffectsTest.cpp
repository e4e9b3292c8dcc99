#include "Workspace.h"

namespace {

// A media item of another kind: it describes no effect.
class PlainItem : public IZkAbstractMediaItem
{
public:
    qint64 id() const override { return 1; }
    QString slug() const override { return QStringLiteral("plain"); }
    QString name() const override { return slug(); }
    QString thumbnailPath() const override { return QString(); }
    bool needsDownload() const override { return false; }
};

const int OtherEffect = 7;

} // namespace

class ZkSmartKeyingEffectsTest : public QObject
{
    Q_OBJECT

private slots:
    void findsTheFirstCutoutEffect();
    void switchesTheEffect();
    void applyingAPresetReplacesTheEffect();
    void applyingNoneRemovesTheEffects();
    void unusablePresetsChangeNothing_data();
    void unusablePresetsChangeNothing();
    void selectsPresetsOnDisk();
    void downloadsASelectedPreset_data();
    void downloadsASelectedPreset();
    void reportsUse();
};

void ZkSmartKeyingEffectsTest::findsTheFirstCutoutEffect()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    space.carry(OtherEffect, "other");
    QVERIFY(!presenter.getEffect() && !presenter.isEffectEnabled());
    space.carry(ZKTIMELINE::SmartKeyingEffect, "bare")->described = false;
    Effect *const first = space.carry(ZKTIMELINE::SmartKeyingEffect, "first");
    const Effect *const second = space.carry(ZKTIMELINE::SmartKeyingEffect, "second");
    QCOMPARE(presenter.getEffect(), first);
    QVERIFY(presenter.isSmartKeyingEffect(first) && !presenter.isSmartKeyingEffect(nullptr));
    takeJournal();
    presenter.removeEffects();
    const QString removal = QStringLiteral("effects.removeById(%1)");
    QCOMPARE(noted({"effects"}),
             QStringList({removal.arg(second->id()), removal.arg(first->id())}));
    QCOMPARE(space.controller->clip.list.slugs(), QStringList({"other", ""}));
}

void ZkSmartKeyingEffectsTest::switchesTheEffect()
{
    Workspace space;
    QVERIFY(!space.presenter->setEffectEnabled(true));
    space.carry(ZKTIMELINE::SmartKeyingEffect, "glow", true);
    SignalJournal recorder(space.presenter.get());
    for (bool enabled : {false, true}) {
        takeJournal();
        QVERIFY(space.presenter->setEffectEnabled(enabled));
        QCOMPARE(space.presenter->isEffectEnabled(), enabled);
        QCOMPARE(takeJournal().mid(1),
                 lines("player.update\nsigEffectPropertyChanged\nsigUndoRedoChanged\n"
                       "player.update"));
        QVERIFY(space.presenter->setEffectEnabled(enabled)); // repaints all the same
        QCOMPARE(takeJournal(), lines("player.update"));
    }
}

void ZkSmartKeyingEffectsTest::applyingAPresetReplacesTheEffect()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    IZkUndoRedoService *const undo = presenter.undoRedoService();
    EffectList &list = space.controller->clip.list;
    const Effect *const old = space.carry(ZKTIMELINE::SmartKeyingEffect, "old");
    space.carry(OtherEffect, "other");
    space.glow.described->setEnabled(false); // the copy is switched on all the same
    SignalJournal recorder(&presenter);
    takeJournal();
    presenter.applyPreset(&space.glow);
    QCOMPARE(takeJournal(),
             lines("undo.beginMacro(cutout_add_border:Apply effect, slug(glow),"
                   "ZPropertyBatchSetter<class IZkClip *>::set)")
                 + QStringList {QStringLiteral("effects.removeById(%1)").arg(old->id())}
                 + lines("effects.add(glow)\neffect.setEnabled(glow,true)\n"
                         "player.update\nsigEffectAdded\nplayer.update\nsigEffectRemoved\n"
                         "player.update\nsigEffectPropertyChanged\n"
                         "undo.endMacro\nsigUndoRedoChanged"));
    QCOMPARE(undo->undoText(), QStringLiteral("cutout_add_border:Apply effect, slug(glow)"));
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(undo->undoStepCount(), 1);
        QCOMPARE(list.slugs(), QStringList({"other", "glow"}));
        QVERIFY(presenter.isEffectEnabled());
        QVERIFY(presenter.getEffect() != space.glow.described.data());
        QVERIFY(undo->undo());
        QCOMPARE(undo->undoStepCount(), 0);
        QCOMPARE(list.slugs(), QStringList({"old", "other"}));
        QVERIFY(undo->redo());
    }
}

void ZkSmartKeyingEffectsTest::applyingNoneRemovesTheEffects()
{
    Workspace space;
    IZkUndoRedoService *const undo = space.presenter->undoRedoService();
    space.presenter->applyNonePreset(); // nothing to remove leaves no step
    QCOMPARE(undo->undoStepCount(), 0);
    space.carry(ZKTIMELINE::SmartKeyingEffect, "a");
    space.carry(ZKTIMELINE::SmartKeyingEffect, "b");
    takeJournal();
    space.presenter->applyNonePreset();
    QCOMPARE(noted({"undo.begin"}),
             lines("undo.beginMacro(cutout_add_border:Apply None effect,"
                   "ZPropertyBatchSetter<class IZkClip *>::set)"));
    QCOMPARE(undo->undoStepCount(), 1);
    QVERIFY(!space.presenter->getEffect());
    QVERIFY(undo->undo());
    QCOMPARE(space.controller->clip.list.slugs(), QStringList({"a", "b"}));
    QVERIFY(undo->redo());
    QVERIFY(!space.presenter->getEffect());
}

void ZkSmartKeyingEffectsTest::unusablePresetsChangeNothing_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("logged");
    QTest::newRow("null") << 0 << "cutout_add_border:preset media item is null";
    QTest::newRow("no effect item") << 1 << QString();
    QTest::newRow("no effect") << 2 << "cutout_add_border:Create effect failed";
    QTest::newRow("no instance") << 3 << QString();
}

void ZkSmartKeyingEffectsTest::unusablePresetsChangeNothing()
{
    QFETCH(int, kind);
    QFETCH(QString, logged);
    Workspace space;
    PlainItem plain;
    static_cast<Effect *>(space.glow.described.data())->instanceable = false;
    space.neon.described.reset();
    IZkAbstractMediaItem *const items[] = {nullptr, &plain, &space.neon, &space.glow};
    space.carry(ZKTIMELINE::SmartKeyingEffect, "old");
    zk::test::ExpectedMessage message(QStringLiteral("cutout_add_border"));
    LogJournal log;
    takeJournal();
    space.presenter->applyPreset(items[kind]);
    const QString prefix = "log 16 ZkSmartKeying/ZkSmartKeyingPresenter "
                           "ZkSmartKeyingPresenter::applyPreset: ";
    QCOMPARE(noted({"log", "effect"}),
             logged.isEmpty() ? QStringList() : QStringList(prefix + logged));
    QCOMPARE(space.controller->clip.list.slugs(), QStringList("old"));
    QCOMPARE(space.presenter->undoRedoService()->undoStepCount(), 0);
}

void ZkSmartKeyingEffectsTest::selectsPresetsOnDisk()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    ZCutoutPresetItemModel *const model = space.model();
    takeJournal();
    presenter.selectPresetAtIndex(QModelIndex());
    QCOMPARE(takeJournal(), QStringList());
    presenter.selectPresetAtIndex(model->index(1, 0));
    QCOMPARE(noted({"event", "effects"}),
             lines("event smart_cutout_effects_interaction interaction_type=2 res_id=11 "
                   "res_name=Glow\neffects.add(glow)"));
    QCOMPARE(presenter.findPresetIndexByEffect(presenter.getEffect()), model->index(1, 0));
    presenter.selectPresetAtIndex(model->index(0, 0));
    QVERIFY(!presenter.getEffect());
    // A row without an item, and effects that come from no preset.
    Media bare(QStringLiteral("Bare"), nullptr);
    model->onAfterAddItemEvent(&space.folder, &bare);
    takeJournal();
    presenter.selectPresetAtIndex(model->index(3, 0));
    QCOMPARE(takeJournal(), QStringList());
    Effect unknown(ZKTIMELINE::SmartKeyingEffect, "unknown");
    Effect nameless(ZKTIMELINE::SmartKeyingEffect);
    QVERIFY(!presenter.findPresetIndexByEffect(&unknown).isValid());
    QVERIFY(!presenter.findPresetIndexByEffect(&nameless).isValid());
    QVERIFY(!presenter.findPresetIndexByEffect(nullptr).isValid());
}

void ZkSmartKeyingEffectsTest::downloadsASelectedPreset_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("calls");
    QTest::newRow("success") << 0
                             << "event smart_cutout_effects_interaction interaction_type=2 "
                                "res_id=12 res_name=Neon\neffects.add(neon)";
    QTest::newRow("failure") << 5
                             << "APP@RES log 8 ZkSmartKeying/ZCutoutPresetItemManager "
                                "ZCutoutPresetItemManager::slotItemDownloadFinished: "
                                "download Fail!\n"
                                "APP@RES log 8 ZkSmartKeying/ZkSmartKeyingPresenter "
                                "ZkSmartKeyingPresenter::selectPresetAtIndex: "
                                "cutout_add_border:Cutout preset download failed index: 2\n"
                                "sigEffectPresetItemDownloadFailed";
}

void ZkSmartKeyingEffectsTest::downloadsASelectedPreset()
{
    QFETCH(int, error);
    QFETCH(QString, calls);
    Workspace space;
    ZCutoutPresetItemModel *const model = space.model();
    zk::test::ExpectedMessage message(QStringLiteral("download|does not support raise"));
    takeJournal();
    space.presenter->selectPresetAtIndex(model->index(2, 0));
    QCOMPARE(takeJournal(),
             lines("event smart_cutout_effects_interaction interaction_type=1 res_id=12 "
                   "res_name=Neon\nlibrary.downloadItem(neon,2)"));
    SignalJournal recorder(space.presenter.get());
    LogJournal log;
    takeJournal();
    model->onDownloadFinishedEvent(&space.neonMedia, ZKVBLMODEL::DownloadPreset, error);
    QCOMPARE(noted({"event", "effects", "APP@RES", "sigEffectPreset"}),
             lines(calls.toLatin1().constData()));
}

void ZkSmartKeyingEffectsTest::reportsUse()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    ZCutoutPresetItemModel *const model = space.model();
    takeJournal();
    ZkSmartKeyingPresenter::trackSmartCutoutClickEvent(QStringLiteral("undo"),
                                                       QStringLiteral("mp4"));
    presenter.trackPresetAtIndex(model->index(2, 0));
    presenter.trackPresetAtIndex(QModelIndex());
    presenter.trackEffectEvent(model->index(1, 0), QStringLiteral("9"));
    presenter.trackEffectEvent(QModelIndex(), QStringLiteral("9"));
    presenter.trackEffectSaveEvent(); // nothing on the clip
    presenter.applyPreset(&space.neon);
    presenter.applyModify();
    QCOMPARE(noted({"event", "controller.apply"}),
             lines("event smart_cutout_click btn_name=undo source_format=mp4\n"
                   "event smart_cutout_effects_expose res_id=12 res_name=Neon\n"
                   "event smart_cutout_effects_interaction interaction_type=9 res_id=11 "
                   "res_name=Glow\n"
                   "event smart_cutout_effects_interaction interaction_type=3 res_id=12 "
                   "res_name=Neon\n"
                   "controller.apply"));
}

ZK_TEST_MAIN(ZkSmartKeyingEffectsTest)
#include "ZkSmartKeyingEffectsTest.moc"
