// A program is killed while it saves, again and again.
#include "ProjectFixture.h"
#include "ZkProjectStore.h"

#include "ZkTestMain.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cstdio>

using namespace zk::storage;

namespace {

constexpr int rounds = 50;

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

} // namespace

class TestProjectStoreKill : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensTheLastCompleteSave()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("film.zkproj"));
        QRandomGenerator random(1);
        for (int round = 0; round < rounds; ++round) {
            QProcess writer;
            writer.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--save"), file});
            QVERIFY(writer.waitForReadyRead(10000));
            QTest::qSleep(int(random.bounded(60)));
            writer.kill();
            QVERIFY(writer.waitForFinished(10000));
            const int said = writer.readAllStandardOutput().trimmed().split('\n').last().toInt();

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
        if (count == 3 && qstrcmp(values[1], "--save") == 0)
            return saveUntilKilled(QString::fromLocal8Bit(values[2]));
        TestProjectStoreKill test;
        return QTest::qExec(&test, count, values);
    });
}
#include "tst_projectstore_kill.moc"
