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

namespace {

constexpr ResourceKind Package = ResourceKind::Package;

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

void runSql(const QString &path, const QString &statement)
{
    const QString name = QStringLiteral("test");
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(path);
        QVERIFY(database.open() && QSqlQuery(database).exec(statement));
    }
    QSqlDatabase::removeDatabase(name);
}

QStringList path(const char *folders)
{
    return QString::fromLatin1(folders).split(QLatin1Char('/'));
}

// What a row holds of the item itself.
QString values(const PresetItem &i)
{
    QString text;
    QDebug(&text) << i.id << i.slug << i.name << i.kind << i.folder << i.version << i.position
                  << int(i.origin) << i.package.url << i.package.sha256 << i.package.size;
    return text;
}

} // namespace

class TestPresetStore : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<PresetStore> m_store;

    OpenResult open()
    {
        m_store.reset();
        m_store = std::make_unique<PresetStore>(m_directory->path());
        return m_store->open();
    }

    // In the folder A/B of category 1; not saved yet.
    PresetItem makeItem(const char *slug, int position = 0)
    {
        m_store->saveCategory({1, QStringLiteral("One")});
        PresetItem item;
        item.slug = QLatin1String(slug);
        item.folder = m_store->ensureFolder(1, path("A/B"));
        item.position = position;
        return item;
    }

    // The absolute path of its package, which then holds the bytes; empty on failure.
    QString putFile(PresetItem *item, const QByteArray &bytes)
    {
        item->package.sha256 = sha256Of(bytes);
        const QString file = PresetStore::fileFor(*item, Package);
        const QString absolute = m_store->absolutePath(file);
        const bool isPut = m_store->saveItem(item) && write(absolute, bytes)
            && m_store->setFile(item->id, Package, file) && m_store->findItem(item->id, item);
        return isPut ? absolute : QString();
    }

    QString folderNames() const
    {
        QStringList names;
        for (const PresetFolder &folder : m_store->folders(1))
            names.append(folder.name);
        return names.join(QLatin1Char(' '));
    }

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        QCOMPARE(open(), OpenResult::Created);
    }
    void cleanup() { m_store.reset(); } // before its directory goes

    void keepsItems()
    {
        PresetItem item = makeItem("glow", 4);
        item.kind = 10;
        item.version = 3;
        item.origin = ItemOrigin::Server;
        item.package.url = QUrl(QStringLiteral("http://host/päckage.json"));
        item.package.sha256 = sha256Of("glow");
        item.package.size = 12345678901;
        QVERIFY(m_store->saveItem(&item));
        item.name = QStringLiteral("Glöw");
        QVERIFY(m_store->saveItem(&item));
        QCOMPARE(open(), OpenResult::Opened);
        PresetItem read;
        QVERIFY(m_store->findItem(item.slug, &read));
        QCOMPARE(values(read), values(item));
        QVERIFY(!read.package.isOnDisk());
    }

    void keepsOrder()
    {
        PresetItem last = makeItem("server", 0);
        last.origin = ItemOrigin::Server;
        PresetItem second = makeItem("second", 2);
        PresetItem first = makeItem("first", 1);
        QStringList slugs;
        for (PresetItem *item : {&last, &second, &first})
            QVERIFY(m_store->saveItem(item));
        for (const PresetItem &item : m_store->items())
            slugs.append(item.slug);
        QCOMPARE(slugs.join(QLatin1Char(' ')), QStringLiteral("first second server"));

        const qint64 other = m_store->ensureFolder(1, path("Other"));
        const qint64 deep = m_store->ensureFolder(1, path("A/C/D"));
        QCOMPARE(folderNames(), QStringLiteral("A Other B C D"));
        QCOMPARE(m_store->folders(1).at(4).id, deep);
        QCOMPARE(m_store->folders(1).at(3).parent, m_store->folders(1).at(0).id);
        // Without those that have become empty.
        QVERIFY(m_store->removeEmptyFolders(1, {other}));
        QCOMPARE(folderNames(), QStringLiteral("A Other B"));
    }

    void mutatorsAreAllOrNothing()
    {
        PresetItem item = makeItem("glow");
        QVERIFY(m_store->saveItem(&item));
        PresetItem twin = makeItem("glow");
        QVERIFY(!m_store->saveItem(&twin));
        QCOMPARE(twin.id, qint64(0));
        QVERIFY(!m_store->errorText().isEmpty());
        PresetItem homeless = makeItem("homeless");
        homeless.folder = 4711;
        QVERIFY(!m_store->saveItem(&homeless));
        PresetItem unknown = makeItem("unknown");
        unknown.id = 4711;
        QVERIFY(!m_store->saveItem(&unknown));
        QCOMPARE(m_store->ensureFolder(1, path("New/")), qint64(0));
        QCOMPARE(m_store->ensureFolder(2, path("Category is missing")), qint64(0));
        QVERIFY(!m_store->removeItem(4711) && !m_store->clearFile(4711, Package));
        QVERIFY(!m_store->setFile(item.id, Package, QStringLiteral("packages/missing")));

        QCOMPARE(m_store->items().size(), 1);
        QCOMPARE(folderNames(), QStringLiteral("A B"));
        QVERIFY(!m_store->items().first().package.isOnDisk());
    }

    void transactionsNest()
    {
        PresetItem kept = makeItem("kept");
        const QString file = putFile(&kept, "kept");
        {
            PresetStore::Transaction outer(*m_store);
            PresetItem added = makeItem("added");
            QVERIFY(m_store->saveItem(&added));
            {
                const PresetStore::Transaction inner(*m_store);
                QVERIFY(m_store->removeItem(kept.id));
            }
            QVERIFY(outer.commit());
        }
        QCOMPARE(m_store->items().size(), 2);
        {
            const PresetStore::Transaction undone(*m_store);
            QVERIFY(m_store->removeItem(kept.id));
            QVERIFY(QFile::exists(file));
        }
        QVERIFY(QFile::exists(file));
        QVERIFY(m_store->removeItem(kept.id));
        QVERIFY(!QFile::exists(file));
        QCOMPARE(m_store->items().size(), 1);
    }

    // Nothing of an address gets into a file name but a known suffix.
    void fileNamesHaveKnownSuffixes()
    {
        PresetItem item;
        item.thumbnail.url = QUrl(QStringLiteral("http://host/a.exe"));
        const QString thumbnail = PresetStore::fileFor(item, ResourceKind::Thumbnail);
        QVERIFY(thumbnail.endsWith(QLatin1String(".png")));
    }

    void repairsWhatAKillLeaves()
    {
        PresetItem gone = makeItem("gone");
        PresetItem shortened = makeItem("shortened");
        PresetItem whole = makeItem("whole");
        QVERIFY(QFile::remove(putFile(&gone, "gone")));
        QVERIFY(write(putFile(&shortened, "shortened"), "sh"));
        putFile(&whole, "whole");
        const QString incoming = QStringLiteral("packages/x.json");
        const QStringList halfMade {m_store->incomingPath(incoming),
                                    m_store->incomingPath(incoming), // is another path
                                    m_store->absolutePath(QStringLiteral("packages/un.json")),
                                    m_store->absolutePath(QStringLiteral("thumbnails/un.png"))};
        QVERIFY(halfMade.at(0) != halfMade.at(1));
        for (const QString &path : halfMade)
            QVERIFY(write(path, "half"));
        QCOMPARE(open(), OpenResult::Opened);
        for (const QString &path : halfMade)
            QVERIFY2(!QFile::exists(path), qPrintable(path));
        QCOMPARE(m_store->items().size(), 3);
        for (const PresetItem &item : m_store->items())
            QCOMPARE(item.package.isOnDisk(), item.slug == whole.slug);
    }

    void secondProgramLeavesTheFirstAlone()
    {
        const QString arriving = m_store->incomingPath(QStringLiteral("packages/x.json"));
        QVERIFY(write(arriving, "half"));
        PresetStore second(m_directory->path());
        QCOMPARE(second.open(), OpenResult::Opened);
        QVERIFY(QFile::exists(arriving));
        PresetItem item = makeItem("glow");
        QVERIFY(second.saveItem(&item));
        QCOMPARE(m_store->items().size(), 1);
    }

    void damagedDatabaseIsRebuilt_data()
    {
        // These bytes are replaced, or cut off; negative: it is of another program.
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("size");
        QTest::newRow("garbage") << 0 << 1000000;
        QTest::newRow("pages") << 4096 << 8192;
        QTest::newRow("cut") << 10000 << 0;
        QTest::newRow("foreign") << -1 << 0;
    }

    void damagedDatabaseIsRebuilt()
    {
        QFETCH(int, from);
        QFETCH(int, size);
        PresetStore::Transaction transaction(*m_store);
        for (int i = 0; i < 100; ++i) {
            PresetItem item = makeItem(qPrintable(QString::number(i)));
            QVERIFY(m_store->saveItem(&item));
        }
        QVERIFY(transaction.commit());
        QFile file(m_store->databasePath());
        m_store.reset();
        if (from < 0) {
            QVERIFY(file.remove());
            runSql(file.fileName(), QStringLiteral("CREATE TABLE bookmarks (x)"));
        } else {
            QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(from) && file.size() > 20000);
            const QByteArray damage(qMin(size, int(file.size())), 'Z');
            QVERIFY(size > 0 ? file.write(damage) == damage.size() : file.resize(from));
            file.close();
        }
        const QRegularExpression warning(QStringLiteral("(?s)is damaged .* it was kept as"));
        QTest::ignoreMessage(QtWarningMsg, warning);
        QCOMPARE(open(), OpenResult::Rebuilt);
        QVERIFY(m_store->items().isEmpty());
        const QStringList aside {QStringLiteral("library.db.damaged-*")};
        QCOMPARE(QDir(m_directory->path()).entryList(aside).size(), 1);
        PresetItem item = makeItem("new");
        QVERIFY(m_store->saveItem(&item));
        QCOMPARE(open(), OpenResult::Opened);
        QCOMPARE(m_store->items().size(), 1);
    }

    void newerDatabaseIsNotTouched()
    {
        const QString path = m_store->databasePath();
        m_store.reset();
        runSql(path,
               QStringLiteral("PRAGMA user_version = %1").arg(PresetStore::schemaVersion + 1));
        const QByteArray before = sha256OfFile(path);
        QCOMPARE(open(), OpenResult::NewerVersion);
        QVERIFY(!m_store->isOpen());
        QVERIFY(m_store->errorText().contains(QLatin1String("newer version")));
        QCOMPARE(sha256OfFile(path), before);
    }
};

ZK_TEST_CORE_MAIN(TestPresetStore)
#include "tst_presetstore.moc"
