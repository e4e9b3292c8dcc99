// The program is killed in the middle of its downloads.
#include "LibraryFixture.h"
#include "TestHttpServer.h"

#include "ZkTestMain.h"

#include <QProcess>

#include <cstdio>

namespace {

// The program: fetches every preset of a server, and says when it has begun.
int downloadUntilKilled(const LibraryFixture &place)
{
    ZkStudioMediaLibrary library(place.settings);
    library.open();
    QObject::connect(&library, &ZkStudioMediaLibrary::sigRefreshFinished, &library, [&library] {
        const auto module = library.module(ZKVBLMODEL::SmartCutoutCategory);
        for (IZkAbstractMedia *media : module->rootFolder()->medias(true))
            library.mediaItemManager()->downloadItem(media->mediaItem(),
                                                     ZKVBLMODEL::DownloadPreset);
        std::puts("begun");
        std::fflush(stdout);
    });
    library.refreshCatalogue();
    return QCoreApplication::exec();
}

} // namespace

class TestLibraryKill : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingHalfMadeIsSeen()
    {
        QVector<zk::effects::Look> looks;
        for (int i = 0; i < 8; ++i)
            looks.append(makeLook(QStringLiteral("n%1").arg(i), 1, 4 * i));
        TestHttpServer server;
        QVERIFY(server.serve(looks));
        for (const QString &name : QDir(server.directory.filePath("packages")).entryList())
            server.setBehaviour("/packages/" + name, TestHttpServer::Slow);

        LibraryFixture fixture(server.url());
        bool wasHalfMade = false;
        bool wasPartial = false;
        for (int round = 0; round < 6; ++round) {
            QProcess program;
            program.start(QCoreApplication::applicationFilePath(),
                          {"--download", fixture.settings.directory, server.url().toString()});
            QTRY_VERIFY(program.bytesAvailable() > 0 || program.state() == QProcess::NotRunning);
            QTest::qWait(10 + 25 * round);
            program.kill();
            QTRY_COMPARE(program.state(), QProcess::NotRunning);
            wasHalfMade = wasHalfMade || !fixture.files().filter("incoming/").isEmpty();

            QVERIFY(fixture.open());
            QCOMPARE(fixture.items().size(), 8);
            int complete = 0;
            for (IZkEffectMediaItem *item : fixture.items()) {
                complete += item->needsDownload() ? 0 : 1;
                QCOMPARE(item->effect().isNull(), item->needsDownload());
            }
            QCOMPARE(fixture.files().size(), complete);
            wasPartial = wasPartial || (complete > 0 && complete < 8);
            fixture.close();
        }
        // Otherwise the kills have met nothing.
        QVERIFY(wasHalfMade && wasPartial);
    }
};

int main(int argc, char **argv)
{
    return zk::test::runMain(argc, argv, [](int count, char **values) {
        const QApplication application(count, values);
        if (count == 4 && qstrcmp(values[1], "--download") == 0) {
            LibraryFixture place(QUrl(QString::fromLocal8Bit(values[3])));
            place.settings.directory = QString::fromLocal8Bit(values[2]);
            return downloadUntilKilled(place);
        }
        TestLibraryKill test;
        return QTest::qExec(&test, count, values);
    });
}
#include "tst_librarykill.moc"
