// Painting, tracking, applying and leaving, as a user does it.
#include "WorkspaceBench.h"

#include "ZkStudioTimelineView.h"
#include "library/ZkAnalytics.h"
#include "segmentation/ZkMatteTrack.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioEffectList.h"

#include <QCheckBox>
#include <QLabel>
#include <QPointer>
#include <QShortcut>
#include <QSignalSpy>
#include <QSlider>
#include <QStyleOptionSlider>

using zk::app::EditingPage;
using zk::app::WorkspacePage;
using zk::test::WorkspaceBench;
using zk::test::WorkspaceClip;
Q_DECLARE_METATYPE(QMessageBox::StandardButton)

class TestWorkspacePage : public QObject
{
    Q_OBJECT

    std::unique_ptr<WorkspaceBench> m_bench;

    IZkUndoRedoService *undo() const { return m_bench->presenter()->undoRedoService(); }

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<WorkspaceBench>();
        QVERIFY(m_bench->open());
    }
    void cleanup() { m_bench.reset(); }

    void paintsUndoesAndResets()
    {
        QVERIFY(!m_bench->isEnabled("WorkspaceApply") && !m_bench->isEnabled("WorkspaceReset"));
        QSignalSpy busy(m_bench->page, &WorkspacePage::busyChanged);
        m_bench->dragOverObject();
        QTRY_VERIFY_WITH_TIMEOUT(m_bench->hasMask() && m_bench->isIdle(), 10000);
        QCOMPARE(busy.count(), 2);
        QVERIFY(busy.first().first().toBool() && !busy.last().first().toBool());
        QVERIFY(m_bench->isEnabled("WorkspaceApply") && m_bench->isEnabled("WorkspaceReset"));

        m_bench->key(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!m_bench->hasMask());
        QVERIFY(!m_bench->isEnabled("WorkspaceApply"));
        m_bench->page->redo();
        QVERIFY(m_bench->hasMask());

        m_bench->click("WorkspaceReset");
        QVERIFY(m_bench->answer(QMessageBox::Cancel));
        QVERIFY(m_bench->hasMask());
        m_bench->key(Qt::Key_R, Qt::ControlModifier);
        QVERIFY(m_bench->answer(QMessageBox::Discard));
        QVERIFY(!m_bench->presenter()->isUsed());
    }

    // It looks as ever then, so it has to refuse by itself.
    void leavesThePanelAloneDuringAStroke()
    {
        m_bench->presenter()->setProgressEnabled(false);
        auto *const opacity = m_bench->find<QSlider>("WorkspaceOverlayOpacity");
        const int before = opacity->value();
        const auto input = [&] {
            QTest::keyClick(opacity, Qt::Key_Home);
            m_bench->click("WorkspaceApply");
            m_bench->key(Qt::Key_R, Qt::ControlModifier);
        };
        int strokes = 0;
        const auto connection = QObject::connect(
            m_bench->presenter(), &ZkSmartKeyingPresenter::sigSmartKeyingSegmentChanged, [&] {
                strokes += m_bench->page->isSegmenting() ? 1 : 0;
                input();
            });
        QVERIFY(m_bench->paint());
        QVERIFY(strokes > 0);
        QObject::disconnect(connection);
        QCOMPARE(opacity->value(), before);
        QVERIFY(!m_bench->question() && m_bench->closedCount == 0);
        QTest::keyClick(opacity, Qt::Key_Home);
        QVERIFY(opacity->value() < before);
    }

    // A run refuses whatever would change what it reads; keys are no way round that.
    void tracksAndStops()
    {
        QVERIFY(m_bench->paint());
        const int steps = undo()->undoStepCount();
        m_bench->click("WorkspaceTrackForward");
        QVERIFY(m_bench->presenter()->isTrackingMode() && m_bench->page->isBusy());
        QVERIFY(m_bench->find<QWidget>("WorkspaceProgress")->isVisible());
        for (const char *button : {"WorkspaceTrackForward", "WorkspaceApply", "WorkspaceReset"})
            QVERIFY2(!m_bench->isEnabled(button), button);
        QVERIFY(!m_bench->find<QWidget>("WorkspacePropertyPanel")->isEnabled());
        auto *const marks = m_bench->page->findChild<ZkStudioTimelineView *>();
        static_cast<ZkStudioTimelinePresenter *>(marks->viewPresenter())->selectAllNodes();
        for (const int key : {Qt::Key_Space, Qt::Key_Delete, Qt::Key_Right, Qt::Key_BracketRight})
            m_bench->key(key);
        m_bench->key(Qt::Key_Z, Qt::ControlModifier);
        m_bench->page->undo();
        QCOMPARE(undo()->undoStepCount(), steps);
        QCOMPARE(m_bench->service()->maskItemCount(), 1);
        QVERIFY(m_bench->presenter()->isTrackingMode());

        m_bench->key(Qt::Key_Escape);
        QVERIFY(!m_bench->presenter()->isTrackingMode() && !m_bench->page->isBusy());
        QVERIFY(m_bench->find<QWidget>("WorkspaceProgress")->isHidden());

        QSignalSpy progress(m_bench->presenter(), &ZkSmartKeyingPresenter::sigTrackingProgress);
        m_bench->key(Qt::Key_T);
        QVERIFY(m_bench->presenter()->isTrackingMode());
        QTRY_VERIFY_WITH_TIMEOUT(!m_bench->presenter()->isTrackingMode(), 60000);
        QCOMPARE(progress.last().first().toInt(), 100);
        QVERIFY(m_bench->service()->isTracked());
        QVERIFY(m_bench->isEnabled("WorkspaceApply"));
    }

    void saysWhichFrameToCheck()
    {
        using namespace zk::datamodel;
        auto *const timeline =
            static_cast<ZkStudioTimeline *>(m_bench->presenter()->editTimeline());
        auto *const button = m_bench->find<QAbstractButton>("WorkspaceCheckFrame");
        QVERIFY(m_bench->paint());
        QVERIFY(!button->isVisible() && !button->isEnabled());
        const SegmentNodePtr node = timeline->shownService()->segments().node(0);
        for (qint64 frame = 1; frame < WorkspaceClip::frames; ++frame)
            timeline->shownService()->storeTracked(
                frame, true, {node->result, frame < 5 ? 0.9F : 0.1F, 0, node->revision, 1});
        timeline->shownService()->reportChange();
        QVERIFY(button->isVisible() && button->isEnabled());
        QCOMPARE(button->text(), QStringLiteral("Check 00:00:00:05"));
        m_bench->click("WorkspaceCheckFrame");
        QTRY_COMPARE_WITH_TIMEOUT(m_bench->presenter()->currentFrame(), qint64(5), 10000);
        m_bench->key(Qt::Key_Left);
        QTRY_COMPARE_WITH_TIMEOUT(m_bench->presenter()->currentFrame(), qint64(4), 10000);
        m_bench->key(Qt::Key_C, Qt::ShiftModifier);
        QTRY_COMPARE_WITH_TIMEOUT(m_bench->presenter()->currentFrame(), qint64(5), 10000);
        m_bench->click("WorkspaceTrackBoth");
        QVERIFY(!button->isVisible() && m_bench->find<QWidget>("WorkspaceStop")->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!m_bench->page->isBusy(), 60000);
        QCOMPARE(button->isVisible(), timeline->shownService()->frameToCorrect() >= 0);
        QVERIFY(!m_bench->question());
        m_bench->page->undo();
        QVERIFY(button->isVisible());
        m_bench->key(Qt::Key_C, Qt::ShiftModifier);
        QTRY_COMPARE_WITH_TIMEOUT(m_bench->presenter()->currentFrame(), qint64(5), 10000);
        QVERIFY(button->isVisible());
        m_bench->key(Qt::Key_C, Qt::ShiftModifier); // right as it is
        QVERIFY(!button->isVisible());
    }

    void saysWhereTheSceneChanges()
    {
        cleanup();
        m_bench = std::make_unique<WorkspaceBench>(WorkspaceClip::instance().cutPath());
        QVERIFY(m_bench->open());
        QVERIFY(m_bench->paint());
        QSignalSpy progress(m_bench->presenter(), &ZkSmartKeyingPresenter::sigTrackingProgress);
        m_bench->key(Qt::Key_T);
        QTRY_VERIFY_WITH_TIMEOUT(m_bench->question(), 60000);
        QCOMPARE(m_bench->question()->text(), QStringLiteral("The scene changes at 00:00:00:06."));
        QCOMPARE(progress.last().first().toInt(), 100);
        QVERIFY(m_bench->service()->isEraseEnabled(5) && !m_bench->service()->isEraseEnabled(6));
        QVERIFY(m_bench->answer(QMessageBox::Ok));
        // Once.
        m_bench->page->undo();
        m_bench->page->redo();
        QTest::qWait(0);
        QVERIFY(!m_bench->question() && m_bench->isIdle());
    }

    void appliesAndCancelsSaving()
    {
        const zk::test::ExpectedMessage untracked(QStringLiteral("frames have no mask"));
        QVERIFY(m_bench->paint());
        m_bench->click("WorkspaceApply");
        QVERIFY(m_bench->page->isBusy());
        QVERIFY(!m_bench->find<QWidget>("ZkSmartKeyingPlayerView")->isEnabled());
        m_bench->click("WorkspaceStop");
        QTRY_VERIFY_WITH_TIMEOUT(!m_bench->page->isBusy(), 10000);
        QVERIFY(!m_bench->presenter()->isClosing());
        QVERIFY(m_bench->canvas()->isEnabled());
        QVERIFY(!m_bench->timeline->clip()->matteTrack());

        QSignalSpy progress(m_bench->presenter(), &ZkSmartKeyingPresenter::sigSavingProgress);
        m_bench->key(Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(m_bench->waitForClosed());
        QVERIFY(m_bench->wasApplied && !m_bench->page->isOpen());
        QVERIFY(progress.count() > 0);
        QVERIFY(m_bench->timeline->clip()->matteTrack());
        QCOMPARE(m_bench->timeline->undoRedoService()->undoStepCount(), 1);
    }

    void asksBeforeWorkIsLost_data()
    {
        QTest::addColumn<QMessageBox::StandardButton>("answer");
        QTest::addColumn<int>("closed");
        QTest::addColumn<bool>("applied");
        QTest::newRow("keep editing") << QMessageBox::Cancel << 0 << false;
        QTest::newRow("discard") << QMessageBox::Discard << 1 << false;
        QTest::newRow("apply") << QMessageBox::Apply << 1 << true;
    }
    void asksBeforeWorkIsLost()
    {
        const zk::test::ExpectedMessage untracked(QStringLiteral("frames have no mask"));
        QFETCH(QMessageBox::StandardButton, answer);
        QFETCH(int, closed);
        QVERIFY(m_bench->paint());
        QSignalSpy refused(m_bench->page, &WorkspacePage::closeRefused);
        QVERIFY(!m_bench->page->requestClose());
        QVERIFY(!m_bench->page->requestClose());
        QVERIFY(m_bench->answer(answer));
        QTRY_COMPARE_WITH_TIMEOUT(refused.count() + m_bench->closedCount, 1, 10000);
        QCOMPARE(m_bench->closedCount, closed);
        QTEST(m_bench->wasApplied, "applied");
        QTEST(m_bench->timeline->clip()->matteTrack() != nullptr, "applied");
        QCOMPARE(m_bench->page->isOpen(), closed == 0);
    }

    void leavesWithoutAQuestionWhenNothingWasDone()
    {
        m_bench->key(Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!m_bench->question());
        QCOMPARE(m_bench->closedCount, 0);
        QVERIFY(m_bench->waitForClosed());
        QVERIFY(!m_bench->wasApplied);
    }

    // The stroke's own event loop is still running when the page is asked to close.
    void closesAfterTheStrokeThatIsBeingSegmented()
    {
        QStringList order;
        QObject::connect(m_bench->presenter(),
                         &ZkSmartKeyingPresenter::sigSegmentProgressValueChanged,
                         m_bench->page,
                         [this](int percent) {
                             if (percent >= 10)
                                 m_bench->page->closeWithoutAsking();
                         });
        QObject::connect(m_bench->presenter(),
                         &ZkSmartKeyingPresenter::sigDrawingFinished,
                         &m_bench->window,
                         [&] { order.append(QStringLiteral("segmented")); });
        QObject::connect(m_bench->page, &WorkspacePage::closed, &m_bench->window, [&] {
            order.append(QStringLiteral("closed"));
        });
        m_bench->dragOverObject();
        QVERIFY(m_bench->waitForClosed());
        QCOMPARE(order.join(QLatin1Char(' ')), QStringLiteral("segmented closed"));
    }

    void closesInTheMiddleOfWork_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::newRow("tracking") << QByteArray("WorkspaceTrackBoth");
        QTest::newRow("saving") << QByteArray("WorkspaceApply");
    }
    void closesInTheMiddleOfWork()
    {
        QFETCH(QByteArray, button);
        QVERIFY(m_bench->paint());
        m_bench->click(button.constData());
        QVERIFY(m_bench->page->isBusy());
        m_bench->page->closeWithoutAsking();
        m_bench->page->closeWithoutAsking();
        QVERIFY(m_bench->waitForClosed());
        QTest::qWait(0);
        QCOMPARE(m_bench->closedCount, 1);
        QVERIFY(!m_bench->wasApplied && !m_bench->timeline->clip()->matteTrack());
    }

    // The dialog has an event loop of its own, which the page must leave before it goes.
    void closesWhileAColourIsChosen()
    {
        QPointer<ZkColorSelecter> dialog;
        bool wasOpen = false;
        bool isLeft = false;
        QTimer timer;
        connect(&timer, &QTimer::timeout, m_bench->page, [&] {
            dialog = m_bench->page->findChild<ZkColorSelecter *>();
            if (!dialog)
                return;
            timer.stop();
            wasOpen = true;
            m_bench->page->closeWithoutAsking();
        });
        connect(m_bench->page, &EditingPage::leaving, &timer, [&] { isLeft = !dialog; });
        timer.start(1);
        m_bench->clickThroughWindow(
            m_bench->find<QWidget>("ZkSmartKeyingHeaderToolBar_RegionColor_Btn"));
        QVERIFY(wasOpen);
        QVERIFY(m_bench->waitForClosed());
        QVERIFY(isLeft);
    }

    void makesOneStepOfABrushDrag()
    {
        auto *const slider = m_bench->find<QSlider>("WorkspaceBrushWidth");
        ZkSmartKeyingPresenter *const presenter = m_bench->presenter();
        const int before = presenter->penPixelWidth();
        QCOMPARE(slider->value(), before);
        // The handle's middle when the slider is at that value.
        const auto handle = [slider](int value) {
            QStyleOptionSlider option;
            option.initFrom(slider);
            option.orientation = Qt::Horizontal;
            option.minimum = slider->minimum();
            option.maximum = slider->maximum();
            option.sliderPosition = value;
            return slider->style()
                ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider)
                .center();
        };
        WorkspaceBench::drag(slider, {handle(before), handle(100), handle(150)});
        const int after = presenter->penPixelWidth();
        QVERIFY(qAbs(after - 150) <= 3); // a pixel of the slider is more than one of the brush
        QCOMPARE(undo()->undoStepCount(), 1);

        // Undo comes before the burst of keys has ended by itself, and takes it back as a whole.
        m_bench->key(Qt::Key_BracketRight);
        m_bench->key(Qt::Key_BracketRight);
        QCOMPARE(presenter->penPixelWidth(), after + 10);
        m_bench->key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(presenter->penPixelWidth(), after);
        m_bench->key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(presenter->penPixelWidth(), before);
        QCOMPARE(slider->value(), before);
        m_bench->key(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(presenter->penPixelWidth(), after);
    }

    void setsTheOverlaysOpacity()
    {
        auto *const slider = m_bench->find<QSlider>("WorkspaceOverlayOpacity");
        slider->setFocus();
        const int frame = int(m_bench->presenter()->currentFrame());
        QTest::keyClick(slider, Qt::Key_Home);
        QCOMPARE(m_bench->service()->maskRegionAlpha(), 0);
        for (int i = 0; i < 4; ++i)
            QTest::keyClick(slider, Qt::Key_Right);
        QCOMPARE(m_bench->service()->maskRegionAlpha(), 51);
        QCOMPARE(int(m_bench->presenter()->currentFrame()), frame);
    }

    // The help has the keys that there are, and no others.
    void namesItsKeys()
    {
        QStringList live;
        for (const QShortcut *shortcut : m_bench->page->findChildren<QShortcut *>())
            live.append(shortcut->key().toString());
        QStringList named;
        for (const auto &key : WorkspacePage::shortcuts())
            named.append(QKeySequence(key.first).toString());
        live.sort();
        named.sort();
        QCOMPARE(named.join(QLatin1Char(' ')), live.join(QLatin1Char(' ')));
    }

    void opensOnAPicture()
    {
        cleanup();
        m_bench = std::make_unique<WorkspaceBench>(WorkspaceClip::instance().stillPath());
        QVERIFY(m_bench->open());
        QVERIFY(!m_bench->page->findChild<ZkStudioTimelineView *>());
        QVERIFY(m_bench->find<QWidget>("WorkspaceTrackBoth")->isHidden());
        QVERIFY(m_bench->paint());
        m_bench->click("WorkspaceApply");
        QVERIFY(m_bench->waitForClosed());
        QVERIFY(m_bench->wasApplied && m_bench->timeline->clip()->matteTrack());
    }

    void saysWhyItDoesNotOpen()
    {
        cleanup();
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("gone.png"));
        QVERIFY(QFile::copy(WorkspaceClip::instance().stillPath(), path));
        m_bench = std::make_unique<WorkspaceBench>(path);
        QVERIFY(QFile::remove(path));
        QVERIFY(!m_bench->open());
        QVERIFY(m_bench->answer(QMessageBox::Ok));
        QVERIFY(m_bench->waitForClosed());
        QVERIFY(!m_bench->wasApplied);
    }
};

ZK_TEST_MAIN(TestWorkspacePage)
#include "tst_workspace_page.moc"
