#include "Workspace.h"

class ZkSmartKeyingMaskTest : public QObject
{
    Q_OBJECT

private slots:
    void dropsWhatIsNoStroke_data();
    void dropsWhatIsNoStroke();
    void modeDecidesWhatAStrokeMeans_data();
    void modeDecidesWhatAStrokeMeans();
    void dropsStrokesWhileOneIsSegmented();
    void erasingNeedsAMask();
    void penWidths();
    void aPenDragIsOneStep();
    void cursors();
};

void ZkSmartKeyingMaskTest::dropsWhatIsNoStroke_data()
{
    QTest::addColumn<bool>("playing");
    QTest::addColumn<QImage>("mask");
    QTest::addColumn<qint64>("frame");
    QTest::addColumn<QString>("logged");
    const QString image = "setMask failed - invalid mask image (null or empty)";
    QTest::newRow("playing") << true << strokes() << qint64(0) << QString();
    QTest::newRow("playing, no image") << true << QImage() << qint64(-1) << QString();
    QTest::newRow("no image") << false << QImage() << qint64(-1) << image;
    QTest::newRow("no width") << false << QImage(0, 9, QImage::Format_ARGB32) << qint64(0) << image;
    QTest::newRow("no frame") << false << strokes() << qint64(-1)
                              << "setMask failed - invalid current frame: -1";
}

void ZkSmartKeyingMaskTest::dropsWhatIsNoStroke()
{
    QFETCH(bool, playing);
    QFETCH(QImage, mask);
    QFETCH(qint64, frame);
    QFETCH(QString, logged);
    Workspace space;
    zk::test::ExpectedMessage message(QStringLiteral("setMask failed"));
    space.player->playing = playing;
    space.player->frame = frame;
    SignalJournal recorder(space.presenter.get());
    LogJournal log;
    takeJournal();
    space.presenter->setMask(mask);
    const QString prefix = "log 8 ZkSmartKeying/ZkSmartKeyingPresenter "
                           "ZkSmartKeyingPresenter::setMask: ";
    QCOMPARE(takeJournal(), logged.isEmpty() ? QStringList() : QStringList(prefix + logged));
}

void ZkSmartKeyingMaskTest::modeDecidesWhatAStrokeMeans_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("tracking");
    QTest::addColumn<bool>("progress");
    QTest::addColumn<QStringList>("calls");
    const QStringList shown {"sigSegmentProgressStatusChanged(true)",
                             "controller.addMask(4)",
                             "sigSegmentProgressStatusChanged(false)"};
    QTest::newRow("keep") << 1 << false << true << shown;
    QTest::newRow("keep, no progress")
        << 1 << false << false << QStringList("controller.addMask(4)");
    QTest::newRow("remove") << 2 << false << true << QStringList("controller.subtractMask(4)");
    QTest::newRow("erase") << 3 << false << true << QStringList("controller.eraseMask(4)");
    QTest::newRow("hand") << 4 << false << true << QStringList();
    QTest::newRow("select") << 5 << false << true << QStringList();
    QTest::newRow("tracking") << 1 << true << true << QStringList();
}

void ZkSmartKeyingMaskTest::modeDecidesWhatAStrokeMeans()
{
    QFETCH(int, mode);
    QFETCH(bool, tracking);
    QFETCH(bool, progress);
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    space.player->frame = 4;
    space.controller->clip.cutout.erasableFrame = 4;
    presenter.setPlayerEditMode(ZkSmartKeyingPresenter::PlayerEditMode(mode));
    presenter.setProgressEnabled(progress);
    if (tracking)
        presenter.switchWorkMode(ZKSMARTKEYING::TrackingMode);
    SignalJournal recorder(&presenter);
    takeJournal();
    presenter.setMask(strokes());
    QTEST(noted({"controller", "sigSegmentProgressStatus"}), "calls");
    // No stroke is in flight any more: the next change is not waited for.
    LogJournal log;
    takeJournal();
    space.report(ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData);
    QCOMPARE(noted({"log", "sig"}), lines("sigSmartKeyingSegmentChanged"));
}

