// The rectangles and the bar over the player.
#include "ErasingView.h"
#include "ZkTestInput.h"

#include "erasing/ZkAIErasingProgressWidget.h"

#include "player/ZkMediaPlayerWidget.h"

using Bar = ZkAIErasingOverlayWidget;
using Presenter = ZkAIErasingPresenter;

class EventCounter : public QObject
{
public:
    EventCounter(QObject *watched, QEvent::Type type)
        : m_type(type)
    {
        watched->installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == m_type;
        return false;
    }

    int count = 0;

private:
    const QEvent::Type m_type;
};

// How often a window has been brought to the front.
class RaiseCounter : public EventCounter
{
public:
    explicit RaiseCounter(QObject *window)
        : EventCounter(window, QEvent::ZOrderChange)
    { }
};

class ZkAIErasingOverlaysTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_space = std::make_unique<ErasingView>(); }
    void cleanup() { m_space.reset(); }

    void coversThePlayer()
    {
        const auto *player = m_space->find<ZkMediaPlayerWidget>();
        const auto place = [player] {
            return QRect(player->mapToGlobal(QPoint(0, 0)), player->size());
        };
        QTRY_COMPARE(m_space->rectangles()->geometry(), place());
        m_space->host.resize(1000, 700);
        QTRY_COMPARE(m_space->rectangles()->geometry(), place());
    }

    void takesOverWhatTheUserDraws()
    {
        draw({20, 30}, {120, 130});
        QCOMPARE(m_space->crops->getCropCount(), 1);
        QCOMPARE(m_space->crops->getActiveCropId(), 0);
        const QRect drawn = m_space->crops->getCropRect(0);
        QCOMPARE(m_space->editor()->getCropRects(), QList<QRect> {drawn});
        // A drag of its middle moves it, as one step.
        drag(drawn.center(), drawn.center() + QPoint(40, 10));
        QCOMPARE(m_space->crops->getCropRect(0), drawn.translated(40, 10));
        QVERIFY(m_space->undo->undo());
        QTRY_COMPARE(m_space->editor()->getCropRects(), QList<QRect> {drawn});
    }

    void takesKeysAndTheCloseButton()
    {
        draw({20, 30}, {120, 130});
        draw({200, 30}, {300, 130});
        const QRect drawn = m_space->crops->getCropRect(1);
        QTest::keyClick(player(), Qt::Key_Right);
        QTest::keyClick(player(), Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(m_space->crops->getCropRect(1), drawn.translated(1, 10));
        QCOMPARE(m_space->undo->undoStepCount(), 4);
        // Esc in the middle of a drag leaves what was, and no macro open.
        QTest::mousePress(m_space->editor(), Qt::LeftButton, {}, drawn.center());
        zk::test::drag(m_space->editor(), drawn.center() + QPoint(60, 60));
        QTest::keyClick(player(), Qt::Key_Escape);
        QTest::mouseRelease(m_space->editor(), Qt::LeftButton, {}, drawn.center());
        QCOMPARE(m_space->crops->getCropRect(1), drawn.translated(1, 10));
        QCOMPARE(noted("undo.beginMacro").size(), 3);
        QTest::keyClick(player(), Qt::Key_Delete);
        QCOMPARE(m_space->crops->getCropCount(), 1);
        m_space->crops->setActiveCropId(0);
        m_space->rectangles()->resyncAllCropRects();
        QTest::mouseClick(
            m_space->editor(), Qt::LeftButton, {}, m_space->editor()->closeButtonRect().center());
        QCOMPARE(m_space->crops->getCropCount(), 0);
    }

    void keepsADragThroughAZoom()
    {
        const zk::test::ExpectedMessage expected(QStringLiteral("COORDINATE MISMATCH"));
        draw({20, 30}, {120, 130});
        const QRectF before = m_space->crops->getNormalizedCropRect(0);
        const QPoint grip(70, 80);
        QCursor::setPos(m_space->editor()->mapToGlobal(grip));
        QTest::mousePress(m_space->editor(), Qt::LeftButton, {}, grip);
        zk::test::drag(m_space->editor(), grip + QPoint(8, 0));
        m_space->player->frameRect = QRectF(0, 0, 320, 180);
        emit m_space->erasing->sigFrameZoomed();
        QTest::qWait(20); // the highlight that is put right after a rebuild
        QVERIFY(m_space->editor()->isDragging());
        takeJournal();
        QTest::mouseRelease(m_space->editor(), Qt::LeftButton, {}, grip + QPoint(8, 0));
        QCOMPARE(noted("undo"), QStringList {"undo.endMacro"});
        QVERIFY(m_space->undo->undo());
        QCOMPARE(m_space->crops->getNormalizedCropRect(0), before);
    }

    void renumbersAfterARemoval()
    {
        const zk::test::ExpectedMessage expected(
            QStringLiteral("No data ID mapping found for activated UI ID: 2$"));
        m_space->select();
        const QList<QRect> before = m_space->editor()->getCropRects();
        QCOMPARE(before.size(), 3);
        emit m_space->editor()->sigCropRemoved(1);
        QTRY_COMPARE(m_space->editor()->getCropRects(), (QList<QRect> {before[0], before[2]}));
        QCoreApplication::processEvents();
        takeJournal();
        emit m_space->editor()->sigCropActivated(1);
        QCOMPARE(m_space->crops->getActiveCropId(), 1);
        emit m_space->editor()->sigCropActivated(2);
        QCOMPARE(m_space->crops->getActiveCropId(), -1);
    }

    void healsARefusedRemoval()
    {
        const zk::test::ExpectedMessage expected(
            QStringLiteral("Failed to remove crop|Forcing resync"));
        m_space->select();
        LogJournal log;
        takeJournal();
        m_space->service->refusesAreas = true;
        m_space->editor()->setCropRects(m_space->editor()->getCropRects().mid(1));
        emit m_space->editor()->sigCropRemoved(0);
        QCOMPARE(m_space->editor()->getCropRects().size(), 2);
        QTRY_COMPARE(m_space->editor()->getCropRects().size(), 3);
        const QString prefix = QStringLiteral(
            "log 8 ZkAIErasingCropOverlayWidget::connectSignals: ZkAIErasingCropOverlayWidget: ");
        const QStringList lines = noted(prefix);
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines[0].endsWith("Failed to remove crop in data layer - UI ID: 0, Data ID: 0"));
        QVERIFY(lines[1].endsWith("Forcing resync to restore consistency."));
    }

    void logsWhatItCannotMap()
    {
        const zk::test::ExpectedMessage expected(
            QStringLiteral("No data ID mapping found|Crop ID 9 not found"));
        LogJournal log;
        takeJournal();
        emit m_space->editor()->sigCropMoveStarted(7, ZkMultiCropWidget::MoveOperation);
        emit m_space->editor()->sigCropMoving(7, ZkMultiCropWidget::ResizeTop);
        m_space->rectangles()->setHoverCropId(9);
        QString all = noted("log").join(QLatin1Char('\n'));
        QVERIFY(all.contains("found for position change started - UI ID: 7"));
        QVERIFY(all.contains("found for size changing - UI ID: 7"));
        QVERIFY(all.contains("Crop ID 9 not found in current data (available IDs: none)"));
        m_space->select();
        takeJournal();
        m_space->rectangles()->setHoverCropId(9);
        QVERIFY(noted("log").last().endsWith("(available IDs: 3)"));
        m_space->rectangles()->setHoverCropId(1);
        QCOMPARE(m_space->editor()->hoveredCrop(), 1);
        m_space->rectangles()->clearHover();
        QCOMPARE(m_space->editor()->hoveredCrop(), -1);
    }

    void letsThePlayerSeeWhatTheEditorTakes()
    {
        takeJournal();
        draw({20, 30}, {120, 130});
        QCOMPARE(noted("zoomer"), QStringList {"zoomer.endPan"}); // as after every release
    }

    void leavesTheRestToThePlayer()
    {
        ZkAIErasingCropOverlayWidget *const overlay = m_space->rectangles();
        zk::test::turnWheel(m_space->editor(), {50, 50}, 120);
        QCOMPARE(noted("surface.wheel"), QStringList {"surface.wheel(120)"});
        takeJournal();
        QTest::mousePress(overlay, Qt::MiddleButton, {}, {10, 10});
        QCOMPARE(m_space->editor()->cursor().shape(), Qt::ClosedHandCursor);
        zk::test::drag(overlay, {30, 15}, Qt::MiddleButton);
        QTest::mouseRelease(overlay, Qt::MiddleButton, {}, {30, 15});
        QCOMPARE(m_space->editor()->cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(noted("zoomer"),
                 lines("zoomer.beginPan\nzoomer.panBy(20,5)\nzoomer.endPan\nzoomer.endPan"));
        // In the background only, a drag draws nothing, and the hand's moves the frame.
        m_space->erasing->setPlayerEditMode(Presenter::HandMode);
        QVERIFY(m_space->editor()->isBackgroundOnlyMode());
        takeJournal();
        QTest::mousePress(overlay, Qt::LeftButton, {}, {20, 30});
        zk::test::drag(overlay, {120, 130});
        QTest::mouseRelease(overlay, Qt::LeftButton, {}, {120, 130});
        QCOMPARE(m_space->crops->getCropCount(), 0);
        QCOMPARE(noted("zoomer"), lines("zoomer.beginPan\nzoomer.panBy(100,100)\nzoomer.endPan"));
        QTest::mousePress(overlay, Qt::RightButton, {}, {20, 30});
        QTest::mouseRelease(overlay, Qt::RightButton, {}, {20, 30});
        QCOMPARE(noted("zoomer"), QStringList());
    }

    void handsPinchAndDoubleClickToThePlayer()
    {
        ZkMultiCropWidget *const editor = m_space->editor();
        QTouchDevice *const screen = QTest::createTouchDevice();
        // Gestures go to what is on top. Without a window manager, owners may come above what they own.
        editor->window()->raise();
        takeJournal();
        QTest::touchEvent(editor, screen).press(0, {100, 100}, editor).press(1, {140, 100}, editor);
        QTest::touchEvent(editor, screen).move(0, {60, 100}, editor).move(1, {180, 100}, editor);
        QTest::touchEvent(editor, screen)
            .release(0, {60, 100}, editor)
            .release(1, {180, 100}, editor);
        QVERIFY(noted("surface.dealGestureEvent").size() >= 2); // its start and its end
        QCOMPARE(m_space->crops->getCropCount(), 0);
        const EventCounter doubleClicks(player(), QEvent::MouseButtonDblClick);
        QTest::mouseDClick(editor, Qt::LeftButton, {}, {200, 100});
        QCOMPARE(doubleClicks.count, 1);
        m_space->erasing->setPlayerEditMode(Presenter::HandMode);
        QTest::mouseDClick(editor, Qt::LeftButton, {}, {200, 100});
        QCOMPARE(doubleClicks.count, 3); // the base takes it for a press, which is handed over, too
        QCOMPARE(m_space->crops->getCropCount(), 0);
    }

    void showsTheRectanglesThatTheToolLeaves_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("isBackground");
        QTest::newRow("brush") << int(Presenter::KeepMode) << true;
        QTest::newRow("eraser") << int(Presenter::EraseMode) << true;
        QTest::newRow("hand") << int(Presenter::HandMode) << true;
        QTest::newRow("box") << int(Presenter::SelectRectMode) << false;
    }
    void showsTheRectanglesThatTheToolLeaves()
    {
        QFETCH(int, mode);
        QFETCH(bool, isBackground);
        m_space->select();
        m_space->service->erasableFrame = m_space->erasing->currentFrame();
        m_space->erasing->setPlayerEditMode(isBackground ? Presenter::SelectRectMode
                                                         : Presenter::KeepMode);
        m_space->erasing->setPlayerEditMode(Presenter::PlayerEditMode(mode));
        QVERIFY(m_space->rectangles()->isVisible());
        QCOMPARE(m_space->crops->isCropBackgroundOnlyMode(), isBackground);
        QCOMPARE(m_space->editor()->isBackgroundOnlyMode(), isBackground);
        QCOMPARE(m_space->editor()->getCropRects().size(), 3);
        // While tracking the mode is another one, which changes nothing.
        m_space->track(true);
        emit m_space->erasing->sigPlayerEditModeChanged();
        QCOMPARE(m_space->crops->isCropBackgroundOnlyMode(), isBackground);
    }

    void offersTracking()
    {
        QCOMPARE(m_space->bar()->type(), Bar::NoWidget);
        m_space->segment({5, 9});
        QTRY_COMPARE(m_space->bar()->type(), Bar::PreviewEffectWidget);
        QTRY_VERIFY(m_space->bar()->isVisible());
        takeJournal();
        auto *const preview = m_space->bar()->findChild<QWidget *>("ZkAIErasingTrackingBtn");
        QTRY_VERIFY(preview->isVisible());
        QTest::mousePress(preview->parentWidget(), Qt::LeftButton);
        QVERIFY(journal().contains(QStringLiteral(
            "event smart_mask_bar_btn_click btn_name=track mask_num=2 file_type=video")));
        QCOMPARE(m_space->bar()->type(), Bar::TrackingProgressWidget);
        const QRect player(m_space->find<ZkMediaPlayerWidget>()->mapToGlobal(QPoint(0, 0)),
                           m_space->find<ZkMediaPlayerWidget>()->size());
        QTRY_COMPARE(m_space->bar()->pos(),
                     QPoint(player.center().x() - 137, player.bottom() - 24 - 24));
        emit m_space->erasing->sigTrackingProgress(42);
        const auto *page = m_space->bar()->findChild<ZkAIErasingProgressWidget *>();
        QCOMPARE(page->findChild<QLabel *>("barLabel")->text(), QStringLiteral("42%"));
        m_space->track(false);
        QCOMPARE(m_space->bar()->type(), Bar::SaveOrDiscardWidget);
        QVERIFY(m_space->erasing->hasTracked());
    }

    void staysInFrontOfTheOthers()
    {
        m_space->segment({5});
        QTRY_VERIFY(m_space->bar()->isVisible());
        ZkDrawingWidget *const canvas = m_space->view->findChild<ZkDrawingWidget *>();
        for (QWidget *const below :
             {static_cast<QWidget *>(m_space->editor()), static_cast<QWidget *>(canvas)}) {
            m_space->tools()->setTool(below == canvas ? ZkAIErasingSettingView::SmartBrushTool
                                                      : ZkAIErasingSettingView::MagicBoxTool);
            QTRY_VERIFY(below->isVisible());
            QCoreApplication::processEvents();
            RaiseCounter raises(m_space->bar());
            QTest::mouseClick(below, Qt::LeftButton, {}, {9, 9});
            QCOMPARE(raises.count, 2);
        }
        m_space->view->hide();
        RaiseCounter raises(m_space->bar());
        m_space->view->show();
        QTRY_VERIFY(canvas->isVisible() && m_space->bar()->isVisible());
        QTRY_VERIFY(raises.count > 0);
    }

    void endsTracking_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::newRow("cancel") << QByteArray("Cancel") << int(Bar::TrackingProgressWidget)
                                << int(Bar::PreviewEffectWidget);
        QTest::newRow("save") << QByteArray("Save") << int(Bar::SaveOrDiscardWidget)
                              << int(Bar::NoWidget);
        QTest::newRow("discard") << QByteArray("Discard") << int(Bar::SaveOrDiscardWidget)
                                 << int(Bar::NoWidget);
    }
    void endsTracking()
    {
        QFETCH(QByteArray, button);
        QFETCH(int, from);
        QFETCH(int, to);
        m_space->segment({5});
        QCoreApplication::processEvents();
        m_space->erasing->beginTracking();
        if (from == Bar::SaveOrDiscardWidget)
            m_space->track(false);
        QCOMPARE(int(m_space->bar()->type()), from);
        auto *const click = m_space->buttonWithText<ZkToolButton>(button.constData());
        QTRY_VERIFY(click->isVisible());
        QTest::mouseClick(click, Qt::LeftButton);
        QCOMPARE(int(m_space->bar()->type()), to);
        QCOMPARE(m_space->service->segmentCount(), to == Bar::NoWidget ? 0 : 1);
        if (to == Bar::PreviewEffectWidget)
            QCOMPARE(m_space->erasing->removeType(), Presenter::StoppedRemoveType);
        QCoreApplication::processEvents();
        QCOMPARE(int(m_space->bar()->type()), to);
    }

    void followsTheSelection()
    {
        m_space->segment({5});
        m_space->controller->trackingResult = ZKSMARTKEYING::NothingToTrack;
        QTRY_COMPARE(m_space->bar()->type(), Bar::PreviewEffectWidget);
        m_space->erasing->beginTracking(); // refused
        QTRY_COMPARE(m_space->bar()->type(), Bar::PreviewEffectWidget);
        // An edit makes what was tracked stale.
        m_space->bar()->setType(Bar::SaveOrDiscardWidget);
        m_space->erasing->setHasTracked(true);
        emit m_space->erasing->sigNodeChanged(5);
        QTRY_COMPARE(m_space->bar()->type(), Bar::PreviewEffectWidget);
        QVERIFY(!m_space->erasing->hasTracked());
        m_space->service->removeSegmentNode(5);
        QTRY_COMPARE(m_space->bar()->type(), Bar::NoWidget);
    }

    void staysHiddenForAStill()
    {
        m_space = std::make_unique<ErasingView>(ZKTIMELINE::ImageClip);
        m_space->segment({0});
        emit m_space->erasing->sigBeginTracking();
        m_space->track(false);
        QCoreApplication::processEvents();
        QCOMPARE(m_space->bar()->type(), Bar::NoWidget);
        QVERIFY(!m_space->bar()->isVisible());
        QVERIFY(!m_space->erasing->hasTracked());
    }

private:
    ZkMediaPlayerWidget *player() { return m_space->find<ZkMediaPlayerWidget>(); }
    void drag(const QPoint &from, const QPoint &to)
    {
        QTest::mousePress(m_space->editor(), Qt::LeftButton, {}, from);
        zk::test::drag(m_space->editor(), (from + to) / 2);
        zk::test::drag(m_space->editor(), to);
        QTest::mouseRelease(m_space->editor(), Qt::LeftButton, {}, to);
    }
    void draw(const QPoint &from, const QPoint &to) { drag(from, to); }

    std::unique_ptr<ErasingView> m_space;
};

ZK_TEST_MAIN(ZkAIErasingOverlaysTest)
#include "ZkAIErasingOverlaysTest.moc"
