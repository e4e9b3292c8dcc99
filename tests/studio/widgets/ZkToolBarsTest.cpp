#include "ZkTestInput.h"
#include "ZkTestMain.h"

#include "ZkMediaPlayer.h"
#include "ZkWidgets.h"

#include <QApplication>
#include <QButtonGroup>
#include <QHBoxLayout>

namespace {

class Player : public QObject, public IZkPlayerControl
{
public:
    int state() const override { return playerState; }
    int duration() const override { return frames; }
    qint64 currentFrame() const override { return frames > 0 ? 7 : -1; }
    float mediaFrameRate() const override { return 25; }
    void playOrPause() override { calls += "playOrPause"; }
    void stopPlay() override { calls += "stopPlay"; }
    void stopAndReturn() override { calls += "stopAndReturn"; }
    void step(int count) override { calls += QString("step %1").arg(count); }
    void seek(int frame) override { calls += QString("seek %1").arg(frame); }
    void addObserver(IZkPlayerControlObserver *observer) override { observers += observer; }
    void removeObserver(IZkPlayerControlObserver *observer) override
    {
        observers.removeOne(observer);
    }
    QStringList takeCalls() { return std::exchange(calls, {}); }

    int playerState = ZKPLAYER::PausedState;
    int frames = 101;
    QStringList calls;
    QVector<IZkPlayerControlObserver *> observers;
};

class PlayerBar : public ZkPlayerToolBarBase
{
public:
    PlayerBar()
        : ZkPlayerToolBarBase(nullptr)
    {
        auto *row = new QHBoxLayout(this);
        for (const int id : {4, 5, 1, 3, 10})
            row->addWidget(baseButton(id));
        row->addWidget(playbackSlider());
    }
    QString shortcutText(int id) const override
    {
        return id == PlayPauseShortcut ? "Space" : QString();
    }
    void durationChanged(int duration) override { told += QString("duration %1").arg(duration); }
    void frameChanged(int frame) override { told += QString("frame %1").arg(frame); }
    void updateToolTip() override { ++toolTipUpdates; }

    QStringList told;
    int toolTipUpdates = 0;
};

} // namespace

class ZkToolBarsTest : public QObject
{
    Q_OBJECT

private slots:
    // What the offscreen platform says about windows of a fixed size.
    void init()
    {
        m_notice = std::make_unique<zk::test::ExpectedMessage>("^This plugin does not support");
    }
    void cleanup() { m_notice.reset(); }

    void zoomSliderReportsTheUser()
    {
        const std::unique_ptr<ZkZoomSlider> zoom(ZkZoomSlider::CreateZoomSlider(nullptr));
        zoom->setFixedSize(144, 24);
        zoom->show();
        QSignalSpy changed(zoom.get(), &ZkZoomSlider::sigValueChanged);
        zoom->setValue(500);
        QCOMPARE(zoom->value(), 100);
        zoom->Add();
        QVERIFY(changed.isEmpty()); // as close as can be
        QTest::mouseClick(zoom->zoomOutButton(), Qt::LeftButton);
        zoom->Sub();
        QTest::mouseClick(zoom->zoomInButton(), Qt::LeftButton);
        QCOMPARE(changed, (QList<QVariantList> {{90}, {80}, {90}}));

        auto *slider = zoom->findChild<QSlider *>();
        QTest::mouseClick(slider, Qt::LeftButton, {}, QPoint(slider->width() / 2, 1));
        QVERIFY(qAbs(zoom->value() - 50) <= 2); // jumps there, even beside the groove
        QVERIFY(!zoom->zoomInButton()->toolTip().isEmpty());
        zoom->zoomInButton()->setToolTip("Mine");
        QEvent language(QEvent::LanguageChange);
        QApplication::sendEvent(zoom.get(), &language);
        QCOMPARE(zoom->zoomInButton()->toolTip(), QString("Mine"));
    }

