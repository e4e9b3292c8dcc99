// A program is killed while it writes to the library, again and again.
#include "ZkDurableFile.h"
#include "ZkPresetStore.h"

#include "ZkTestMain.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

using namespace zk::storage;

namespace {

constexpr int itemsPerBatch = 5;

bool writeBatch(PresetStore &store, int batch)
{
    PresetStore::Transaction transaction(store);
    PresetItem item;
    item.folder = store.ensureFolder(1, {QStringLiteral("batch %1").arg(batch)});
    for (int i = 0; i < itemsPerBatch; ++i) {
        const QByteArray bytes(2000 + 37 * batch + i, char('a' + i));
        item.id = 0;
        item.slug = QStringLiteral("item-%1-%2").arg(batch).arg(i);
        item.package.sha256 = sha256Of(bytes);
        const QString file = PresetStore::fileFor(item, ResourceKind::Package);
        if (!store.saveItem(&item) || !writeDurably(store.absolutePath(file), bytes)
            || !store.setFile(item.id, ResourceKind::Package, file))
            return false;
    }
    return transaction.commit();
}

// The program: after every commit it says how many batches there are.
int writeUntilKilled(const QString &directory)
{
    PresetStore store(directory);
    store.open();
    store.saveCategory({1, QStringLiteral("Category")});
    int batch = store.items().size() / itemsPerBatch;
    while (writeBatch(store, batch)) {
        std::printf("%d\n", ++batch);
        std::fflush(stdout);
    }
    return 1;
}

} // namespace

class TestPresetStoreKill : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void killedWhileWriting()
    {
        QTemporaryDir directory;
        int before = 0;
        for (int round = 0; round < 12; ++round) {
            QProcess writer;
            writer.start(QCoreApplication::applicationFilePath(),
                         {QStringLiteral("--write"), directory.path()});
            QVERIFY(writer.waitForReadyRead(10000));
            QTest::qSleep(7 + 13 * round);
            writer.kill();
            writer.waitForFinished();
            const int said = writer.readAllStandardOutput().trimmed().split('\n').last().toInt();
            QVERIFY(said > before);

            PresetStore store(directory.path());
            QCOMPARE(store.open(), PresetStore::OpenResult::Opened);
            const QVector<PresetItem> items = store.items();
            // Whole batches, and every one reported; the one under way may have come through.
            QCOMPARE(items.size() % itemsPerBatch, 0);
            before = items.size() / itemsPerBatch;
            QVERIFY2(before == said || before == said + 1,
                     qPrintable(QStringLiteral("%1 batches, %2 said").arg(before).arg(said)));
            QCOMPARE(store.folders(1).size(), before);
            for (const PresetItem &item : items) {
                QVERIFY(item.package.isOnDisk());
                QCOMPARE(sha256OfFile(store.absolutePath(item.package.file)), item.package.sha256);
            }
            const QDir packages(store.absolutePath(QStringLiteral("packages")));
            QCOMPARE(packages.entryList(QDir::Files | QDir::Hidden).size(), items.size());
        }
    }
};

int main(int argc, char **argv)
{
    return zk::test::runMain(argc, argv, [](int count, char **values) {
        const QCoreApplication application(count, values);
        if (count == 3 && qstrcmp(values[1], "--write") == 0)
            return writeUntilKilled(QString::fromLocal8Bit(values[2]));
        TestPresetStoreKill test;
        return QTest::qExec(&test, count, values);
    });
}
#include "tst_presetstore_kill.moc"
