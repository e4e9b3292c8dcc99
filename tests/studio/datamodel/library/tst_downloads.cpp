// Downloads from a server that behaves well or badly.
#include "LibraryFixture.h"
#include "TestHttpServer.h"
#include "ZkResourceServerFiles.h"

#include "ZkTestMain.h"

#include <QDir>
#include <QFile>

using namespace ZKVBLMODEL;
using zk::datamodel::DownloadError;

class TestDownloads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void behaviours_data();
    void behaviours();
    void brokenTransferIsResumed();
    void progressRises();
    void oneDownloadPerFile();
    void manyWaitForTheirTurn();
    void cancelled();
    void serverIsDown();
    void fileTooLargeIsRefused();
    void diskIsUnusable();
    void libraryEndsMeanwhile();
    void refreshBringsUpdates();
    void refreshMeanwhile();

private:
    QString packagePath() const;

    std::unique_ptr<QTemporaryDir> m_served;
    std::unique_ptr<TestHttpServer> m_server;
    std::unique_ptr<LibraryFixture> m_fixture;
    const QString m_slug = QStringLiteral("big");
};

void TestDownloads::init()
{
    m_served = std::make_unique<QTemporaryDir>();
    m_server = std::make_unique<TestHttpServer>();
    m_fixture = std::make_unique<LibraryFixture>(m_server->url());
    QVERIFY(zk::datamodel::writeResourceServerFiles({makeLook(m_slug, 1, 30)}, m_served->path()));
    m_server->serveDirectory(m_served->path());
    QVERIFY(m_fixture->open());
    QCOMPARE(m_fixture->refresh(), 0);
    m_server->requests.clear();
    m_fixture->log.entries.clear();
}

void TestDownloads::cleanup()
{
    m_fixture.reset();
    m_server.reset();
}

QString TestDownloads::packagePath() const
{
    const QDir packages(m_served->filePath(QStringLiteral("packages")));
    return QStringLiteral("/packages/") + packages.entryList(QDir::Files).first();
}

void TestDownloads::behaviours_data()
{
    QTest::addColumn<int>("behaviour");
    QTest::addColumn<DownloadError>("error");
    QTest::addColumn<int>("requests");
    using Server = TestHttpServer;
    const auto row = [](const char *name, Server::Behaviour behaviour, DownloadError error, int n) {
        QTest::newRow(name) << int(behaviour) << error << n;
    };
    row("whole", Server::Whole, DownloadError::None, 1);
    row("slow", Server::Slow, DownloadError::None, 1);
    row("broken once", Server::BreakOnce, DownloadError::None, 2);
    row("range ignored", Server::BreakOnceIgnoreRange, DownloadError::None, 2);
    row("wrong range", Server::BreakOnceWrongRange, DownloadError::HttpStatus, 2);
    row("broken twice", Server::BreakAlways, DownloadError::Network, 2);
    row("truncated", Server::Truncated, DownloadError::Network, 2);
    row("stalled", Server::Stall, DownloadError::Network, 2);
    row("corrupt", Server::Corrupt, DownloadError::Checksum, 1);
    row("too long", Server::TooLong, DownloadError::Checksum, 1);
    row("huge", Server::HugeLength, DownloadError::Refused, 1);
    row("moved", Server::RedirectSameHost, DownloadError::None, 2);
    row("other host", Server::RedirectOtherHost, DownloadError::Refused, 1);
    row("other scheme", Server::RedirectOtherScheme, DownloadError::Refused, 1);
    row("round and round", Server::RedirectForever, DownloadError::Refused, 6);
    row("404", Server::Status404, DownloadError::HttpStatus, 1);
    row("500", Server::Status500, DownloadError::HttpStatus, 1);
}

void TestDownloads::behaviours()
{
    QFETCH(int, behaviour);
    QFETCH(DownloadError, error);
    QFETCH(int, requests);
    m_server->setBehaviour(packagePath(), TestHttpServer::Behaviour(behaviour));
    if (error != DownloadError::None)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("failed: .+")));
    QCOMPARE(m_fixture->download(m_slug, DownloadPreset),
             QStringLiteral("finished big 2 %1").arg(int(error)));
    QCOMPARE(m_server->requests.size(), requests);

    const bool isThere = error == DownloadError::None;
    QCOMPARE(m_fixture->item(m_slug)->needsDownload(), !isThere);
    QCOMPARE(!m_fixture->item(m_slug)->effect().isNull(), isThere);
    QCOMPARE(m_fixture->log.count(QStringLiteral("on disk big")), isThere ? 1 : 0);
    QCOMPARE(m_fixture->files().size(), isThere ? 1 : 0);
    m_fixture->open();
    QCOMPARE(m_fixture->item(m_slug)->needsDownload(), !isThere);

    // Whatever it was, it does not stand in the way of the next attempt.
    m_server->setBehaviour(packagePath(), TestHttpServer::Whole);
    QCOMPARE(m_fixture->download(m_slug, DownloadPreset), QStringLiteral("finished big 2 0"));
    QVERIFY(m_fixture->item(m_slug)->effect());
}

