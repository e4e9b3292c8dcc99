#include "ErasingWorkspace.h"

#include "ZkUtility.h"

#include <tuple>

namespace {

const QString green = QStringLiteral("service.setMaskRegionColor(#4755e5c5,false)\n"
                                     "service.setMaskRegionAlpha(71,false)\n");
const QString cleared = QStringLiteral("service.clearTrackingResults(false)\n");
const QString tracked = QStringLiteral("controller.startTracking(0,3,1)\n"
                                       "sigTrackingModeChanged(true)\nsigBeginTracking\n");
const QString watched =
    QStringLiteral("service|controller|undo|sig(Node|Begin|Tracking|Reset|All|Prompt)");

QString removed(const QVector<int> &nodes)
{
    QString calls;
    for (const int node : nodes)
        calls +=
            QStringLiteral("service.removeSegmentNode(%1,false)\nsigNodeChanged(%1)\n").arg(node);
    return calls;
}

QString restored(const QVector<int> &nodes)
{
    QString calls;
    for (const int node : nodes)
        calls +=
            QStringLiteral("service.setNodeResult(%1,false)\nsigNodeChangedSync(%1)\n").arg(node);
    return calls;
}

} // namespace

class ZkAIErasingPresenterTest : public QObject
{
    Q_OBJECT

private slots:
    void isBuiltAndTakenApartInOrder()
    {
        LogJournal log;
        ErasingWorkspace space;
        const QString address = QString::asprintf("%x", uint(quintptr(space.erasing)));
        const QString line = QStringLiteral("log 4 ZkAIErasingPresenter::%1ZkAIErasingPresenter: "
                                            "ZkAIErasingPresenter %2, ")
            + address;
        QCOMPARE(noted("log 4 Zk(SmartKeyingPresenter:|AI)|service"),
                 lines("service.setEnabled(true)\n"
                       "log 4 ZkSmartKeyingPresenter::ZkSmartKeyingPresenter: "
                       "ZkSmartKeyingPresenter new\n"
                       + line.arg("", "created") + "\nservice.setOptionFlag(false)"));
        const ZkAIErasingPresenter &presenter = *space.erasing;
        QCOMPARE(presenter.smartKeyingService(), space.service);
        QCOMPARE(presenter.removeType(), ZkAIErasingPresenter::DefaultRemoveType);
        QVERIFY(!presenter.hasTracked() && !presenter.hasErasingSegment());
        QVERIFY(!presenter.isProgressEnabled() && presenter.trackingDuration() == 0);
        QVERIFY(space.crops->parent() == &presenter
                && space.crops->erasingPresenter() == &presenter);
        space.presenter.reset();
        QCOMPARE(takeJournal().mid(0, 2),
                 lines(line.arg("~", "destroyed")
                       + "\nlog 4 ZkSmartKeyingPresenter::~ZkSmartKeyingPresenter: "
                         "delloc ZkSmartKeyingPresenter"));
    }

    void copesWithoutAClipOrAService()
    {
        for (const bool readable : {false, true}) {
            ErasingWorkspace space(readable);
            space.segment({10});
            space.erasing->setHasTracked(true);
            space.controller->clip.segmentable = false;
            space.record();
            space.erasing->save();
            space.erasing->discard();
            space.erasing->initMaskRegionColor();
            QCOMPARE(takeJournal(), QStringList());
            space.erasing->reset();
            QCOMPARE(takeJournal(),
                     readable ? lines("undo.beginMacro(reset,)\nundo.endMacro") : QStringList());
            space.erasing->beginTracking();
            QCOMPARE(noted(watched), lines("sigPrompt(DrawMaskFirstPrompt)\nsigBeginTracking"));
            QVERIFY(space.erasing->hasTracked());
            // A count that was known stays.
            space.service->report(ZKTIMELINE::SegmentData);
            QCOMPARE(space.erasing->getErasingSegmentCount(), readable ? 1 : 0);
            takeJournal();
            emit space.erasing->sigDrawingFinished();
            QCOMPARE(noted("event").size(), readable ? 1 : 0);
        }
    }

