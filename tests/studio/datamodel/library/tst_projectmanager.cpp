#include "LibraryFixture.h"
#include "ZkStudioProjectManager.h"

#include "ZkTestMain.h"

#include <QFile>
#include <QUuid>

class TestProjectManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isKnownWhileItLives();
    void knowsItsProject();
    void bringsThePresetsOfTheProgram();
    void toldOfAnUnusableLibrary();
};

void TestProjectManager::isKnownWhileItLives()
{
    LibraryFixture first;
    LibraryFixture second;
    QVERIFY(!IZkProjectManager::getInstance());
    {
        ZkStudioProjectManager manager(first.settings);
        QCOMPARE(IZkProjectManager::getInstance(), &manager);
        QVERIFY(manager.libraryError().isEmpty());
        QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("already")));
        {
            const ZkStudioProjectManager other(second.settings);
            QCOMPARE(IZkProjectManager::getInstance(), &manager);
        }
        QCOMPARE(IZkProjectManager::getInstance(), &manager);
    }
    QVERIFY(!IZkProjectManager::getInstance());
}

void TestProjectManager::knowsItsProject()
{
    LibraryFixture fixture;
    ZkStudioProjectManager manager(fixture.settings);
    const QString first = manager.projectId();
    QVERIFY(!QUuid(first).isNull());
    QVERIFY(manager.isNewProject());
    manager.setProjectSaved();
    QVERIFY(!manager.isNewProject());
    QCOMPARE(manager.projectId(), first);
    manager.startProject();
    QVERIFY(manager.isNewProject());
    QVERIFY(manager.projectId() != first);
    manager.setOpenedProject(first);
    QVERIFY(!manager.isNewProject());
    QCOMPARE(manager.projectId(), first);
}

void TestProjectManager::bringsThePresetsOfTheProgram()
{
    LibraryFixture fixture;
    const ZkStudioProjectManager manager(fixture.settings);
    const auto medias =
        manager.mediaLibrary()->module(ZKVBLMODEL::SmartCutoutCategory)->rootFolder()->medias(true);
    QVERIFY(medias.size() >= 10);
    for (IZkAbstractMedia *media : medias) {
        const auto *item = dynamic_cast<IZkEffectMediaItem *>(media->mediaItem());
        QVERIFY(item && !item->needsDownload());
        QCOMPARE(item->effect()->descriptor()->slug(), item->slug());
        QVERIFY(!QImage(item->thumbnailPath()).isNull());
    }
}

void TestProjectManager::toldOfAnUnusableLibrary()
{
    LibraryFixture fixture;
    QFile inTheWay(fixture.settings.directory);
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot be opened")));
    const ZkStudioProjectManager manager(fixture.settings);
    QVERIFY(!manager.libraryError().isEmpty());
    QVERIFY(manager.mediaLibrary()->module(ZKVBLMODEL::SmartCutoutCategory)->rootFolder());
}

ZK_TEST_MAIN(TestProjectManager)
#include "tst_projectmanager.moc"
