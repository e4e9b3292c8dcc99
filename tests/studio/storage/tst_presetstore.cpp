#include "ZkDurableFile.h"
#include "ZkPresetStore.h"

#include "ZkTestMain.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

using namespace zk::storage;
using OpenResult = PresetStore::OpenResult;

class TestPresetStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsItems();
    void keepsOrder();
    void mutatorsAreAllOrNothing();
    void transactionsNest();
    void emptyFoldersGo();
    void filesFollowTheirRows();
    void repairsWhatAKillLeaves();
    void secondProgramLeavesTheFirstAlone();
    void damagedDatabaseIsRebuilt_data();
    void damagedDatabaseIsRebuilt();
    void newerDatabaseIsNotTouched();
    void unusableDirectoryIsAnError();

private:
    static PresetItem makeItem(PresetStore &store, const QString &slug, int position = 0);
    static void putFile(PresetStore &store, PresetItem *item, const QByteArray &bytes);
    static bool write(const QString &path, const QByteArray &bytes);
    static void runSql(const QString &path, const QStringList &statements);
};

// In the folder A/B of category 1.
PresetItem TestPresetStore::makeItem(PresetStore &store, const QString &slug, int position)
{
    store.saveCategory({1, QStringLiteral("One")});
    PresetItem item;
    item.slug = slug;
    item.name = slug.toUpper();
    item.kind = 10;
    item.folder = store.ensureFolder(1, {QStringLiteral("A"), QStringLiteral("B")});
    item.position = position;
    item.package.url = QUrl(QStringLiteral("http://host/päckage.json"));
    item.package.sha256 = sha256Of(slug.toUtf8());
    item.package.size = 12345678901;
    return item;
}

void TestPresetStore::putFile(PresetStore &store, PresetItem *item, const QByteArray &bytes)
{
    item->package.sha256 = sha256Of(bytes);
    const QString file = PresetStore::fileFor(*item, ResourceKind::Package);
    QVERIFY(store.saveItem(item));
    QVERIFY(write(store.absolutePath(file), bytes));
    QVERIFY(store.setFile(item->id, ResourceKind::Package, file));
    QVERIFY(store.findItem(item->id, item));
}

bool TestPresetStore::write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

void TestPresetStore::runSql(const QString &path, const QStringList &statements)
{
    const QString name = QStringLiteral("test");
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(path);
        QVERIFY(database.open());
        for (const QString &statement : statements)
            QVERIFY(QSqlQuery(database).exec(statement));
    }
    QSqlDatabase::removeDatabase(name);
}

void TestPresetStore::keepsItems()
{
    QTemporaryDir directory;
    PresetItem item;
    {
        PresetStore store(directory.path());
        QCOMPARE(store.open(), OpenResult::Created);
        item = makeItem(store, QStringLiteral("glow"), 4);
        item.version = 3;
        item.origin = ItemOrigin::Server;
        QVERIFY(store.saveItem(&item));
        QVERIFY(item.id > 0);
        item.name = QStringLiteral("Glöw");
        QVERIFY(store.saveItem(&item));
    }
    PresetStore store(directory.path());
    QCOMPARE(store.open(), OpenResult::Opened);
    PresetItem read;
    QVERIFY(store.findItem(QStringLiteral("glow"), &read));
    QCOMPARE(read.id, item.id);
    QCOMPARE(read.name, QStringLiteral("Glöw"));
    QCOMPARE(read.kind, 10);
    QCOMPARE(read.folder, item.folder);
    QCOMPARE(read.version, 3);
    QCOMPARE(read.position, 4);
    QVERIFY(read.origin == ItemOrigin::Server);
    QCOMPARE(read.package.url, item.package.url);
    QCOMPARE(read.package.sha256, item.package.sha256);
    QCOMPARE(read.package.size, item.package.size);
    QVERIFY(!read.package.isOnDisk());
    QVERIFY(!store.findItem(item.id + 1, &read));
    QCOMPARE(store.categories().size(), 1);
}