    void followsThePlayersStateWithASegment()
    {
        const QString other = "sigTrackingModeChanged(false)";
        const QString editing = "controller.switchWorkMode(1)\n" + other;
        const QString playing = "controller.switchWorkMode(3)\n" + other;
        const QString calls[] = {editing, other, editing, playing, other};
        for (int state = 0; state <= 4; ++state) {
            ErasingWorkspace space;
            space.record();
            emit space.erasing->playerPresenter()->sigStateChanged(state);
            QCOMPARE(takeJournal(), QStringList());
            space.segment({10});
            takeJournal();
            emit space.erasing->playerPresenter()->sigStateChanged(state);
            QCOMPARE(takeJournal(), lines(calls[state]));
        }
    }

    void recordsItsUse()
    {
        const std::tuple<int, QString> types[] = {
            {1, "video"}, {2, "video"}, {3, "video"}, {4, "image"}, {5, "video"}};
        for (const auto &[type, name] : types) {
            ErasingWorkspace space;
            space.controller->clip.clipType = type;
            takeJournal();
            emit space.erasing->sigDrawingFinished();
            space.erasing->setPlayerEditMode(ZkSmartKeyingPresenter::RemoveMode);
            emit space.erasing->sigDrawingFinished();
            space.erasing->trackClickEvent(QStringLiteral("frame"));
            space.segment({10, 20});
            space.erasing->trackClickEvent(QStringLiteral("undo"));
            QCOMPARE(noted("event").join(QLatin1Char('\n')),
                     QStringLiteral("event smart_mask_use tool=brush file_type=%1\n"
                                    "event smart_mask_use tool=eraser file_type=%1\n"
                                    "event smart_mask_bar_btn_click btn_name=frame file_type=%1\n"
                                    "event smart_mask_bar_btn_click btn_name=undo mask_num=2 "
                                    "file_type=%1")
                         .arg(name));
            QCOMPARE(space.erasing->isImageClip(), type == 4);
        }
    }

    void handsOnWhatIsTheHosts()
    {
        ErasingWorkspace space;
        ZkAIErasingPresenter &presenter = *space.erasing;
        takeJournal();
        for (const bool answer : {true, false}) {
            space.controller->editTimeAnswer = answer;
            qint64 begin = 0;
            qint64 end = 0;
            const QVector<bool> answers {presenter.registerEditTime(5000000000, 2),
                                         presenter.changeEditTime(3, 4),
                                         presenter.changeEditTimeCns(5, 6),
                                         presenter.getEditTime(begin, end)};
            QCOMPARE(answers, QVector<bool>(4, answer));
            QVERIFY(begin == 3 && end == 9);
            QCOMPARE(takeJournal(),
                     lines("controller.registerEditTime(5000000000,2)\n"
                           "controller.changeEditTime(3,4)\ncontroller.changeEditTimeCns(5,6)"));
        }
        UndoRedoService other;
        presenter.setUndoManager(space.undo, &other);
        QVERIFY(space.controller->undoManagers.first == space.undo);
        QVERIFY(space.controller->undoManagers.second == &other);
        QCOMPARE(presenter.frame2Time(26), QStringLiteral("00:00:01:01"));
        QCOMPARE(presenter.frame2Time((qint64(1) << 32) + 26), QStringLiteral("00:00:01:01"));
        QCOMPARE(presenter.checkNetworkConnection(), ZkNetwork::IsNetworkConnect());
        presenter.setPlayerEditMode(ZkSmartKeyingPresenter::HandMode);
        QVERIFY(presenter.isFrameMovingMode());
    }

