#include "PlayerBench.h"

#include "segmentation/ZkStudioSmartKeyingService.h"

#include <QApplication>
#include <QFile>

using zk::test::PlayerBench;

// Opening, and pictures that answer requests.
class ZkMediaPlayerPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { m_timeline = makeTimeline(m_files.video()); }
    void opens();
    void opensWithOptions();
    void refusesToOpen();
    void opensAnother();
    void detaches();
    void finishesEveryRequest();
    void finishesARequestMadeMeanwhile();
    void showsCurrentMasks();
    void followsChanges();
    void finishesWhatFails();
    void outlivesItsTimeline();
    void diesWhileRendering();
    void reportsGeometry();

private:
    static std::unique_ptr<ZkStudioTimeline> makeTimeline(const QString &path);

    zk::test::SampleFiles m_files;
    std::unique_ptr<ZkStudioTimeline> m_timeline;
};

void ZkMediaPlayerPresenterTest::initTestCase()
{
    QString error;
    QVERIFY2(m_files.write(&error), qPrintable(error));
}

std::unique_ptr<ZkStudioTimeline> ZkMediaPlayerPresenterTest::makeTimeline(const QString &path)
{
    auto timeline = ZkStudioTimeline::fromMediaFile(path, nullptr);
    timeline->setWorkspace(ZKSMARTKEYING::SmartCutout);
    return timeline;
}

void ZkMediaPlayerPresenterTest::opens()
{
    PlayerBench player;
    QCOMPARE(player.presenter.currentFrame(), qint64(-1));
    QVERIFY(player.open(*m_timeline, 5));
    QCOMPARE(player.takeJournal(), QStringLiteral("state 1, property 1, frame 5"));
    QCOMPARE(player.presenter.currentFrame(), qint64(5));
    QCOMPARE(player.presenter.mediaFrameRate(), 24.0F);
    QCOMPARE(player.presenter.zoomer()->frameRect(), QRectF(0, 0, 160, 90));
    QCOMPARE(player.presenter.playhead()->frameRange(), (ZkRange<qint64> {0, 23}));
    QVERIFY(player.waitFor(player.finished));
    QCOMPARE(player.takeJournal(), QStringLiteral("picture, property 1, state 2, seek finished"));
    QVERIFY(player.shows(*m_timeline, 5));
}

void ZkMediaPlayerPresenterTest::opensWithOptions()
{
    PlayerBench player;
    player.presenter.zoomer()->zoom(2, QPointF());
    player.param.endFrame = 9;
    player.param.showFirstFrame = false;
    QVERIFY(player.open(*m_timeline, 100));
    QCOMPARE(player.presenter.state(), int(ZKPLAYER::PausedState));
    QCOMPARE(player.presenter.currentFrame(), qint64(9));
    QCOMPARE(player.presenter.zoomer()->zoomLevel(false), 2.0F);
    QTest::qWait(50);
    QCOMPARE(player.takeJournal(player.picture), QString());
    player.param.keepZoom = false;
    QVERIFY(player.open(*m_timeline));
    QCOMPARE(player.presenter.zoomer()->zoomLevel(false), 0.0F);
}

void ZkMediaPlayerPresenterTest::refusesToOpen()
{
    PlayerBench player;
    QVERIFY(player.openAndShow(*m_timeline, 3));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no timeline")));
    player.param.handle += 1000;
    QVERIFY(!player.presenter.mediaPlayer()->open(player.param));
    QCOMPARE(player.presenter.state(), int(ZKPLAYER::StoppedState));
    QCOMPARE(player.presenter.currentFrame(), qint64(-1));

    // Nobody waits in vain when nothing is open.
    player.takeJournal();
    player.presenter.update();
    player.presenter.playhead()->setPosition(7);
    player.presenter.play();
    QCOMPARE(player.takeJournal(), QString());
    QVERIFY(player.waitFor(player.finished, 2));
    QCOMPARE(player.takeJournal(), QStringLiteral("seek finished, seek finished"));
}

