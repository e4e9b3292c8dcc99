// A program is killed while it writes to the library, again and again.
#include "ZkDurableFile.h"
#include "ZkPresetStore.h"

#include "ZkTestMain.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

using namespace zk::storage;

class TestPresetStoreKill : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void killedWhileWriting();

private:
    static int writeAndDie(const QString &directory, int afterMs);
};

// Returns how many batches the program has said to be there.
int TestPresetStoreKill::writeAndDie(const QString &directory, int afterMs)
{
    QProcess writer;
    writer.start(QStringLiteral(ZK_STORAGE_WRITER), {directory});
    if (!writer.waitForReadyRead(10000))
        return -1;
    QTest::qSleep(afterMs);
    writer.kill();
    writer.waitForFinished();
    const QList<QByteArray> lines = writer.readAllStandardOutput().trimmed().split('\n');
    return lines.last().toInt();
}

void TestPresetStoreKill::killedWhileWriting()
{
    QTemporaryDir directory;
    int before = 0;
    for (int round = 0; round < 12; ++round) {
        const int said = writeAndDie(directory.path(), 7 + 13 * round);
        QVERIFY(said > before);

        PresetStore store(directory.path());
        QCOMPARE(store.open(), PresetStore::OpenResult::Opened);
        const QVector<PresetItem> items = store.items();
        // Whole batches, and every one that was reported; the one under way may have come through.
        QCOMPARE(items.size() % 5, 0);
        const int batches = items.size() / 5;
        QVERIFY2(batches == said || batches == said + 1,
                 qPrintable(QStringLiteral("%1 batches, %2 said").arg(batches).arg(said)));
        QCOMPARE(store.folders(1).size(), batches);
        for (const PresetItem &item : items) {
            QVERIFY(item.package.isOnDisk());
            QCOMPARE(sha256OfFile(store.absolutePath(item.package.file)), item.package.sha256);
        }
        const QDir packages(store.absolutePath(QStringLiteral("packages")));
        QCOMPARE(packages.entryList(QDir::Files | QDir::Hidden).size(), items.size());
        before = batches;
    }
}

ZK_TEST_CORE_MAIN(TestPresetStoreKill)
#include "tst_presetstore_kill.moc"
