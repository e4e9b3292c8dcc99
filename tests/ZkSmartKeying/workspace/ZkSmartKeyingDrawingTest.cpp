// The canvas and the player under it.
#include "WorkspaceView.h"

#include <QGestureEvent>

using Presenter = ZkSmartKeyingPresenter;

class ZkSmartKeyingDrawingTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_space = std::make_unique<WorkspaceView>();
        m_canvas = m_space->canvas();
        m_player = m_space->surface();
        m_canvas->setCanvasRect({0, 0, 640, 360});
        QVERIFY(m_canvas->isVisible());
    }
    void cleanup() { m_space.reset(); }

    void floatsOverThePlayer()
    {
        QVERIFY(journal().contains(QStringLiteral("player.setZoomEnabled(true)")));
        QVERIFY(!m_player->vblPlayerWidget()->isZoomAdsorbEnabled());
        QVERIFY(!m_player->hasMouseTracking());
        QCOMPARE(m_player->playerPresenter(), m_space->presenter->playerPresenter());
        const auto flags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus;
        QCOMPARE(m_canvas->windowFlags() & flags, flags);
        QVERIFY(m_canvas->testAttribute(Qt::WA_TranslucentBackground));
        const auto fits = [this] {
            return m_canvas->geometry()
                == QRect(m_player->mapToGlobal(QPoint(0, 0)), m_player->size());
        };
        QTRY_VERIFY(fits() && m_player->height() > 300);
        m_space->host.move(m_space->host.pos() + QPoint(40, 30));
        QTRY_VERIFY(fits());
        m_space->host.resize(700, 500);
        QTRY_VERIFY(fits());
    }

    void handsAStrokeOverOnceTheEventIsOver()
    {
        m_space->record();
        press(Qt::LeftButton);
        move({200, 120}, Qt::LeftButton);
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
        press(Qt::LeftButton, Qt::ControlModifier);
        QCOMPARE(m_canvas->cursor().shape(), Qt::BlankCursor);
        // One pixel sideways is one of the width; 60 asks for less than the minimum of 6.
        const QVector<QPair<int, int>> widths {{150, 80}, {90, 20}, {60, 20}, {65, 25}};
        for (const auto &step : widths) {
            move({step.first, 10}, Qt::LeftButton);
            QCOMPARE(m_space->presenter->penPixelWidth(), step.second);
        }
        release(Qt::LeftButton, Qt::ControlModifier);
        QCOMPARE(m_canvas->cursor().shape(), Qt::BitmapCursor);
        QVERIFY(m_canvas->penWidth() != 25);
        QTRY_COMPARE(m_canvas->penWidth(), 25);
        QCOMPARE(noted("controller"), QStringList());
        QCOMPARE(m_space->presenter->undoRedoService()->undoStepCount(), 1);
        QTest::keyClick(m_space->view, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(m_space->presenter->penPixelWidth(), 30);
    }

    void neverLeavesADragOpen_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("hidden") << 0;
        QTest::newRow("disabled") << 1;
        QTest::newRow("view hidden") << 2;
        QTest::newRow("view deleted") << 3;
    }
    void neverLeavesADragOpen()
    {
        QFETCH(int, way);
        press(way == 1 ? Qt::MiddleButton : Qt::LeftButton, Qt::ControlModifier);
        QVERIFY(m_space->presenter->isPenPixelWidthChanging() != (way == 1));
        QVERIFY(m_space->presenter->isFrameMoving() == (way == 1));
        switch (way) {
        case 0:
            m_space->presenter->setPlayerEditMode(Presenter::HandMode);
            break;
        case 1:
            m_space->view->setDrawingEnabled(false);
            QCOMPARE(noted("zoomer").last(), QStringLiteral("zoomer.endPan"));
            break;
        case 2:
            m_space->view->hide();
            break;
        default:
            delete m_space->view;
        }
        QVERIFY(!m_space->presenter->isPenPixelWidthChanging());
        QVERIFY(!m_space->presenter->isFrameMoving());
    }

    void tellsGesturesApart()
    {
        const Qt::KeyboardModifiers ctrl = Qt::ControlModifier;
        const QString pan = QStringLiteral("zoomer.beginPan\nzoomer.panBy(30,20)\nzoomer.endPan");
        const struct
        {
            Qt::MouseButton button;
            Qt::KeyboardModifiers keys;
            QString calls;
            bool draws;
        } gestures[] = {{Qt::RightButton, {}, {}, false},
                        {Qt::RightButton, ctrl, {}, false},
                        {Qt::MiddleButton, {}, pan, false},
                        {Qt::MiddleButton, ctrl, pan, false},
                        {Qt::LeftButton, ctrl | Qt::ShiftModifier, {}, true}};
        for (const auto &gesture : gestures) {
            takeJournal();
            m_canvas->setCursor(Qt::WaitCursor);
            press(gesture.button, gesture.keys);
            QCOMPARE(m_canvas->isDrawing(), gesture.draws);
            QVERIFY(!m_space->presenter->isPenPixelWidthChanging());
            move({130, 120}, gesture.button);
            release(gesture.button, gesture.keys);
            QVERIFY(!m_canvas->isDrawing());
            QCOMPARE(noted("zoomer"), lines(gesture.calls));
            const bool kept = m_canvas->cursor().shape() == Qt::WaitCursor;
            QCOMPARE(kept, gesture.button == Qt::RightButton);
        }
        // A stroke ends though the frame is being moved.
        press(Qt::LeftButton);
        press(Qt::MiddleButton);
        release(Qt::LeftButton);
        QVERIFY(!m_canvas->isDrawing() && m_space->presenter->isFrameMoving());
    }

    void handsWheelAndPinchToThePlayer()
    {
        QWheelEvent wheel({9, 9}, {9, 9}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_canvas, &wheel);
        QCoreApplication::sendEvent(m_player, &wheel);
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
            m_space->presenter->setPlayerEditMode(Presenter::PlayerEditMode(mode));
            QTRY_COMPARE(m_canvas->isVisible(), mode < 4);
            QCOMPARE(m_canvas->penColor().isValid(), mode < 4);
            QCOMPARE(m_canvas->cursor().shape(), m_space->presenter->cursor(true).shape());
        }
        m_space->track(true);
        QVERIFY(!m_canvas->isEnabled());
        QCOMPARE(m_canvas->cursor().shape(), Qt::ArrowCursor);
        // Chosen while it cannot be shown.
        m_space->presenter->setPlayerEditMode(Presenter::KeepMode);
        m_space->track(false);
        QVERIFY(m_canvas->isEnabled() && m_space->header()->button(2)->isChecked());
        QTRY_VERIFY(m_canvas->isVisible());
        emit m_space->presenter->sigDrawingEnabledChanged(false);
        QVERIFY(!m_canvas->isEnabled());
    }

    void takesTheCanvasOverLater()
    {
        for (const auto signal : {&Presenter::sigFrameZoomed, &Presenter::sigFrameMoved}) {
            const QRect before = m_canvas->canvasRect();
            m_space->player->frameRect.translate(5, 6);
            emit(m_space->presenter.get()->*signal)();
            QCOMPARE(m_canvas->canvasRect(), before);
            QTRY_COMPARE(m_canvas->canvasRect(), before.translated(5, 6));
        }
    }

    void pansWithTheHand()
    {
        m_space->presenter->setPlayerEditMode(Presenter::HandMode);
        takeJournal();
        QTest::mouseClick(m_player, Qt::RightButton);
        QTest::mousePress(m_player, Qt::LeftButton, {}, {50, 60});
        moveOn(m_player, {60, 60}, Qt::LeftButton);
        moveOn(m_player, {80, 50}, Qt::LeftButton); // measured from the press
        moveOn(m_player, {1, 1}, Qt::RightButton);
        m_player->setCursor(Qt::WaitCursor);
        send(m_player, QEvent::Leave);
        QCOMPARE(m_player->cursor().shape(), Qt::WaitCursor);
        QTest::mouseRelease(m_player, Qt::LeftButton, {}, {80, 50});
        QCOMPARE(noted("zoomer"),
                 lines("zoomer.beginPan\nzoomer.panBy(10,0)\nzoomer.panBy(30,-10)\nzoomer.endPan"));
        send(m_player, QEvent::Leave);
        QCOMPARE(m_player->cursor().shape(), Qt::ArrowCursor);
        send(m_player, QEvent::Enter);
        QCOMPARE(m_player->cursor().shape(), Qt::OpenHandCursor);
        m_space->player->pannable = false;
        QTest::mouseClick(m_player, Qt::LeftButton);
        QCOMPARE(noted("zoomer"), lines("zoomer.endPan"));
    }

    void setsTheCursorOfWhatIsOnTop()
    {
        m_player->setCursor(Qt::WaitCursor);
        send(m_canvas, QEvent::Leave);
        QCOMPARE(m_canvas->cursor().shape(), Qt::ArrowCursor);
        QWidget palette;
        palette.show();
        palette.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&palette));
        send(m_canvas, QEvent::Enter);
        QCOMPARE(m_canvas->cursor().shape(), Qt::BitmapCursor);
        QCOMPARE(m_player->cursor().shape(), Qt::WaitCursor);
        // The keys come back to the workspace with the pointer.
        QVERIFY(QTest::qWaitForWindowActive(&m_space->host));
    }

    void previewsTheBrush()
    {
        m_space->presenter->setPenPixelWidth(60);
        m_space->presenter->setPenPixelWidthChanging(true); // from elsewhere than the canvas
        QCOMPARE(paintedMiddle(), m_canvas->rect().center());
        m_space->presenter->setPenPixelWidthChanging(false);
        QCOMPARE(paintedMiddle(), QPoint());
        press(Qt::LeftButton, Qt::ControlModifier);
        QCOMPARE(paintedMiddle(), QPoint(100, 100));
    }

    void prompts()
    {
        const QString info = QStringLiteral(":/Resource/icon24_toast_info.png");
        const QStringList texts {
            "Please draw mask first. Then you can start tracking.",
            "Track rendering failed, please try again!",
            "No objects to track in this direction, please select another direction.",
            QString()};
        const QStringList icons {info, ":/Resource/icon24_toast_error.png", info, QString()};
        for (int type = 0; type < texts.size(); ++type) {
            emit m_space->presenter->sigPrompt(Presenter::PromptType(type));
            auto *const toast = m_player->findChild<ZkToast *>();
            QVERIFY(toast && toast->isVisible());
            QCOMPARE(toast->text(), texts.at(type));
            QCOMPARE(toast->icon().toImage(), QPixmap(icons.at(type)).toImage());
            QCOMPARE(toast->icon().isNull(), type == 3);
            const QPoint place((m_player->width() - toast->width()) / 2 - 18, 20);
            QCOMPARE(toast->mapTo(m_player, QPoint()), place);
            delete toast;
        }
        WorkspaceView erasing(ZKSMARTKEYING::AIErasing);
        emit erasing.presenter->sigPrompt(Presenter::DrawMaskFirstPrompt);
        QVERIFY(!erasing.surface()->findChild<ZkToast *>());
        emit erasing.presenter->sigTrackingModeChanged(true);
        QVERIFY(erasing.canvas()->isEnabled() && erasing.header()->isEnabled());
    }

