#include "ZkStudioTimelineView.h"
#include "EditBench.h"
#include "ZkTestInput.h"
#include "ZkTestMain.h"
#include "ZkTimelineRuler.h"
#include "ZkWidgets.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QToolTip>
#include <QWindow>

using namespace zk::datamodel;
using namespace zk::test;

namespace {

// Rows of the canvas, by a pixel in each.
constexpr int rulerY = 8;
constexpr int nodesY = 40;
constexpr int stripY = 80;

// What the offscreen platform has to say about windows.
const QString platformNotice = QStringLiteral("^This plugin does not support");

// A view of an edit timeline, 28 pixels wider than 16 frames at 40 pixels.
class TimelineBench : public EditBench
{
public:
    TimelineBench()
        : view(&presenter, nullptr)
    {
        presenter.setTimeline(timeline());
        view.resize(668, 160);
        view.show();
        view.activateWindow();
        if (!QTest::qWaitForWindowActive(&view, 10000))
            qFatal("The view is not shown");
    }

    bool giveNodes(const QVector<qint64> &frames)
    {
        return std::all_of(
            frames.cbegin(), frames.cend(), [this](qint64 frame) { return giveTruth(frame); });
    }
    QPoint at(qint64 frame, int y) const
    {
        return QPointF(presenter.scale().centreOf(frame), y).toPoint();
    }
    void clickNode(qint64 frame, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(canvas(), Qt::LeftButton, modifiers, at(frame, nodesY));
    }
    void press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(canvas(), Qt::Key(key), modifiers);
    }
    void turnWheel(const QPoint &position, int notches, Qt::KeyboardModifiers modifiers = {})
    {
        zk::test::turnWheel(canvas(), position, notches * 120, modifiers);
    }
    QWidget *canvas() const { return view.canvas(); }
    // As the window system reports them: a press takes the pointer until the release.
    void pressMouse(const QPoint &position)
    {
        QTest::mousePress(window(), Qt::LeftButton, {}, position);
    }
    void moveMouse(const QPoint &position) { QTest::mouseMove(window(), position); }
    void releaseMouse(const QPoint &position)
    {
        QTest::mouseRelease(window(), Qt::LeftButton, {}, position);
    }
    QWindow *window() const { return view.windowHandle(); }
    QImage grab() { return canvas()->grab().toImage(); }
    // Of the tracked range.
    QColor bandAt(qint64 frame)
    {
        return grab().pixelColor(at(frame, canvas()->height() - 6) + QPoint(6, 0));
    }
    QVector<qint64> selected() const { return presenter.selection().frames(); }
    qint64 position() const { return timeline()->playhead()->position(); }

    const ExpectedMessage notice {platformNotice};
    ZkStudioTimelinePresenter presenter;
    ZkStudioTimelineView view;
};

using Frames = QVector<qint64>;

} // namespace

class ZkStudioTimelineViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingWithoutTimeline()
    {
        const ExpectedMessage notice {platformNotice};
        ZkStudioTimelinePresenter presenter;
        ZkStudioTimelineView view(&presenter, nullptr);
        view.resize(400, 160);
        view.show();
        const auto isBlank = [&] {
            const QImage image = view.canvas()->grab().toImage();
            QImage blank = image;
            blank.fill(image.pixelColor(200, 100));
            return image == blank;
        };
        QVERIFY(isBlank());
        {
            EditBench bench;
            presenter.setTimeline(bench.timeline());
            QVERIFY(!isBlank());
            // Another clip with its own frames and, as it is reported, its own marks.
            const zk::media::MediaInfo media = bench.clip()->media();
            bench.timeline()->setClip(
                std::make_unique<ZkStudioClip>(bench.timeline(), media, 2, 5));
            bench.service()->reportChange();
            QCOMPARE(presenter.scale().frameCount(), 5);
            bench.service()->storeTracked(
                1, true, {EncodedMatte(maskOf({0, 0, 9, 9})), 1, 0, 0, 1});
            QCOMPARE(presenter.marks().confidenceAt(1), 1.0F);
        } // the timeline dies first
        QTest::mouseClick(view.canvas(), Qt::LeftButton, {}, {300, rulerY});
        QTest::keyClick(view.canvas(), Qt::Key_Right);
        presenter.removeSelectedSmartKeyingNode();
        presenter.fitTimeline();
        presenter.setTimeline(nullptr);
        QVERIFY(isBlank());
        QVERIFY(!view.canvas()->isEnabled());
    }

    void playheadFollowsMouseAndKeys()
    {
        TimelineBench bench;
        QTest::mouseClick(bench.canvas(), Qt::LeftButton, {}, bench.at(5, rulerY));
        QCOMPARE(bench.position(), 5);
        bench.pressMouse(bench.at(5, stripY));
        bench.moveMouse(bench.at(9, stripY));
        QCOMPARE(bench.position(), 9);
        bench.releaseMouse(bench.at(9, stripY));
        bench.moveMouse(bench.at(2, stripY));
        QCOMPARE(bench.position(), 9);
        const QVector<QPair<int, qint64>> keys {{Qt::Key_Left, 8},
                                                {Qt::Key_Right, 9},
                                                {Qt::Key_End, 15},
                                                {Qt::Key_Right, 15},
                                                {Qt::Key_Home, 0},
                                                {Qt::Key_Left, 0}};
        for (const auto &key : keys) {
            bench.press(key.first);
            QCOMPARE(bench.position(), key.second);
        }
        // Whoever moves it, the view shows it.
        const QImage before = bench.grab();
        bench.timeline()->playhead()->setPosition(12);
        QVERIFY(bench.grab() != before);
        QCOMPARE(bench.grab().pixelColor(bench.at(12, nodesY)),
                 ZkSkinManager::instance()->color(ZKSKIN::TimelinePlayhead));
    }

    void keysOfTheWindowComeFirst()
    {
        TimelineBench bench;
        QShortcut shortcut(QKeySequence(Qt::Key_Right), &bench.view);
        QSignalSpy activated(&shortcut, &QShortcut::activated);
        QSignalSpy ambiguous(&shortcut, &QShortcut::activatedAmbiguously);
        bench.press(Qt::Key_Right);
        QCOMPARE(activated.count(), 1);
        QCOMPARE(ambiguous.count(), 0);
        QCOMPARE(bench.position(), 0);
    }

    void nodesArePicked()
    {
        TimelineBench bench;
        QSignalSpy changes(&bench.presenter, &ZkStudioTimelinePresenter::sigSelectionChanged);
        QVERIFY(bench.giveNodes({2, 5, 9, 14}));
        bench.clickNode(5);
        QCOMPARE(bench.selected(), Frames({5}));
        QCOMPARE(bench.position(), 0); // picking does not move the playhead
        bench.clickNode(5);
        QCOMPARE(changes.count(), 1);
        bench.clickNode(14, Qt::ShiftModifier);
        QCOMPARE(bench.selected(), Frames({5, 9, 14}));
        bench.clickNode(2, Qt::ShiftModifier); // the range begins where it did
        QCOMPARE(bench.selected(), Frames({2, 5}));
        bench.clickNode(14, Qt::ControlModifier);
        bench.clickNode(5, Qt::ControlModifier);
        QCOMPARE(bench.selected(), Frames({2, 14}));
        QTest::mouseClick(bench.canvas(), Qt::LeftButton, {}, bench.at(7, stripY));
        QCOMPARE(bench.selected(), Frames({2, 14}));
        bench.press(Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(bench.selected(), Frames({2, 5, 9, 14}));
        QTest::mouseClick(bench.canvas(), Qt::LeftButton, {}, bench.at(7, nodesY));
        QCOMPARE(bench.selected(), Frames());
        QTest::mouseDClick(bench.canvas(), Qt::LeftButton, {}, bench.at(9, nodesY));
        QCOMPARE(bench.position(), 9);
        bench.press(Qt::Key_PageDown);
        QCOMPARE(bench.position(), 14);
        QCOMPARE(bench.selected(), Frames({14}));
        bench.press(Qt::Key_PageDown); // there is none
        QCOMPARE(bench.position(), 14);
        bench.press(Qt::Key_PageUp, Qt::ShiftModifier);
        QCOMPARE(bench.position(), 9);
        QCOMPARE(bench.selected(), Frames({9, 14}));
        QVERIFY(bench.undo()->undo()); // the node of 14
        QCOMPARE(bench.selected(), Frames({9}));
    }

    void hoverTellsTheTime()
    {
        TimelineBench bench;
        QVERIFY(bench.giveNodes({5}));
        const auto hover = [&](const QPoint &position) {
            QHelpEvent event(QEvent::ToolTip, position, bench.canvas()->mapToGlobal(position));
            QApplication::sendEvent(bench.canvas(), &event);
        };
        hover(bench.at(5, nodesY) + QPoint(4, 0));
        QVERIFY(QToolTip::text().contains(QStringLiteral("00:00:00:05")));
        bench.moveMouse(bench.at(5, nodesY));
        QCOMPARE(bench.canvas()->cursor().shape(), Qt::PointingHandCursor);
        hover(bench.at(5, stripY));
        QTRY_VERIFY_WITH_TIMEOUT(!QToolTip::isVisible(), 10000);
        bench.moveMouse(bench.at(5, stripY));
        QCOMPARE(bench.canvas()->cursor().shape(), Qt::ArrowCursor);
    }

    void deleteIsOneStep()
    {
        TimelineBench bench;
        QVERIFY(bench.giveNodes({2, 5, 9}));
        bench.presenter.removeSelectedSmartKeyingNode(); // nothing is selected
        QCOMPARE(bench.segments().nodes().size(), 3);
        bench.clickNode(2);
        bench.clickNode(9, Qt::ControlModifier);
        bench.edits.sets.clear();
        bench.observer.nodes.clear();
        const int steps = bench.undo()->undoStepCount();
        bench.press(Qt::Key_Delete);
        QCOMPARE(bench.segments().nodes().keys(), QList<qint64>({5}));
        QCOMPARE(bench.edits.count(ZKTIMELINE::SegmentChange), 1);
        QCOMPARE(bench.observer.nodes, Frames({2, 9}));
        QCOMPARE(bench.undo()->undoStepCount(), steps + 1);
        QVERIFY(bench.selected().isEmpty() && !bench.segments().hasMask(2));
        QVERIFY(bench.undo()->undo());
        QCOMPARE(bench.segments().nodes().keys(), QList<qint64>({2, 5, 9}));
        QCOMPARE(bench.agreement(9), 1.0);
        QCOMPARE(bench.edits.sets.size(), 2);
        QVERIFY(bench.undo()->redo());
        QCOMPARE(bench.presenter.marks().nodes(), Frames({5}));
    }

    void zoomAndScroll()
    {
        TimelineBench bench;
        auto *slider = ZkZoomSlider::CreateZoomSlider(&bench.view);
        const auto &scale = bench.presenter.scale();
        bench.presenter.setZoomSlider(slider);
        QCOMPARE(slider->value(), 0);
        QVERIFY(scale.isFitted());
        const QPoint pointer = bench.at(10, stripY);
        bench.turnWheel(pointer, 2, Qt::ControlModifier);
        QVERIFY(!scale.isFitted() && slider->value() > 0);
        QCOMPARE(scale.frameAt(pointer.x()), 10);
        QScrollBar *bar = bench.view.findChild<QScrollBar *>();
        QVERIFY(bar->isVisible());
        const double offset = scale.offset();
        bench.turnWheel(pointer, 1);
        QVERIFY(scale.offset() < offset);
        QCOMPARE(bar->value(), qRound(scale.offset()));
        bar->setValue(bar->maximum());
        QVERIFY(scale.isVisible(15) && scale.offset() == scale.maximumOffset());
        slider->Add();
        const int value = slider->value();
        QCOMPARE(scale.zoomValue(), value);
        bench.presenter.fitTimeline();
        QVERIFY(scale.isFitted() && slider->value() == 0);
        QVERIFY(!bar->isVisible());
        delete slider;
        bench.turnWheel(pointer, 30, Qt::ControlModifier);
        QCOMPARE(scale.zoomValue(), 100);
    }

    void followsThePlayhead()
    {
        TimelineBench bench;
        const auto &scale = bench.presenter.scale();
        bench.turnWheel(bench.at(0, stripY), 30, Qt::ControlModifier); // 80 pixels a frame
        for (qint64 frame = 1; frame < EditClip::frames; ++frame) {
            bench.timeline()->playhead()->setPosition(frame);
            QVERIFY(scale.isVisible(frame));
        }
        // The user looks elsewhere while it runs; a move of its own brings it back.
        bench.timeline()->playhead()->setPosition(13);
        bench.turnWheel(bench.at(13, stripY), 30);
        bench.timeline()->playhead()->setPosition(14);
        QCOMPARE(scale.offset(), 0.0);
        bench.press(Qt::Key_Right);
        QVERIFY(scale.isVisible(15));
        // Dragged beyond the edge, the view scrolls under it.
        bench.turnWheel(bench.at(15, stripY), 30);
        bench.pressMouse(bench.at(1, stripY));
        bench.moveMouse(QPoint(bench.canvas()->width() + 60, stripY));
        QTRY_COMPARE_WITH_TIMEOUT(bench.position(), 15, 10000);
        bench.releaseMouse(QPoint(bench.canvas()->width() + 60, stripY));
    }

    void trackedRangeGrows()
    {
        TimelineBench bench;
        QVERIFY(bench.giveNodes({0}));
        bench.clickNode(0);
        const QColor none = bench.bandAt(3);
        bench.service()->setLocked(true);
        const EncodedMatte matte(EditClip::instance().matte(3));
        bench.service()->storeTracked(3, true, {matte, 1, 0, 0, 1});
        bench.service()->storeTracked(4, true, {matte, 0.25F, 0, 0, 1});
        QVERIFY(bench.bandAt(3) != none && bench.bandAt(5) == none);
        QVERIFY(bench.bandAt(3).value() > bench.bandAt(4).value() + 40); // less sure, less bright
        // The later of two runs counts where neither came from the nodes around it.
        bench.service()->storeTracked(4, false, {matte, 0.75F, 9, 0, 2});
        QCOMPARE(bench.presenter.marks().confidenceAt(4), 0.75F);
        bench.press(Qt::Key_Delete);
        bench.press(Qt::Key_End);
        QCOMPARE(bench.segments().nodes().size(), 1);
        QCOMPARE(bench.position(), 0);
        bench.service()->setLocked(false);

        QSignalSpy tracked(&bench.presenter, &ZkStudioTimelinePresenter::sigFrameTracked);
        QCOMPARE(bench.track(0), 0);
        QCOMPARE(tracked.count(), EditClip::frames);
        for (qint64 frame = 0; frame < EditClip::frames; ++frame)
            QVERIFY(bench.presenter.marks().confidenceAt(frame) > 0.3F);
        QVERIFY(bench.undo()->undo());
        QCOMPARE(bench.presenter.marks().confidenceAt(9), -1.0F);
        QCOMPARE(bench.bandAt(9), none);
    }

    void doubtIsMarked()
    {
        TimelineBench bench;
        QVERIFY(bench.giveNodes({0}));
        const EncodedMatte matte(EditClip::instance().matte(3));
        const quint64 revision = bench.segments().node(0)->revision;
        const QImage sure = bench.grab();
        bench.service()->setLocked(true);
        for (qint64 frame = 1; frame < EditClip::frames; ++frame)
            bench.service()->storeTracked(
                frame, true, {matte, frame < 9 ? 0.9F : 0.2F, 0, revision, 1});
        bench.service()->reportChange();
        QCOMPARE(bench.presenter.frameToCorrect(), qint64(-1)); // not yet
        bench.service()->setLocked(false);
        bench.service()->reportChange();
        QCOMPARE(bench.presenter.frameToCorrect(), qint64(9));
        const QPoint mark = bench.at(9, bench.canvas()->height() - 16);
        QCOMPARE(bench.grab().pixelColor(mark + QPoint(3, -4)),
                 ZkSkinManager::instance()->color(ZKSKIN::RemoveStroke));
        QHelpEvent event(QEvent::ToolTip, mark, bench.canvas()->mapToGlobal(mark));
        QApplication::sendEvent(bench.canvas(), &event);
        QCOMPARE(QToolTip::text(), QStringLiteral("Least certain here: check this frame"));
        bench.moveMouse(mark);
        QCOMPARE(bench.canvas()->cursor().shape(), Qt::PointingHandCursor);
        QTest::mouseClick(bench.canvas(), Qt::LeftButton, {}, mark + QPoint(6, 0));
        QCOMPARE(bench.position(), 9);
        QTest::mouseDClick(bench.canvas(), Qt::LeftButton, {}, mark + QPoint(6, 0));
        QCOMPARE(bench.presenter.frameToCorrect(), qint64(9));
        // A correction there takes it away, and undo brings it back.
        QVERIFY(bench.giveTruth(9));
        QCOMPARE(bench.presenter.frameToCorrect(), qint64(-1));
        QVERIFY(bench.undo()->undo());
        QCOMPARE(bench.presenter.frameToCorrect(), qint64(9));
        ZkStudioTimelinePresenter opened;
        opened.setTimeline(bench.timeline());
        QCOMPARE(opened.frameToCorrect(), qint64(9));
        // Once more, when it is there: it is right as it is, until it is tracked again.
        QTest::mouseClick(bench.canvas(), Qt::LeftButton, {}, mark + QPoint(6, 0));
        QCOMPARE(bench.presenter.frameToCorrect(), qint64(-1));
        QCOMPARE(bench.position(), 9);
        bench.service()->storeTracked(9, true, {matte, 0.1F, 0, revision, 1});
        bench.service()->reportChange();
        QCOMPARE(bench.presenter.frameToCorrect(), qint64(9));
        // Where nothing can be corrected it is of no use.
        bench.service()->setEnabled(false);
        bench.service()->reportChange();
        QCOMPARE(bench.presenter.frameToCorrect(), qint64(-1));
        bench.moveMouse(mark + QPoint(0, 1));
        QCOMPARE(bench.canvas()->cursor().shape(), Qt::ArrowCursor);
    }

    void assistiveTechnology()
    {
        TimelineBench bench;
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(bench.canvas());
        QVERIFY(face && face->valueInterface());
        QCOMPARE(face->role(), QAccessible::Slider);
        QVERIFY(!face->text(QAccessible::Name).isEmpty());
        face->valueInterface()->setCurrentValue(6);
        QCOMPARE(bench.position(), 6);
        QCOMPARE(face->valueInterface()->currentValue().toInt(), 6);
        QCOMPARE(face->valueInterface()->maximumValue().toInt(), EditClip::frames - 1);
        QCOMPARE(face->text(QAccessible::Value), QStringLiteral("00:00:00:06"));
    }
};

ZK_TEST_MAIN(ZkStudioTimelineViewTest)
#include "ZkStudioTimelineViewTest.moc"