void TestDownloads::brokenTransferIsResumed()
{
    m_server->setBehaviour(packagePath(), TestHttpServer::BreakOnce);
    QCOMPARE(m_fixture->download(m_slug, DownloadPreset), QStringLiteral("finished big 2 0"));
    const qint64 size = QFileInfo(m_served->path() + packagePath()).size();
    QCOMPARE(m_server->requests,
             (QStringList {QStringLiteral("GET ") + packagePath(),
                           QStringLiteral("GET %1 bytes=%2-").arg(packagePath()).arg(size / 2)}));
}

void TestDownloads::progressRises()
{
    m_server->setBehaviour(packagePath(), TestHttpServer::Slow);
    m_fixture->download(m_slug, DownloadPreset);
    const QVector<int> percents = m_fixture->log.percents;
    QVERIFY(percents.size() > 10);
    QVERIFY(percents.first() < 20);
    QCOMPARE(percents.last(), 100);
    for (int i = 1; i < percents.size(); ++i)
        QVERIFY(percents.at(i) > percents.at(i - 1));
}

void TestDownloads::oneDownloadPerFile()
{
    m_server->setBehaviour(packagePath(), TestHttpServer::Slow);
    IZkMediaItemManager *manager = m_fixture->library().mediaItemManager();
    IZkAbstractMediaItem *item = m_fixture->item(m_slug);
    QCOMPARE(manager->downloadItem(item, DownloadPreset), int(DownloadStarted));
    QCOMPARE(manager->downloadItem(item, DownloadPreset), int(DownloadRunning));
    QCOMPARE(manager->downloadItem(item, DownloadThumbnail), int(DownloadStarted));
    QVERIFY(m_fixture->log.entries.isEmpty());
    QTRY_COMPARE(m_fixture->log.count(QStringLiteral("finished big 2 0")), 1);
    QCOMPARE(m_fixture->log.count(QStringLiteral("finished big 0 0")), 1);
    QVERIFY(QFile::exists(item->thumbnailPath()));
    QTest::qWait(50);
    QCOMPARE(m_fixture->log.count(QStringLiteral("finished")), 2);
    QCOMPARE(m_server->requests.size(), 2);
}

void TestDownloads::manyWaitForTheirTurn()
{
    QVector<zk::effects::Look> looks;
    for (int i = 0; i < 10; ++i)
        looks.append(makeLook(QStringLiteral("n%1").arg(i)));
    QVERIFY(zk::datamodel::writeResourceServerFiles(looks, m_served->path()));
    m_server->serveDirectory(m_served->path());
    m_fixture->settings.downloads.maximumParallel = 2;
    m_fixture->open();
    QCOMPARE(m_fixture->refresh(), 0);
    m_server->requests.clear();
    for (const QString &slug : m_fixture->slugs())
        m_fixture->library().mediaItemManager()->downloadItem(m_fixture->item(slug),
                                                              DownloadPreset);
    QTRY_COMPARE(m_fixture->log.count(QStringLiteral("finished n\\d 2 0")), 10);
    QCOMPARE(m_server->requests.size(), 10);
}

void TestDownloads::cancelled()
{
    m_server->setBehaviour(packagePath(), TestHttpServer::Slow);
    IZkMediaItemManager *manager = m_fixture->library().mediaItemManager();
    IZkAbstractMediaItem *item = m_fixture->item(m_slug);
    const QString end = QStringLiteral("finished big 2 %1").arg(int(DownloadError::Cancelled));
    manager->downloadItem(item, DownloadPreset);
    QVERIFY(m_fixture->library().cancelDownload(item, DownloadPreset)); // before its turn
    QVERIFY(m_fixture->log.entries.isEmpty());
    QTRY_COMPARE(m_fixture->log.count(end), 1);

    manager->downloadItem(item, DownloadPreset);
    QTRY_VERIFY(!m_fixture->log.percents.isEmpty());
    QCOMPARE(m_fixture->files().size(), 1);
    QVERIFY(m_fixture->library().cancelDownload(item, DownloadPreset));
    QCOMPARE(m_fixture->log.count(end), 1);
    QTRY_COMPARE(m_fixture->log.count(end), 2);
    QVERIFY(m_fixture->files().isEmpty());
    QVERIFY(item->needsDownload());
    QVERIFY(!m_fixture->library().cancelDownload(item, DownloadPreset));
}

