// Downloads from a server that behaves well or badly.
#include "LibraryFixture.h"
#include "TestHttpServer.h"

#include "ZkTestMain.h"

#include <QDir>
#include <QFile>

using namespace ZKVBLMODEL;
using zk::datamodel::DownloadError;
using Server = TestHttpServer;

class TestDownloads : public QObject
{
    Q_OBJECT

    std::unique_ptr<Server> m_server;
    std::unique_ptr<LibraryFixture> m_fixture;

    QString packagePath() const
    {
        const QDir packages(m_server->directory.filePath("packages"));
        return "/packages/" + packages.entryList(QDir::Files).first();
    }
    IZkEffectMediaItem *item() const { return m_fixture->item("big"); }
    QString download() { return m_fixture->download("big"); }
    // Of a slow download, which has begun when it returns.
    void start()
    {
        m_server->setBehaviour(packagePath(), Server::Slow);
        m_fixture->log.percents.clear();
        m_fixture->manager()->downloadItem(item(), DownloadPreset);
        QTRY_VERIFY(!m_fixture->log.percents.isEmpty());
    }

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<Server>();
        m_fixture = std::make_unique<LibraryFixture>(m_server->url());
        QVERIFY(m_server->serve({makeLook("big", 1, 30)}));
        QVERIFY(m_fixture->open());
        QCOMPARE(m_fixture->refresh(), 0);
        m_server->requests.clear();
        m_fixture->log.entries.clear();
    }
    void cleanup() { m_fixture.reset(); }

    void behaviours_data()
    {
        QTest::addColumn<int>("behaviour");
        QTest::addColumn<DownloadError>("error");
        QTest::addColumn<int>("requests");
        const auto row = [](const char *name, Server::Behaviour is, DownloadError error, int n) {
            QTest::newRow(name) << int(is) << error << n;
        };
        row("whole", Server::Whole, DownloadError::None, 1);
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
    }

    void behaviours()
    {
        QFETCH(int, behaviour);
        QFETCH(DownloadError, error);
        m_server->setBehaviour(packagePath(), Server::Behaviour(behaviour));
        if (error != DownloadError::None)
            expectWarning("failed: .+");
        QCOMPARE(download(), QStringLiteral("finished big 2 %1").arg(int(error)));
        QTEST(m_server->requests.size(), "requests");
        if (behaviour == Server::BreakOnce) {
            const qint64 size = QFileInfo(m_server->directory.path() + packagePath()).size();
            QCOMPARE(m_server->requests.last(),
                     QStringLiteral("GET %1 bytes=%2-").arg(packagePath()).arg(size / 2));
        }

        const bool isThere = error == DownloadError::None;
        QCOMPARE(item()->needsDownload(), !isThere);
        QCOMPARE(!item()->effect().isNull(), isThere);
        QCOMPARE(m_fixture->log.count("on disk big"), isThere ? 1 : 0);
        QCOMPARE(m_fixture->files().size(), isThere ? 1 : 0);
        m_fixture->open();
        QCOMPARE(item()->needsDownload(), !isThere);

        // Whatever it was, it does not stand in the way of the next attempt.
        m_server->setBehaviour(packagePath(), Server::Whole);
        QCOMPARE(download(), QStringLiteral("finished big 2 0"));
        QVERIFY(item()->effect());
    }

    void oneDownloadPerFile()
    {
        m_server->setBehaviour(packagePath(), Server::Slow);
        IZkMediaItemManager *manager = m_fixture->manager();
        QCOMPARE(manager->downloadItem(item(), DownloadPreset), int(DownloadStarted));
        QCOMPARE(manager->downloadItem(item(), DownloadPreset), int(DownloadRunning));
        QCOMPARE(manager->downloadItem(item(), DownloadThumbnail), int(DownloadStarted));
        QVERIFY(m_fixture->log.entries.isEmpty());
        QTRY_COMPARE(m_fixture->log.count("finished big 2 0"), 1);
        QCOMPARE(m_fixture->log.count("finished big 0 0"), 1);
        QVERIFY(QFile::exists(item()->thumbnailPath()));
        QTest::qWait(50);
        QCOMPARE(m_fixture->log.count("finished"), 2);
        QCOMPARE(m_server->requests.size(), 2);
    }

    void manyWaitForTheirTurn()
    {
        QVERIFY(m_server->serve(looks("n0 n1 n2 n3 n4 n5 n6 n7")));
        m_fixture->settings.downloads.maximumParallel = 2;
        m_fixture->open();
        QCOMPARE(m_fixture->refresh(), 0);
        for (IZkEffectMediaItem *item : m_fixture->items())
            m_fixture->manager()->downloadItem(item, DownloadPreset);
        QTRY_COMPARE(m_fixture->log.count("finished n\\d 2 0"), 8);
    }

    void cancelled()
    {
        const QString end = QStringLiteral("finished big 2 %1").arg(int(DownloadError::Cancelled));
        m_fixture->manager()->downloadItem(item(), DownloadPreset);
        QVERIFY(m_fixture->library().cancelDownload(item(), DownloadPreset)); // before its turn
        QVERIFY(m_fixture->log.entries.isEmpty());
        QTRY_COMPARE(m_fixture->log.count(end), 1);

        start();
        QCOMPARE(m_fixture->files().size(), 1);
        QVERIFY(m_fixture->library().cancelDownload(item(), DownloadPreset));
        QCOMPARE(m_fixture->log.count(end), 1);
        QTRY_COMPARE(m_fixture->log.count(end), 2);
        QVERIFY(m_fixture->files().isEmpty() && item()->needsDownload());
        QVERIFY(!m_fixture->library().cancelDownload(item(), DownloadPreset));
    }

    void serverIsDown()
    {
        m_server->close();
        expectWarning("failed: .+");
        QCOMPARE(download(), QStringLiteral("finished big 2 1"));
        m_fixture->manager()->loadFolder(m_fixture->presets());
        QTRY_COMPARE(m_fixture->presets()->loadState(), int(zkmsLoaded));
        expectWarning("no catalogue: http");
        QCOMPARE(m_fixture->refresh(), int(DownloadError::Network));
        QCOMPARE(m_fixture->presets()->loadState(), int(zkmsFetchMoreError));
        QCOMPARE(m_fixture->log.count("state subject_smart_cutout_preset 2"), 1);
        QCOMPARE(m_fixture->slugs(), QStringLiteral("big"));
    }

    void fileTooLargeIsRefused()
    {
        m_fixture->settings.downloads.maximumBytes = 5000; // more than the catalogue has
        m_fixture->open();
        expectWarning("too large");
        QCOMPARE(download(), QStringLiteral("finished big 2 6"));
        QVERIFY(m_server->requests.isEmpty());
        m_fixture->settings.downloads.maximumBytes = 100;
        m_fixture->open();
        expectWarning("too large");
        QCOMPARE(m_fixture->refresh(), int(DownloadError::Refused));
    }

    void diskIsUnusable()
    {
        QDir library(m_fixture->settings.directory);
        for (const char *needed : {"packages", "incoming"}) {
            QVERIFY(library.rmdir(QLatin1String(needed)));
            QFile inTheWay(library.filePath(QLatin1String(needed)));
            QVERIFY(inTheWay.open(QIODevice::WriteOnly));
            expectWarning("failed: .+");
            QCOMPARE(download(), QStringLiteral("finished big 2 4"));
            QVERIFY(inTheWay.remove());
            QVERIFY(m_fixture->files().isEmpty());
        }
    }

    void libraryEndsMeanwhile()
    {
        start();
        m_fixture->close();
        QVERIFY(m_fixture->files().isEmpty());
        QTest::qWait(20);
        QCOMPARE(m_fixture->log.count("finished"), 0);
    }

    void refreshBringsUpdates()
    {
        download();
        m_fixture->download("big", DownloadThumbnail);
        const QStringList before = m_fixture->files();
        IZkEffectMediaItem *item = m_fixture->item("big");

        QVERIFY(QFile::remove(m_server->directory.path() + packagePath()));
        QVERIFY(m_server->serve({makeLook("big", 2, 20)}));
        m_server->setBehaviour(packagePath(), Server::BreakAlways);
        expectWarning("failed: .+");
        QCOMPARE(m_fixture->refresh(), 0);
        QTRY_COMPARE(m_fixture->log.count("finished big 2 1"), 1);
        // The new version did not arrive: the old one goes on being usable.
        QVERIFY(!item->needsDownload() && item->effect());

        m_server->setBehaviour(packagePath(), Server::Whole);
        QCOMPARE(m_fixture->refresh(), 0);
        QTRY_COMPARE(m_fixture->log.count("finished big 2 0"), 2);
        QVERIFY(item->effect());
        QCOMPARE(m_fixture->files().size(), before.size());
        QVERIFY(m_fixture->files().filter("packages") != before.filter("packages"));
    }

    void refreshDoesNotDisturbADownload()
    {
        start();
        QVERIFY(m_server->serve(looks("x")));
        QCOMPARE(m_fixture->refresh(), 0);
        QCOMPARE(m_fixture->log.count("finished"), 0);
        QTRY_COMPARE(m_fixture->log.count("finished big 2 0"), 1);
        QVERIFY(item()->effect());

        const QVector<int> percents = m_fixture->log.percents;
        QVERIFY(percents.size() > 10 && percents.first() < 20);
        QCOMPARE(percents.last(), 100);
        for (int i = 1; i < percents.size(); ++i)
            QVERIFY(percents.at(i) > percents.at(i - 1));
    }
};

ZK_TEST_MAIN(TestDownloads)
#include "tst_downloads.moc"
