// The view as a whole, and the progress over the player.
#include "WorkspaceView.h"

class ReadyPresenter : public ZkSmartKeyingPresenter
{
public:
    using ZkSmartKeyingPresenter::ZkSmartKeyingPresenter;
    void init() override { note("init"); }
    void openEditTimeline() override { note("open"); }
};

class ZkSmartKeyingPlayerViewTest : public QObject
{
    Q_OBJECT

private slots:
    void stacksItsParts()
    {
        WorkspaceView space;
        const QRect whole = space.view->rect();
        QCOMPARE(space.presenter->view(), space.view);
        QCOMPARE(space.header()->geometry(), QRect(0, 0, whole.width(), 40));
        QCOMPARE(space.surface()->geometry(), whole.adjusted(0, 40, 0, -40));
        QCOMPARE(space.bar()->geometry(), QRect(0, whole.height() - 40, whole.width(), 40));
        for (const ZkRoundAreaInfo &area : {space.view->topArea(), space.view->bottomArea()}) {
            QVERIFY(area.height == 40 && area.colorType == 11 && area.roundType == 2);
            QVERIFY(area.radius == 6 && area.horizontalMargin == 0 && area.verticalMargin == 0);
        }
    }

    void opensTheClipInTheEnd()
    {
        Workspace space;
        for (const bool readable : {true, false}) {
            space.clip.hasSource = readable;
            ReadyPresenter presenter(ZKSMARTKEYING::SmartCutout, &space.clip);
            ZkSmartKeyingPlayerView view(&presenter, nullptr);
            const QStringList calls = takeJournal();
            QCOMPARE(calls.mid(calls.indexOf(QStringLiteral("init"))),
                     readable ? lines("init\nopen") : lines("init"));
            // Without anything to edit, too, there is nothing to stumble over.
            view.findChild<ZkSmartKeyingHeaderToolBar *>()->button(6)->click();
            presenter.setPlayerEditMode(ZkSmartKeyingPresenter::RemoveMode);
        }
        EditController::living = space.controller;
    }

    void hasAnEmptyBarForAStillImage()
    {
        WorkspaceView space(ZKSMARTKEYING::SmartCutout, ZKTIMELINE::ImageClip);
        QCOMPARE(space.view->bottomArea().height, 40);
        QWidget *const empty = space.view->childAt(10, space.view->height() - 20);
        QVERIFY(!space.bar() && empty && empty->children().isEmpty() && empty->height() == 40);
        space.view->setToolBarEnabled(false);
        QVERIFY(!empty->isEnabled());
    }

    void enablesItsParts()
    {
        WorkspaceView space;
        for (const bool enabled : {false, true}) {
            space.view->setDrawingEnabled(enabled);
            space.view->setHeaderToolBarEnabled(enabled);
            space.view->setToolBarEnabled(enabled);
            QCOMPARE(space.canvas()->isEnabled(), enabled);
            QCOMPARE(space.canvas()->cursor().shape(),
                     enabled ? Qt::BitmapCursor : Qt::ArrowCursor);
            QCOMPARE(space.header()->isEnabled(), enabled);
            QCOMPARE(space.bar()->isEnabled(), enabled);
        }
        delete space.canvas();
        space.view->setDrawingEnabled(true);
    }

    void showsTheProgress()
    {
        WorkspaceView space;
        auto *const overlay = space.find<ZkSmartKeyingProgressOverlayWidget>();
        const auto *const bar = overlay->findChild<QProgressBar *>();
        const auto *const label = space.find<ZkLabel>("barLabel");
        const auto shows = [=](int percent) {
            return bar->value() == percent && label->text() == QStringLiteral("%1%").arg(percent);
        };
        QVERIFY(!overlay->isVisible() && shows(0));
        emit space.presenter->sigSegmentProgressValueChanged(50);
        QVERIFY(shows(50));
        // On screen before the signal returns: what follows blocks the thread.
        emit space.presenter->sigSegmentProgressStatusChanged(true);
        QVERIFY(overlay->isVisible() && shows(0));
        QVERIFY(QTest::qWaitForWindowExposed(overlay));
        const QRect player(space.surface()->mapToGlobal(QPoint(0, 0)), space.surface()->size());
        const QPoint place(player.center().x() - overlay->width() / 2,
                           player.bottom() - overlay->height() / 2 - 24);
        QTRY_COMPARE(overlay->pos(), place);
        QCOMPARE(label->parentWidget()->height(), 24);
        QCOMPARE(label->width(), 30);
        emit space.presenter->sigSegmentProgressStatusChanged(false);
        QVERIFY(!overlay->isVisible());
        for (const bool shown : {false, true}) {
            emit space.presenter->sigSegmentProgressStatusChanged(true);
            emit space.presenter->sigSegmentProgressValueChanged(100);
            QVERIFY(shows(100));
            space.view->setVisible(shown);
            QVERIFY(!overlay->isVisible() && shows(0));
        }
        QObject thrower;
        connect(bar, &QProgressBar::valueChanged, &thrower, [] { throw std::bad_alloc(); });
        emit space.presenter->sigSegmentProgressValueChanged(33);
        QCOMPARE(bar->value(), 33);
    }
};

ZK_TEST_MAIN(ZkSmartKeyingPlayerViewTest)
#include "ZkSmartKeyingPlayerViewTest.moc"