void TestPresetStore::keepsOrder()
{
    QTemporaryDir directory;
    PresetStore store(directory.path());
    store.open();
    PresetItem last = makeItem(store, QStringLiteral("server"), 0);
    last.origin = ItemOrigin::Server;
    PresetItem second = makeItem(store, QStringLiteral("second"), 2);
    PresetItem first = makeItem(store, QStringLiteral("first"), 1);
    for (PresetItem *item : {&last, &second, &first})
        QVERIFY(store.saveItem(item));
    QStringList slugs;
    const QVector<PresetItem> items = store.items();
    for (const PresetItem &item : items)
        slugs.append(item.slug);
    QCOMPARE(slugs.join(QLatin1Char(' ')), QStringLiteral("first second server"));

    const qint64 other = store.ensureFolder(1, {QStringLiteral("Other")});
    const qint64 deep = store.ensureFolder(1, {QStringLiteral("A"), QStringLiteral("C")});
    const QVector<PresetFolder> folders = store.folders(1);
    QStringList names;
    for (const PresetFolder &folder : folders)
        names.append(folder.name);
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("A Other B C"));
    QCOMPARE(folders.at(1).id, other);
    QCOMPARE(folders.at(3).id, deep);
    QCOMPARE(folders.at(3).parent, folders.at(0).id);
    QVERIFY(store.folders(2).isEmpty());
}

void TestPresetStore::mutatorsAreAllOrNothing()
{
    QTemporaryDir directory;
    PresetStore store(directory.path());
    store.open();
    PresetItem item = makeItem(store, QStringLiteral("glow"));
    QVERIFY(store.saveItem(&item));

    PresetItem twin = makeItem(store, QStringLiteral("glow"));
    QVERIFY(!store.saveItem(&twin));
    QCOMPARE(twin.id, qint64(0));
    QVERIFY(!store.errorText().isEmpty());
    PresetItem homeless = makeItem(store, QStringLiteral("homeless"));
    homeless.folder = 4711;
    QVERIFY(!store.saveItem(&homeless));
    PresetItem unknown = makeItem(store, QStringLiteral("unknown"));
    unknown.id = 4711;
    QVERIFY(!store.saveItem(&unknown));
    QCOMPARE(store.ensureFolder(1, {QStringLiteral("New"), QString()}), qint64(0));
    QCOMPARE(store.ensureFolder(2, {QStringLiteral("Category is missing")}), qint64(0));
    QVERIFY(!store.removeItem(4711));
    QVERIFY(!store.clearFile(4711, ResourceKind::Package));
    QVERIFY(!store.setFile(item.id, ResourceKind::Package, QStringLiteral("packages/missing")));

    QCOMPARE(store.items().size(), 1);
    QCOMPARE(store.folders(1).size(), 2);
    QVERIFY(!store.items().first().package.isOnDisk());
}

void TestPresetStore::transactionsNest()
{
    QTemporaryDir directory;
    PresetStore store(directory.path());
    store.open();
    PresetItem kept = makeItem(store, QStringLiteral("kept"));
    putFile(store, &kept, "kept");
    const QString file = store.absolutePath(kept.package.file);
    {
        PresetStore::Transaction outer(store);
        PresetItem added = makeItem(store, QStringLiteral("added"));
        QVERIFY(store.saveItem(&added));
        {
            const PresetStore::Transaction inner(store);
            QVERIFY(store.removeItem(kept.id));
        }
        QVERIFY(outer.commit());
    }
    QCOMPARE(store.items().size(), 2);
    QVERIFY(QFile::exists(file));
    {
        const PresetStore::Transaction undone(store);
        QVERIFY(store.removeItem(kept.id));
        QVERIFY(QFile::exists(file));
    }
    QVERIFY(QFile::exists(file));
    QVERIFY(store.removeItem(kept.id));
    QVERIFY(!QFile::exists(file));
    QCOMPARE(store.items().size(), 1);
}

