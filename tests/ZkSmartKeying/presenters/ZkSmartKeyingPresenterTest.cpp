#include "Workspace.h"

#include "ZkWidgets.h"

#include <thread>
#include <tuple>

class ZkSmartKeyingPresenterTest : public QObject
{
    Q_OBJECT

private slots:
    void isBuiltInOrder()
    {
        LogJournal log;
        Workspace space;
        QCOMPARE(takeJournal(),
                 lines("log 4 ZkSmartKeyingPresenterPrivate::ZkSmartKeyingPresenterPrivate: "
                       "ZkSmartKeyingPresenterPrivate new\n"
                       "player.create\n"
                       "controller.create\n"
                       "controller.addObserver\n"
                       "controller.initialise(true,130,1)\n"
                       "undo.addObserver\n"
                       "timeline.addObserver\n"
                       "playhead.setFrameRange(edit,0,249)\n"
                       "connector.addPlayhead(edit,1)\n"
                       "connector.addPlayhead(player,2)\n"
                       "tree.addObserver\n"
                       "library.addObserver\n"
                       "library.loadFolder(1_subject_smart_cutout_preset)\n"
                       "service.setEnabled(true)\n"
                       "player.update\n"
                       "log 4 ZkSmartKeyingPresenter::ZkSmartKeyingPresenter: "
                       "ZkSmartKeyingPresenter new"));
        const ZkSmartKeyingPresenter &presenter = *space.presenter;
        QVERIFY(presenter.isInitSuccessful() && presenter.isSmartCutout());
        QVERIFY(presenter.isUIControlsEnabled() && presenter.isProgressEnabled());
        QCOMPARE(presenter.smartKeyingService(), &space.controller->clip.cutout);
        QCOMPARE(presenter.presetManager()->itemModel()->rowCount(), 2);
        QCOMPARE(presenter.playerEditMode(), ZkSmartKeyingPresenter::KeepMode);
        QCOMPARE(presenter.penPixelWidth(), 30);
        QCOMPARE(presenter.penDrawWidth(), 10);
        QVERIFY(QMetaType::isRegistered(QMetaType::type("PromptType")));
    }

    void isTakenApartInOrder()
    {
        Workspace space;
        LogJournal log;
        ZkMediaPlayerPresenter *const player = space.presenter->playerPresenter();
        space.player->onStop = [player] { emit player->sigStateChanged(ZKPLAYER::StoppedState); };
        takeJournal();
        space.presenter.reset();
        // Nothing follows the player's last state: no work mode is switched.
        QCOMPARE(takeJournal(),
                 lines("log 4 ZkSmartKeyingPresenter::~ZkSmartKeyingPresenter: "
                       "delloc ZkSmartKeyingPresenter\n"
                       "log 4 ZkSmartKeyingPresenterPrivate::~ZkSmartKeyingPresenterPrivate: "
                       "ZkSmartKeyingPresenterPrivate delloc\n"
                       "timeline.removeObserver\n"
                       "undo.removeObserver\n"
                       "connector.clear\n"
                       "player.stop\n"
                       "player.detachSource\n"
                       "controller.releaseMediaPlayer\n"
                       "player.delete\n"
                       "controller.removeObserver\n"
                       "controller.release\n"
                       "tree.removeObserver\n"
                       "library.removeObserver"));
    }

    void copesWithAFailedInitialisation()
    {
        Workspace space(ZKSMARTKEYING::SmartCutout, false);
        QCOMPARE(noted("undo.|timeline.|connector.|tree.|library.|service."), QStringList());
        const ZkSmartKeyingPresenter &presenter = *space.presenter;
        QVERIFY(!presenter.isInitSuccessful() && !presenter.presetManager());
        QVERIFY(!presenter.isTrackingMode() && !presenter.hasModify() && !presenter.isUsed());
        QVERIFY(!presenter.getEffect() && presenter.sourceFormat().isEmpty());
        // The player lives and may report.
        emit presenter.playerPresenter()->sigPropertyChanged(ZKPLAYER::ZoomProperty);
        emit presenter.playerPresenter()->sigStateChanged(ZKPLAYER::PausedState);
        takeJournal();
        space.presenter.reset();
        QCOMPARE(takeJournal(),
                 lines("connector.clear\nplayer.stop\nplayer.detachSource\n"
                       "controller.releaseMediaPlayer\nplayer.delete\n"
                       "controller.removeObserver\ncontroller.release"));
    }