void TestDownloads::serverIsDown()
{
    m_server->close();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("failed: .+")));
    QCOMPARE(m_fixture->download(m_slug, DownloadPreset), QStringLiteral("finished big 2 1"));
    m_fixture->library().mediaItemManager()->loadFolder(m_fixture->presets());
    QTRY_COMPARE(m_fixture->presets()->loadState(), int(zkmsLoaded));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no catalogue: http")));
    QCOMPARE(m_fixture->refresh(), int(DownloadError::Network));
    QCOMPARE(m_fixture->presets()->loadState(), int(zkmsFetchMoreError));
    QCOMPARE(m_fixture->log.count(QStringLiteral("state subject_smart_cutout_preset 2")), 1);
    QCOMPARE(m_fixture->slugs(), QStringList {m_slug});
}

void TestDownloads::fileTooLargeIsRefused()
{
    m_fixture->settings.downloads.maximumBytes = 5000; // more than the catalogue has
    m_fixture->open();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("too large")));
    QCOMPARE(m_fixture->download(m_slug, DownloadPreset), QStringLiteral("finished big 2 6"));
    QVERIFY(m_server->requests.isEmpty());
    m_fixture->settings.downloads.maximumBytes = 100;
    m_fixture->open();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("too large")));
    QCOMPARE(m_fixture->refresh(), int(DownloadError::Refused));
}

void TestDownloads::diskIsUnusable()
{
    const QString packages = m_fixture->settings.directory + QStringLiteral("/packages");
    QVERIFY(QDir().rmdir(packages));
    QFile inTheWay(packages);
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("failed: .+")));
    QCOMPARE(m_fixture->download(m_slug, DownloadPreset), QStringLiteral("finished big 2 4"));
    QVERIFY(inTheWay.remove());

    const QString incoming = m_fixture->settings.directory + QStringLiteral("/incoming");
    QVERIFY(QDir().rmdir(incoming));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("failed: .+")));
    QCOMPARE(m_fixture->download(m_slug, DownloadPreset), QStringLiteral("finished big 2 4"));
    QVERIFY(m_fixture->files().isEmpty());
}

void TestDownloads::libraryEndsMeanwhile()
{
    m_server->setBehaviour(packagePath(), TestHttpServer::Slow);
    m_fixture->library().mediaItemManager()->downloadItem(m_fixture->item(m_slug), DownloadPreset);
    QTRY_VERIFY(!m_fixture->log.percents.isEmpty());
    m_fixture->close();
    QVERIFY(m_fixture->files().isEmpty());
    QTest::qWait(20);
    QCOMPARE(m_fixture->log.count(QStringLiteral("finished")), 0);
}

void TestDownloads::refreshBringsUpdates()
{
    m_fixture->download(m_slug, DownloadPreset);
    m_fixture->download(m_slug, DownloadThumbnail);
    const QStringList before = m_fixture->files();
    IZkEffectMediaItem *item = m_fixture->item(m_slug);
    const QString oldPackage = packagePath();

    QVERIFY(QFile::remove(m_served->path() + oldPackage));
    QVERIFY(zk::datamodel::writeResourceServerFiles({makeLook(m_slug, 2, 20)}, m_served->path()));
    m_server->serveDirectory(m_served->path());
    m_server->setBehaviour(packagePath(), TestHttpServer::BreakAlways);
    QVERIFY(packagePath() != oldPackage);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("failed: .+")));
    m_fixture->log.entries.clear();
    QCOMPARE(m_fixture->refresh(), 0);
    QTRY_COMPARE(m_fixture->log.count(QStringLiteral("finished big 2 1")), 1);
    // The new version did not arrive: the old one goes on being usable.
    QVERIFY(!item->needsDownload());
    QVERIFY(item->effect());

    m_server->setBehaviour(packagePath(), TestHttpServer::Whole);
    QCOMPARE(m_fixture->refresh(), 0);
    QTRY_COMPARE(m_fixture->log.count(QStringLiteral("finished big 2 0")), 1);
    QVERIFY(item->effect());
    QCOMPARE(m_fixture->files().size(), before.size());
    QVERIFY(m_fixture->files().filter(QStringLiteral("packages"))
            != before.filter(QStringLiteral("packages")));
}

void TestDownloads::refreshMeanwhile()
{
    m_server->setBehaviour(packagePath(), TestHttpServer::Slow);
    m_fixture->library().mediaItemManager()->downloadItem(m_fixture->item(m_slug), DownloadPreset);
    QTRY_VERIFY(!m_fixture->log.percents.isEmpty());
    QVERIFY(
        zk::datamodel::writeResourceServerFiles({makeLook(QStringLiteral("x"))}, m_served->path()));
    m_server->serveDirectory(m_served->path());
    QCOMPARE(m_fixture->refresh(), 0);
    QCOMPARE(m_fixture->log.count(QStringLiteral("finished")), 0);
    QTRY_COMPARE(m_fixture->log.count(QStringLiteral("finished big 2 0")), 1);
    QVERIFY(m_fixture->item(m_slug)->effect());
}

ZK_TEST_MAIN(TestDownloads)
#include "tst_downloads.moc"