void TestPresetStore::emptyFoldersGo()
{
    QTemporaryDir directory;
    PresetStore store(directory.path());
    store.open();
    PresetItem item = makeItem(store, QStringLiteral("glow"));
    QVERIFY(store.saveItem(&item));
    store.ensureFolder(1, {QStringLiteral("A"), QStringLiteral("X"), QStringLiteral("Y")});
    const qint64 kept = store.ensureFolder(1, {QStringLiteral("Kept"), QStringLiteral("K")});
    QCOMPARE(store.folders(1).size(), 6);
    QVERIFY(store.removeEmptyFolders(1, {kept}));
    QStringList names;
    const QVector<PresetFolder> folders = store.folders(1);
    for (const PresetFolder &folder : folders)
        names.append(folder.name);
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("A Kept B K"));
}

void TestPresetStore::filesFollowTheirRows()
{
    QTemporaryDir directory;
    PresetStore store(directory.path());
    store.open();
    PresetItem item = makeItem(store, QStringLiteral("glow"));
    putFile(store, &item, "old");
    const QString oldFile = store.absolutePath(item.package.file);
    QVERIFY(!item.package.hasUpdate());

    // What is offered changes; the old file stays until the new one is in its place.
    item.package.sha256 = sha256Of("new");
    QVERIFY(store.saveItem(&item));
    QVERIFY(store.findItem(item.id, &item));
    QVERIFY(item.package.isOnDisk() && item.package.hasUpdate());
    QVERIFY(QFile::exists(oldFile));
    putFile(store, &item, "new");
    QVERIFY(!item.package.hasUpdate());
    QVERIFY(!QFile::exists(oldFile));

    const QString newFile = store.absolutePath(item.package.file);
    QVERIFY(newFile != oldFile);
    QVERIFY(store.clearFile(item.id, ResourceKind::Package));
    QVERIFY(!QFile::exists(newFile));
    QVERIFY(!store.items().first().package.isOnDisk());
    // Nothing of an address gets into a file name but a known suffix.
    item.thumbnail.url = QUrl(QStringLiteral("http://host/a.JPG"));
    QVERIFY(PresetStore::fileFor(item, ResourceKind::Thumbnail).endsWith(QLatin1String(".jpg")));
    item.thumbnail.url = QUrl(QStringLiteral("http://host/a.exe"));
    QVERIFY(PresetStore::fileFor(item, ResourceKind::Thumbnail).endsWith(QLatin1String(".png")));
}

void TestPresetStore::repairsWhatAKillLeaves()
{
    QTemporaryDir directory;
    QStringList halfMade;
    {
        PresetStore store(directory.path());
        store.open();
        PresetItem gone = makeItem(store, QStringLiteral("gone"));
        putFile(store, &gone, "gone");
        PresetItem shortened = makeItem(store, QStringLiteral("shortened"));
        putFile(store, &shortened, "shortened");
        PresetItem whole = makeItem(store, QStringLiteral("whole"));
        putFile(store, &whole, "whole");
        QVERIFY(QFile::remove(store.absolutePath(gone.package.file)));
        QVERIFY(write(store.absolutePath(shortened.package.file), "sh"));
        halfMade << store.incomingPath(QStringLiteral("packages/x.json"))
                 << store.absolutePath(QStringLiteral("packages/unnamed.json"))
                 << store.absolutePath(QStringLiteral("thumbnails/unnamed.png"));
        QVERIFY(halfMade.first() != store.incomingPath(QStringLiteral("packages/x.json")));
        for (const QString &path : qAsConst(halfMade))
            QVERIFY(write(path, "half"));
    }
    PresetStore store(directory.path());
    QCOMPARE(store.open(), OpenResult::Opened);
    for (const QString &path : qAsConst(halfMade))
        QVERIFY2(!QFile::exists(path), qPrintable(path));
    const QVector<PresetItem> items = store.items();
    for (const PresetItem &item : items)
        QCOMPARE(item.package.isOnDisk(), item.slug == QLatin1String("whole"));
}

