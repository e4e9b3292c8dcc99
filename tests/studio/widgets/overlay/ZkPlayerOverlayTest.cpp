#include "widgets/ZkPlayerOverlay.h"
#include "ZkTestMain.h"
#include "widgets/ZkDrawing.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWindow>

#include <memory>

using Helper = ZkPlayerWidgetEventHelper;

// When it is hidden; in ms since this was made.
class Hidings : public QObject
{
public:
    explicit Hidings(QWidget *widget)
    {
        m_clock.start();
        widget->installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Hide)
            times.append(m_clock.elapsed());
        return false;
    }
    QVector<qint64> times;

private:
    QElapsedTimer m_clock;
};

// A window with a player on the first of two tabs, and both kinds of overlays over the player.
class ZkPlayerOverlayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_notice = std::make_unique<zk::test::ExpectedMessage>(
            QStringLiteral("^This plugin does not support raise"));
    }
    void cleanupTestCase() { m_notice.reset(); }
    void init()
    {
        window = std::make_unique<QWidget>();
        window->setGeometry(100, 80, 500, 400);
        tabs = new QTabWidget(window.get());
        tabs->setGeometry(20, 10, 400, 300);
        player = new QWidget;
        page = new QWidget;
        player->setParent(page);
        player->setGeometry(5, 6, 320, 180);
        tabs->addTab(page, QString());
        tabs->addTab(new QWidget, QString());
        overlay = new ZkPlayerOverlayWidget(player, window.get());
        overlay->resize(100, 50);
        canvas = new ZkDrawingWidget(player);
        canvas->setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
        helper = new Helper(canvas, player, canvas);
        helper->updateTopWidget(player);
    }
    void cleanup() { window.reset(); }

    void waitsForThePlayer()
    {
        canvas->setVisible(true);
        overlay->setWidVisible(true);
        QTest::qWait(20);
        QVERIFY(!areShown());
        window->show();
        QVERIFY(!areShown()); // the window is not on screen as long as it has not been painted
        QTRY_VERIFY(areShown());
        QCOMPARE(overlay->windowHandle()->transientParent(), window->windowHandle());
        QCOMPARE(canvas->windowHandle()->transientParent(), window->windowHandle());
        canvas->setVisible(false);
        overlay->setWidVisible(false);
        QVERIFY(!canvas->isVisible() && !overlay->isVisible());
        canvas->setVisible(true); // at once
        QVERIFY(canvas->isVisible());
        QVERIFY(!canvas->isActiveWindow() && overlay->eventHelper() == Helper::of(overlay));
    }

    void comesBackWhenItAloneIsMinimised()
    {
        showAll();
        for (QWidget *const widget :
             {static_cast<QWidget *>(canvas), static_cast<QWidget *>(overlay)}) {
            widget->setWindowState(Qt::WindowMinimized);
            QVERIFY(widget->isMinimized());
            QTRY_VERIFY(!widget->isMinimized() && widget->isVisible());
        }
        QVERIFY(areShown());
    }

    void staysShownInTheEndThoughItIsNeverSeen()
    {
        overlay->resize(0, 0); // never on screen, as if the window manager had forgotten it
        const Hidings hidings(overlay);
        showAll();
        if (QTest::qWaitForWindowExposed(overlay, 500))
            QSKIP("this platform puts windows without a pixel on screen");
        QTRY_COMPARE_WITH_TIMEOUT(hidings.times.size(), 3, 20000);
        QVERIFY(hidings.times.at(0) > 500); // as a slow machine needs
        QVERIFY(hidings.times.at(2) - hidings.times.at(1) > 2000);
        QTRY_VERIFY(areShown());
        overlay->resize(100, 50);
        QTRY_VERIFY(overlay->windowHandle()->isExposed());
        QCOMPARE(hidings.times.size(), 3);
    }

    void comesAndGoesWithThePlayer_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("tab") << 0;
        QTest::newRow("player") << 1;
        QTest::newRow("window") << 2;
        QTest::newRow("minimised") << 3;
    }
    void comesAndGoesWithThePlayer()
    {
        QFETCH(int, way);
        showAll();
        const auto take = [&](bool away) {
            if (way == 0)
                tabs->setCurrentIndex(away ? 1 : 0);
            else if (way == 1)
                player->setVisible(!away);
            else if (way == 2)
                window->setVisible(!away);
            else
                window->setWindowState(away ? Qt::WindowMinimized : Qt::WindowNoState);
        };
        take(true);
        QVERIFY(!canvas->isVisible() && !overlay->isVisible());
        overlay->setVisible(false);
        overlay->setVisible(true); // only wished for
        QTest::qWait(20);
        QVERIFY(!canvas->isVisible() && !overlay->isVisible());
        take(false);
        QTRY_VERIFY(areShown());
        take(true);
        canvas->setVisible(false);
        take(false);
        QTRY_VERIFY(overlay->isVisible());
        QVERIFY(!canvas->isVisible());
    }

    void followsThePlayer()
    {
        showAll();
        QTRY_VERIFY(isInPlace());
        QSignalSpy moves(helper, &Helper::sigMove);
        QSignalSpy resizes(helper, &Helper::sigPlayerResize);
        window->move(160, 120);
        QTRY_VERIFY(isInPlace());
        QVERIFY(!moves.isEmpty() && resizes.isEmpty());
        for (QWidget *moved : {static_cast<QWidget *>(tabs), player}) {
            moves.clear();
            moved->move(30, 40);
            QTRY_COMPARE(moves.size(), 1);
            QVERIFY(isInPlace());
        }
        player->resize(200, 100);
        QTRY_COMPARE(resizes.size(), 1);
    }

    void followsIntoAnotherWindow()
    {
        showAll();
        QWidget other;
        other.setGeometry(300, 200, 400, 300);
        other.show();
        page->setParent(&other);
        QTest::qWait(20);
        QVERIFY(!canvas->isVisible() && !overlay->isVisible());
        page->show();
        QTRY_VERIFY(areShown());
        QCOMPARE(overlay->windowHandle()->transientParent(), other.windowHandle());
        QCOMPARE(canvas->windowHandle()->transientParent(), other.windowHandle());
        other.move(10, 20);
        QTRY_VERIFY(isInPlace());
        QSignalSpy moves(helper, &Helper::sigMove);
        window->move(0, 0);
        QTest::qWait(20);
        QVERIFY(moves.isEmpty());
        other.hide();
        QVERIFY(!canvas->isVisible() && !overlay->isVisible());
    }

    void outlivesThePlayer()
    {
        showAll();
        delete player;
        QTRY_VERIFY(!overlay->isVisible());
        overlay->setWidVisible(true);
        QVERIFY(!overlay->isVisible() && !overlay->playerWidget());
        const std::unique_ptr<Helper> detached(
            new Helper(new QWidget(window.get()), window.get(), nullptr));
        window.reset();
        detached->setOverlayVisible(true);
        QVERIFY(!detached->isPlayerOnScreen());
    }

private:
    void showAll()
    {
        window->show();
        canvas->setVisible(true);
        overlay->setWidVisible(true);
        QTRY_VERIFY(areShown());
    }
    bool areShown() const { return canvas->isVisible() && overlay->isVisible(); }
    bool isInPlace() const { return overlay->pos() == player->mapToGlobal(QPoint(0, 0)); }

    std::unique_ptr<zk::test::ExpectedMessage> m_notice;
    std::unique_ptr<QWidget> window;
    QTabWidget *tabs = nullptr;
    QWidget *page = nullptr;
    QWidget *player = nullptr;
    ZkPlayerOverlayWidget *overlay = nullptr;
    ZkDrawingWidget *canvas = nullptr;
    Helper *helper = nullptr;
};

ZK_TEST_MAIN(ZkPlayerOverlayTest)
#include "ZkPlayerOverlayTest.moc"
