#include "Workspace.h"

#include "ZkWidgets.h"

#include <QPointer>

#include <thread>

class ZkSmartKeyingPresenterTest : public QObject
{
    Q_OBJECT

private slots:
    void isBuiltInOrder();
    void isTakenApartInOrder();
    void copesWithAFailedInitialisation();
    void opensTheEditTimeline();
    void describesTheClip();
    void editModes();
    void keepsTheModeWhileTracking();
    void followsThePlayersState();
    void zoomingBringsThePenIntoRange_data();
    void zoomingBringsThePenIntoRange();
    void movesTheFrame();
    void tracksOnlyWhatCanBeTracked_data();
    void tracksOnlyWhatCanBeTracked();
    void choosesHowToTrackInSimpleMode();
    void resets();
    void switchesReportOnlyChanges();
    void tellsWorkFromNoWork();
    void savesAndCancels();
    void passesOnThatPresetsAreLoaded();
};

void ZkSmartKeyingPresenterTest::isBuiltInOrder()
{
    LogJournal log;
    Workspace space;
    QCOMPARE(takeJournal(),
             lines("log 4 ZkSmartKeying/ZkSmartKeyingPresenterPrivate "
                   "ZkSmartKeyingPresenterPrivate::ZkSmartKeyingPresenterPrivate: "
                   "ZkSmartKeyingPresenterPrivate new\n"
                   "player.create\n"
                   "controller.create\n"
                   "controller.addObserver\n"
                   "controller.initialise(true,130,1)\n"
                   "undo.addObserver\n"
                   "timeline.addEventObserver\n"
                   "playhead.setFrameRange(edit,0,249)\n"
                   "connector.addPlayhead(edit,1)\n"
                   "connector.addPlayhead(player,2)\n"
                   "library.loadFolder(1_subject_smart_cutout_preset)\n"
                   "service.setEnabled(true)\n"
                   "player.update\n"
                   "log 4 ZkSmartKeying/ZkSmartKeyingPresenter "
                   "ZkSmartKeyingPresenter::ZkSmartKeyingPresenter: ZkSmartKeyingPresenter new"));
    const ZkSmartKeyingPresenter &presenter = *space.presenter;
    QVERIFY(presenter.isInitSuccessful() && presenter.isSmartCutout() && !presenter.isClosing());
    QVERIFY(presenter.isUIControlsEnabled() && presenter.isProgressEnabled());
    QCOMPARE(presenter.smartKeyingService(), &space.controller->clip.cutout);
    QCOMPARE(presenter.undoRedoService(), &space.controller->clip.line.undo);
    QCOMPARE(presenter.presetManager()->itemModel()->rowCount(), 2);
    QCOMPARE(presenter.playerEditMode(), ZkSmartKeyingPresenter::KeepMode);
    QCOMPARE(int(presenter.toTrackDirect()), 3);
    QCOMPARE(int(presenter.toTrackType()), 1);
    QCOMPARE(presenter.penPixelWidth(), 30);
    QCOMPARE(presenter.defaultPenPixelWidth(), 30);
    QCOMPARE(presenter.penDrawWidth(), 10);
    QVERIFY(QMetaType::isRegistered(QMetaType::type("PromptType")));
    QVERIFY(space.presenter->dispatchMessage(nullptr));
}

void ZkSmartKeyingPresenterTest::isTakenApartInOrder()
{
    Workspace space;
    LogJournal log;
    ZkMediaPlayerPresenter *const player = space.presenter->playerPresenter();
    space.player->onStop = [player] { emit player->sigStateChanged(ZKPLAYER::StoppedState); };
    const QPointer<ZCutoutPresetItemManager> manager = space.presenter->presetManager();
    takeJournal();
    space.presenter.reset();
    // Nothing follows the player's last state: no work mode is switched.
    QCOMPARE(
        takeJournal(),
        lines("log 4 ZkSmartKeying/ZkSmartKeyingPresenter "
              "ZkSmartKeyingPresenter::~ZkSmartKeyingPresenter: delloc ZkSmartKeyingPresenter\n"
              "log 4 ZkSmartKeying/ZkSmartKeyingPresenterPrivate "
              "ZkSmartKeyingPresenterPrivate::~ZkSmartKeyingPresenterPrivate: "
              "ZkSmartKeyingPresenterPrivate delloc\n"
              "timeline.removeEventObserver\n"
              "undo.removeObserver\n"
              "connector.clear\n"
              "player.stop\n"
              "player.detachSource\n"
              "controller.releaseMediaPlayer\n"
              "player.delete\n"
              "controller.removeObserver\n"
              "controller.release"));
    QVERIFY(!manager);
    QVERIFY(space.project.library.treeObservers.isEmpty());
    QVERIFY(space.project.library.observers.isEmpty());
}

