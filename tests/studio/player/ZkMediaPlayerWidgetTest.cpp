#include "PlayerBench.h"

#include "player/ZkMediaPlayerWidget.h"
#include "widgets/ZkSkin.h"

#include <QApplication>
#include <QWheelEvent>

#include <optional>

using zk::test::PlayerBench;

namespace {

class Widget : public ZkMediaPlayerWidget
{
public:
    explicit Widget(ZkMediaPlayerPresenter *presenter)
    {
        resize(640, 400);
        setPresenter(presenter);
        show();
    }
    void turn(int angle, const QPointF &at, Qt::KeyboardModifiers modifiers = {})
    {
        ZkVblPlayerWidget *surface = vblPlayerWidget();
        QWheelEvent event(at,
                          surface->mapToGlobal(at.toPoint()),
                          QPoint(),
                          QPoint(0, angle),
                          Qt::NoButton,
                          modifiers,
                          Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(surface, &event);
    }
    // Two fingers, 100 widget pixels apart, change their distance to that many times as much.
    void pinch(double factor, const QPoint &at)
    {
        ZkVblPlayerWidget *surface = vblPlayerWidget();
        const QPoint off(qRound(50 * factor), 0);
        const auto touch = [&] { return QTest::touchEvent(surface, touchScreen()); };
        touch().press(0, at - QPoint(50, 0), surface).press(1, at + QPoint(50, 0), surface);
        touch().move(0, at - QPoint(51, 0), surface).move(1, at + QPoint(51, 0), surface);
        touch().move(0, at - off, surface).move(1, at + off, surface);
        touch().release(0, at - off, surface).release(1, at + off, surface);
    }
    static QTouchDevice *touchScreen()
    {
        static QTouchDevice *device = QTest::createTouchDevice();
        return device;
    }
    QImage shown() { return vblPlayerWidget()->grab().toImage(); }
};

// Where the source point under that widget point is, in pixels of the source.
QPointF sourcePoint(const ZkMediaPlayerPresenter &player, const QPointF &at)
{
    const QRectF frame = player.zoomer()->frameRect();
    return (at - frame.topLeft()) / double(player.zoomer()->zoomLevel(true));
}

} // namespace

// The picture on screen, and what the wheel and pinches do to it.
class ZkMediaPlayerWidgetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_notice = std::make_unique<zk::test::ExpectedMessage>(
            QStringLiteral("^This plugin does not support"));
        QString error;
        QVERIFY2(zk::media::SampleClip({QSize(160, 90), 4, 24}).write(m_video, QString(), &error),
                 qPrintable(error));
    }
    void cleanupTestCase() { m_notice.reset(); }
    void init()
    {
        m_timeline = ZkStudioTimeline::fromMediaFile(m_video, nullptr);
        player.emplace();
        widget.emplace(&player->presenter);
        QVERIFY(QTest::qWaitForWindowExposed(&*widget));
        QVERIFY(player->openAndShow(*m_timeline));
    }
    void cleanup()
    {
        widget.reset();
        player.reset();
    }

    void showsThePicture_data()
    {
        QTest::addColumn<float>("level");
        QTest::newRow("fitted") << 0.0F;
        QTest::newRow("shrunk") << 0.3F;
        QTest::newRow("shrunk much") << 0.15F;
        QTest::newRow("100 %") << 1.0F;
        QTest::newRow("150 %") << 1.5F;
        QTest::newRow("800 %") << 8.0F;
    }
    void showsThePicture()
    {
        QFETCH(float, level);
        player->presenter.zoomer()->zoom(level, QPointF(100, 60));
        const QImage shown = widget->shown();
        const int ratio = qRound(shown.devicePixelRatio());
        const QRect frame = player->presenter.zoomer()->frameRect().toRect();
        const bool isSmooth = frame.width() * ratio <= 2 * 160;
        const bool isExact = !isSmooth || frame.width() * ratio == 160;
        const QImage expected = player->d.picture().scaled(frame.size() * ratio,
                                                           Qt::IgnoreAspectRatio,
                                                           isSmooth ? Qt::SmoothTransformation
                                                                    : Qt::FastTransformation);
        const QColor canvas = ZkSkinManager::instance()->color(ZKSKIN::Canvas);
        int differing = 0;
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                const QPoint at = QPoint(x, y) - frame.topLeft() * ratio;
                const bool isInside = expected.rect().contains(at);
                const QColor wanted = isInside ? expected.pixelColor(at) : canvas;
                const int off = qAbs(shown.pixelColor(x, y).green() - wanted.green());
                differing += off > (isInside && !isExact ? 24 : 0) ? 1 : 0;
            }
        }
        // Two ways of interpolating differ along edges.
        QVERIFY2(differing <= (isExact ? 0 : expected.width() * expected.height() / 50),
                 qPrintable(QString::number(differing)));
    }

    void showsTheNewest()
    {
        player->presenter.zoomer()->zoom(4, {}); // a pixel is a square of 4
        const QPoint middle = player->presenter.zoomer()->frameRect().toRect().center();
        const QImage before = widget->shown();
        player->presenter.seek(3);
        QVERIFY(player->waitFor(player->finished));
        const QImage after = widget->shown();
        QVERIFY(after != before);
        QCOMPARE(after.pixelColor(middle * after.devicePixelRatio()),
                 player->d.picture().pixelColor(79, 44));
        player->presenter.mediaPlayer()->detachSource();
        QVERIFY(player->d.picture().isNull());
        QImage blank = after;
        blank.fill(ZkSkinManager::instance()->color(ZKSKIN::Canvas));
        QCOMPARE(widget->shown(), blank);
    }

    void zoomsAboutThePointer()
    {
        const QPointF pointer(150, 120);
        player->presenter.zoomer()->zoom(4.01F, {});
        for (const int angle : {120, 240, -360, 60, 60, 15}) {
            const QPointF before = sourcePoint(player->presenter, pointer);
            widget->turn(angle, pointer, angle > 200 ? Qt::ControlModifier : Qt::NoModifier);
            const QPointF off = sourcePoint(player->presenter, pointer) - before;
            QVERIFY(off.manhattanLength() < 0.5);
        }
        QCOMPARE(player->presenter.zoomer()->zoomLevel(true), 6.0F); // 6, 8, 4, -, 6, -
        widget->turn(-15 - 240, {0, 0}); // the corner is no null point
        widget->turn(240, {0, 0});
        QVERIFY(sourcePoint(player->presenter, {0, 0}).manhattanLength() < 0.5);
        player->presenter.setZoomEnabled(false);
        widget->turn(-240, pointer);
        QVERIFY(player->presenter.zoomer()->zoomLevel(true) > 4);
    }

    void sticks()
    {
        const auto level = [this] { return player->presenter.zoomer()->zoomLevel(false); };
        player->presenter.zoomer()->zoom(0.9F, {});
        widget->pinch(1.1, {100, 100});
        QCOMPARE(level(), 1.0F);
        widget->turn(360, {100, 100});
        QCOMPARE(level(), 3.0F); // 100 % was where it started
        widget->turn(240, {100, 100}); // across the fitted view, which is 400 %
        QCOMPARE(level(), 0.0F);
        widget->turn(120, {100, 100});
        QCOMPARE(level(), 6.0F);
        widget->vblPlayerWidget()->setZoomAdsorbEnabled(false);
        widget->turn(-240, {100, 100});
        widget->turn(120, {100, 100});
        QCOMPARE(level(), 4.0F);
        widget->pinch(0.5, {100, 100});
        QVERIFY(qAbs(level() - 2) < 0.1F);
    }

    void tellsTheViewport()
    {
        QVERIFY(player->presenter.zoomer()->frameRect() == QRectF(0, 20, 640, 360));
        widget->resize(320, 300);
        QTRY_COMPARE(player->presenter.zoomer()->frameRect(), QRectF(0, 60, 320, 180));
        player->takeJournal();
        Widget other(nullptr);
        other.resize(480, 270);
        widget->setPresenter(nullptr);
        QCOMPARE(player->presenter.zoomer()->frameRect(), QRectF(0, 0, 160, 90)); // no widget
        other.setPresenter(&player->presenter);
        QTRY_COMPARE(player->presenter.zoomer()->frameRect(), QRectF(0, 0, 480, 270));
        player.reset(); // dies first
        QVERIFY(!other.playerPresenter());
        other.turn(120, {50, 50});
        QCOMPARE(other.shown().pixelColor(240, 135),
                 ZkSkinManager::instance()->color(ZKSKIN::Canvas));
    }

private:
    std::unique_ptr<zk::test::ExpectedMessage> m_notice;
    QTemporaryDir m_dir;
    const QString m_video = m_dir.filePath(QStringLiteral("clip.mkv")); // 160x90, 4 frames
    std::unique_ptr<ZkStudioTimeline> m_timeline;
    std::optional<PlayerBench> player;
    std::optional<Widget> widget;
};

ZK_TEST_MAIN(ZkMediaPlayerWidgetTest)
#include "ZkMediaPlayerWidgetTest.moc"
