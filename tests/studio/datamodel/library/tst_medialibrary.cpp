// The library by itself, without a server, and what observers hear when its contents change.
#include "LibraryFixture.h"

#include "ZkTestMain.h"

#include <QEventLoop>
#include <QFile>
#include <QImageReader>
#include <QTimer>

#include <tuple>

using namespace ZKVBLMODEL;

class TestMediaLibrary : public QObject
{
    Q_OBJECT

    std::unique_ptr<LibraryFixture> m_fixture;

    IZkEffectMediaItem *glow() const { return m_fixture->item("glow"); }

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<LibraryFixture>();
        QVERIFY(m_fixture->open() && m_fixture->import("glow apple"));
        m_fixture->log.entries.clear();
    }

    void startsWithoutANetwork()
    {
        const QVector<qint64> ids {glow()->id(), m_fixture->item("apple")->id()};
        QVERIFY(ids.at(0) > 0 && ids.at(1) > 0 && ids.at(0) != ids.at(1));
        for (IZkEffectMediaItem *item : m_fixture->items()) {
            QCOMPARE(item->name(), item->slug().toUpper());
            QVERIFY(!item->needsDownload());
            QCOMPARE(item->effect()->descriptor()->slug(), item->slug());
            QVERIFY(item->effect() != item->effect());
            QCOMPARE(QImageReader(item->thumbnailPath()).size(), QSize(108, 108));
        }

        // The next start finds everything as it was, ids too, and writes nothing.
        const QStringList files = m_fixture->files();
        QCOMPARE(files.size(), 4);
        const QDateTime time = QFileInfo(glow()->thumbnailPath()).lastModified();
        QVERIFY(m_fixture->open() && m_fixture->import("glow apple"));
        QCOMPARE(m_fixture->slugs(), QStringLiteral("glow apple"));
        QCOMPARE((QVector<qint64> {glow()->id(), m_fixture->item("apple")->id()}), ids);
        QCOMPARE(m_fixture->files(), files);
        QCOMPARE(QFileInfo(glow()->thumbnailPath()).lastModified(), time);
        QVERIFY(!m_fixture->library().refreshCatalogue());
    }

    void loadsFoldersLater()
    {
        IZkFolderMedia *folder = m_fixture->presets();
        QCOMPARE(folder->loadState(), int(zkmsUnknow));
        QVERIFY(m_fixture->manager()->loadFolder(folder));
        QVERIFY(m_fixture->manager()->loadFolder(folder));
        QCOMPARE(folder->loadState(), int(zkmsLoading));
        QVERIFY(m_fixture->log.entries.isEmpty());
        QTest::qWait(10);
        QCOMPARE(folder->loadState(), int(zkmsLoaded));
        QCOMPARE(m_fixture->log.text(), QStringLiteral("loaded subject_smart_cutout_preset"));
    }

    void refusesWhatItDoesNotKnow()
    {
        LibraryFixture other;
        QVERIFY(other.open() && other.import("glow"));
        IZkMediaItemManager *manager = m_fixture->manager();
        QVERIFY(!manager->loadFolder(other.root()) && !manager->loadFolder(nullptr));
        QCOMPARE(manager->downloadItem(nullptr, DownloadPreset), int(DownloadRefused));
        QCOMPARE(manager->downloadItem(other.item("glow"), DownloadPreset), int(DownloadRefused));
        QCOMPARE(manager->downloadItem(glow(), DownloadPreview), int(DownloadRefused));
        QVERIFY(!m_fixture->library().cancelDownload(glow(), DownloadPreset));
        QTest::qWait(20);
        QVERIFY(m_fixture->log.entries.isEmpty());
    }

    void makesMissingThumbnailsAgain()
    {
        // What is there already is reported as complete.
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(m_fixture->download("glow", DownloadThumbnail),
                     QStringLiteral("finished glow 0 0"));
            QVERIFY(QImageReader(glow()->thumbnailPath()).canRead());
            QVERIFY(QFile::remove(glow()->thumbnailPath()));
        }
        QVERIFY(m_fixture->open() && m_fixture->import("glow"));
        QVERIFY(QImageReader(glow()->thumbnailPath()).canRead());
    }

    void damagedPackageIsMadeAgain()
    {
        const QString path = m_fixture->files().filter("packages/glow").first();
        QFile file(m_fixture->directory.filePath("library/" + path));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(5) && file.putChar('!'));
        file.close();
        expectWarning("missing or damaged");
        QVERIFY(!glow()->effect());
        QTRY_VERIFY(glow()->needsDownload());
        QCOMPARE(m_fixture->log.text(), QStringLiteral("on disk glow"));
        QVERIFY(!glow()->effect());
        QCOMPARE(m_fixture->download("glow"), QStringLiteral("finished glow 2 0"));
        QVERIFY(!glow()->needsDownload() && glow()->effect());
    }

    void damagedDatabaseStartsAnew()
    {
        m_fixture->close();
        QFile database(m_fixture->settings.directory + "/library.db");
        QVERIFY(database.open(QIODevice::WriteOnly) && database.write("xxxx") == 4);
        database.close();
        expectWarning("is damaged");
        QVERIFY(m_fixture->open() && m_fixture->files().isEmpty());
        QVERIFY(m_fixture->import("glow") && glow()->effect());
    }

    void unusableLibraryHasAnEmptyRoot()
    {
        LibraryFixture fixture;
        QFile inTheWay(fixture.settings.directory);
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        expectWarning("cannot be opened");
        QString error;
        QVERIFY(!fixture.open(&error) && !error.isEmpty());
        QVERIFY(!fixture.import("glow") && fixture.items().isEmpty());
        QVERIFY(!fixture.library().refreshCatalogue());
        QVERIFY(fixture.manager()->loadFolder(fixture.root()));
    }

    void importsAreToldStepByStep()
    {
        const QString loaded = "loaded subject_smart_cutout_preset";
        const std::tuple<QString, QString, QString> rows[] = {
            {"a b", "a b", ""},
            {"a", "a b", "adding b,added b," + loaded},
            {"a b c", "a c", "removing b,removed b," + loaded},
            {"a b", "a c", "removing b,removed b,adding c,added c," + loaded},
            {"b", "a b", "before reload,after reload"},
            {"a b", "b a", "before reload,after reload"}};
        for (const auto &[before, after, notices] : rows) {
            init();
            QVERIFY(m_fixture->import(before));
            m_fixture->manager()->loadFolder(m_fixture->presets());
            QTRY_COMPARE(m_fixture->log.count("loaded"), 1);
            m_fixture->log.entries.clear();
            QVERIFY(m_fixture->import(after));
            QCOMPARE(m_fixture->log.text(), notices);
            QCOMPARE(m_fixture->slugs(), after);
            QCOMPARE(m_fixture->presets()->loadState(), int(zkmsLoaded));
            QCOMPARE(m_fixture->files().size(), 2 * m_fixture->items().size());
        }
    }

    void changedLookReplacesItsFiles()
    {
        m_fixture->import("a b");
        const QStringList before = m_fixture->files();
        const IZkEffectMediaItem *item = m_fixture->item("a");
        m_fixture->log.entries.clear();
        zk::effects::Look changed = makeLook("a", 2, 3);
        changed.name = "Better";
        QVERIFY(m_fixture->library().importLooks({changed, makeLook("b")}));
        QCOMPARE(m_fixture->log.text(), QStringLiteral("changed a"));
        QCOMPARE(m_fixture->item("a"), item);
        QCOMPARE(item->name(), changed.name);
        QVERIFY(item->effect());
        QCOMPARE(m_fixture->files().size(), before.size());
        QVERIFY(m_fixture->files() != before);
    }

    void oldTreeLivesThroughTheReload()
    {
        m_fixture->import("a b");
        IZkFolderMedia *const oldFolder = m_fixture->presets();
        IZkAbstractMediaItem *const item = m_fixture->item("a");
        QStringList seen;
        m_fixture->log.onEntry = [&](const QString &entry) {
            seen << entry << (m_fixture->presets() == oldFolder ? "old" : "new")
                 << oldFolder->medias(true).first()->name();
        };
        m_fixture->import("b a");
        QCOMPARE(seen.join(QLatin1Char(',')),
                 QStringLiteral("before reload,old,A,after reload,new,A"));
        // Items outlive every reload.
        QCOMPARE(m_fixture->item("a"), item);
    }

    void observersMayGoDuringANotice()
    {
        IZkMediaItemManager *manager = m_fixture->manager();
        NoticeLog second;
        manager->addObserver(&second);
        manager->addObserver(&second);
        m_fixture->log.onEntry = [&](const QString &) { manager->removeObserver(&second); };
        manager->loadFolder(m_fixture->root());
        QTRY_COMPARE(m_fixture->log.entries.size(), 1);
        QVERIFY(second.entries.isEmpty());

        NoticeLog late;
        m_fixture->log.onEntry = [&](const QString &) { manager->addObserver(&late); };
        manager->loadFolder(m_fixture->root());
        QTRY_COMPARE(m_fixture->log.entries.size(), 2);
        QVERIFY(late.entries.isEmpty());
        m_fixture->log.onEntry = nullptr;
        manager->loadFolder(m_fixture->root());
        QTRY_COMPARE(late.entries.size(), 1);
    }

    // A view that answers a notice with a dialog lets the world turn meanwhile.
    void reloadInsideANoticeKillsNothing()
    {
        m_fixture->import("a b c");
        IZkFolderMedia *const folder = m_fixture->presets();
        IZkAbstractMedia *const media = folder->medias(true).first();
        QString afterwards;
        m_fixture->log.onEntry = [&](const QString &entry) {
            if (!entry.startsWith(QLatin1String("finished")))
                return;
            QEventLoop loop;
            QTimer::singleShot(0, &loop, [&] {
                m_fixture->import("c b a");
                m_fixture->import("c b");
                loop.quit();
            });
            loop.exec();
            afterwards = media->name() + folder->name() + media->mediaItem()->slug();
        };
        QCOMPARE(m_fixture->download("a"), QStringLiteral("finished a 2 0"));
        QCOMPARE(afterwards, QStringLiteral("Asubject_smart_cutout_preseta"));
        QCOMPARE(m_fixture->slugs(), QStringLiteral("c b"));
    }
};

ZK_TEST_MAIN(TestMediaLibrary)
#include "tst_medialibrary.moc"