void ZkMediaPlayerPresenterTest::opensAnother()
{
    PlayerBench player;
    QVERIFY(player.openAndShow(*m_timeline, 3));
    const auto other = makeTimeline(m_files.video());
    player.presenter.update(); // is under way when the other one comes
    QVERIFY(player.open(*other, 12));
    QVERIFY(player.waitFor(player.finished, 2));
    QCOMPARE(player.takeJournal(),
             QStringLiteral("picture, state 1, property 1, frame 12, " // the first picture is none
                            "picture, property 1, state 2, seek finished, seek finished"));
    QVERIFY(player.shows(*other, 12));
    m_timeline->reportChanges(ZkTimelineChanges(ZKTIMELINE::SegmentChange, 1));
    QTest::qWait(50);
    QCOMPARE(player.takeJournal(), QString());
}

void ZkMediaPlayerPresenterTest::detaches()
{
    PlayerBench player;
    QVERIFY(player.openAndShow(*m_timeline, 3));
    player.presenter.mediaPlayer()->stop();
    QCOMPARE(player.presenter.currentFrame(), qint64(3));
    player.presenter.update();
    player.presenter.mediaPlayer()->detachSource();
    QCOMPARE(player.presenter.currentFrame(), qint64(-1));
    QVERIFY(player.d.picture().isNull());
    QVERIFY(player.presenter.zoomer()->frameRect().isNull());
    QVERIFY(player.waitFor(player.finished));
    QCOMPARE(player.takeJournal(), QStringLiteral("state 0, picture, seek finished"));
    QVERIFY(player.open(*m_timeline, 3));
    QCOMPARE(player.takeJournal(), QStringLiteral("state 1, property 1, frame 3"));
}

void ZkMediaPlayerPresenterTest::finishesEveryRequest()
{
    PlayerBench player;
    QVERIFY(player.openAndShow(*m_timeline));
    const QImage newest = PlayerBench::rendered(*m_timeline, 23);
    int early = 0;
    connect(&player.presenter, &ZkMediaPlayerPresenter::sigSeekFinished, &player.presenter, [&] {
        early += player.d.picture() == newest ? 0 : 1;
    });
    for (const qint64 frame : {3, 7, 7, 11, 99, 23}) // two of them go nowhere
        player.presenter.playhead()->setPosition(frame);
    for (int i = 0; i < 2000; ++i)
        player.presenter.update();
    QCOMPARE(player.takeJournal(), QStringLiteral("frame 3, frame 7, frame 11, frame 23"));
    QVERIFY(player.waitFor(player.finished, 2004));
    QTest::qWait(30);
    const QStringList journal = player.takeJournal().split(QStringLiteral(", "));
    QCOMPARE(journal.count(player.finished), 2004);
    // The first one is rendered at once, all the others are answered together.
    QCOMPARE(journal.count(player.picture), 2);
    QCOMPARE(early, 0);
}

// As a change of the masks is waited for: in an event loop that the answer quits, from inside something
// that the player itself reports.
void ZkMediaPlayerPresenterTest::finishesARequestMadeMeanwhile()
{
    PlayerBench player;
    QVERIFY(player.openAndShow(*m_timeline));
    bool isShown = false;
    QMetaObject::Connection once;
    const auto requestAndWait = [&] {
        disconnect(once);
        player.presenter.playhead()->setPosition(20);
        QEventLoop loop;
        connect(
            &player.presenter, &ZkMediaPlayerPresenter::sigSeekFinished, &loop, &QEventLoop::quit);
        QTimer::singleShot(6000, &loop, &QEventLoop::quit);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
        isShown = player.shows(*m_timeline, 20);
    };
    once =
        connect(&player.presenter, &ZkMediaPlayerPresenter::sigSeekFinished, this, requestAndWait);
    player.presenter.update();
    player.presenter.update();
    QVERIFY(player.waitFor(player.finished, 3));
    QVERIFY(isShown);
    QTest::qWait(20);
    QCOMPARE(player.takeJournal(player.finished).count(player.finished), 3);
}

