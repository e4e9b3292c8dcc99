// What observers hear when the contents of the library change.
#include "LibraryFixture.h"
#include "TestHttpServer.h"
#include "ZkResourceServerFiles.h"

#include "ZkTestMain.h"

#include <QEventLoop>
#include <QTimer>

using namespace ZKVBLMODEL;
using zk::effects::Look;

namespace {

QVector<Look> looks(const QString &slugs)
{
    QVector<Look> result;
    for (const QString &slug : slugs.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        result.append(makeLook(slug));
    return result;
}

} // namespace

class TestLibraryChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void importsAreToldStepByStep_data();
    void importsAreToldStepByStep();
    void changedLookReplacesItsFiles();
    void oldTreeLivesThroughTheReload();
    void observersMayGoDuringANotice();
    void reloadInsideANoticeKillsNothing();
    void higherVersionWins();
    void serverItemsComeAndGo();
};

void TestLibraryChanges::importsAreToldStepByStep_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("notices");
    const QString loaded = QStringLiteral(" / loaded subject_smart_cutout_preset");
    QTest::newRow("same") << "a b"
                          << "a b"
                          << "";
    QTest::newRow("added") << "a"
                           << "a b"
                           << "adding b / added b" + loaded;
    QTest::newRow("removed") << "a b c"
                             << "a c"
                             << "removing b / removed b" + loaded;
    QTest::newRow("exchanged") << "a b"
                               << "a c"
                               << "removing b / removed b / adding c / added c" + loaded;
    QTest::newRow("added in front") << "b"
                                    << "a b"
                                    << "before reload / after reload";
    QTest::newRow("reordered") << "a b"
                               << "b a"
                               << "before reload / after reload";
}

void TestLibraryChanges::importsAreToldStepByStep()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(QString, notices);
    LibraryFixture fixture;
    fixture.open();
    fixture.library().importLooks(looks(before));
    fixture.library().mediaItemManager()->loadFolder(fixture.presets());
    QTRY_COMPARE(fixture.log.count(QStringLiteral("loaded")), 1);
    fixture.log.entries.clear();
    QVERIFY(fixture.library().importLooks(looks(after)));
    QCOMPARE(fixture.log.entries.join(QStringLiteral(" / ")), notices);
    QCOMPARE(fixture.slugs().join(QLatin1Char(' ')), after);
    QCOMPARE(fixture.presets()->loadState(), int(zkmsLoaded));
    QCOMPARE(fixture.files().size(), 2 * after.split(QLatin1Char(' ')).size());
}

void TestLibraryChanges::changedLookReplacesItsFiles()
{
    LibraryFixture fixture;
    fixture.open();
    fixture.library().importLooks(looks(QStringLiteral("a b")));
    const QStringList before = fixture.files();
    const qint64 id = fixture.item(QStringLiteral("a"))->id();
    fixture.log.entries.clear();
    Look changed = makeLook(QStringLiteral("a"), 2, 3);
    changed.name = QStringLiteral("Better");
    QVERIFY(fixture.library().importLooks({changed, makeLook(QStringLiteral("b"))}));
    QCOMPARE(fixture.log.entries, QStringList {QStringLiteral("changed a")});
    QCOMPARE(fixture.item(QStringLiteral("a"))->id(), id);
    QCOMPARE(fixture.item(QStringLiteral("a"))->name(), QStringLiteral("Better"));
    QVERIFY(fixture.item(QStringLiteral("a"))->effect());
    QCOMPARE(fixture.files().size(), before.size());
    QVERIFY(fixture.files() != before);
}

void TestLibraryChanges::oldTreeLivesThroughTheReload()
{
    LibraryFixture fixture;
    fixture.open();
    fixture.library().importLooks(looks(QStringLiteral("a b")));
    IZkFolderMedia *const oldFolder = fixture.presets();
    IZkAbstractMediaItem *const item = fixture.item(QStringLiteral("a"));
    QStringList seen;
    fixture.log.onEntry = [&](const QString &entry) {
        seen.append(
            entry
            + (fixture.presets() == oldFolder ? QStringLiteral(" old") : QStringLiteral(" new")));
        seen.append(oldFolder->medias(true).first()->name());
    };
    fixture.library().importLooks(looks(QStringLiteral("b a")));
    QCOMPARE(seen.join(QLatin1Char(',')), QStringLiteral("before reload old,A,after reload new,A"));
    // Items outlive every reload.
    QCOMPARE(fixture.item(QStringLiteral("a")), item);
}

