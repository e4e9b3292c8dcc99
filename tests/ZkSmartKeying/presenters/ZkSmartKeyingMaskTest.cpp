#include "Workspace.h"

#include <tuple>

class ZkSmartKeyingMaskTest : public QObject
{
    Q_OBJECT

private slots:
    void dropsWhatIsNoStroke()
    {
        Workspace space;
        zk::test::ExpectedMessage message(QStringLiteral("setMask failed"));
        LogJournal log;
        space.record();
        space.presenter->setMask(QImage());
        space.player->frame = -1;
        space.presenter->setMask(strokes());
        space.presenter->setMask(QImage()); // the image comes first
        space.player->playing = true;
        space.presenter->setMask(QImage()); // not even looked at
        const QString prefix = "log 8 ZkSmartKeyingPresenter::setMask: setMask failed - ";
        const QString noImage = prefix + "invalid mask image (null or empty)";
        QCOMPARE(takeJournal(),
                 QStringList({noImage, prefix + "invalid current frame: -1", noImage}));
        space.player->frame = 0;
        space.presenter->setMask(strokes());
        QCOMPARE(takeJournal(), QStringList());
    }

    void modeDecidesWhatAStrokeMeans()
    {
        const QString progressing = "sigSegmentProgressStatusChanged(true)\ncontroller.addMask(4)\n"
                                    "sigSegmentProgressStatusChanged(false)";
        const std::tuple<int, bool, bool, QString> rows[] = {
            {1, false, true, progressing},
            {1, false, false, "controller.addMask(4)"},
            {2, false, true, "controller.subtractMask(4)"},
            {3, false, true, "controller.eraseMask(4)"},
            {4, false, true, QString()},
            {5, false, true, QString()},
            {1, true, true, QString()}};
        for (const auto &[mode, tracking, progress, calls] : rows) {
            Workspace space;
            ZkSmartKeyingPresenter &presenter = *space.presenter;
            space.player->frame = 4;
            space.controller->clip.cutout.erasableFrame = 4;
            presenter.setPlayerEditMode(ZkSmartKeyingPresenter::PlayerEditMode(mode));
            presenter.setProgressEnabled(progress);
            if (tracking)
                presenter.switchWorkMode(ZKSMARTKEYING::TrackingMode);
            space.record();
            presenter.setMask(strokes());
            QCOMPARE(noted("controller|sigSegmentProgressStatus"), lines(calls));
            // No stroke is in flight any more: the next change is not waited for.
            LogJournal log;
            space.report(ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData);
            QCOMPARE(noted("log|sig"), lines("sigSmartKeyingSegmentChanged"));
        }
    }

    void dropsStrokesWhileOneIsSegmented()
    {
        Workspace space;
        space.controller->reportsMasks = false; // the result comes later
        takeJournal();
        space.presenter->setMask(strokes());
        space.presenter->setMask(strokes());
        QCOMPARE(noted("controller"), lines("controller.addMask(0)"));
        QVERIFY(space.presenter->canShowSegmentProgress());
        QVERIFY(!space.presenter->isUIControlsEnabled());
        QCOMPARE(space.presenter->segmentProgress(), 10);
        space.report(ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData);
        QVERIFY(space.presenter->isUIControlsEnabled());
        space.presenter->setMask(strokes());
        QCOMPARE(noted("controller"), lines("controller.addMask(0)"));
    }