void ZkSmartKeyingMaskTest::dropsStrokesWhileOneIsSegmented()
{
    Workspace space;
    space.controller->reportsMasks = false; // the result comes later
    takeJournal();
    space.presenter->setMask(strokes());
    space.presenter->setMask(strokes());
    QCOMPARE(noted({"controller"}), lines("controller.addMask(0)"));
    QVERIFY(space.presenter->canShowSegmentProgress());
    QVERIFY(!space.presenter->isUIControlsEnabled());
    QCOMPARE(space.presenter->segmentProgress(), 10);
    space.report(ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData);
    QCOMPARE(space.presenter->segmentProgress(), 100);
    QVERIFY(space.presenter->isUIControlsEnabled());
    space.presenter->setMask(strokes());
    QCOMPARE(noted({"controller"}), lines("controller.addMask(0)"));
}

void ZkSmartKeyingMaskTest::erasingNeedsAMask()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    SmartKeyingService &service = space.controller->clip.cutout;
    service.erasableFrame = 0;
    service.overlaps = false;
    presenter.setPlayerEditMode(ZkSmartKeyingPresenter::EraseMode);
    SignalJournal recorder(&presenter);
    takeJournal();
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
    QCOMPARE(noted({"log"}).filter("Simple mode wait started").size(), 1);
    space.report(ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData);
    QCOMPARE(noted({"log"}).size(), 0);
    presenter.setEraseMaskDisable();
    QCOMPARE(takeJournal(), lines("sigPlayerEditModeChanged"));
    space.player->frame = 0;
    QVERIFY(presenter.isEraseMaskEnable());
    presenter.switchWorkMode(ZKSMARTKEYING::TrackingMode);
    QVERIFY(!presenter.isEraseMaskEnable());
}

void ZkSmartKeyingMaskTest::penWidths()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    SignalJournal recorder(&presenter);
    for (int width : {1, 45, 500}) {
        takeJournal();
        presenter.setPenPixelWidth(width);
        presenter.setPenDrawWidth(width);
        const QString draw = QStringLiteral("sigPenDrawWidthChanged(%1)").arg(qMax(2, width));
        const QString pixel = QStringLiteral("sigPenPixelWidthChanged(%1)").arg(width);
        QCOMPARE(takeJournal(), QStringList({draw, pixel, draw}));
        QCOMPARE(presenter.penPixelWidth(), width);
        QCOMPARE(presenter.penDrawWidth(), qMax(2, width));
    }
    QVERIFY(!presenter.hasModify());
}

void ZkSmartKeyingMaskTest::aPenDragIsOneStep()
{
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    IZkUndoRedoService *const undo = presenter.undoRedoService();
    SignalJournal recorder(&presenter);
    takeJournal();
    presenter.setPenPixelWidthChanging(true);
    presenter.setPenPixelWidthChanging(true);
    QVERIFY(presenter.isPenPixelWidthChanging());
    presenter.setPenPixelWidth(55);
    presenter.setPenPixelWidth(80);
    presenter.setPenPixelWidthChanging(false);
    presenter.setPenPixelWidthChanging(false);
    const auto width = [](int value) {
        return QStringList {QStringLiteral("sigPenDrawWidthChanged(%1)").arg(value),
                            QStringLiteral("sigPenPixelWidthChanged(%1)").arg(value)};
    };
    QCOMPARE(takeJournal(),
             lines("undo.beginMacro(Change pen width,)") + width(30)
                 + lines("sigPenPixelWidthBeginChanged") + width(55) + width(80) + width(80)
                 + lines("sigPenPixelWidthEndChanged\nundo.endMacro\nsigUndoRedoChanged"));
    QCOMPARE(undo->undoStepCount(), 1);
    for (int round = 0; round < 2; ++round) {
        QVERIFY(undo->undo());
        QCOMPARE(presenter.penPixelWidth(), 30);
        QCOMPARE(undo->undoStepCount(), 0);
        QVERIFY(undo->redo());
        QCOMPARE(presenter.penPixelWidth(), 80);
        QCOMPARE(undo->undoStepCount(), 1);
    }
}

void ZkSmartKeyingMaskTest::cursors()
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
    QCOMPARE(shapes(), QVector<int>({int(Qt::ArrowCursor), int(Qt::ArrowCursor), brush}));
}

ZK_TEST_MAIN(ZkSmartKeyingMaskTest)
#include "ZkSmartKeyingMaskTest.moc"
