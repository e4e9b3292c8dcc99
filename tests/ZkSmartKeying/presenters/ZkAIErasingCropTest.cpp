#include "ErasingWorkspace.h"

#include <tuple>

namespace {

const auto Move = ZkMultiCropWidget::MoveOperation;
const auto Resize = ZkMultiCropWidget::ResizeLeft;

const QRect drawn(960, 540, 480, 270); // 0.5 0.5 0.25 0.25 of the canvas
const QRect second(480, 0, 240, 540); // as ErasingWorkspace::select() leaves it

// The log line of an operation on areas.
QString failed(const QString &operation, const QString &message)
{
    const QString function = "ZkAIErasingCropSelectorPresenter::" + operation;
    return QStringLiteral("log 8 %1: %1: %2").arg(function, message);
}

} // namespace

class ZkAIErasingCropTest : public QObject
{
    Q_OBJECT

private slots:
    void addsWhereTheServiceAppends()
    {
        ErasingWorkspace space;
        space.record();
        QCOMPARE(space.crops->addCropRect(QRect(480, 270, 960, 0)), -1);
        QCOMPARE(takeJournal(), QStringList());
        QCOMPARE(space.crops->addCropRect(QRect(480, 270, 960, 540)), 0);
        const QString added = "service.addArea(0.25 0.25 0.5 0.5)\nplayer.update\n"
                              "sigResyncAllCropRects\nsigAIRemoveSelectAreaAdd\n"
                              "sigResyncAllCropRects\nsigUndoRedoChanged\n"
                              "sigCropActivationChanged(0)\nsigCropRectAdded(0,480 270 960 540)\n"
                              "player.update";
        QCOMPARE(takeJournal(), lines(added));
        space.service->refusesAreas = true;
        QCOMPARE(space.crops->addCropRect(QRect(0, 0, 5, 5)), -1);
        QCOMPARE(takeJournal().size(), 1);
        QVERIFY(space.undo->undo() && !space.crops->hasCropRects());
        QVERIFY(space.undo->redo() && space.crops->containsCropRect(0));
    }

    void convertsBetweenPixelsAndFractions()
    {
        ErasingWorkspace space;
        space.service->areas = {{1, QRectF(0.5, 0.5, 0.25, 0.25)},
                                {2, QRectF(959.999 / 1920, 0, 959.999 / 1920, 1)}};
        QCOMPARE(space.crops->getCropRect(0), QRect(960, 540, 480, 270));
        QCOMPARE(space.crops->getCropRect(1), QRect(959, 0, 959, 1080));
        space.player->frameRect = QRectF(100.2, 49.8, 1920, 1080);
        space.record();
        space.crops->triggerInitialCanvasRectSync();
        QCOMPARE(takeJournal(), lines("sigCanvasRectChanged(100 50 1920 1080)"));
        QCOMPARE(space.crops->getCropRect(0), QRect(1060, 590, 480, 270));
        QCOMPARE(space.crops->getNormalizedCropRect(0), QRectF(0.5, 0.5, 0.25, 0.25));
        takeJournal();
        space.crops->addCropRect(QRect(580, 50, 480, 540));
        QCOMPARE(takeJournal().constFirst(), QStringLiteral("service.addArea(0.25 0 0.25 0.5)"));
        // Neither an unchanged nor an empty rectangle is taken over.
        emit space.erasing->sigFrameZoomed();
        space.player->frameRect = QRectF(0, 0, 640, 0);
        emit space.erasing->sigFrameZoomed();
        QCOMPARE(noted("sigCanvas"), QStringList());
        space.player->frameRect = QRectF(-5, 0, 640, 360);
        emit space.erasing->sigFrameMoved();
        QCOMPARE(noted("sigCanvas"), lines("sigCanvasRectChanged(-5 0 640 360)"));
    }

    void removingMovesTheActiveCrop()
    {
        const std::tuple<int, int, QString> rows[] = {{0, 0, "sigCropActivationChanged(0)"},
                                                      {1, -1, "sigCropActivationChanged(-1)"},
                                                      {2, 1, ""}};
        for (const auto &[id, active, calls] : rows) {
            ErasingWorkspace space;
            space.select();
            space.crops->setActiveCropId(1);
            space.record();
            QVERIFY(space.crops->removeCropRect(id));
            const QStringList journal = takeJournal();
            QCOMPARE(journal.constFirst(),
                     QStringLiteral("service.removeArea(%1)").arg(id * 10 + 10));
            QCOMPARE(journal.filter("Activation"), lines(calls));
            QCOMPARE(journal.constLast(), QStringLiteral("player.update"));
            QCOMPARE(journal.filter("sigCropRectRemoved"), QStringList());
            QCOMPARE(space.crops->getActiveCropId(), active);
            QCOMPARE(space.crops->getAllCropIds(), QList<int>({0, 1}));
        }
    }