    void erasingNeedsAMask()
    {
        Workspace space;
        ZkSmartKeyingPresenter &presenter = *space.presenter;
        SmartKeyingService &service = space.controller->clip.cutout;
        service.erasableFrame = 0;
        service.overlaps = false;
        presenter.setPlayerEditMode(ZkSmartKeyingPresenter::EraseMode);
        space.record();
        presenter.setMask(strokes()); // beside the mask
        presenter.setEraseMaskDisable(); // there still is one
        QCOMPARE(takeJournal(), QStringList());
        space.player->frame = 1; // without a mask
        presenter.setMask(strokes());
        QCOMPARE(takeJournal(), lines("sigPlayerEditModeChanged\nsigPrompt(DrawMaskFirstPrompt)"));
        QCOMPARE(presenter.playerEditMode(), ZkSmartKeyingPresenter::KeepMode);
        // The next segment change is waited for as the answer, the one after it is not.
        LogJournal log;
        space.report(ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData);
        QCOMPARE(noted("log").filter("Simple mode wait started").size(), 1);
        space.report(ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData);
        QCOMPARE(noted("log").size(), 0);
        presenter.setEraseMaskDisable();
        QCOMPARE(takeJournal(), lines("sigPlayerEditModeChanged"));
        space.player->frame = 0;
        QVERIFY(presenter.isEraseMaskEnable());
        presenter.switchWorkMode(ZKSMARTKEYING::TrackingMode);
        QVERIFY(!presenter.isEraseMaskEnable());
    }

    void aPenDragIsOneStep()
    {
        Workspace space;
        ZkSmartKeyingPresenter &presenter = *space.presenter;
        IZkUndoRedoService *const undo = presenter.undoRedoService();
        space.record();
        presenter.setPenPixelWidthChanging(true);
        presenter.setPenPixelWidthChanging(true);
        presenter.setPenPixelWidth(55);
        presenter.setPenPixelWidth(80);
        presenter.setPenPixelWidthChanging(false);
        presenter.setPenPixelWidthChanging(false);
        const auto width = [](int value) {
            return lines(QStringLiteral("sigPenDrawWidthChanged(%1)\nsigPenPixelWidthChanged(%1)")
                             .arg(value));
        };
        QCOMPARE(takeJournal(),
                 lines("undo.beginMacro(Change pen width,)") + width(30)
                     + lines("sigPenPixelWidthBeginChanged") + width(55) + width(80) + width(80)
                     + lines("sigPenPixelWidthEndChanged\nundo.endMacro\nsigUndoRedoChanged"));
        for (int round = 0; round < 2; ++round) {
            QCOMPARE(undo->undoStepCount(), 1);
            QVERIFY(undo->undo());
            QCOMPARE(takeJournal(), width(80) + width(30) + lines("sigUndoRedoChanged"));
            QCOMPARE(undo->undoStepCount(), 0);
            QVERIFY(undo->redo());
            QCOMPARE(takeJournal(), width(30) + width(80) + lines("sigUndoRedoChanged"));
            QCOMPARE(presenter.penPixelWidth(), 80);
        }
    }

    void cursors()
    {
        Workspace space;
        ZkSmartKeyingPresenter &presenter = *space.presenter;
        const auto shapes = [&presenter] {
            return QVector<int> {presenter.cursor(true).shape(),
                                 presenter.cursor(false).shape(),
                                 presenter.pressedCursor().shape()};
        };
        const int blank = Qt::BlankCursor;
        const int hand = Qt::OpenHandCursor;
        const int brush = Qt::BitmapCursor;
        const int arrow = Qt::ArrowCursor;
        QCOMPARE(shapes(), QVector<int>({brush, brush, brush}));
        const QImage thin = presenter.cursor(true).pixmap().toImage();
        QVERIFY(thin != presenter.pressedCursor().pixmap().toImage());
        presenter.setPenDrawWidth(40);
        QVERIFY(presenter.cursor(true).pixmap().width() > thin.width());
        presenter.setFrameMoving(true);
        QCOMPARE(shapes(), QVector<int>({hand, hand, hand}));
        presenter.setPenPixelWidthChanging(true);
        QCOMPARE(shapes(), QVector<int>({blank, hand, blank}));
        presenter.setPenPixelWidthChanging(false);
        presenter.setFrameMoving(false);
        presenter.setPlayerEditMode(ZkSmartKeyingPresenter::HandMode);
        QCOMPARE(shapes(), QVector<int>({hand, hand, brush}));
        presenter.setPlayerEditMode(ZkSmartKeyingPresenter::SelectRectMode);
        QCOMPARE(shapes(), QVector<int>({arrow, arrow, brush}));
    }
};

ZK_TEST_MAIN(ZkSmartKeyingMaskTest)
#include "ZkSmartKeyingMaskTest.moc"