void ZkSmartKeyingPresenterTest::copesWithAFailedInitialisation()
{
    Workspace space(ZKSMARTKEYING::SmartCutout, false);
    QCOMPARE(noted({"undo.", "timeline.", "connector.", "library.", "service."}), QStringList());
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    QVERIFY(!presenter.isInitSuccessful());
    QVERIFY(!presenter.presetManager() && !presenter.editClip() && !presenter.smartKeyingService());
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

void ZkSmartKeyingPresenterTest::opensTheEditTimeline()
{
    Workspace space;
    takeJournal();
    space.presenter->openEditTimeline();
    // Where the project's playhead stood, in frames of the edit timeline.
    QCOMPARE(takeJournal(), lines("player.open(77,1,30,0)"));
    const ZkMediaPlayerOpenParam &param = space.player->opened;
    QVERIFY(!param.autoPlay && param.showFirstFrame && param.followChanges && param.keepZoom);
}

void ZkSmartKeyingPresenterTest::describesTheClip()
{
    Workspace space;
    const ZkSmartKeyingPresenter &presenter = *space.presenter;
    Clip &clip = space.controller->clip;
    QVERIFY(!presenter.isPhotoMode() && !presenter.isGifMode());
    QCOMPARE(presenter.sourceFormat(), QStringLiteral("mp4")); // clip.MP4
    clip.clipType = 4;
    clip.media.path = QStringLiteral("/media/a.b.GiF");
    clip.media.gif = true;
    QVERIFY(presenter.isPhotoMode() && presenter.isGifMode());
    QCOMPARE(presenter.sourceFormat(), QStringLiteral("gif"));
    clip.hasSource = false;
    QVERIFY(!presenter.isGifMode());
    QCOMPARE(presenter.sourceFormat(), QString());
}

void ZkSmartKeyingPresenterTest::editModes()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    space.controller->clip.cutout.erasableFrame = 0;
    SignalJournal recorder(&presenter);
    const int skinColors[] = {0, 7, 116, 116, 0, 0};
    for (int mode = 1; mode <= 5; ++mode) {
        takeJournal();
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
}

void ZkSmartKeyingPresenterTest::keepsTheModeWhileTracking()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    presenter.setPlayerEditMode(ZkSmartKeyingPresenter::HandMode);
    presenter.switchWorkMode(ZKSMARTKEYING::TrackingMode);
    QVERIFY(presenter.isTrackingMode() && !presenter.isDrawingMode() && !presenter.canMoveFrame());
    QCOMPARE(presenter.playerEditMode(), ZkSmartKeyingPresenter::TrackingEditMode);
    presenter.switchWorkMode(ZKSMARTKEYING::EditingMode);
    QCOMPARE(presenter.playerEditMode(), ZkSmartKeyingPresenter::HandMode);
    SignalJournal recorder(&presenter);
    takeJournal();
    presenter.setPlayerEditMode(ZkSmartKeyingPresenter::EraseMode); // nothing to erase
    QCOMPARE(takeJournal(), QStringList());
    QCOMPARE(presenter.playerEditMode(), ZkSmartKeyingPresenter::HandMode);
}

void ZkSmartKeyingPresenterTest::followsThePlayersState()
{
    const char *const editing = "controller.switchWorkMode(1)\nsigTrackingModeChanged(false)";
    const char *const other = "sigTrackingModeChanged(false)";
    const char *const playing = "controller.switchWorkMode(3)\nsigTrackingModeChanged(false)";
    const char *const calls[] = {editing, other, editing, playing, other};
    for (int state = 0; state <= 4; ++state) {
        Workspace space;
        Workspace erasing(ZKSMARTKEYING::AIErasing); // has a rule of its own
        QVERIFY(!erasing.presenter->isSmartCutout());
        SignalJournal recorder(space.presenter.get());
        SignalJournal erasingRecorder(erasing.presenter.get());
        takeJournal();
        emit space.presenter->playerPresenter()->sigStateChanged(state);
        QCOMPARE(takeJournal(), lines(calls[state]));
        emit erasing.presenter->playerPresenter()->sigStateChanged(state);
        QCOMPARE(takeJournal(), QStringList());
    }
}

void ZkSmartKeyingPresenterTest::zoomingBringsThePenIntoRange_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<qreal>("shown");
    QTest::addColumn<QVector<int>>("drawn"); // two: clamped to the first one
    QTest::newRow("inside") << 30 << 640.0 << QVector<int> {30};
    QTest::newRow("too thin") << 3 << 639.6 << QVector<int> {6, 6};
    QTest::newRow("too wide") << 500 << 640.0 << QVector<int> {300, 300};
    QTest::newRow("bound above the maximum") << 30 << 40000.0 << QVector<int> {400, 400};
    QTest::newRow("thinnest") << 1 << 100.0 << QVector<int> {2};
}

