// The library by itself: no server.
#include "LibraryFixture.h"

#include "ZkTestMain.h"

#include <QDir>
#include <QFile>
#include <QImageReader>

using namespace ZKVBLMODEL;

class TestMediaLibrary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithoutANetwork();
    void hasOneModule();
    void loadsFoldersLater();
    void refusesWhatItDoesNotKnow();
    void makesMissingThumbnailsAgain();
    void damagedPackageIsMadeAgain();
    void effectNeedsAFactoryThatKnowsIt();
    void damagedDatabaseStartsAnew();
    void unusableLibraryHasAnEmptyRoot();
};

void TestMediaLibrary::startsWithoutANetwork()
{
    LibraryFixture fixture;
    QVERIFY(fixture.open());
    QVERIFY(fixture.library().importLooks(
        {makeLook(QStringLiteral("zebra")), makeLook(QStringLiteral("apple"))}));
    QCOMPARE(fixture.slugs().join(QLatin1Char(' ')), QStringLiteral("zebra apple"));
    QSet<qint64> ids;
    for (const QString &slug : fixture.slugs()) {
        IZkEffectMediaItem *item = fixture.item(slug);
        QVERIFY(item->id() > 0);
        ids.insert(item->id());
        QCOMPARE(item->name(), slug.toUpper());
        QVERIFY(!item->needsDownload());
        QCOMPARE(item->effect()->descriptor()->slug(), slug);
        QVERIFY(item->effect() != item->effect());
        QCOMPARE(QImageReader(item->thumbnailPath()).size(), QSize(108, 108));
    }
    QCOMPARE(ids.size(), 2);
    QCOMPARE(fixture.files().size(), 4);

    // The next start finds everything as it was, ids too, and writes nothing.
    const QStringList files = fixture.files();
    const QDateTime time =
        QFileInfo(fixture.item(QStringLiteral("zebra"))->thumbnailPath()).lastModified();
    QVERIFY(fixture.open());
    QVERIFY(fixture.library().importLooks(
        {makeLook(QStringLiteral("zebra")), makeLook(QStringLiteral("apple"))}));
    for (const QString &slug : fixture.slugs())
        QVERIFY(ids.contains(fixture.item(slug)->id()));
    QCOMPARE(fixture.files(), files);
    QCOMPARE(QFileInfo(fixture.item(QStringLiteral("zebra"))->thumbnailPath()).lastModified(),
             time);
    QVERIFY(!fixture.library().refreshCatalogue());
}

void TestMediaLibrary::hasOneModule()
{
    LibraryFixture fixture;
    fixture.open();
    fixture.library().importLooks({makeLook(QStringLiteral("glow"))});
    QVERIFY(!fixture.library().module(SmartCutoutCategory + 1));
    IZkFolderMediaManager *manager = fixture.library().folderMediaManager();
    const auto top = manager->folders(fixture.root(), false);
    QCOMPARE(top.size(), 1);
    QCOMPARE(top.first()->name(), QStringLiteral("Cutout"));
    const auto all = manager->folders(fixture.root(), true);
    QCOMPARE(all.size(), 2);
    QCOMPARE(all.last()->name(), QStringLiteral("subject_smart_cutout_preset"));
    QCOMPARE(all.last()->kind(), int(FolderMedia));
    QVERIFY(!all.last()->mediaItem());
    QVERIFY(manager->folders(nullptr, true).isEmpty());

    QVERIFY(top.first()->medias(false).isEmpty());
    QCOMPARE(top.first()->medias(true).size(), 1);
    IZkAbstractMedia *media = all.last()->medias(false).first();
    QCOMPARE(media->kind(), int(PresetMedia));
    QCOMPARE(media->name(), QStringLiteral("GLOW"));
}

void TestMediaLibrary::loadsFoldersLater()
{
    LibraryFixture fixture;
    fixture.open();
    fixture.library().importLooks({makeLook(QStringLiteral("glow"))});
    fixture.log.entries.clear();
    IZkMediaItemManager *manager = fixture.library().mediaItemManager();
    IZkFolderMedia *folder = fixture.presets();
    QCOMPARE(folder->loadState(), int(zkmsUnknow));
    QVERIFY(!folder->needsLoadAgain());
    QVERIFY(manager->loadFolder(folder));
    QVERIFY(manager->loadFolder(folder));
    QCOMPARE(folder->loadState(), int(zkmsLoading));
    QVERIFY(fixture.log.entries.isEmpty());
    QTest::qWait(10);
    QCOMPARE(folder->loadState(), int(zkmsLoaded));
    QCOMPARE(fixture.log.entries, QStringList {QStringLiteral("loaded ") + folder->name()});

    LibraryFixture other;
    other.open();
    QVERIFY(!manager->loadFolder(other.root()));
    QVERIFY(!manager->loadFolder(nullptr));
    manager->removeObserver(&fixture.log);
    QVERIFY(manager->loadFolder(folder));
    QTest::qWait(10);
    QCOMPARE(fixture.log.entries.size(), 1);
}