void TestLibraryChanges::observersMayGoDuringANotice()
{
    LibraryFixture fixture;
    fixture.open();
    IZkMediaItemManager *manager = fixture.library().mediaItemManager();
    NoticeLog second;
    manager->addObserver(&second);
    manager->addObserver(&second);
    fixture.log.onEntry = [&](const QString &) { manager->removeObserver(&second); };
    manager->loadFolder(fixture.root());
    QTRY_COMPARE(fixture.log.entries.size(), 1);
    QVERIFY(second.entries.isEmpty());

    NoticeLog late;
    fixture.log.onEntry = [&](const QString &) { manager->addObserver(&late); };
    manager->loadFolder(fixture.root());
    QTRY_COMPARE(fixture.log.entries.size(), 2);
    QVERIFY(late.entries.isEmpty());
    fixture.log.onEntry = nullptr;
    manager->loadFolder(fixture.root());
    QTRY_COMPARE(late.entries.size(), 1);
}

// A view that answers a notice with a dialog lets the world turn meanwhile.
void TestLibraryChanges::reloadInsideANoticeKillsNothing()
{
    LibraryFixture fixture;
    fixture.open();
    fixture.library().importLooks(looks(QStringLiteral("a b c")));
    IZkAbstractMedia *const media = fixture.presets()->medias(true).first();
    IZkFolderMedia *const folder = fixture.presets();
    QString nameAfterwards;
    fixture.log.onEntry = [&](const QString &entry) {
        if (!entry.startsWith(QLatin1String("finished")))
            return;
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] {
            fixture.library().importLooks(looks(QStringLiteral("c b a")));
            fixture.library().importLooks(looks(QStringLiteral("c b")));
            loop.quit();
        });
        loop.exec();
        nameAfterwards = media->name() + folder->name() + media->mediaItem()->slug();
    };
    QCOMPARE(fixture.download(QStringLiteral("a"), DownloadPreset),
             QStringLiteral("finished a 2 0"));
    QCOMPARE(nameAfterwards, QStringLiteral("Asubject_smart_cutout_preseta"));
    QCOMPARE(fixture.slugs().join(QLatin1Char(' ')), QStringLiteral("c b"));
}

void TestLibraryChanges::higherVersionWins()
{
    QTemporaryDir served;
    QVERIFY(zk::datamodel::writeResourceServerFiles(
        {makeLook(QStringLiteral("same"), 1, 2), makeLook(QStringLiteral("newer"), 2, 2)},
        served.path()));
    TestHttpServer server;
    server.serveDirectory(served.path());
    LibraryFixture fixture(server.url());
    fixture.open();
    const QVector<Look> own = looks(QStringLiteral("same newer"));
    fixture.library().importLooks(own);
    QCOMPARE(fixture.refresh(), 0);
    QTRY_COMPARE(fixture.log.count(QStringLiteral("finished newer")), 2);
    QCOMPARE(fixture.log.count(QStringLiteral("finished same")), 0);

    // The next start of the program does not bring its older one back, its next release does.
    const QString newer = fixture.item(QStringLiteral("newer"))->thumbnailPath();
    fixture.library().importLooks(own);
    QCOMPARE(fixture.item(QStringLiteral("newer"))->thumbnailPath(), newer);
    fixture.library().importLooks({own.first(), makeLook(QStringLiteral("newer"), 3, 3)});
    QVERIFY(fixture.item(QStringLiteral("newer"))->thumbnailPath() != newer);
    QVERIFY(fixture.item(QStringLiteral("newer"))->effect());
    QCOMPARE(fixture.files().size(), 4);
}

void TestLibraryChanges::serverItemsComeAndGo()
{
    QTemporaryDir served;
    TestHttpServer server;
    LibraryFixture fixture(server.url());
    fixture.open();
    fixture.library().importLooks(looks(QStringLiteral("own")));
    const auto serve = [&](const QString &slugs) {
        QVERIFY(zk::datamodel::writeResourceServerFiles(looks(slugs), served.path()));
        server.serveDirectory(served.path());
        QCOMPARE(fixture.refresh(), 0);
    };
    serve(QStringLiteral("x y"));
    QCOMPARE(fixture.slugs().join(QLatin1Char(' ')), QStringLiteral("own x y"));
    QVERIFY(fixture.item(QStringLiteral("x"))->needsDownload());
    QVERIFY(!fixture.item(QStringLiteral("x"))->effect());
    QCOMPARE(fixture.download(QStringLiteral("x"), DownloadPreset),
             QStringLiteral("finished x 2 0"));
    QVERIFY(fixture.item(QStringLiteral("x"))->effect());

    // What somebody has fetched stays, and what the program brought is not the server's to remove.
    serve(QStringLiteral("z"));
    QCOMPARE(fixture.slugs().join(QLatin1Char(' ')), QStringLiteral("own x z"));
    QVERIFY(fixture.item(QStringLiteral("x"))->effect());
    QVERIFY(!fixture.item(QStringLiteral("y")));
}

ZK_TEST_MAIN(TestLibraryChanges)
#include "tst_librarychanges.moc"
