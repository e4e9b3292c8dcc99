// A program is killed while it writes, again and again.
#include "ProjectFixture.h"
#include "ZkDurableFile.h"
#include "ZkPresetStore.h"
#include "ZkProjectStore.h"
#include "ZkTestMain.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <cstdio>

using namespace zk::storage;

namespace {

constexpr int itemsPerBatch = 5;
constexpr int rounds = 50; // of killing what saves a project

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

// The program: every save has the next number in several places, and is reported when it is done.
int saveUntilKilled(const QString &file)
{
    ProjectRecord project;
    ProjectStore::load(file, &project, nullptr);
    for (;;) {
        const int number = int(project.currentClip) + 1;
        project = zk::test::projectRecord();
        project.currentClip = number;
        project.clips[0].playhead = number;
        for (int i = 0; i < 40; ++i)
            project.clips[0].mattes.append(
                zk::test::matteRecord(number + i, QByteArray(2000 + i, char(number))));
        if (!ProjectStore::save(file, project, nullptr))
            return 1;
        std::printf("%d\n", number);
        std::fflush(stdout);
    }
}

// Lets the program write there for so long; the last number that it said, 0 when it said nothing.
int killedAfter(int ms, const QString &what, const QString &place)
{
    QProcess writer;
    writer.start(QCoreApplication::applicationFilePath(), {what, place});
    if (!writer.waitForReadyRead(10000))
        return 0;
    QTest::qSleep(ms);
    writer.kill();
    writer.waitForFinished(10000);
    return writer.readAllStandardOutput().trimmed().split('\n').last().toInt();
}

} // namespace

class TestKill : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void libraryHasWholeBatches()
    {
        const QTemporaryDir directory;
        int before = 0;
        for (int round = 0; round < 12; ++round) {
            const int said = killedAfter(7 + 13 * round, "--write", directory.path());
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

    void projectIsTheLastCompleteSave()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("film.zkproj"));
        QRandomGenerator random(1);
        for (int round = 0; round < rounds; ++round) {
            const int said = killedAfter(int(random.bounded(60)), "--save", file);
            QVERIFY(said > 0);

            ProjectRecord project;
            QString error;
            QVERIFY2(ProjectStore::load(file, &project, &error) == ProjectStore::OpenResult::Opened,
                     qPrintable(error));
            const int is = int(project.currentClip);
            QVERIFY2(is == said || is == said + 1,
                     qPrintable(QStringLiteral("%1 is there, %2 was said").arg(is).arg(said)));
            QCOMPARE(project.clips.at(0).playhead, qint64(is));
            QCOMPARE(project.clips.at(0).mattes.last().pixels.at(0), char(is));
        }
        // What the killed programs have left beside it goes with the next save.
        QVERIFY(ProjectStore::save(file, {}, nullptr));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList {QStringLiteral("film.zkproj")});
    }
};

int main(int argc, char **argv)
{
    return zk::test::runMain(argc, argv, [](int count, char **values) {
        const QCoreApplication application(count, values);
        if (count == 3 && qstrcmp(values[1], "--write") == 0)
            return writeUntilKilled(QString::fromLocal8Bit(values[2]));
        if (count == 3 && qstrcmp(values[1], "--save") == 0)
            return saveUntilKilled(QString::fromLocal8Bit(values[2]));
        TestKill test;
        return QTest::qExec(&test, count, values);
    });
}

#include "tst_kill.moc"
