#include "PlayerBench.h"

#include <optional>

namespace {

class Observer : public IZkPlayerControlObserver
{
public:
    void playerStateChanged(int state) override { note("state", state); }
    void playerFrameChanged(int frame) override { note("frame", frame); }
    void playerDurationChanged(int frames) override { note("duration", frames); }
    QString take() { return std::exchange(m_notes, {}).join(QStringLiteral(", ")); }

    std::function<void()> onNotice;

private:
    void note(const char *what, int value)
    {
        m_notes.append(QStringLiteral("%1 %2").arg(QLatin1String(what)).arg(value));
        if (onNotice)
            onNotice();
    }
    QStringList m_notes;
};

} // namespace

// What a bar under the player does with it.
class ZkMediaPlayerControlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QString error;
        QVERIFY2(zk::media::SampleClip({QSize(160, 90), 24, 24}).write(m_video, QString(), &error),
                 qPrintable(error));
    }
    void init()
    {
        m_timeline = ZkStudioTimeline::fromMediaFile(m_video, nullptr);
        m_bench.emplace();
        m_bench->presenter.addObserver(&bar);
    }
    void cleanup() { m_bench.reset(); }

    void reports()
    {
        QCOMPARE(control().duration(), 0);
        QVERIFY(m_bench->openAndShow(*m_timeline, 5));
        QCOMPARE(bar.take(), QStringLiteral("duration 24, state 1, frame 5, state 2"));
        QCOMPARE(control().duration(), 24);
        control().seek(8);
        control().step(-3);
        control().step(-100);
        control().seek(99);
        control().step(2); // is at the end
        QCOMPARE(bar.take(), QStringLiteral("frame 8, frame 5, frame 0, frame 23"));
        m_bench->presenter.mediaPlayer()->detachSource();
        QCOMPARE(bar.take(), QStringLiteral("duration 0, state 0"));
        control().playOrPause();
        control().step(1);
        control().seek(3);
        control().stopAndReturn();
        QCOMPARE(bar.take(), QString());
    }

    void playsPausesAndReturns()
    {
        QVERIFY(m_bench->openAndShow(*m_timeline, 3));
        control().stopAndReturn(); // has not played yet
        QCOMPARE(control().currentFrame(), qint64(3));
        control().playOrPause();
        QTRY_VERIFY_WITH_TIMEOUT(control().currentFrame() > 5, 10000);
        control().playOrPause();
        QCOMPARE(control().state(), int(ZKPLAYER::PausedState));
        control().stopAndReturn();
        QCOMPARE(control().currentFrame(), qint64(3));
        control().seek(10);
        control().playOrPause();
        QTRY_VERIFY_WITH_TIMEOUT(control().currentFrame() > 11, 10000);
        control().stopAndReturn();
        QCOMPARE(control().currentFrame(), qint64(10));
        control().playOrPause();
        control().step(1);
        QCOMPARE(control().state(), int(ZKPLAYER::PausedState));
        QCOMPARE(control().currentFrame(), qint64(11));
        control().seek(23); // played from the end it starts over, and goes back there
        control().playOrPause();
        control().stopAndReturn();
        QCOMPARE(control().currentFrame(), qint64(0));
    }

    void refusesWhileTracking()
    {
        QVERIFY(m_bench->openAndShow(*m_timeline, 3));
        m_bench->d.trackingStarted();
        bar.take();
        control().playOrPause();
        control().step(1);
        control().seek(9);
        control().stopAndReturn();
        QCOMPARE(bar.take(), QString());
        QCOMPARE(control().currentFrame(), qint64(3));
    }

    void letsObserversLeaveInANotice()
    {
        Observer second;
        m_bench->presenter.addObserver(&second);
        bar.onNotice = [&] { control().removeObserver(&second); };
        QVERIFY(m_bench->openAndShow(*m_timeline));
        bar.onNotice = nullptr;
        QCOMPARE(second.take(), QString());
        QVERIFY(!bar.take().isEmpty());
    }

private:
    IZkPlayerControl &control() { return m_bench->presenter; }

    QTemporaryDir m_dir;
    const QString m_video = m_dir.filePath(QStringLiteral("clip.mkv")); // 24 frames, 24 fps
    std::unique_ptr<ZkStudioTimeline> m_timeline;
    Observer bar;
    std::optional<zk::test::PlayerBench> m_bench;
};

ZK_TEST_MAIN(ZkMediaPlayerControlTest)
#include "ZkMediaPlayerControlTest.moc"