private:
    static void send(QWidget *widget, QEvent::Type type)
    {
        QEvent event(type);
        QCoreApplication::sendEvent(widget, &event);
    }
    // QTest::mouseMove() tells no buttons.
    static void moveOn(QWidget *widget, const QPoint &to, Qt::MouseButtons held)
    {
        QMouseEvent event(QEvent::MouseMove, to, widget->mapToGlobal(to), {}, held, {});
        QCoreApplication::sendEvent(widget, &event);
    }
    void move(const QPoint &to, Qt::MouseButtons held) { moveOn(m_canvas, to, held); }
    void press(Qt::MouseButton button, Qt::KeyboardModifiers keys = {})
    {
        QTest::mousePress(m_canvas, button, keys, {100, 100});
    }
    void release(Qt::MouseButton button, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseRelease(m_canvas, button, keys, {130, 120});
    }
    // Of what is more than almost transparent; null when nothing is.
    QPoint paintedMiddle()
    {
        QImage image(m_canvas->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        m_canvas->render(&image, {}, {}, {});
        QRect painted;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(image.pixel(x, y)) > 1)
                    painted |= QRect(x, y, 1, 1);
            }
        }
        return painted.isEmpty() ? QPoint() : painted.center() + QPoint(1, 1);
    }

    std::unique_ptr<WorkspaceView> m_space;
    ZkSmartKeyingDrawingWidget *m_canvas;
    ZkSmartKeyingMediaPlayerWidget *m_player;
};

ZK_TEST_MAIN(ZkSmartKeyingDrawingTest)
#include "ZkSmartKeyingDrawingTest.moc"