    void opensAndDescribesTheEditTimeline()
    {
        Workspace space;
        takeJournal();
        space.presenter->openEditTimeline();
        // Where the project's playhead stood, in frames of the edit timeline.
        QCOMPARE(takeJournal(), lines("player.open(77,1,30,0)"));
        const ZkMediaPlayerOpenParam &param = space.player->opened;
        QVERIFY(!param.autoPlay && param.showFirstFrame && param.followChanges && param.keepZoom);
        Clip &clip = space.controller->clip;
        QVERIFY(!space.presenter->isPhotoMode() && !space.presenter->isGifMode());
        clip.clipType = ZKTIMELINE::ImageClip;
        clip.path = QStringLiteral("/media/a.b.GiF");
        clip.gif = true;
        QVERIFY(space.presenter->isPhotoMode() && space.presenter->isGifMode());
        QCOMPARE(space.presenter->sourceFormat(), QStringLiteral("gif"));
    }

    void editModes()
    {
        Workspace space;
        ZkSmartKeyingPresenter &presenter = *space.presenter;
        space.controller->clip.cutout.erasableFrame = 0;
        space.record();
        const int skinColors[] = {0, 7, 116, 116, 0, 0};
        for (int mode = 1; mode <= 5; ++mode) {
            presenter.setPlayerEditMode(ZkSmartKeyingPresenter::PlayerEditMode(mode));
            QCOMPARE(takeJournal(), lines("sigPlayerEditModeChanged"));
            QCOMPARE(int(presenter.playerEditMode()), mode);
            QCOMPARE(presenter.isDrawingMode(), mode <= 3);
            QCOMPARE(presenter.isSelectRectMode(), mode == 5);
            QCOMPARE(presenter.canMoveFrame(), mode == 4);
            QColor color = ZkSkinManager::instance()->color(skinColors[mode]);
            QCOMPARE(color.isValid(), mode <= 3);
            color.setAlpha(128);
            QCOMPARE(presenter.penColor(), color);
        }
        presenter.setPlayerEditMode(ZkSmartKeyingPresenter::HandMode);
        presenter.switchWorkMode(ZKSMARTKEYING::TrackingMode);
        QVERIFY(presenter.isTrackingMode() && !presenter.canMoveFrame());
        QCOMPARE(presenter.playerEditMode(), ZkSmartKeyingPresenter::TrackingEditMode);
        presenter.switchWorkMode(ZKSMARTKEYING::EditingMode);
        QCOMPARE(presenter.playerEditMode(), ZkSmartKeyingPresenter::HandMode);
        space.controller->clip.cutout.erasableFrame = -1;
        takeJournal();
        presenter.setPlayerEditMode(ZkSmartKeyingPresenter::EraseMode); // nothing to erase
        QCOMPARE(takeJournal(), QStringList());
        QCOMPARE(presenter.playerEditMode(), ZkSmartKeyingPresenter::HandMode);
    }

    void followsThePlayersState()
    {
        const QString other = "sigTrackingModeChanged(false)";
        const QString editing = "controller.switchWorkMode(1)\n" + other;
        const QString playing = "controller.switchWorkMode(3)\n" + other;
        const QString calls[] = {editing, other, editing, playing, other};
        for (int state = 0; state <= 4; ++state) {
            Workspace space;
            Workspace erasing(ZKSMARTKEYING::AIErasing); // has a rule of its own
            space.record();
            erasing.record();
            emit space.presenter->playerPresenter()->sigStateChanged(state);
            QCOMPARE(takeJournal(), lines(calls[state]));
            emit erasing.presenter->playerPresenter()->sigStateChanged(state);
            QCOMPARE(takeJournal(), QStringList());
        }
    }