    void playerBarDrivesThePlayer()
    {
        Player player;
        PlayerBar bar;
        bar.resize(600, 40);
        bar.show();
        QCOMPARE(bar.baseButton(2), nullptr);
        QVERIFY(!bar.baseButton(1)->isEnabled() && !bar.playbackSlider()->isEnabled());
        bar.setPlayerPresenter(&player);
        QCOMPARE(bar.told, QStringList({"duration 101", "frame 7"}));
        QCOMPARE(bar.playbackSlider()->maximum(), 100);
        QCOMPARE(bar.playbackSlider()->value(), 7);
        QVERIFY(player.takeCalls().isEmpty());
        for (const int id : {1, 3, 4, 5, 10})
            QTest::mouseClick(bar.baseButton(id), Qt::LeftButton);
        QCOMPARE(player.takeCalls(),
                 QStringList({"playOrPause", "stopAndReturn", "step -1", "step 1"}));
        QCOMPARE(bar.baseButton(1)->toolTip(), QString("Play (Space)"));
        QVERIFY(bar.baseButton(1)->property("WITH_SHORTCUT").toBool());
        QEvent language(QEvent::LanguageChange);
        QApplication::sendEvent(&bar, &language);
        QCOMPARE(bar.toolTipUpdates, 1);
    }

    void sliderFollowsAndSeeks()
    {
        Player player;
        PlayerBar bar;
        bar.resize(600, 40);
        bar.show();
        bar.setPlayerPresenter(&player);
        QSlider *slider = bar.playbackSlider();
        player.observers.first()->playerFrameChanged(60);
        QCOMPARE(slider->value(), 60);
        QVERIFY(player.takeCalls().isEmpty());

        const int y = slider->height() / 2;
        QTest::mousePress(slider, Qt::LeftButton, {}, QPoint(0, y));
        QCOMPARE(player.takeCalls(), QStringList("seek 0"));
        player.observers.first()->playerFrameChanged(33); // late news
        QCOMPARE(slider->value(), 0);
        zk::test::drag(slider, QPoint(slider->width(), y));
        QTest::mouseRelease(slider, Qt::LeftButton, {}, QPoint(slider->width(), y));
        QCOMPARE(player.takeCalls(), QStringList("seek 100"));

        player.frames = 0;
        player.observers.first()->playerDurationChanged(0);
        QVERIFY(!slider->isEnabled() && !bar.baseButton(4)->isEnabled());
        QVERIFY(bar.baseButton(10)->isEnabled());
    }

    void playButtonShowsTheState()
    {
        auto player = std::make_unique<Player>();
        auto bar = std::make_unique<PlayerBar>();
        bar->setPlayerPresenter(player.get());
        QCOMPARE(bar->baseButton(1)->iconName(), QString("play"));
        player->playerState = ZKPLAYER::PlayingState;
        player->observers.first()->playerStateChanged(ZKPLAYER::PlayingState);
        QCOMPARE(bar->baseButton(1)->iconName(), QString("pause"));
        QCOMPARE(bar->baseButton(1)->toolTip(), QString("Pause (Space)"));
        const QImage plain = bar->baseButton(1)->grab().toImage();
        bar->setSwitchButtonState(1, PlayerBar::TrackingState);
        bar->setEnabled(false);
        QCOMPARE(bar->switchButtonState(1), 2);
        const QImage tracking = bar->baseButton(1)->grab().toImage();
        QVERIFY(tracking != plain);
        bar->setEnabled(true);
        QCOMPARE(bar->baseButton(1)->grab().toImage(), tracking); // just as bright
        bar->setSwitchButtonState(1, PlayerBar::PlaybackState);
        QCOMPARE(bar->baseButton(1)->grab().toImage(), plain);

        player.reset(); // first
        QCOMPARE(bar->playerPresenter(), nullptr);
        QVERIFY(!bar->baseButton(1)->isEnabled());
        Player other;
        bar->setPlayerPresenter(&other);
        bar.reset();
        QVERIFY(other.observers.isEmpty());
    }

private:
    std::unique_ptr<zk::test::ExpectedMessage> m_notice;
};

ZK_TEST_MAIN(ZkToolBarsTest)
#include "ZkToolBarsTest.moc"