    void updates()
    {
        ErasingWorkspace space;
        space.select();
        space.record();
        QVERIFY(!space.crops->updateCropRect(1, QRect(0, 0, 0, 5)));
        QCOMPARE(takeJournal(), QStringList());
        QVERIFY(space.crops->updateCropRect(1, drawn));
        QCOMPARE(takeJournal(),
                 lines("service.updateArea(20,0.5 0.5 0.25 0.25)\nplayer.update\n"
                       "sigResyncAllCropRects\nsigAIRemoveSelectAreaUpdate\n"
                       "sigResyncAllCropRects\nsigUndoRedoChanged\n"
                       "sigCropActivationChanged(1)\nsigCropRectUpdated(1,960 540 480 270)\n"
                       "player.update"));
        QVERIFY(space.undo->undo());
        QCOMPARE(space.crops->getCropRect(1), second);
        QVERIFY(space.undo->redo());
        QCOMPARE(space.crops->getCropRect(1), drawn);
    }

    void logsWhatFails()
    {
        using Crops = ZkAIErasingCropSelectorPresenter;
        using Operation = void (*)(Crops *, int);
        const QPair<QString, Operation> operations[] = {
            {"removeCropRect", [](Crops *it, int crop) { it->removeCropRect(crop); }},
            {"updateCropRect", [](Crops *it, int crop) { it->updateCropRect(crop, drawn); }},
            {"onCropMoveFinished",
             [](Crops *it, int crop) { it->onCropMoveFinished(crop, Move, drawn); }},
            {"getCropRect", [](Crops *it, int crop) { it->getCropRect(crop); }},
            {"getNormalizedCropRect",
             [](Crops *it, int crop) { it->getNormalizedCropRect(crop); }}};
        // Rectangles until the service has none; whether it refuses or does not find areas; the crop; what
        // each operation logs.
        const QString invalid = "Invalid crop ID %1, count is 3|Invalid crop ID %1|"
                                "Invalid crop ID %1, cannot find index|"
                                "No index found for crop ID %1|No index found for crop ID %1";
        const QString gone = "Empty rect at crop ID 1|Invalid crop ID 1|"
                             "Invalid crop ID 1, cannot find index|"
                             "No index found for crop ID 1|No index found for crop ID 1";
        const QString empty = "|Empty rect at index 1 for crop ID 1";
        const QString lost = "Could not find service ID for crop 1 "
                             "(rect: 0.250000,0.000000,0.125000x0.500000)|"
                             "No service ID found at center (0.31, 0.25) for crop ID 1|"
                             "Cannot find serviceId for crop 1 at index 1||";
        const QString refused = "Failed to remove crop 1 with service ID 20||"
                                "Failed to update crop 1 (index 1, serviceId 20)||";
        const std::tuple<int, bool, bool, int, QString> rows[] = {
            {-1, false, false, -1, invalid.arg(-1)},
            {-1, false, false, 3, invalid.arg(3)},
            {0, false, false, 1, gone},
            {1, false, false, 1, empty.repeated(4)},
            {-1, false, true, 1, lost},
            {-1, true, false, 1, refused}};
        zk::test::ExpectedMessage message(QStringLiteral("ZkAIErasingCropSelectorPresenter"));
        for (const auto &[answers, refuses, loses, crop, texts] : rows) {
            for (int i = 0; i < 5; ++i) {
                ErasingWorkspace space;
                space.select();
                space.service->areaAnswers = answers;
                space.service->refusesAreas = refuses;
                space.service->findsAreas = !loses;
                LogJournal log;
                takeJournal();
                operations[i].second(space.crops, crop);
                const QStringList journal = takeJournal();
                const QString text = texts.split('|').at(i);
                QCOMPARE(journal.filter("log").join('\n'),
                         text.isEmpty() ? QString() : failed(operations[i].first, text));
                // What came as far as the service ends its macro and repaints, also when it failed.
                QCOMPARE(journal.contains("undo.endMacro"), i == 2 && refuses);
                QCOMPARE(journal.contains("player.update"),
                         (i == 1 && refuses) || (i == 0 && answers == 1));
                QCOMPARE(space.crops->getActiveCropId(), -1);
            }
        }
    }