void TestMediaLibrary::refusesWhatItDoesNotKnow()
{
    LibraryFixture fixture;
    fixture.open();
    fixture.library().importLooks({makeLook(QStringLiteral("glow"))});
    LibraryFixture other;
    other.open();
    other.library().importLooks({makeLook(QStringLiteral("glow"))});
    fixture.log.entries.clear();
    IZkMediaItemManager *manager = fixture.library().mediaItemManager();
    IZkAbstractMediaItem *item = fixture.item(QStringLiteral("glow"));
    QCOMPARE(manager->downloadItem(nullptr, DownloadPreset), int(DownloadRefused));
    QCOMPARE(manager->downloadItem(other.item(QStringLiteral("glow")), DownloadPreset),
             int(DownloadRefused));
    QCOMPARE(manager->downloadItem(item, DownloadPreview), int(DownloadRefused));
    QVERIFY(!fixture.library().cancelDownload(item, DownloadPreset));
    QTest::qWait(20);
    QVERIFY(fixture.log.entries.isEmpty());
}

void TestMediaLibrary::makesMissingThumbnailsAgain()
{
    LibraryFixture fixture;
    fixture.open();
    fixture.library().importLooks({makeLook(QStringLiteral("glow"))});
    IZkEffectMediaItem *item = fixture.item(QStringLiteral("glow"));
    // What is there already is reported as complete.
    QCOMPARE(fixture.download(QStringLiteral("glow"), DownloadThumbnail),
             QStringLiteral("finished glow 0 0"));
    QVERIFY(QFile::remove(item->thumbnailPath()));
    QCOMPARE(fixture.download(QStringLiteral("glow"), DownloadThumbnail),
             QStringLiteral("finished glow 0 0"));
    QVERIFY(QImageReader(item->thumbnailPath()).canRead());

    QVERIFY(QFile::remove(item->thumbnailPath()));
    fixture.open();
    fixture.library().importLooks({makeLook(QStringLiteral("glow"))});
    QVERIFY(QImageReader(fixture.item(QStringLiteral("glow"))->thumbnailPath()).canRead());
}

void TestMediaLibrary::damagedPackageIsMadeAgain()
{
    LibraryFixture fixture;
    fixture.open();
    fixture.library().importLooks({makeLook(QStringLiteral("glow"))});
    IZkEffectMediaItem *item = fixture.item(QStringLiteral("glow"));
    const QString path = fixture.directory.filePath(QStringLiteral("library/"))
        + fixture.files().filter(QStringLiteral("packages")).first();
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.seek(5) && file.putChar('!'));
    file.close();

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("missing or damaged")));
    QVERIFY(!item->effect());
    QTRY_VERIFY(item->needsDownload());
    QCOMPARE(fixture.log.count(QStringLiteral("on disk glow")), 1);
    QVERIFY(!item->effect());
    QCOMPARE(fixture.download(QStringLiteral("glow"), DownloadPreset),
             QStringLiteral("finished glow 2 0"));
    QVERIFY(!item->needsDownload());
    QVERIFY(item->effect());
}

void TestMediaLibrary::effectNeedsAFactoryThatKnowsIt()
{
    LibraryFixture fixture;
    fixture.settings.effectFactory = [](const QByteArray &, const QString &, QString *error) {
        *error = QStringLiteral("not this one");
        return ZkEffectPtr();
    };
    fixture.open();
    fixture.library().importLooks({makeLook(QStringLiteral("glow"))});
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("not this one")));
    QVERIFY(!fixture.item(QStringLiteral("glow"))->effect());
    fixture.settings.effectFactory = nullptr;
    fixture.open();
    QVERIFY(!fixture.item(QStringLiteral("glow"))->effect());
}

void TestMediaLibrary::damagedDatabaseStartsAnew()
{
    LibraryFixture fixture;
    fixture.open();
    fixture.library().importLooks({makeLook(QStringLiteral("glow"))});
    fixture.close();
    QFile database(fixture.settings.directory + QStringLiteral("/library.db"));
    QVERIFY(database.open(QIODevice::WriteOnly) && database.write(QByteArray(5000, 'x')) == 5000);
    database.close();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is damaged")));
    QVERIFY(fixture.open());
    QVERIFY(fixture.files().isEmpty());
    QVERIFY(fixture.library().importLooks({makeLook(QStringLiteral("glow"))}));
    QVERIFY(fixture.item(QStringLiteral("glow"))->effect());
}

void TestMediaLibrary::unusableLibraryHasAnEmptyRoot()
{
    LibraryFixture fixture;
    QFile inTheWay(fixture.settings.directory);
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot be opened")));
    QString error;
    QVERIFY(!fixture.open(&error));
    QVERIFY(!error.isEmpty());
    QVERIFY(!fixture.library().importLooks({makeLook(QStringLiteral("glow"))}));
    QVERIFY(fixture.root());
    QVERIFY(fixture.root()->medias(true).isEmpty());
    QVERIFY(!fixture.library().refreshCatalogue());
    QVERIFY(fixture.library().mediaItemManager()->loadFolder(fixture.root()));
}

ZK_TEST_MAIN(TestMediaLibrary)
#include "tst_medialibrary.moc"