    void savingLeavesOneStep()
    {
        ErasingWorkspace space;
        ZkAIErasingPresenter &presenter = *space.erasing;
        space.segment({10, 20, 30});
        presenter.changePenPixelWidth(40); // a step that goes
        presenter.setHasTracked(true);
        presenter.setRemoveType(ZkAIErasingPresenter::StoppedRemoveType);
        space.record();
        presenter.save();
        QCOMPARE(noted(watched), lines(removed({30, 20, 10})));
        QCOMPARE(space.undo->undoStepCount(), 1);
        QCOMPARE(space.results, 3); // only the snapshot holds them
        QVERIFY(presenter.hasTracked() && !presenter.hasErasingSegment());
        QCOMPARE(presenter.removeType(), ZkAIErasingPresenter::StoppedRemoveType);
        for (int round = 0; round < 2; ++round) {
            QElapsedTimer timer;
            timer.start();
            QVERIFY(space.undo->undo());
            QCOMPARE(noted(watched), lines(cleared + green));
            QVERIFY(!presenter.hasTracked());
            QCOMPARE(presenter.removeType(), ZkAIErasingPresenter::DefaultRemoveType);
            QTRY_VERIFY_WITH_TIMEOUT(journal().contains("sigResetAllData"), 10000);
            QVERIFY(timer.elapsed() >= 9);
            takeJournal();
            QVERIFY(space.undo->redo());
            QCOMPARE(noted(watched), lines(restored({10, 20, 30}) + tracked));
            QCOMPARE(presenter.getErasingSegmentCount(), 3);
            presenter.stopTrackingMode();
            presenter.setHasTracked(true);
            takeJournal();
        }
        // What the overlay says of tracking decides.
        presenter.setHasTracked(false);
        QVERIFY(space.undo->undo());
        presenter.setHasTracked(true);
        QVERIFY(space.undo->redo());
        QCOMPARE(noted(watched), QStringList());
    }

    void savingUntrackedTracksAtOnce()
    {
        ErasingWorkspace space;
        space.segment({10, 20});
        space.record();
        space.erasing->save();
        QCOMPARE(noted(watched), lines(removed({20, 10}) + restored({10, 20}) + tracked));
        QCOMPARE(space.undo->undoStepCount(), 1);
    }

    void discardingCannotBeUndone()
    {
        ErasingWorkspace space;
        space.segment({10, 20});
        space.erasing->changePenPixelWidth(40);
        space.erasing->setHasTracked(true);
        space.record();
        space.erasing->discard();
        QCOMPARE(noted(watched), lines(removed({20, 10}) + cleared + green));
        QVERIFY(!space.erasing->hasTracked() && !space.undo->undo());
        QTRY_VERIFY_WITH_TIMEOUT(journal().contains("sigResetAllData"), 10000);
        // Kept until the next save or discard takes a snapshot.
        QCOMPARE(space.results, 2);
        space.erasing->discard();
        QCOMPARE(space.results, 0);
        space.presenter.reset(); // before its timer fires
        QTest::qWait(20);
    }

    void resetsAsOneStep()
    {
        for (const bool tracking : {false, true}) {
            ErasingWorkspace space;
            space.segment({10});
            space.select();
            space.crops->setActiveCropId(1);
            space.erasing->setHasTracked(true);
            space.erasing->setRemoveType(ZkAIErasingPresenter::StoppedRemoveType);
            if (tracking)
                space.erasing->switchWorkMode(ZKSMARTKEYING::TrackingMode);
            space.record();
            space.erasing->reset();
            QCOMPARE(noted(watched),
                     lines((tracking ? "controller.stopTracking\nsigTrackingModeChanged(false)\n"
                                     : QString())
                           + "undo.beginMacro(reset,)\nservice.clearTrackingResults(true)\n"
                             "sigAllCropRectsCleared\n"
                           + green + "undo.endMacro"));
            QVERIFY(!space.erasing->hasTracked() && !space.erasing->isClosing());
            QCOMPARE(space.erasing->removeType(), ZkAIErasingPresenter::DefaultRemoveType);
            QCOMPARE(space.crops->getActiveCropId(), -1);
            for (int round = 0; round < 2; ++round) {
                QVERIFY(space.service->nodes.isEmpty() && !space.crops->hasCropRects());
                QVERIFY(space.undo->undo() && !space.undo->canUndo());
                QCOMPARE(space.erasing->getErasingSegmentCount(), 1);
                QCOMPARE(space.crops->getCropCount(), 3);
                QVERIFY(space.undo->redo());
            }
        }
    }
};

ZK_TEST_MAIN(ZkAIErasingPresenterTest)
#include "ZkAIErasingPresenterTest.moc"