    void zoomingBringsThePenIntoRange()
    {
        const QString draw = "sigPenDrawWidthChanged(%1)\n";
        const QString clamp = draw + "sigPenPixelWidthChanged(%1)\n" + draw;
        const std::tuple<int, qreal, QString> rows[] = {
            {30, 640.0, draw.arg(30)},
            {3, 639.6, clamp.arg(6)},
            {500, 640.0, clamp.arg(300)},
            {30, 40000.0, clamp.arg(400)}, // a bound above the maximum
            {1, 100.0, draw.arg(2)}};
        for (const auto &[width, shown, calls] : rows) {
            Workspace space;
            space.player->frameRect = QRectF(0, 0, shown, 360);
            space.presenter->setPenPixelWidth(width);
            space.record();
            emit space.presenter->playerPresenter()->sigPropertyChanged(ZKPLAYER::ZoomProperty);
            QCOMPARE(takeJournal(), lines(calls + "sigFrameZoomed"));
            const ZkRange<int> range {qRound(shown) / 100, 300};
            QCOMPARE(space.presenter->penPixelWidthRange(), range);
        }
    }

    void movesTheFrame()
    {
        Workspace space;
        ZkSmartKeyingPresenter &presenter = *space.presenter;
        space.record();
        presenter.zoomFrame(2, QPointF(3, 4));
        presenter.startMoveFrame();
        presenter.moveFrame(QPointF(5, 6));
        presenter.finishMoveFrame();
        emit presenter.playerPresenter()->sigPropertyChanged(ZKPLAYER::PanProperty);
        emit presenter.playerPresenter()->sigPropertyChanged(3);
        emit presenter.playerPresenter()->sigFrameChanged(8);
        emit presenter.playerPresenter()->sigPercentProgress(41);
        QCOMPARE(takeJournal(),
                 lines("zoomer.zoom(2,3,4)\nzoomer.beginPan\nzoomer.panBy(5,6)\nzoomer.endPan\n"
                       "sigFrameMoved\nsigFrameChanged(8)\nsigTrackingProgress(41)"));
        space.player->frameRect = QRectF(-10.4, 5.6, 99.5, 50.2);
        QCOMPARE(presenter.canvasRect(), QRect(-10, 6, 99, 50));
        QVERIFY(!presenter.canMoveFrame());
        presenter.setFrameMoving(true);
        QVERIFY(presenter.canMoveFrame());
        space.player->pannable = false;
        QVERIFY(!presenter.canMoveFrame());
    }

    void tracksOnlyWhatCanBeTracked()
    {
        const QString start = "player.stopPlay\ncontroller.startTracking(7,2,0)\n";
        const std::tuple<int, int, QString> rows[] = {
            {0, 0, "player.stopPlay\nsigPrompt(DrawMaskFirstPrompt)"},
            {1, 1, start + "sigPrompt(TrackingFailedPrompt)"},
            {1, 2, start + "sigPrompt(NothingToTrackPrompt)"},
            {1, 0, start + "sigTrackingModeChanged(true)"}};
        for (const auto &[masks, result, calls] : rows) {
            Workspace space;
            ZkSmartKeyingPresenter &presenter = *space.presenter;
            space.player->frame = 7;
            space.controller->clip.cutout.items = masks;
            space.controller->trackingResult = result;
            space.record();
            presenter.beginTrackingMode(ZKSMARTKEYING::TrackBackward,
                                        ZKSMARTKEYING::TrackWholeClip);
            QCOMPARE(takeJournal(), lines(calls));
            const bool started = masks > 0 && result == 0;
            QCOMPARE(presenter.hasModify(), started);
            QCOMPARE(int(presenter.toTrackDirect()), started ? 2 : 3);
            QCOMPARE(int(presenter.toTrackType()), started ? 0 : 1);
        }
    }

