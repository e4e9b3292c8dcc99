// The canvas and the player under it.
#include "WorkspaceView.h"
#include "ZkTestInput.h"

#include <QBitmap>
#include <QGestureEvent>

using Presenter = ZkSmartKeyingPresenter;
const Qt::KeyboardModifiers ctrl = Qt::ControlModifier;

class ZkSmartKeyingDrawingTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_space = std::make_unique<WorkspaceView>();
        m_presenter = m_space->presenter.get();
        m_canvas = m_space->canvas();
        m_player = m_space->surface();
        m_canvas->setCanvasRect({0, 0, 640, 360});
    }
    void cleanup() { m_space.reset(); }

    void floatsOverThePlayer()
    {
        QVERIFY(journal().contains(QStringLiteral("player.setZoomEnabled(true)")));
        QVERIFY(!m_player->vblPlayerWidget()->isZoomAdsorbEnabled());
        QVERIFY(!m_player->hasMouseTracking());
        QCOMPARE(m_player->playerPresenter(), m_presenter->playerPresenter());
        const auto place = [this] {
            return QRect(m_player->mapToGlobal(QPoint(0, 0)), m_player->size());
        };
        QTRY_COMPARE(m_canvas->geometry(), place());
        m_space->host.move(40, 30);
        QTRY_COMPARE(m_canvas->geometry(), place());
        m_space->host.resize(700, 500);
        QTRY_COMPARE(m_canvas->geometry(), place());
    }

    void handsAStrokeOverOnceTheEventIsOver()
    {
        m_space->record();
        press(Qt::LeftButton);
        zk::test::drag(m_canvas, {200, 120}, Qt::LeftButton);
        release(Qt::LeftButton);
        QCOMPARE(noted("controller"), QStringList());
        QTRY_VERIFY(journal().contains(QStringLiteral("sigDrawingFinished")));
        QCOMPARE(noted("contr|sigDrawing"), lines("controller.addMask(0)\nsigDrawingFinished"));
        emit m_canvas->sigDrawingFinished(strokes(), false);
        QCoreApplication::processEvents();
        QCOMPARE(noted("controller|sigDrawing"), QStringList());
    }

    void changesThePenWidth()
    {
        takeJournal();
        press(Qt::LeftButton, ctrl);
        QCOMPARE(m_canvas->cursor().shape(), Qt::BlankCursor);
        // One pixel sideways is one of the width; 60 asks for less than the minimum of 6.
        const QVector<QPair<int, int>> widths {{150, 80}, {90, 20}, {60, 20}, {65, 25}};
        for (const auto &step : widths) {
            zk::test::drag(m_canvas, {step.first, 10}, Qt::LeftButton);
            QCOMPARE(m_presenter->penPixelWidth(), step.second);
        }
        release(Qt::LeftButton, ctrl);
        QCOMPARE(m_canvas->cursor().shape(), Qt::BitmapCursor);
        QVERIFY(m_canvas->penWidth() != 25);
        QTRY_COMPARE(m_canvas->penWidth(), 25);
        QCOMPARE(noted("controller"), QStringList());
        QTest::keyClick(m_space->view, Qt::Key_Z, ctrl);
        QCOMPARE(m_presenter->penPixelWidth(), 30);
        QVERIFY(!m_presenter->undoRedoService()->canUndo());
    }

    void neverLeavesADragOpen()
    {
        const std::function<void(WorkspaceView &)> interruptions[] = {
            [](WorkspaceView &space) { space.presenter->setPlayerEditMode(Presenter::HandMode); },
            [](WorkspaceView &space) { space.view->setDrawingEnabled(false); },
            [](WorkspaceView &space) { space.view->hide(); },
            [](WorkspaceView &space) { delete space.view; },
        };
        for (const auto &interrupt : interruptions) {
            WorkspaceView space;
            QTest::mousePress(space.canvas(), Qt::MiddleButton);
            QTest::mousePress(space.canvas(), Qt::LeftButton, ctrl);
            QVERIFY(space.presenter->isPenPixelWidthChanging());
            interrupt(space);
            QVERIFY(!space.presenter->isPenPixelWidthChanging());
            QVERIFY(!space.presenter->isFrameMoving());
        }
    }

    void tellsGesturesApart()
    {
        const QString pan = QStringLiteral("zoomer.beginPan\nzoomer.panBy(30,20)\nzoomer.endPan");
        const std::tuple<Qt::MouseButton, Qt::KeyboardModifiers, QString> gestures[] = {
            {Qt::RightButton, {}, {}},
            {Qt::RightButton, ctrl, {}},
            {Qt::MiddleButton, {}, pan},
            {Qt::MiddleButton, ctrl, pan},
            {Qt::LeftButton, ctrl | Qt::ShiftModifier, {}}};
        for (const auto &[button, keys, calls] : gestures) {
            takeJournal();
            m_canvas->setCursor(Qt::WaitCursor);
            press(button, keys);
            QCOMPARE(m_canvas->isDrawing(), button == Qt::LeftButton);
            QVERIFY(!m_presenter->isPenPixelWidthChanging());
            zk::test::drag(m_canvas, {130, 120}, button);
            release(button, keys);
            QVERIFY(!m_canvas->isDrawing());
            QCOMPARE(noted("zoomer"), lines(calls));
            QCOMPARE(m_canvas->cursor().shape() == Qt::WaitCursor, button == Qt::RightButton);
        }
        // A stroke ends though the frame is being moved.
        press(Qt::LeftButton);
        press(Qt::MiddleButton);
        release(Qt::LeftButton);
        QVERIFY(!m_canvas->isDrawing() && m_presenter->isFrameMoving());
    }

    void handsWheelAndPinchToThePlayer()
    {
        zk::test::turnWheel(m_canvas, {9, 9}, 120);
        zk::test::turnWheel(m_player, {9, 9}, 120);
        QPinchGesture fingers;
        QGestureEvent pinch({&fingers});
        QCoreApplication::sendEvent(m_canvas, &pinch);
        QCOMPARE(noted("surface.[wd]"),
                 lines("surface.wheel(120)\nsurface.wheel(120)\nsurface.dealGestureEvent"));
    }

    void followsTheTool()
    {
        m_space->controller->clip.cutout.erasableFrame = 0;
        for (const int mode : {4, 1, 5, 2, 4, 3}) {
            m_canvas->setPenColor(QColor());
            m_presenter->setPlayerEditMode(Presenter::PlayerEditMode(mode));
            QTRY_COMPARE(m_canvas->isVisible(), mode < 4);
            QCOMPARE(m_canvas->penColor().isValid(), mode < 4);
            QCOMPARE(m_canvas->cursor().shape(), m_presenter->cursor(true).shape());
        }
        m_space->track(true);
        QVERIFY(!m_canvas->isEnabled());
        QCOMPARE(m_canvas->cursor().shape(), Qt::ArrowCursor);
        m_presenter->setPlayerEditMode(Presenter::KeepMode); // cannot be shown yet
        m_space->track(false);
        QVERIFY(m_canvas->isEnabled() && m_space->header()->button(2)->isChecked());
        QTRY_VERIFY(m_canvas->isVisible());
        emit m_presenter->sigDrawingEnabledChanged(false);
        QVERIFY(!m_canvas->isEnabled());
        WorkspaceView erasing(ZKSMARTKEYING::AIErasing);
        emit erasing.presenter->sigTrackingModeChanged(true);
        QVERIFY(erasing.canvas()->isEnabled() && erasing.header()->isEnabled());
    }

    void takesTheCanvasOverLater()
    {
        for (const auto signal : {&Presenter::sigFrameZoomed, &Presenter::sigFrameMoved}) {
            const QRect before = m_canvas->canvasRect();
            m_space->player->frameRect.translate(5, 6);
            emit(m_presenter->*signal)();
            QCOMPARE(m_canvas->canvasRect(), before);
            QTRY_COMPARE(m_canvas->canvasRect(), before.translated(5, 6));
        }
    }

    void pansWithTheHand()
    {
        m_presenter->setPlayerEditMode(Presenter::HandMode);
        takeJournal();
        QTest::mouseClick(m_player, Qt::RightButton);
        QTest::mousePress(m_player, Qt::LeftButton, {}, {50, 60});
        zk::test::drag(m_player, {60, 60}, Qt::LeftButton);
        zk::test::drag(m_player, {80, 50}, Qt::LeftButton); // measured from the press
        zk::test::drag(m_player, {1, 1}, Qt::RightButton);
        QCOMPARE(cursorAfter(m_player, QEvent::Leave), Qt::WaitCursor);
        QTest::mouseRelease(m_player, Qt::LeftButton, {}, {80, 50});
        QCOMPARE(noted("zoomer"),
                 lines("zoomer.beginPan\nzoomer.panBy(10,0)\nzoomer.panBy(30,-10)\nzoomer.endPan"));
        QCOMPARE(cursorAfter(m_player, QEvent::Leave), Qt::ArrowCursor);
        QCOMPARE(cursorAfter(m_player, QEvent::Enter), Qt::OpenHandCursor);
        m_space->player->pannable = false;
        QTest::mouseClick(m_player, Qt::LeftButton);
        QCOMPARE(noted("zoomer"), lines("zoomer.endPan"));
    }

    void takesThePointerAndTheKeys()
    {
        m_player->setCursor(Qt::WaitCursor);
        QWidget palette;
        palette.show();
        palette.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&palette));
        QCOMPARE(cursorAfter(m_canvas, QEvent::Leave), Qt::ArrowCursor);
        QCOMPARE(cursorAfter(m_canvas, QEvent::Enter), Qt::BitmapCursor);
        QCOMPARE(m_player->cursor().shape(), Qt::WaitCursor);
        QVERIFY(QTest::qWaitForWindowActive(&m_space->host));
    }

    void previewsTheBrush()
    {
        m_presenter->setPenPixelWidth(60);
        m_presenter->setPenPixelWidthChanging(true); // from elsewhere than the canvas
        QCOMPARE(painted().center() + QPoint(1, 1), m_canvas->rect().center());
        m_presenter->setPenPixelWidthChanging(false);
        QVERIFY(painted().isEmpty());
        press(Qt::LeftButton, ctrl);
        QCOMPARE(painted().center() + QPoint(1, 1), QPoint(100, 100));
    }

    void prompts()
    {
        const QString info = QStringLiteral(":/Resource/icon24_toast_info.png");
        const std::pair<QString, QString> rows[] = {
            {"Please draw mask first. Then you can start tracking.", info},
            {"Track rendering failed, please try again!", ":/Resource/icon24_toast_error.png"},
            {"No objects to track in this direction, please select another direction.", info},
            {QString(), QString()}};
        int type = 0;
        for (const auto &[text, icon] : rows) {
            emit m_presenter->sigPrompt(Presenter::PromptType(type++));
            const std::unique_ptr<ZkToast> toast(m_player->findChild<ZkToast *>());
            QVERIFY(toast && toast->isVisible());
            QCOMPARE(toast->text(), text);
            QCOMPARE(toast->icon().toImage(), QPixmap(icon).toImage());
            QCOMPARE(toast->icon().isNull(), icon.isEmpty());
            const int x = (m_player->width() - toast->width()) / 2 - 18;
            QCOMPARE(toast->mapTo(m_player, QPoint()), QPoint(x, 20));
        }
        WorkspaceView erasing(ZKSMARTKEYING::AIErasing);
        emit erasing.presenter->sigPrompt(Presenter::DrawMaskFirstPrompt);
        QVERIFY(!erasing.surface()->findChild<ZkToast *>());
    }

private:
    static Qt::CursorShape cursorAfter(QWidget *widget, QEvent::Type type)
    {
        widget->setCursor(Qt::WaitCursor);
        QEvent event(type);
        QCoreApplication::sendEvent(widget, &event);
        return widget->cursor().shape();
    }
    void press(Qt::MouseButton button, Qt::KeyboardModifiers keys = {})
    {
        QTest::mousePress(m_canvas, button, keys, {100, 100});
    }
    void release(Qt::MouseButton button, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseRelease(m_canvas, button, keys, {130, 120});
    }
    QRect painted()
    {
        QImage image(m_canvas->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        m_canvas->render(&image, {}, {}, {});
        const QImage mask = image.createAlphaMask(Qt::ThresholdAlphaDither | Qt::AvoidDither);
        return QRegion(QBitmap::fromImage(mask)).boundingRect();
    }

    std::unique_ptr<WorkspaceView> m_space;
    Presenter *m_presenter;
    ZkSmartKeyingDrawingWidget *m_canvas;
    ZkSmartKeyingMediaPlayerWidget *m_player;
};

ZK_TEST_MAIN(ZkSmartKeyingDrawingTest)
#include "ZkSmartKeyingDrawingTest.moc"