    void clears()
    {
        for (const bool refused : {false, true}) {
            ErasingWorkspace space;
            space.select();
            space.service->areas.insert(1, {5, QRectF()}); // cannot be found
            space.crops->setActiveCropId(2);
            zk::test::ExpectedMessage message(QStringLiteral("clearAllCropRects"));
            LogJournal log;
            space.record();
            space.service->refusesAreas = refused;
            space.crops->clearAllCropRects();
            QStringList expected;
            for (const int id : {10, 20, 30}) {
                expected += QStringLiteral("service.removeArea(%1)").arg(id);
                if (refused)
                    expected += failed("clearAllCropRects",
                                       QStringLiteral("Failed to remove service ID %1").arg(id));
            }
            expected +=
                failed("clearAllCropRects",
                       QStringLiteral("Warning - %1 areas still remain in service after clear")
                           .arg(refused ? 4 : 1));
            QCOMPARE(noted("service|log|sig(All|Crop)"), expected << "sigAllCropRectsCleared");
            QCOMPARE(space.crops->getActiveCropId(), -1);
        }
    }

    void listsAndHitsWhatIsNotEmpty()
    {
        ErasingWorkspace space;
        space.service->areas = {{1, QRectF(0, 0, 0.5, 0.5)},
                                {2, QRectF(0.1, 0.1, 0, 0.5)},
                                {3, QRectF(0.25, 0.25, 0.5, 0.5)}};
        const ZkAIErasingCropSelectorPresenter &crops = *space.crops;
        zk::test::ExpectedMessage message(QStringLiteral("getAllCrop"));
        LogJournal log;
        takeJournal();
        QCOMPARE(crops.getCropCount(), 3);
        QCOMPARE(crops.getAllCropIds(), QList<int>({0, 2}));
        QCOMPARE(takeJournal(), QStringList());
        QCOMPARE(crops.getAllCropRects(),
                 QList<QRect>({QRect(0, 0, 960, 540), QRect(480, 270, 960, 540)}));
        space.service->areaAnswers = 1;
        QCOMPARE(crops.getAllCropIds(), QList<int>({2}));
        QCOMPARE(takeJournal(),
                 QStringList({failed("getAllCropRects", "Empty rect at index 1"),
                              failed("getAllCropIds", "No cropId found for index 0")}));
        QVERIFY(crops.containsCropRect(2) && !crops.containsCropRect(1));
        QVERIFY(!crops.containsCropRect(-1) && !crops.containsCropRect(3));
        QCOMPARE(crops.getCropIdAtPixelPosition(600, 300), 0); // in both
        QCOMPARE(crops.getCropIdAtPixelPosition(1000, 600), 2);
        QCOMPARE(crops.getCropIdAtPixelPosition(1900, 1000), -1);
    }

    void aDragIsOneStep()
    {
        const std::tuple<ZkMultiCropWidget::OperationType, QString> rows[] = {
            {Move, "Move Crop 1"}, {Resize, "Resize Crop 1"}};
        for (const auto &[type, name] : rows) {
            ErasingWorkspace space;
            space.select();
            space.record();
            zk::test::ExpectedMessage message(QStringLiteral("Invalid crop ID 7"));
            space.crops->onCropMoveStarted(1, type, QRect());
            space.crops->onCropMoving(1, type, drawn);
            QCOMPARE(takeJournal(), QStringList("undo.beginMacro(" + name + ",)"));
            // What the service reports meanwhile is ignored, until a finish of the same kind.
            space.crops->onCropMoveFinished(7, type == Move ? Resize : Move, drawn);
            space.service->report(ZKTIMELINE::SelectAreaUpdated);
            QCOMPARE(noted("sigResync"), QStringList());
            space.crops->onCropMoveFinished(1, type, drawn);
            QCOMPARE(takeJournal(),
                     lines("service.updateArea(20,0.5 0.5 0.25 0.25)\nplayer.update\n"
                           "sigResyncAllCropRects\nsigAIRemoveSelectAreaUpdate\n"
                           "sigCropRectUpdated(1,960 540 480 270)\n"
                           "undo.endMacro\nsigResyncAllCropRects\nsigUndoRedoChanged"));
            QCOMPARE(space.crops->getActiveCropId(), -1);
            QCOMPARE(space.undo->undoText(), name);
            for (int round = 0; round < 2; ++round) {
                QCOMPARE(space.crops->getCropRect(1), drawn);
                QVERIFY(space.undo->undo() && !space.undo->canUndo());
                QCOMPARE(space.crops->getCropRect(1), second);
                QVERIFY(space.undo->redo());
            }
        }
    }

