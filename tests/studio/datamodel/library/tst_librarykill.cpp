// The program is killed in the middle of its downloads.
#include "LibraryFixture.h"
#include "TestHttpServer.h"
#include "ZkDurableFile.h"
#include "ZkResourceServerFiles.h"

#include "ZkTestMain.h"

#include <QProcess>

class TestLibraryKill : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingHalfMadeIsSeen();
};

void TestLibraryKill::nothingHalfMadeIsSeen()
{
    QTemporaryDir served;
    QVector<zk::effects::Look> looks;
    for (int i = 0; i < 8; ++i)
        looks.append(makeLook(QStringLiteral("n%1").arg(i), 1, 4 * i));
    QVERIFY(zk::datamodel::writeResourceServerFiles(looks, served.path()));
    TestHttpServer server;
    server.serveDirectory(served.path());
    for (const QString &name : QDir(served.filePath(QStringLiteral("packages"))).entryList())
        server.setBehaviour(QStringLiteral("/packages/") + name, TestHttpServer::Slow);

    LibraryFixture fixture(server.url());
    bool wasHalfMade = false;
    bool wasPartial = false;
    for (int round = 0; round < 6; ++round) {
        QProcess program;
        program.start(QStringLiteral(ZK_LIBRARY_DOWNLOADER),
                      {fixture.settings.directory, server.url().toString()});
        QTRY_VERIFY(program.bytesAvailable() > 0 || program.state() == QProcess::NotRunning);
        QTest::qWait(25 * round);
        program.kill();
        QTRY_COMPARE(program.state(), QProcess::NotRunning);
        wasHalfMade = wasHalfMade || !fixture.files().filter(QStringLiteral("incoming/")).isEmpty();

        QVERIFY(fixture.open());
        QCOMPARE(fixture.slugs().size(), 8);
        int complete = 0;
        for (const QString &slug : fixture.slugs()) {
            IZkEffectMediaItem *item = fixture.item(slug);
            complete += item->needsDownload() ? 0 : 1;
            QCOMPARE(item->effect().isNull(), item->needsDownload());
        }
        QCOMPARE(fixture.files().size(), complete);
        wasPartial = wasPartial || (complete > 0 && complete < 8);
        fixture.close();
    }
    // Otherwise the kills have met nothing.
    QVERIFY(wasHalfMade);
    QVERIFY(wasPartial);
}

ZK_TEST_MAIN(TestLibraryKill)
#include "tst_librarykill.moc"
