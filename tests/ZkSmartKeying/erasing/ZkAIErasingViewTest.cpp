// Tools, list, toolbars and the start of the task.
#include "ErasingView.h"

#include "erasing/ZkAIErasingHeaderToolBar.h"
#include "erasing/ZkAIErasingItemWidget.h"
#include "erasing/ZkAIErasingListWidget.h"
#include "erasing/ZkAIErasingPlayerToolBar.h"
#include "erasing/ZkAIErasingProressDialog.h"

#include "ZkAccount.h"

#include <QSignalSpy>
#include <QSlider>
#include <QStackedWidget>

using Header = ZkAIErasingHeaderToolBar;
using Presenter = ZkAIErasingPresenter;

class ZkAIErasingViewTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_space = std::make_unique<ErasingView>(); }
    void cleanup()
    {
        m_space.reset();
        ZkAccount::instance()->logOut();
    }

    void opensOnTheMagicBox()
    {
        QCOMPARE(m_space->erasing->playerEditMode(), Presenter::SelectRectMode);
        QVERIFY(tool("Magic Box")->isChecked());
        QVERIFY(!tool("Eraser")->isEnabled());
        QVERIFY(!m_space->find<ZkSpinBoxSlider>()->isVisible());
        QVERIFY(!create()->isEnabled());
        QVERIFY(m_space->player->opened.handle != 0);
    }

    void choosesTools_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<int>("nodes");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("reloads");
        QTest::addColumn<QString>("usage");
        QTest::newRow("box") << QByteArray("Magic Box") << 0 << 5 << 0 << "frame";
        QTest::newRow("box, one node") << QByteArray("Magic Box") << 1 << 5 << 1 << "frame";
        QTest::newRow("brush") << QByteArray("Smart Brush") << 0 << 1 << 1 << "brush";
        QTest::newRow("brush, one node") << QByteArray("Smart Brush") << 1 << 1 << 2 << "brush";
        QTest::newRow("eraser, one node") << QByteArray("Eraser") << 1 << 3 << 1 << "eraser";
    }
    void choosesTools()
    {
        QFETCH(QByteArray, button);
        QFETCH(int, nodes);
        QFETCH(int, mode);
        QFETCH(int, reloads);
        QFETCH(QString, usage);
        m_space->service->erasableFrame = m_space->erasing->currentFrame();
        if (nodes > 0)
            m_space->segment({0});
        emit m_space->erasing->sigFrameChanged(0);
        QSignalSpy reload(m_space->erasing, &Presenter::sigNeedReloadAllData);
        takeJournal();
        QTest::mouseClick(tool(button.constData()), Qt::LeftButton);
        QCOMPARE(int(m_space->erasing->playerEditMode()), mode);
        QCOMPARE(reload.count(), reloads);
        QVERIFY(tool(button.constData())->isChecked());
        QCOMPARE(noted("event smart_mask_bar").filter("btn_name=" + usage).size(), 1);
        QCOMPARE(m_space->find<ZkSpinBoxSlider>()->isEnabled(), mode != 5);
        QCOMPARE(m_space->find<ZkSpinBoxSlider>()->isVisible(), mode != 5 || nodes > 0);
        // Set elsewhere, the mode moves the tool without a signal.
        QSignalSpy changed(m_space->tools(), &ZkAIErasingSettingView::sigToolChanged);
        m_space->erasing->setPlayerEditMode(Presenter::HandMode);
        QVERIFY(!tool(button.constData())->isChecked());
        QCOMPARE(changed.count(), 0);
    }

    void fallsBackFromTheEraser()
    {
        QSignalSpy changed(m_space->tools(), &ZkAIErasingSettingView::sigToolChanged);
        m_space->tools()->setTool(ZkAIErasingSettingView::EraserTool);
        QCOMPARE(changed.takeFirst().first().toInt(), 0);
        QVERIFY(tool("Magic Box")->isChecked());
    }

    void resetsTheBrushSize()
    {
        m_space->erasing->setPlayerEditMode(Presenter::KeepMode);
        auto *const slider = m_space->find<ZkSpinBoxSlider>();
        auto *const reset = m_space->find<QWidget>("ZkWidgets_ResetToolBtn");
        const int size = m_space->erasing->defaultPenPixelWidth();
        slider->setValue(size + 3);
        QCOMPARE(m_space->erasing->penPixelWidth(), size + 3);
        QVERIFY(reset->isVisible());
        QTest::mouseClick(reset, Qt::LeftButton);
        QCOMPARE(m_space->erasing->penPixelWidth(), size);
        QVERIFY(!reset->isVisible());
        m_space->erasing->setPenPixelWidth(size + 1);
        QCOMPARE(int(slider->value()), size + 1);
    }

    void listsTheNodes()
    {
        m_space->segment({5, 90});
        emit m_space->erasing->sigNeedReloadAllData();
        auto *const list = m_space->find<ZkAIErasingListWidget>();
        QTRY_COMPARE(list->count(), 2);
        QCOMPARE(list->rowWidget(1)->timeText(), m_space->erasing->frame2Time(90));
        m_space->segment({40});
        emit m_space->erasing->sigNodeChanged(40);
        QTRY_COMPARE(list->count(), 3);
        QCOMPARE(list->rowWidget(1)->frame(), qint64(40));
        QTest::mouseClick(list->rowWidget(2), Qt::LeftButton);
        QCOMPARE(m_space->controller->editTimeline()->playhead()->position(), qint64(90));
        LogJournal log;
        takeJournal();
        QTest::mouseClick(list->rowWidget(1)->findChild<QPushButton *>("ZkAIErasingDeleteBtn"),
                          Qt::LeftButton);
        emit m_space->erasing->sigNodeChanged(40);
        QTRY_COMPARE(list->count(), 2);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(noted("log 4 ZkAIErasingItemWidget::~ZkAIErasingItemWidget"),
                 QStringList {QStringLiteral("log 4 ZkAIErasingItemWidget::~ZkAIErasingItemWidget: "
                                             "ZkAIErasingItemWidget destory")});
        QCOMPARE(list->rowWidget(1)->frame(), qint64(90));
        QVERIFY(list->rowWidget(0)->findChild<QLabel *>()->isVisibleTo(list));
    }

    void goesThroughTheHistory()
    {
        takeJournal();
        header()->button(Header::UndoButton)->click();
        QTest::keyClick(m_space->view, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(noted("scene|event"), QStringList());
        m_space->crops->addCropRect({10, 10, 100, 100});
        QTRY_VERIFY(header()->button(Header::UndoButton)->isEnabled());
        takeJournal();
        QTest::mouseClick(header()->button(Header::UndoButton), Qt::LeftButton);
        QCOMPARE(m_space->crops->getCropCount(), 0);
        QCOMPARE(noted("scene|event"),
                 lines("scene(4102)\nevent smart_mask_bar_btn_click btn_name=undo "
                       "file_type=video"));
        QTest::keyClick(m_space->view, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(m_space->crops->getCropCount(), 1);
        QCOMPARE(noted("scene|event"), QStringList {"scene(4102)"});
    }

    void movesAndZoomsTheFrame()
    {
        auto *const hand = header()->button(Header::MoveFrameButton);
        m_space->erasing->setPlayerEditMode(Presenter::KeepMode);
        QTest::mouseClick(hand, Qt::LeftButton);
        QCOMPARE(m_space->erasing->playerEditMode(), Presenter::HandMode);
        QVERIFY(hand->isChecked());
        QTest::mouseClick(hand, Qt::LeftButton);
        QCOMPARE(m_space->erasing->playerEditMode(), Presenter::SelectRectMode);
        QVERIFY(!hand->isChecked());
        m_space->player->zoomLevel = 1.37F;
        emit m_space->erasing->sigFrameZoomed();
        auto *const box = header()->findChild<ZkComboBox *>();
        QCOMPARE(box->currentText(), QStringLiteral("137%"));
        QVERIFY(box->isRowHidden(box->currentIndex()));
        QCOMPARE(noted("zoomer.zoom"), QStringList());
        QTest::keyClick(m_space->view, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(noted("zoomer.zoom"), QStringList {"zoomer.zoom(0,0,0)"});
    }

    void showsNoTimeOfAStill()
    {
        auto *bar = m_space->find<ZkAIErasingPlayerToolBar>();
        QVERIFY(bar->findChild<QSlider *>());
        m_space->track(true);
        QCOMPARE(bar->switchButtonState(ZkPlayerToolBarBase::PlayPauseButton),
                 int(ZkPlayerToolBarBase::TrackingState));
        m_space.reset();
        m_space = std::make_unique<ErasingView>(ZKTIMELINE::ImageClip);
        bar = m_space->find<ZkAIErasingPlayerToolBar>();
        QVERIFY(!bar->findChild<QSlider *>());
        m_space->segment({0});
        emit m_space->erasing->sigNeedReloadAllData();
        auto *const list = m_space->find<ZkAIErasingListWidget>();
        QTRY_COMPARE(list->count(), 1);
        QVERIFY(!list->rowWidget(0)->findChild<QLabel *>()->isVisibleTo(list));
    }

    void startsTheTask()
    {
        QSignalSpy started(m_space->view, &ZkAIErasingView::sigStartTask);
        m_space->crops->addCropRect({10, 10, 100, 100});
        QVERIFY(create()->isEnabled());
        LogJournal log;
        bool asked = false;
        ZkCustomEventListener login(QStringLiteral("NotifyLogin"),
                                    [&asked](const ZkCustomEvent &) { return asked = true; });
        QTest::mouseClick(create(), Qt::LeftButton);
        QVERIFY(asked);
        QCOMPARE(started.count(), 0);
        QVERIFY(journal().contains(QStringLiteral(
            "log 4 ZkAIErasingView::onCreateButtonClicked: AI Erasing: User not logged in")));
        takeJournal();
        ZkAccount::instance()->logIn(QStringLiteral("somebody"));
        const bool online = ZkNetwork::IsNetworkConnect();
        QTimer::singleShot(0, this, [] {
            if (QWidget *const dialog = QApplication::activeModalWidget())
                dialog->close();
        });
        QTest::mouseClick(create(), Qt::LeftButton);
        QCOMPARE(started.count(), online ? 1 : 0);
        QCOMPARE(noted("event smart_mask_remove").size(), online ? 0 : 1);
        m_space->crops->clearAllCropRects();
        QVERIFY(!create()->isEnabled());
    }

    void waitsForTheTrackingThatTheHostBegins()
    {
        m_space->segment({5});
        ZkAccount::instance()->logIn(QStringLiteral("somebody"));
        connect(m_space->view,
                &ZkAIErasingView::sigStartTask,
                m_space->erasing,
                &Presenter::beginTracking);
        QStringList seen;
        QTimer::singleShot(0, this, [this, &seen] {
            QWidget *const dialog = QApplication::activeModalWidget();
            if (!dialog)
                return;
            seen += dialog->objectName();
            emit m_space->erasing->sigTrackingProgress(37);
            seen += dialog->findChild<QLabel *>("barLabel")->text();
            for (auto *button : dialog->findChildren<ZkPushButton *>()) {
                if (button->text() == QLatin1String("Cancel"))
                    QTest::mouseClick(button, Qt::LeftButton);
            }
        });
        QTest::mouseClick(create(), Qt::LeftButton);
        if (!ZkNetwork::IsNetworkConnect())
            QSKIP("the machine has no network");
        QCOMPARE(seen, (QStringList {"ZkAIErasingProressDialog", "37%"}));
        QVERIFY(!m_space->erasing->isTrackingMode());
        QVERIFY(create()->isEnabled());
    }

    void ignoresUnknownTools()
    {
        m_space->erasing->setPlayerEditMode(Presenter::KeepMode);
        takeJournal();
        for (const int unknown : {-1, 3, 7})
            emit m_space->tools()->sigToolChanged(unknown);
        QCOMPARE(m_space->erasing->playerEditMode(), Presenter::KeepMode);
        QCOMPARE(noted("event"), QStringList());
    }

    void pointsAtTheBox()
    {
        m_space->tools()->hide();
        m_space->tools()->show();
        QVERIFY(!ZkFunctionTips::visibleTip(127));
        QTRY_VERIFY(ZkFunctionTips::visibleTip(127));
        const QWidget *const tip = ZkFunctionTips::visibleTip(127);
        const QWidget *const box = tool("Magic Box");
        QCOMPARE(tip->mapToGlobal(QPoint(0, 0)).y(),
                 box->mapToGlobal(QPoint(0, box->height())).y());
        m_space->tools()->hide();
        QVERIFY(!ZkFunctionTips::visibleTip(127));
    }

    void resetsEverything()
    {
        m_space->segment({5});
        takeJournal();
        QTest::mouseClick(m_space->buttonWithText<ZkPushButton>("Reset"), Qt::LeftButton);
        QCOMPARE(m_space->service->segmentCount(), 0);
        QTRY_VERIFY(!create()->isEnabled());
        QCOMPARE(noted("event").size(), 1);
    }

    void waitsForTracking_data()
    {
        QTest::addColumn<bool>("cancels");
        QTest::addColumn<int>("ms");
        QTest::newRow("to its end") << false << 20;
        QTest::newRow("until it is cancelled") << true << 0;
        QTest::newRow("cancelled after a second") << true << 1050;
    }
    void waitsForTracking()
    {
        QFETCH(bool, cancels);
        QFETCH(int, ms);
        m_space->segment({5});
        ZkAIErasingProressDialog dialog(m_space->erasing, m_space->view);
        m_space->track(false); // of an earlier run
        dialog.show();
        m_space->track(true);
        QVERIFY(dialog.isVisible());
        QTest::qWait(ms);
        takeJournal();
        if (cancels)
            QTest::keyClick(&dialog, Qt::Key_Escape);
        else
            m_space->track(false);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), int(cancels ? QDialog::Rejected : QDialog::Accepted));
        QVERIFY(!m_space->erasing->isTrackingMode());
        QVERIFY(m_space->erasing->trackingDuration() >= ms);
        const QString event = QStringLiteral("result=cancel mask_num=1 duration=%1").arg(ms / 1000);
        QCOMPARE(noted("event").join(QString()).contains(event), cancels);
    }

private:
    ZkButton *tool(const char *text) { return m_space->buttonWithText<ZkButton>(text); }
    ZAIGCCreateButton *create() { return m_space->find<ZAIGCCreateButton>(); }
    Header *header() { return m_space->find<Header>(); }

    std::unique_ptr<ErasingView> m_space;
};

ZK_TEST_MAIN(ZkAIErasingViewTest)
#include "ZkAIErasingViewTest.moc"