    void remembersTheActiveCropInBackgroundOnlyMode()
    {
        ErasingWorkspace space;
        space.select();
        space.crops->setActiveCropId(2);
        space.record();
        space.crops->setActiveCropId(3); // there is none
        space.crops->setCropBackgroundOnlyMode(false); // it is off
        space.crops->setCropBackgroundOnlyMode(true);
        QVERIFY(space.crops->isCropBackgroundOnlyMode() && space.crops->getActiveCropId() == 2);
        space.crops->setActiveCropId(-1);
        space.crops->setCropBackgroundOnlyMode(false);
        QCOMPARE(takeJournal(),
                 lines("sigCropDisplayModeChanged(true)\nsigResyncAllCropRects\n"
                       "sigCropActivationChanged(-1)\n"
                       "sigCropDisplayModeChanged(false)\nsigResyncAllCropRects"));
        QCOMPARE(space.crops->getActiveCropId(), 2);
    }

    void resyncsWhenAreasChange()
    {
        ErasingWorkspace space;
        space.select();
        space.crops->setActiveCropId(1);
        space.record();
        for (const int subKind : {88, 89, 90})
            space.service->report(subKind);
        emit space.erasing->sigPlayerEditModeChanged();
        space.crops->syncWithServiceData();
        emit space.erasing->sigUndoRedoChanged();
        const QStringList resync {"sigResyncAllCropRects"};
        QCOMPARE(noted("sig(Resync|Crop)"), resync + resync + resync + resync + resync);
        // The areas of another frame have come up: the active crop's number means nothing there.
        space.player->frame = 8;
        space.service->report(ZKTIMELINE::SelectAreaUpdated);
        QCOMPARE(noted("sig(Resync|Crop)"), QStringList("sigCropActivationChanged(-1)") + resync);
        // A number that is made active again on this frame belongs to it.
        space.crops->setActiveCropId(1);
        space.player->frame = 9;
        space.crops->setActiveCropId(1);
        space.service->report(ZKTIMELINE::SelectAreaUpdated);
        QCOMPARE(noted("sig(Resync|Crop)"), QStringList("sigCropActivationChanged(1)") + resync);
        space.crops->setPlayerRenderAllCropMasks(true, false);
        QCOMPARE(takeJournal(), lines("service.setRenderAllAreaMasks(true,false)\nplayer.update"));
    }

    void doesNothingWithoutWhatItNeeds()
    {
        ErasingWorkspace space;
        space.select();
        ZkAIErasingCropSelectorPresenter alone(nullptr);
        SignalJournal signalsOfAlone(&alone);
        space.record();
        space.controller->clip.segmentable = false;
        LogJournal log;
        takeJournal();
        for (ZkAIErasingCropSelectorPresenter *crops : {space.crops, &alone}) {
            QCOMPARE(crops->addCropRect(drawn), -1);
            QVERIFY(!crops->removeCropRect(0) && !crops->updateCropRect(0, drawn));
            crops->clearAllCropRects();
            crops->setPlayerRenderAllCropMasks(true, true);
            crops->setActiveCropId(0);
            QVERIFY(!crops->containsCropRect(0) && !crops->hasCropRects());
            QVERIFY(crops->getAllCropIds().isEmpty() && crops->getAllCropRects().isEmpty());
            QVERIFY(crops->getCropRect(0).isNull() && crops->getNormalizedCropRect(0).isNull());
            QCOMPARE(crops->getCropCount(), 0);
            QCOMPARE(crops->getCropIdAtPixelPosition(1, 1), -1);
            QCOMPARE(crops->getActiveCropId(), -1);
            crops->onCropMoveFinished(0, Move, drawn);
        }
        alone.onCropMoveStarted(0, Move, QRect());
        alone.triggerInitialCanvasRectSync();
        QCOMPARE(takeJournal(), QStringList());
    }
};

ZK_TEST_MAIN(ZkAIErasingCropTest)
#include "ZkAIErasingCropTest.moc"
