#include "Workspace.h"

class ZkSmartKeyingEffectsTest : public QObject
{
    Q_OBJECT

    static constexpr int Cutout = ZKTIMELINE::SmartKeyingEffect;
    static constexpr int OtherEffect = 7;

private slots:
    void switchesTheEffect()
    {
        Workspace space;
        QVERIFY(!space.presenter->setEffectEnabled(true));
        space.carry(Cutout, "glow");
        space.record();
        QVERIFY(space.presenter->setEffectEnabled(false));
        QVERIFY(!space.presenter->isEffectEnabled());
        QCOMPARE(takeJournal(),
                 lines("effect.setEnabled(glow,false)\nplayer.update\nsigEffectPropertyChanged\n"
                       "sigUndoRedoChanged\nplayer.update"));
        QVERIFY(space.presenter->setEffectEnabled(false)); // repaints all the same
        QCOMPARE(takeJournal(), lines("player.update"));
    }

    void applyingAPresetReplacesTheEffect()
    {
        Workspace space;
        ZkSmartKeyingPresenter &presenter = *space.presenter;
        IZkUndoRedoService *const undo = presenter.undoRedoService();
        const EffectList &list = space.controller->clip.list;
        const Effect *const old = space.carry(Cutout, "old");
        space.carry(OtherEffect, "other");
        space.glow.described->setEnabled(false); // the copy is switched on all the same
        space.record();
        presenter.applyPreset(&space.glow);
        QCOMPARE(takeJournal(),
                 lines(QStringLiteral("undo.beginMacro(cutout_add_border:Apply effect, slug(glow),"
                                      "ZPropertyBatchSetter<class IZkClip *>::set)\n"
                                      "effects.removeById(%1)\n"
                                      "effects.add(glow)\neffect.setEnabled(glow,true)\n"
                                      "player.update\nsigEffectAdded\n"
                                      "player.update\nsigEffectRemoved\n"
                                      "player.update\nsigEffectPropertyChanged\n"
                                      "undo.endMacro\nsigUndoRedoChanged")
                           .arg(old->id())));
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

    void applyingNoneRemovesTheEffects()
    {
        Workspace space;
        ZkSmartKeyingPresenter &presenter = *space.presenter;
        const EffectList &list = space.controller->clip.list;
        space.carry(OtherEffect, "other");
        space.carry(Cutout, "")->described = false;
        QVERIFY(!presenter.getEffect() && !presenter.isEffectEnabled());
        presenter.applyNonePreset(); // nothing to remove leaves no step
        QCOMPARE(presenter.undoRedoService()->undoStepCount(), 0);
        const Effect *const first = space.carry(Cutout, "first");
        space.carry(Cutout, "second");
        QCOMPARE(presenter.getEffect(), first);
        takeJournal();
        presenter.applyNonePreset();
        QCOMPARE(noted("undo.begin"),
                 lines("undo.beginMacro(cutout_add_border:Apply None effect,"
                       "ZPropertyBatchSetter<class IZkClip *>::set)"));
        QCOMPARE(presenter.undoRedoService()->undoStepCount(), 1);
        QCOMPARE(list.slugs(), QStringList({"other", ""}));
        QVERIFY(presenter.undoRedoService()->undo());
        QCOMPARE(list.slugs(), QStringList({"other", "", "first", "second"}));
    }

    void unusablePresetsChangeNothing()
    {
        Workspace space;
        static_cast<Effect *>(space.glow.described.data())->instanceable = false;
        space.neon.described.reset();
        space.carry(Cutout, "old");
        zk::test::ExpectedMessage message(QStringLiteral("cutout_add_border"));
        LogJournal log;
        takeJournal();
        space.presenter->applyPreset(nullptr);
        space.presenter->applyPreset(&space.neon);
        space.presenter->applyPreset(&space.glow);
        const QString prefix = "log 16 ZkSmartKeyingPresenter::applyPreset: cutout_add_border:";
        QCOMPARE(
            noted("log|effect"),
            QStringList({prefix + "preset media item is null", prefix + "Create effect failed"}));
        QCOMPARE(space.controller->clip.list.slugs(), QStringList("old"));
        QCOMPARE(space.presenter->undoRedoService()->undoStepCount(), 0);
    }

    void selectsPresetsOnDisk()
    {
        Workspace space;
        ZkSmartKeyingPresenter &presenter = *space.presenter;
        ZCutoutPresetItemModel *const model = space.model();
        Media bare(QStringLiteral("Bare"), nullptr);
        model->onAfterAddItemEvent(&space.folder, &bare);
        takeJournal();
        presenter.selectPresetAtIndex(QModelIndex());
        presenter.selectPresetAtIndex(model->index(3, 0)); // a row without an item
        QCOMPARE(takeJournal(), QStringList());
        presenter.selectPresetAtIndex(model->index(1, 0));
        QCOMPARE(noted("event|effects"),
                 lines("event smart_cutout_effects_interaction interaction_type=2 res_id=11 "
                       "res_name=Glow\neffects.add(glow)"));
        QCOMPARE(presenter.findPresetIndexByEffect(presenter.getEffect()), model->index(1, 0));
        presenter.selectPresetAtIndex(model->index(0, 0));
        QVERIFY(!presenter.getEffect());
        Effect nameless(Cutout); // of no preset, as the row "None"
        QVERIFY(!presenter.findPresetIndexByEffect(&nameless).isValid());
    }

    void downloadsASelectedPreset()
    {
        const QString event = "event smart_cutout_effects_interaction interaction_type=%1 "
                              "res_id=12 res_name=Neon\n";
        const QString results[] = {event.arg(2) + "effects.add(neon)",
                                   "APP@RES log 8 ZCutoutPresetItemManager::"
                                   "slotItemDownloadFinished: download Fail!\n"
                                   "APP@RES log 8 ZkSmartKeyingPresenter::selectPresetAtIndex: "
                                   "cutout_add_border:Cutout preset download failed index: 2\n"
                                   "sigEffectPresetItemDownloadFailed"};
        for (int error : {0, 1}) {
            Workspace space;
            ZCutoutPresetItemModel *const model = space.model();
            zk::test::ExpectedMessage message(QStringLiteral("download|does not support raise"));
            takeJournal();
            space.presenter->selectPresetAtIndex(model->index(2, 0));
            QCOMPARE(takeJournal(), lines(event.arg(1) + "library.downloadItem(neon,2)"));
            LogJournal log;
            space.record();
            model->onDownloadFinishedEvent(&space.neonMedia, ZKVBLMODEL::DownloadPreset, error);
            QCOMPARE(noted("event|effects|APP@RES|sigEffectPreset"), lines(results[error]));
        }
    }

    void reportsUse()
    {
        Workspace space;
        ZkSmartKeyingPresenter &presenter = *space.presenter;
        takeJournal();
        presenter.trackSmartCutoutClickEvent(QStringLiteral("undo"), QStringLiteral("mp4"));
        presenter.trackPresetAtIndex(space.model()->index(2, 0));
        presenter.trackPresetAtIndex(QModelIndex());
        presenter.trackEffectSaveEvent(); // nothing on the clip
        presenter.applyPreset(&space.neon);
        presenter.applyModify();
        QCOMPARE(noted("event|controller.apply"),
                 lines("event smart_cutout_click btn_name=undo source_format=mp4\n"
                       "event smart_cutout_effects_expose res_id=12 res_name=Neon\n"
                       "event smart_cutout_effects_interaction interaction_type=3 res_id=12 "
                       "res_name=Neon\n"
                       "controller.apply"));
    }
};

ZK_TEST_MAIN(ZkSmartKeyingEffectsTest)
#include "ZkSmartKeyingEffectsTest.moc"