    void choosesHowToTrackInSimpleMode()
    {
        const char *const calls[] = {"controller.startTracking(0,3,1)",
                                     "controller.startTracking(0,1,1)", // tracked before
                                     "controller.startTracking(0,1,0)"}; // an animated GIF
        for (int i = 0; i < 3; ++i) {
            Workspace space;
            space.controller->clip.cutout.items = 1;
            space.controller->clip.cutout.tracked = i == 1;
            space.controller->clip.gif = i == 2;
            takeJournal();
            space.presenter->beginTrackingModeForSimpleMode();
            QCOMPARE(noted("controller."), QStringList(QLatin1String(calls[i])));
            QVERIFY(space.presenter->isTrackingMode() && !space.presenter->isClosing());
            space.presenter->stopTrackingMode();
            QVERIFY(!space.presenter->isTrackingMode() && space.presenter->isClosing());
        }
    }

    void resets()
    {
        Workspace space;
        ZkSmartKeyingPresenter &presenter = *space.presenter;
        const qint64 id = space.carry(ZKTIMELINE::SmartKeyingEffect, "glow")->id();
        presenter.setPlayerEditMode(ZkSmartKeyingPresenter::HandMode);
        presenter.setPenPixelWidth(80);
        presenter.setDefaultPenPixelWidth(44);
        space.record();
        presenter.reset();
        QCOMPARE(takeJournal(),
                 lines(QStringLiteral("controller.stopTracking\nplayer.stopPlay\n"
                                      "player.setMode(2,0)\nsigTrackingModeChanged(false)\n"
                                      "sigPlayerEditModeChanged\nzoomer.zoom(0,0,0)\n"
                                      "sigPenDrawWidthChanged(44)\nsigPenPixelWidthChanged(44)\n"
                                      "service.reset\neffects.removeById(%1)\nplayer.update\n"
                                      "sigEffectRemoved\nsigUndoRedoChanged\nsigReset")
                           .arg(id)));
        QVERIFY(!presenter.isClosing());
        QCOMPARE(presenter.playerEditMode(), ZkSmartKeyingPresenter::KeepMode);
    }

    void tellsWorkFromNoWork()
    {
        Workspace space;
        ZkSmartKeyingPresenter &presenter = *space.presenter;
        SmartKeyingService &service = space.controller->clip.cutout;
        QVERIFY(!presenter.hasModify() && !presenter.isUsed());
        presenter.changePenPixelWidth(40);
        QVERIFY(presenter.hasModify() && !presenter.isUsed());
        service.tracked = true;
        QVERIFY(presenter.isUsed());
        service.tracked = false;
        service.items = 1;
        QVERIFY(presenter.isUsed());
    }

    void savesAndCancels()
    {
        Workspace space;
        space.record();
        space.presenter->applyModify(); // no cutout effect, no record
        QCOMPARE(takeJournal(),
                 lines("controller.stopTracking\nplayer.stopPlay\nplayer.setMode(2,0)\n"
                       "sigTrackingModeChanged(false)\ncontroller.apply"));
        space.controller->observers.constFirst()->onSavingProgressEvent(64);
        space.controller->finishSave(ZKSMARTKEYING::SaveFailed);
        space.controller->finishSave(ZKSMARTKEYING::SaveSucceeded);
        space.presenter->cancelApply();
        space.controller->observers.constFirst()->onNodeChangedEvent(5000000000);
        space.presenter->setUIControlsEnabled(false);
        space.presenter->setUIControlsEnabled(false); // no change
        QCOMPARE(takeJournal(),
                 lines("sigSavingProgress(64)\nsigSaveFinished(false)\nsigSaveFinished(true)\n"
                       "controller.cancelApply\nsigSaveCancel\nsigNodeChanged(5000000000)\n"
                       "sigUIControlsEnabledChanged(false)"));
    }

    void passesOnThatPresetsAreLoaded()
    {
        Workspace space;
        space.record();
        bool taken = true;
        std::thread other([&taken] {
            taken = ZkCustomEventManager::instance()->postEvent(
                QStringLiteral("NotifySmartCutoutModelLoadFinished"));
        });
        other.join();
        QVERIFY(!taken);
        QCOMPARE(takeJournal(), QStringList()); // only queued
        QCoreApplication::processEvents();
        QCOMPARE(takeJournal(), lines("sigEffectMediaItemsLoaded"));
    }
};

ZK_TEST_MAIN(ZkSmartKeyingPresenterTest)
#include "ZkSmartKeyingPresenterTest.moc"
