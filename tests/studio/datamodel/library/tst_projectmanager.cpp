#include "LibraryFixture.h"
#include "ZkStudioProjectManager.h"

#include "ZkTestMain.h"

class TestProjectManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isKnownWhileItLives()
    {
        LibraryFixture first;
        LibraryFixture second;
        QVERIFY(!IZkProjectManager::getInstance());
        {
            ZkStudioProjectManager manager(first.settings);
            QVERIFY(manager.libraryError().isEmpty());
            QTest::ignoreMessage(QtCriticalMsg, QRegularExpression("already"));
            ZkStudioProjectManager(second.settings);
            QCOMPARE(IZkProjectManager::getInstance(), &manager);
        }
        QVERIFY(!IZkProjectManager::getInstance());
    }

    void knowsItsProjectAndItsPresets()
    {
        LibraryFixture fixture;
        ZkStudioProjectManager manager(fixture.settings);
        const QString first = manager.projectId();
        QVERIFY(manager.isNewProject());
        manager.setProjectSaved();
        QVERIFY(!manager.isNewProject());
        QCOMPARE(manager.projectId(), first);
        manager.startProject();
        QVERIFY(manager.isNewProject() && manager.projectId() != first);
        manager.setOpenedProject(first);
        QVERIFY(!manager.isNewProject());
        QCOMPARE(manager.projectId(), first);

        const auto *module = manager.mediaLibrary()->module(ZKVBLMODEL::SmartCutoutCategory);
        const auto medias = module->rootFolder()->medias(true);
        QVERIFY(medias.size() >= 10);
        for (IZkAbstractMedia *media : medias) {
            const auto *item = dynamic_cast<IZkEffectMediaItem *>(media->mediaItem());
            QVERIFY(item && !item->needsDownload() && item->effect());
            QVERIFY(!QImage(item->thumbnailPath()).isNull());
        }
    }
};

ZK_TEST_MAIN(TestProjectManager)
#include "tst_projectmanager.moc"