void ZkMediaPlayerPresenterTest::showsCurrentMasks()
{
    PlayerBench player;
    m_timeline->shownService()->setPreviewType(ZKSMARTKEYING::AlphaPreview);
    QVERIFY(player.openAndShow(*m_timeline, 4));
    QImage matte(160, 90, QImage::Format_Grayscale8);
    matte.fill(0);
    std::fill_n(matte.scanLine(45) + 40, 50, uchar(255));
    const auto node = QSharedPointer<zk::datamodel::SegmentNode>::create();
    node->result = zk::datamodel::EncodedMatte(matte);
    m_timeline->shownService()->changeNode(4, node, QString());
    player.presenter.update();
    player.takeJournal();
    QVERIFY(player.waitFor(player.finished));
    QCOMPARE(player.d.picture().pixelColor(60, 45), QColor(Qt::white));
    QCOMPARE(player.d.picture().pixelColor(60, 44), QColor(Qt::black));
}

void ZkMediaPlayerPresenterTest::followsChanges()
{
    const ZkTimelineChanges changes(ZKTIMELINE::EffectChange, ZKTIMELINE::EffectAdded);
    PlayerBench player;
    for (const bool follows : {true, false}) {
        player.param.followChanges = follows;
        QVERIFY(player.openAndShow(*m_timeline));
        m_timeline->reportChanges(changes);
        QTest::qWait(50);
        // Nobody has asked, so nothing is said to have finished.
        QCOMPARE(player.takeJournal(), follows ? player.picture : QString());
    }
}

void ZkMediaPlayerPresenterTest::finishesWhatFails()
{
    const QString path = m_files.video() + QStringLiteral(".copy.mkv");
    QVERIFY(QFile::copy(m_files.video(), path));
    const auto timeline = makeTimeline(path);
    QVERIFY(QFile::remove(path));
    PlayerBench player;
    const QRegularExpression failure(QStringLiteral("frame 2 cannot be shown: .+"));
    QTest::ignoreMessage(QtWarningMsg, failure);
    QVERIFY(player.open(*timeline, 2));
    QVERIFY(player.waitFor(player.finished));
    QCOMPARE(player.takeJournal(),
             QStringLiteral("state 1, property 1, frame 2, state 2, seek finished"));
    QTest::ignoreMessage(QtWarningMsg, failure);
    player.presenter.update();
    QVERIFY(player.waitFor(player.finished));
}

void ZkMediaPlayerPresenterTest::outlivesItsTimeline()
{
    PlayerBench player;
    QVERIFY(player.openAndShow(*m_timeline, 5));
    player.presenter.playhead()->setPosition(6);
    m_timeline.reset();
    player.presenter.update();
    QVERIFY(player.waitFor(player.finished, 2));
    player.presenter.mediaPlayer()->detachSource();
    QCOMPARE(player.presenter.currentFrame(), qint64(-1));
}

void ZkMediaPlayerPresenterTest::diesWhileRendering()
{
    for (int frame = 0; frame < 5; ++frame) {
        {
            PlayerBench player;
            QVERIFY(player.open(*m_timeline, frame));
            player.presenter.update();
        }
        m_timeline->reportChanges(ZkTimelineChanges(ZKTIMELINE::SegmentChange, 1));
        QCoreApplication::processEvents();
    }
}

void ZkMediaPlayerPresenterTest::reportsGeometry()
{
    PlayerBench player;
    QVERIFY(player.openAndShow(*m_timeline));
    player.d.setViewport(QSizeF(320, 240), 1);
    QCOMPARE(player.takeJournal(), QStringLiteral("property 1"));
    QCOMPARE(player.presenter.zoomer()->frameRect(), QRectF(0, 30, 320, 180));
    player.presenter.setZoomEnabled(false);
    player.presenter.zoomer()->zoom(4, QPointF());
    QCOMPARE(player.takeJournal(), QString());
    player.presenter.setZoomEnabled(true);
    player.presenter.zoomer()->zoom(4, QPointF());
    player.presenter.zoomer()->beginPan();
    player.presenter.zoomer()->panBy(QPointF(3, 0));
    QCOMPARE(player.takeJournal(), QStringLiteral("property 1, property 2"));
}

ZK_TEST_MAIN(ZkMediaPlayerPresenterTest)
#include "ZkMediaPlayerPresenterTest.moc"