void ZkSmartKeyingPresenterTest::zoomingBringsThePenIntoRange()
{
    QFETCH(int, width);
    QFETCH(qreal, shown);
    QFETCH(QVector<int>, drawn);
    Workspace space;
    space.player->frameRect = QRectF(0, 0, shown, 360);
    space.presenter->setPenPixelWidth(width);
    SignalJournal recorder(space.presenter.get());
    takeJournal();
    emit space.presenter->playerPresenter()->sigPropertyChanged(ZKPLAYER::ZoomProperty);
    QStringList expected;
    for (int value : qAsConst(drawn))
        expected += QStringLiteral("sigPenDrawWidthChanged(%1)").arg(value);
    if (drawn.size() == 2)
        expected.insert(1, QStringLiteral("sigPenPixelWidthChanged(%1)").arg(drawn.at(0)));
    QCOMPARE(takeJournal(), expected + lines("sigFrameZoomed"));
    QCOMPARE(space.presenter->penPixelWidthRange(), (ZkRange<int> {int(shown + 0.5) / 100, 300}));
}

void ZkSmartKeyingPresenterTest::movesTheFrame()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    SignalJournal recorder(&presenter);
    takeJournal();
    presenter.zoomFrame(2, QPointF(3, 4));
    presenter.startMoveFrame();
    presenter.moveFrame(QPointF(5, 6));
    presenter.finishMoveFrame();
    ZkMediaPlayerPresenter *const player = presenter.playerPresenter();
    emit player->sigPropertyChanged(ZKPLAYER::PanProperty);
    emit player->sigPropertyChanged(3);
    emit player->sigFrameChanged(8);
    emit player->sigPercentProgress(41);
    QCOMPARE(takeJournal(),
             lines("zoomer.zoom(2,3,4)\nzoomer.beginPan\nzoomer.panBy(5,6)\nzoomer.endPan\n"
                   "sigFrameMoved\nsigFrameChanged(8)\nsigTrackingProgress(41)"));
    QCOMPARE(presenter.zoomLevel(true), 0.5f);
    QCOMPARE(presenter.zoomLevel(false), 0.0f);
    QCOMPARE(presenter.getNextZoomLevel(-2), -1.0f);
    space.player->frameRect = QRectF(-10.4, 5.6, 99.5, 50.2);
    QCOMPARE(presenter.canvasRect(), QRect(-10, 6, 99, 50));
    QVERIFY(!presenter.canMoveFrame());
    presenter.setFrameMoving(true);
    QVERIFY(presenter.canMoveFrame());
    space.player->pannable = false;
    QVERIFY(!presenter.canMoveFrame());
}

void ZkSmartKeyingPresenterTest::tracksOnlyWhatCanBeTracked_data()
{
    QTest::addColumn<int>("masks");
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("calls");
    const QString start = "player.stopPlay\ncontroller.startTracking(7,2,0)\n";
    QTest::newRow("no mask") << 0 << 0 << "player.stopPlay\nsigPrompt(DrawMaskFirstPrompt)";
    QTest::newRow("failed") << 1 << 1 << start + "sigPrompt(TrackingFailedPrompt)";
    QTest::newRow("nothing there") << 1 << 2 << start + "sigPrompt(NothingToTrackPrompt)";
    QTest::newRow("started") << 1 << 0 << start + "sigTrackingModeChanged(true)";
}

void ZkSmartKeyingPresenterTest::tracksOnlyWhatCanBeTracked()
{
    QFETCH(int, masks);
    QFETCH(int, result);
    QFETCH(QString, calls);
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    space.player->frame = 7;
    space.controller->clip.cutout.items = masks;
    space.controller->trackingResult = result;
    SignalJournal recorder(&presenter);
    takeJournal();
    presenter.beginTrackingMode(ZKSMARTKEYING::TrackBackward, ZKSMARTKEYING::TrackWholeClip);
    QCOMPARE(takeJournal(), lines(calls.toLatin1().constData()));
    const bool started = masks > 0 && result == 0;
    QCOMPARE(presenter.hasModify(), started);
    QCOMPARE(int(presenter.toTrackDirect()), started ? 2 : 3);
    QCOMPARE(int(presenter.toTrackType()), started ? 0 : 1);
}

void ZkSmartKeyingPresenterTest::choosesHowToTrackInSimpleMode()
{
    const char *const calls[] = {"controller.startTracking(0,3,1)",
                                 "controller.startTracking(0,1,1)", // tracked before
                                 "controller.startTracking(0,1,0)", // an animated GIF
                                 "controller.startTracking(0,1,0)"};
    for (int i = 0; i < 4; ++i) {
        Workspace space;
        space.controller->clip.cutout.items = 1;
        space.controller->clip.cutout.tracked = i & 1;
        space.controller->clip.media.gif = i & 2;
        takeJournal();
        space.presenter->beginTrackingModeForSimpleMode();
        QCOMPARE(noted({"controller."}), lines(calls[i]));
        QVERIFY(space.presenter->isTrackingMode() && !space.presenter->isClosing());
        space.presenter->stopTrackingMode();
        QCOMPARE(noted({"controller.", "player."}),
                 lines("controller.stopTracking\nplayer.stopPlay\nplayer.setMode(2,0)"));
        QVERIFY(!space.presenter->isTrackingMode() && space.presenter->isClosing());
    }
}

