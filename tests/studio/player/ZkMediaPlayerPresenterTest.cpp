#include "PlayerBench.h"

#include "segmentation/ZkStudioSmartKeyingService.h"

#include <QElapsedTimer>

#include <optional>

using zk::test::PlayerBench;
using Presenter = ZkMediaPlayerPresenter;

// Opening, pictures that answer requests, and who moves the player on.
class ZkMediaPlayerPresenterTest : public QObject
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
        m_timeline->setWorkspace(ZKSMARTKEYING::SmartCutout);
        player.emplace();
    }
    void cleanup() { player.reset(); }

    void opens()
    {
        QVERIFY(player->open(*m_timeline, 5));
        QCOMPARE(player->takeJournal(), QStringLiteral("state 1, property 1, frame 5"));
        QCOMPARE(player->presenter.currentFrame(), qint64(5));
        QCOMPARE(player->presenter.mediaFrameRate(), 24.0F);
        QCOMPARE(player->presenter.zoomer()->frameRect(), QRectF(0, 0, 160, 90));
        QCOMPARE(player->presenter.playhead()->frameRange(), (ZkRange<qint64> {0, 23}));
        QVERIFY(player->waitFor(player->finished));
        QCOMPARE(player->takeJournal(),
                 QStringLiteral("picture, property 1, state 2, seek finished"));
        QVERIFY(player->shows(*m_timeline, 5));
    }

    void opensWithOptions()
    {
        player->presenter.zoomer()->zoom(2, QPointF());
        player->takeJournal();
        player->param.showFirstFrame = false;
        QVERIFY(player->open(*m_timeline, 100));
        QCOMPARE(player->takeJournal(), QStringLiteral("state 1, property 1, frame 23, state 2"));
        QCOMPARE(player->presenter.zoomer()->zoomLevel(false), 2.0F);
        QTest::qWait(50);
        QCOMPARE(player->takeJournal(), QString()); // no picture
        player->param.keepZoom = false;
        QVERIFY(player->open(*m_timeline));
        QCOMPARE(player->presenter.zoomer()->zoomLevel(false), 0.0F);
    }

    void refusesToOpen()
    {
        QVERIFY(player->openAndShow(*m_timeline, 3));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no timeline")));
        player->param.handle += 1000;
        QVERIFY(!player->presenter.mediaPlayer()->open(player->param));
        QCOMPARE(player->presenter.state(), int(ZKPLAYER::StoppedState));
        QCOMPARE(player->presenter.currentFrame(), qint64(-1));

        // Nobody waits in vain when nothing is open.
        player->takeJournal();
        player->presenter.update();
        player->presenter.playhead()->setPosition(7);
        player->presenter.play();
        QCOMPARE(player->takeJournal(), QString());
        QVERIFY(player->waitFor(player->finished, 2));
        QCOMPARE(player->takeJournal(), QStringLiteral("seek finished, seek finished"));
    }

    void opensAnother()
    {
        QVERIFY(player->openAndShow(*m_timeline, 3));
        const auto other = ZkStudioTimeline::fromMediaFile(m_video, nullptr);
        player->presenter.update(); // is under way when the other one comes
        QVERIFY(player->open(*other, 12));
        QVERIFY(player->waitFor(player->finished, 2));
        QCOMPARE(
            player->takeJournal(),
            QStringLiteral("picture, state 1, property 1, frame 12, " // the first picture is none
                           "picture, property 1, state 2, seek finished, seek finished"));
        QVERIFY(player->shows(*other, 12));
        m_timeline->reportChanges({ZKTIMELINE::SegmentChange, 1});
        QTest::qWait(50);
        QCOMPARE(player->takeJournal(), QString());
    }

    // Every timeline counts its changes for itself.
    void followsTheFirstChangeOfAnother()
    {
        const ZkTimelineChanges change {ZKTIMELINE::EffectChange, ZKTIMELINE::EffectAdded};
        QVERIFY(player->openAndShow(*m_timeline));
        m_timeline->reportChanges(change);
        QVERIFY(player->waitFor(player->picture));
        const auto other = ZkStudioTimeline::fromMediaFile(m_video, nullptr);
        player->param.showFirstFrame = false;
        QVERIFY(player->open(*other));
        player->takeJournal();
        other->reportChanges(change);
        QVERIFY(player->waitFor(player->picture));
    }

    void detaches()
    {
        QVERIFY(player->openAndShow(*m_timeline, 3));
        player->presenter.mediaPlayer()->stop();
        player->presenter.update();
        player->presenter.mediaPlayer()->detachSource();
        QCOMPARE(player->presenter.currentFrame(), qint64(-1));
        QVERIFY(player->d.picture().isNull());
        QVERIFY(player->presenter.zoomer()->frameRect().isNull());
        QVERIFY(player->waitFor(player->finished));
        QCOMPARE(player->takeJournal(), QStringLiteral("state 0, picture, seek finished"));
    }

    void finishesEveryRequest()
    {
        QVERIFY(player->openAndShow(*m_timeline));
        const QImage newest = PlayerBench::rendered(*m_timeline, 23);
        int early = 0;
        const auto check = [&] { early += player->d.picture() == newest ? 0 : 1; };
        connect(&player->presenter, &Presenter::sigSeekFinished, &player->presenter, check);
        for (const qint64 frame : {3, 7, 7, 11, 99, 23}) // two of them go nowhere
            player->presenter.playhead()->setPosition(frame);
        for (int i = 0; i < 2000; ++i)
            player->presenter.update();
        QCOMPARE(player->takeJournal(), QStringLiteral("frame 3, frame 7, frame 11, frame 23"));
        QVERIFY(player->waitFor(player->finished, 2004));
        QTest::qWait(30);
        const QStringList journal = player->takeJournal().split(QStringLiteral(", "));
        QCOMPARE(journal.count(player->finished), 2004);
        // The first one is rendered at once, all the others are answered together.
        QCOMPARE(journal.count(player->picture), 2);
        QCOMPARE(early, 0);
    }

    // As a change of the masks is waited for: in an event loop that the answer quits, from inside something
    // that the player itself reports.
    void finishesARequestMadeMeanwhile()
    {
        QVERIFY(player->openAndShow(*m_timeline));
        bool isShown = false;
        QMetaObject::Connection once;
        const auto requestAndWait = [&] {
            disconnect(once);
            player->presenter.playhead()->setPosition(20);
            QEventLoop loop;
            connect(&player->presenter, &Presenter::sigSeekFinished, &loop, &QEventLoop::quit);
            QTimer::singleShot(6000, &loop, &QEventLoop::quit);
            loop.exec(QEventLoop::ExcludeUserInputEvents);
            isShown = player->shows(*m_timeline, 20);
        };
        once = connect(&player->presenter, &Presenter::sigSeekFinished, this, requestAndWait);
        player->presenter.update();
        player->presenter.update();
        QVERIFY(player->waitFor(player->finished, 3));
        QVERIFY(isShown);
    }

    void followsChanges()
    {
        for (const bool follows : {true, false}) {
            player->param.followChanges = follows;
            QVERIFY(player->openAndShow(*m_timeline));
            m_timeline->reportChanges({ZKTIMELINE::EffectChange, ZKTIMELINE::EffectAdded});
            QTest::qWait(50);
            // Nobody has asked, so nothing is said to have finished.
            QCOMPARE(player->takeJournal(), follows ? player->picture : QString());
        }
        // Whoever asks is shown the masks of now.
        const QImage before = player->d.picture();
        const auto node = QSharedPointer<zk::datamodel::SegmentNode>::create();
        QImage matte(before.size(), QImage::Format_Grayscale8);
        matte.fill(255);
        node->result = zk::datamodel::EncodedMatte(matte);
        m_timeline->shownService()->changeNode(0, node, QString());
        player->takeJournal();
        player->presenter.update();
        QVERIFY(player->waitFor(player->finished));
        QVERIFY(player->shows(*m_timeline, 0) && player->d.picture() != before);
    }

    void finishesWhatFails()
    {
        const QString path = m_video + QStringLiteral(".copy.mkv");
        QVERIFY(QFile::copy(m_video, path));
        const auto timeline = ZkStudioTimeline::fromMediaFile(path, nullptr);
        QVERIFY(QFile::remove(path));
        const zk::test::ExpectedMessage failure(QStringLiteral("frame 2 cannot be shown: .+"));
        QVERIFY(player->open(*timeline, 2));
        QVERIFY(player->waitFor(player->finished));
        QCOMPARE(player->takeJournal(),
                 QStringLiteral("state 1, property 1, frame 2, state 2, seek finished"));
    }

    void outlivesItsTimeline()
    {
        QVERIFY(player->openAndShow(*m_timeline, 5));
        player->presenter.playhead()->setPosition(6);
        m_timeline.reset();
        player->presenter.update();
        QVERIFY(player->waitFor(player->finished, 2));
        player->presenter.mediaPlayer()->detachSource();
        QCOMPARE(player->presenter.currentFrame(), qint64(-1));
    }

    void diesWhileRendering()
    {
        for (int frame = 0; frame < 5; ++frame) {
            player.emplace();
            QVERIFY(player->open(*m_timeline, frame));
            player->presenter.update();
            player.reset();
            m_timeline->reportChanges({ZKTIMELINE::SegmentChange, 1});
            QCoreApplication::processEvents();
        }
    }

    void playsAtTheRate_data()
    {
        QTest::addColumn<int>("speed");
        QTest::newRow("twice as fast") << 2;
        QTest::newRow("backwards") << -1;
    }
    void playsAtTheRate()
    {
        QFETCH(int, speed);
        const int first = speed > 0 ? 0 : 12;
        const int last = speed > 0 ? 23 : 0;
        QVERIFY(player->openAndShow(*m_timeline, first));
        QElapsedTimer timer;
        QVector<double> late; // frames behind the clock
        const auto note = [&](int frame) {
            const double due = double(timer.nsecsElapsed()) * 24e-9 * qAbs(speed);
            late.append(due - qAbs(frame - first));
        };
        connect(&player->presenter, &Presenter::sigFrameChanged, &player->presenter, note);
        timer.start();
        player->presenter.mediaPlayer()->setMode(ZKPLAYER::PlayingState, speed);
        QVERIFY(player->presenter.isPlaying());
        QVERIFY(player->waitFor(m_paused));
        QCOMPARE(player->presenter.currentFrame(), qint64(last));
        QCOMPARE(player->takeJournal(m_state), QStringLiteral("state 3, state 2"));
        // Never early. On a busy machine frames are dropped and not caught up with, so none is later than
        // the half second that this machine may be busy for.
        QVERIFY(late.size() > 2);
        for (const double frames : qAsConst(late))
            QVERIFY2(frames > -0.01 && frames < 12 * qAbs(speed),
                     qPrintable(QString::number(frames)));
        QTRY_VERIFY(player->shows(*m_timeline, last));
    }

    void playsFromElsewhere()
    {
        QVERIFY(player->openAndShow(*m_timeline, 23));
        player->presenter.play(); // from the end: once more
        QCOMPARE(player->takeJournal(), QStringLiteral("frame 0, state 3"));
        player->presenter.playhead()->setPosition(20);
        QVERIFY(player->waitFor(m_paused) && player->waitFor(player->finished));
        const QStringList journal = player->takeJournal().split(QStringLiteral(", "));
        QCOMPARE(journal.count(player->finished), 1);
        QVERIFY(journal.filter(QStringLiteral("frame")).size() <= 4);
        QCOMPARE(player->presenter.currentFrame(), qint64(23));
    }

    void playsWhenOpened()
    {
        player->param.autoPlay = true;
        player->param.endFrame = 4;
        QVERIFY(player->open(*m_timeline));
        QVERIFY(player->waitFor(m_paused));
        QCOMPARE(player->presenter.currentFrame(), qint64(4));
        QCOMPARE(player->takeJournal(m_state), QStringLiteral("state 1, state 3, state 2"));
        QVERIFY(player->open(*m_timeline));
        player->presenter.stopPlay(); // before it has begun
        QVERIFY(player->waitFor(player->finished));
        QCOMPARE(player->takeJournal(m_state), QStringLiteral("state 1, state 2"));
    }

    void setsModes()
    {
        IZkMediaPlayer *media = player->presenter.mediaPlayer();
        QVERIFY(player->openAndShow(*m_timeline));
        media->setMode(ZKPLAYER::PausedState, 0);
        media->setMode(ZKPLAYER::TrackingState, 0);
        media->setMode(ZKPLAYER::PlayingState, 1); // refused
        media->setMode(ZKPLAYER::PausedState, 0);
        media->setMode(ZKPLAYER::PlayingState, 1);
        media->setMode(ZKPLAYER::PlayingState, 0); // stands still
        media->setMode(ZKPLAYER::StoppedState, 0);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no state 5")));
        media->setMode(5, 0);
        QCOMPARE(player->takeJournal(),
                 QStringLiteral("state 4, state 2, state 3, state 2, state 0"));
    }

    void tracks()
    {
        QVERIFY(player->openAndShow(*m_timeline, 8));
        auto *run = dynamic_cast<zk::datamodel::PlayerFeedback *>(player->presenter.mediaPlayer());
        QVERIFY(run);
        player->presenter.play();
        run->trackingStarted();
        run->showTrackedFrame(9);
        run->trackingProgress(6);
        run->showTrackedFrame(10);
        run->trackingFinished();
        run->showTrackedFrame(3); // the run is over
        QCOMPARE(player->takeJournal(),
                 QStringLiteral("state 3, state 4, frame 9, percent 6, frame 10, state 2"));
        QTRY_VERIFY(player->shows(*m_timeline, 10));

        // A frame that is shown already has a new mask all the same. Nobody waits for what a run shows.
        player->takeJournal();
        run->trackingStarted();
        run->showTrackedFrame(10);
        QVERIFY(player->waitFor(player->picture));
        player->presenter.mediaPlayer()->setMode(ZKPLAYER::PausedState, 0);
        run->trackingFinished();
        QCOMPARE(player->takeJournal(), QStringLiteral("state 4, picture, state 2"));
    }

    void tracksUndisturbed()
    {
        QVERIFY(player->openAndShow(*m_timeline, 8));
        player->d.trackingStarted();
        player->presenter.play();
        player->presenter.playhead()->setPosition(20);
        player->presenter.stopPlay();
        player->presenter.update();
        QVERIFY(player->waitFor(player->finished));
        QCOMPARE(player->takeJournal(), QStringLiteral("state 4, picture, seek finished"));
        QVERIFY(player->openAndShow(*m_timeline, 2));
        QCOMPARE(player->presenter.state(), int(ZKPLAYER::TrackingState));
    }

    void couplesPlayheads()
    {
        IZkPlayhead *edit = m_timeline->playhead();
        ZkPlayheadConnector connector;
        edit->setPosition(15);
        // As a workspace does: coupled first, opened later.
        connector.addPlayhead(edit, ZkPlayheadConnector::EditTimelineRole);
        connector.addPlayhead(player->presenter.playhead(), ZkPlayheadConnector::PlayerRole);
        QVERIFY(player->openAndShow(*m_timeline, 6));
        QCOMPARE(edit->position(), qint64(6));

        edit->setPosition(11);
        QCOMPARE(player->presenter.currentFrame(), qint64(11));
        QVERIFY(player->waitFor(player->finished));
        QCOMPARE(player->takeJournal(), QStringLiteral("frame 11, picture, seek finished"));
        player->presenter.play();
        QTRY_VERIFY(edit->position() >= 13);
        player->presenter.stopPlay();
        const qint64 frame = player->presenter.currentFrame();
        QTest::qWait(150);
        QCOMPARE(player->presenter.currentFrame(), frame);
        QCOMPARE(edit->position(), frame);
        QVERIFY(player->shows(*m_timeline, frame));
        connector.clear();
    }

private:
    QTemporaryDir m_dir;
    const QString m_video = m_dir.filePath(QStringLiteral("clip.mkv")); // 160x90, 24 frames, 24 fps
    std::unique_ptr<ZkStudioTimeline> m_timeline;
    std::optional<PlayerBench> player;
    const QString m_paused = QStringLiteral("state 2");
    const QString m_state = QStringLiteral("state");
};

ZK_TEST_MAIN(ZkMediaPlayerPresenterTest)
#include "ZkMediaPlayerPresenterTest.moc"