void TestPresetStore::secondProgramLeavesTheFirstAlone()
{
    QTemporaryDir directory;
    PresetStore first(directory.path());
    first.open();
    const QString arriving = first.incomingPath(QStringLiteral("packages/x.json"));
    QVERIFY(write(arriving, "half"));
    PresetStore second(directory.path());
    QCOMPARE(second.open(), OpenResult::Opened);
    QVERIFY(QFile::exists(arriving));
    PresetItem item = makeItem(second, QStringLiteral("glow"));
    QVERIFY(second.saveItem(&item));
    QCOMPARE(first.items().size(), 1);
}

void TestPresetStore::damagedDatabaseIsRebuilt_data()
{
    QTest::addColumn<QString>("damage");
    for (const char *damage : {"garbage", "header", "cut", "pages", "foreign"})
        QTest::newRow(damage) << QString::fromLatin1(damage);
}

void TestPresetStore::damagedDatabaseIsRebuilt()
{
    QFETCH(QString, damage);
    QTemporaryDir directory;
    QString path;
    {
        PresetStore store(directory.path());
        store.open();
        path = store.databasePath();
        PresetStore::Transaction transaction(store);
        for (int i = 0; i < 100; ++i) {
            PresetItem item = makeItem(store, QStringLiteral("item-%1").arg(i));
            QVERIFY(store.saveItem(&item));
        }
        QVERIFY(transaction.commit());
    }
    if (damage == QLatin1String("foreign")) {
        QVERIFY(QFile::remove(path));
        runSql(path, {QStringLiteral("CREATE TABLE bookmarks (x)")});
    } else {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray bytes = file.readAll();
        if (damage == QLatin1String("garbage"))
            bytes.fill('x');
        else if (damage == QLatin1String("header"))
            bytes.replace(0, 16, QByteArray(16, '\0'));
        else if (damage == QLatin1String("cut"))
            bytes.truncate(bytes.size() / 2 + 100);
        else
            bytes.replace(4096, 8192, QByteArray(8192, '\x5a'));
        QVERIFY(file.resize(0) && file.seek(0));
        QCOMPARE(file.write(bytes), qint64(bytes.size()));
    }
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("(?s)is damaged .* it was kept as")));
    PresetStore store(directory.path());
    QCOMPARE(store.open(), OpenResult::Rebuilt);
    QVERIFY(store.items().isEmpty());
    const QStringList aside =
        QDir(directory.path()).entryList({QStringLiteral("library.db.damaged-*")});
    QCOMPARE(aside.size(), 1);
    PresetItem item = makeItem(store, QStringLiteral("new"));
    QVERIFY(store.saveItem(&item));
    QCOMPARE(store.open(), OpenResult::Opened);
    QCOMPARE(store.items().size(), 1);
}

void TestPresetStore::newerDatabaseIsNotTouched()
{
    QTemporaryDir directory;
    QString path;
    {
        PresetStore store(directory.path());
        store.open();
        path = store.databasePath();
    }
    runSql(path, {QStringLiteral("PRAGMA user_version = %1").arg(PresetStore::schemaVersion + 1)});
    const QByteArray before = sha256OfFile(path);
    PresetStore store(directory.path());
    QCOMPARE(store.open(), OpenResult::NewerVersion);
    QVERIFY(!store.isOpen());
    QVERIFY(store.errorText().contains(QLatin1String("newer version")));
    QCOMPARE(sha256OfFile(path), before);
}

void TestPresetStore::unusableDirectoryIsAnError()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("file"));
    QVERIFY(write(file, "in the way"));
    PresetStore inFile(file);
    QCOMPARE(inFile.open(), OpenResult::Failed);
    QVERIFY(!inFile.errorText().isEmpty());

    QVERIFY(QDir(directory.path()).mkpath(QStringLiteral("library/library.db")));
    PresetStore overFolder(directory.filePath(QStringLiteral("library")));
    QCOMPARE(overFolder.open(), OpenResult::Failed);
    QVERIFY(!overFolder.isOpen());
    QVERIFY(!overFolder.errorText().isEmpty());
}

ZK_TEST_CORE_MAIN(TestPresetStore)
#include "tst_presetstore.moc"