void ZkSmartKeyingPresenterTest::resets()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    const Effect *const effect = space.carry(ZKTIMELINE::SmartKeyingEffect, "glow");
    const QString removal = QStringLiteral("effects.removeById(%1)").arg(effect->id());
    presenter.setPlayerEditMode(ZkSmartKeyingPresenter::HandMode);
    presenter.setPenPixelWidth(80);
    presenter.setDefaultPenPixelWidth(44);
    SignalJournal recorder(&presenter);
    takeJournal();
    presenter.reset();
    QCOMPARE(takeJournal(),
             lines("controller.stopTracking\nplayer.stopPlay\nplayer.setMode(2,0)\n"
                   "sigTrackingModeChanged(false)\nsigPlayerEditModeChanged\nzoomer.zoom(0,0,0)\n"
                   "sigPenDrawWidthChanged(44)\nsigPenPixelWidthChanged(44)\nservice.reset")
                 + QStringList {removal}
                 + lines("player.update\nsigEffectRemoved\nsigUndoRedoChanged\nsigReset"));
    QVERIFY(!presenter.isClosing());
    QCOMPARE(presenter.playerEditMode(), ZkSmartKeyingPresenter::KeepMode);
}

void ZkSmartKeyingPresenterTest::switchesReportOnlyChanges()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    SignalJournal recorder(&presenter);
    takeJournal();
    presenter.setUIControlsEnabled(false);
    presenter.setUIControlsEnabled(false);
    presenter.setUIControlsEnabled(true);
    presenter.setUIControlsEnabled(true);
    QCOMPARE(takeJournal(),
             lines("sigUIControlsEnabledChanged(false)\nsigUIControlsEnabledChanged(true)"));
    presenter.setProgressEnabled(false); // no progress shows
    presenter.forceHideProgress();
    presenter.setClosing(true);
    presenter.setHasStartedTracking(true);
    QCOMPARE(takeJournal(), QStringList());
    QVERIFY(presenter.isClosing() && presenter.hasStartedTracking());
    presenter.notifyEffectMediaItemsLoaded();
    QCOMPARE(takeJournal(), lines("sigEffectMediaItemsLoaded"));
}

void ZkSmartKeyingPresenterTest::tellsWorkFromNoWork()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    SmartKeyingService &service = space.controller->clip.cutout;
    QVERIFY(!presenter.hasModify() && !presenter.isUsed());
    presenter.beginMacro(QStringLiteral("two"));
    presenter.changePenPixelWidth(40);
    presenter.changePenPixelWidth(50);
    presenter.endMacro();
    QCOMPARE(presenter.undoRedoService()->undoStepCount(), 1);
    QVERIFY(presenter.hasModify() && !presenter.isUsed());
    service.tracked = true;
    QVERIFY(presenter.isUsed() && presenter.isTracked());
    service.tracked = false;
    service.items = 1;
    QVERIFY(presenter.isUsed() && !presenter.isTracked());
}

void ZkSmartKeyingPresenterTest::savesAndCancels()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    SignalJournal recorder(&presenter);
    takeJournal();
    presenter.applyModify(); // no cutout effect, no record
    QCOMPARE(takeJournal(),
             lines("controller.stopTracking\nplayer.stopPlay\nplayer.setMode(2,0)\n"
                   "sigTrackingModeChanged(false)\ncontroller.apply"));
    space.controller->observers.constFirst()->onSavingProgressEvent(64);
    space.controller->finishSave(ZKSMARTKEYING::SaveFailed);
    space.controller->finishSave(ZKSMARTKEYING::SaveSucceeded);
    presenter.cancelApply();
    space.controller->observers.constFirst()->onNodeChangedEvent(5000000000);
    QCOMPARE(takeJournal(),
             lines("sigSavingProgress(64)\nsigSaveFinished(false)\nsigSaveFinished(true)\n"
                   "controller.cancelApply\nsigSaveCancel\nsigNodeChanged(5000000000)"));
}

void ZkSmartKeyingPresenterTest::passesOnThatPresetsAreLoaded()
{
    Workspace space;
    SignalJournal recorder(space.presenter.get());
    takeJournal();
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

ZK_TEST_MAIN(ZkSmartKeyingPresenterTest)
#include "ZkSmartKeyingPresenterTest.moc"
