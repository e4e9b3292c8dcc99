#include "Workspace.h"

#include "ZkWidgets.h"

#include <QTemporaryDir>

class ZCutoutPresetItemManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void findsTheFolder();
    void logsHowLoadingStands_data();
    void logsHowLoadingStands();
    void checksThumbnailsWhenLoaded();
    void downloadsPicks_data();
    void downloadsPicks();
    void picksFollowEachOther();
    void picksOnDiskAreNotDownloaded();
    void startsOverWhenTheTreeIsReloaded();

private:
    ZCutoutPresetItemModel *model() { return m_manager->itemModel(); }
    void finish(Media *media, int error)
    {
        model()->onDownloadFinishedEvent(media, ZKVBLMODEL::DownloadPreset, error);
    }
    ZCutoutPresetItemManager::DownloadCallback callback(const char *name)
    {
        return
            [name](bool success, IZkAbstractMediaItem *item) { note(name, success, item->slug()); };
    }
    int toasts() const
    {
        int count = 0;
        for (const QWidget *widget : QApplication::topLevelWidgets()) {
            const auto *const toast = qobject_cast<const ZkToast *>(widget);
            count += toast && toast->isVisible()
                && toast->text() == QLatin1String("Download failed. Please try again later.");
        }
        return count;
    }

    std::unique_ptr<ProjectManager> m_project;
    std::unique_ptr<ZCutoutPresetItemManager> m_manager;
    Folder m_folder {QStringLiteral("x_subject_smart_cutout_preset_2")};
    MediaItem m_items[3] {
        {1, QStringLiteral("a")}, {2, QStringLiteral("b")}, {3, QStringLiteral("c")}};
    Media m_medias[3] {{QStringLiteral("A"), &m_items[0]},
                       {QStringLiteral("B"), &m_items[1]},
                       {QStringLiteral("C"), &m_items[2]}};
};

void ZCutoutPresetItemManagerTest::init()
{
    m_project = std::make_unique<ProjectManager>();
    m_project->library.tree = {&m_folder};
    m_folder.own = {&m_medias[0], &m_medias[1], &m_medias[2]};
    m_folder.state = ZKVBLMODEL::zkmsLoaded;
    m_folder.loadAgain = false;
    for (MediaItem &item : m_items)
        item.missing = true;
    m_manager = std::make_unique<ZCutoutPresetItemManager>(nullptr);
    m_manager->setCategory(ZKVBLMODEL::SmartCutoutCategory);
    takeJournal();
}

void ZCutoutPresetItemManagerTest::cleanup()
{
    m_manager.reset();
    QVERIFY(m_project->library.treeObservers.isEmpty());
    m_project.reset();
}

void ZCutoutPresetItemManagerTest::findsTheFolder()
{
    Folder other(QStringLiteral("Subject_smart_cutout_preset"));
    Folder first(QStringLiteral("1subject_smart_cutout_preset"));
    Folder second(QStringLiteral("subject_smart_cutout_preset"));
    const auto found = [this](const QVector<IZkFolderMedia *> &tree, int category) {
        m_project->library.tree = tree;
        m_manager->setCategory(category);
        m_manager->loadCutoutPresetFolder();
        return model()->folder();
    };
    const int cutout = ZKVBLMODEL::SmartCutoutCategory;
    QCOMPARE(found({&other, &first, &second}, cutout), &first);
    QCOMPARE(model()->rowCount(), 0);
    QVERIFY(!found({&other}, cutout)); // case counts
    QVERIFY(!found({&first}, cutout + 1));
    QCOMPARE(model()->rowCount(), 1);
    QCOMPARE(found({&second}, cutout), &second);
}

void ZCutoutPresetItemManagerTest::logsHowLoadingStands_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("again");
    QTest::addColumn<QString>("logged");
    QTest::newRow("unknown") << 0 << false << "load cutout preset:zkmsUnknow";
    QTest::newRow("loading") << 1 << true << QString();
    QTest::newRow("error") << 2 << false << "load cutout preset:zkmsFetchMoreError";
    QTest::newRow("loaded") << 3 << false << QString();
    QTest::newRow("login") << 4 << true << "load cutout preset:zkmsNeedLogin";
}

void ZCutoutPresetItemManagerTest::logsHowLoadingStands()
{
    QFETCH(int, state);
    QFETCH(bool, again);
    QFETCH(QString, logged);
    m_folder.state = state;
    m_folder.loadAgain = again;
    zk::test::ExpectedMessage message(QStringLiteral("load cutout preset"));
    LogJournal log;
    takeJournal();
    m_manager->loadCutoutPresetFolder();
    QStringList expected;
    for (int call = 0; call < (again ? 2 : 1); ++call)
        expected += QStringLiteral("library.loadFolder(x_subject_smart_cutout_preset_2)");
    if (!logged.isEmpty())
        expected += "log 8 ZkSmartKeying/ZCutoutPresetItemManager "
                    "ZCutoutPresetItemManager::loadFolder: "
            + logged;
    QCOMPARE(takeJournal(), expected);
    QCOMPARE(model()->rowCount(), 3);
    QCOMPARE(m_manager->findMediaItemBySlug(QStringLiteral("b")), &m_items[1]);
    QVERIFY(!m_manager->findMediaItemBySlug(QStringLiteral("z")));
}

void ZCutoutPresetItemManagerTest::checksThumbnailsWhenLoaded()
{
    QTemporaryDir directory;
    const auto path = [&directory](const char *name) {
        return directory.filePath(QLatin1String(name));
    };
    // Readable although its name says otherwise; no picture; missing.
    m_items[0].thumbnail = path("picture.jpg");
    m_items[1].thumbnail = path("text.png");
    m_items[2].thumbnail = path("missing.png");
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(m_items[0].thumbnail, "PNG"));
    QFile text(m_items[1].thumbnail);
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("no picture");
    text.close();
    int notices = 0;
    ZkCustomEventListener listener(QStringLiteral("NotifySmartCutoutModelLoadFinished"),
                                   [&notices](const ZkCustomEvent &) { return ++notices > 0; });
    m_manager->loadCutoutPresetFolder();
    Folder other(QStringLiteral("other"));
    LogJournal log;
    takeJournal();
    model()->onAllMediaChangedFinishEvent(&other); // none of ours
    QCOMPARE(takeJournal(), QStringList());
    model()->onAllMediaChangedFinishEvent(&m_folder);
    const QString prefix = "log 4 ZkSmartKeying/ZCutoutPresetItemManager "
                           "ZCutoutPresetItemManager::downloadItem: cutout:download result:1, ";
    QCOMPARE(takeJournal(),
             QStringList({"library.downloadItem(b,0)",
                          prefix + "name:item b, type:0",
                          "library.downloadItem(c,0)",
                          prefix + "name:item c, type:0"}));
    QVERIFY(QFile::exists(m_items[0].thumbnail) && !QFile::exists(m_items[1].thumbnail));
    QCOMPARE(notices, 1);
    QCOMPARE(model()->rowCount(), 3);
}

void ZCutoutPresetItemManagerTest::downloadsPicks_data()
{
    QTest::addColumn<int>("started");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("calls");
    const QString download = "library.downloadItem(a,2)\n";
    QTest::newRow("success") << 1 << 0 << download + "picked(true,a)";
    QTest::newRow("failure") << 1 << 3 << download + "picked(false,a)";
    QTest::newRow("was running") << 2 << 0 << download + "picked(true,a)";
    QTest::newRow("refused") << 0 << 0 << download + "picked(false,a)";
}

void ZCutoutPresetItemManagerTest::downloadsPicks()
{
    QFETCH(int, started);
    QFETCH(int, error);
    QFETCH(QString, calls);
    zk::test::ExpectedMessage message(QStringLiteral("download Fail!|does not support raise"));
    m_project->library.downloadResult = started;
    m_manager->loadCutoutPresetFolder();
    takeJournal();
    m_manager->downloadItem(model()->index(0, 0), callback("picked"));
    finish(&m_medias[1], 0); // not what is waited for
    finish(&m_medias[0], error);
    finish(&m_medias[0], 0); // waited for no more
    QCOMPARE(takeJournal(), lines(calls.toLatin1().constData()));
    QCOMPARE(toasts(), calls.contains("false") ? 1 : 0);
    qDeleteAll(QApplication::topLevelWidgets());
}

void ZCutoutPresetItemManagerTest::picksFollowEachOther()
{
    m_manager->loadCutoutPresetFolder();
    takeJournal();
    m_manager->downloadItem(QModelIndex(), callback("nothing"));
    m_manager->downloadItem(model()->index(0, 0), callback("first"));
    m_manager->downloadItem(model()->index(0, 0), callback("again"));
    m_manager->downloadItem(model()->index(1, 0), callback("second"));
    QCOMPARE(takeJournal(),
             lines("library.downloadItem(a,2)\nlibrary.downloadItem(a,2)\n"
                   "library.downloadItem(b,2)"));
    // The callback of the latest pick hears of whatever ends first, and only of that.
    finish(&m_medias[0], 0);
    finish(&m_medias[1], 0);
    QCOMPARE(takeJournal(), lines("second(true,a)"));
    // A callback may pick the next one.
    m_manager->downloadItem(model()->index(0, 0), [this](bool, IZkAbstractMediaItem *) {
        m_manager->downloadItem(model()->index(2, 0), callback("next"));
    });
    finish(&m_medias[0], 0);
    finish(&m_medias[2], 0);
    QCOMPARE(noted({"next"}), lines("next(true,c)"));
    // A refused one does not stand in the way of those behind it.
    zk::test::ExpectedMessage message(QStringLiteral("download Fail!|does not support raise"));
    m_project->library.downloadResult = ZKVBLMODEL::DownloadRefused;
    m_manager->downloadItem(model()->index(0, 0), callback("refused"));
    m_project->library.downloadResult = ZKVBLMODEL::DownloadStarted;
    m_manager->downloadItem(model()->index(1, 0), callback("after"));
    finish(&m_medias[1], 0);
    QCOMPARE(noted({"refused", "after"}), lines("refused(false,a)\nafter(true,b)"));
    qDeleteAll(QApplication::topLevelWidgets());
}

void ZCutoutPresetItemManagerTest::picksOnDiskAreNotDownloaded()
{
    m_items[1].missing = false;
    m_manager->loadCutoutPresetFolder();
    m_manager->downloadItem(model()->index(0, 0), callback("first"));
    takeJournal();
    m_manager->downloadItem(model()->index(1, 0), callback("second"));
    finish(&m_medias[0], 0); // the pick on disk has taken its place
    QCOMPARE(takeJournal(), QStringList());
}

void ZCutoutPresetItemManagerTest::startsOverWhenTheTreeIsReloaded()
{
    zk::test::ExpectedMessage message(QStringLiteral("download Fail!|does not support raise"));
    m_manager->loadCutoutPresetFolder();
    m_manager->downloadItem(model()->index(0, 0), callback("picked"));
    IZkCategoryTreeEventObserver *const observer = m_project->library.treeObservers.value(0);
    observer->afterCategoryTreeReload(); // still offered: goes on
    finish(&m_medias[0], 0);
    QCOMPARE(noted({"picked"}), QStringList(QStringLiteral("picked(true,a)")));
    m_manager->downloadItem(model()->index(0, 0), callback("picked"));
    Folder fresh(QStringLiteral("subject_smart_cutout_preset"));
    fresh.own = {&m_medias[2]};
    takeJournal();
    observer->beforeCategoryTreeReload();
    m_project->library.tree = {&fresh};
    observer->afterCategoryTreeReload();
    QCOMPARE(takeJournal(),
             lines("library.loadFolder(subject_smart_cutout_preset)\npicked(false,a)"));
    QCOMPARE(model()->folder(), &fresh);
    QCOMPARE(model()->rowCount(), 1);
    m_project->library.tree.clear();
    observer->afterCategoryTreeReload();
    QCOMPARE(model()->folder(), nullptr);
    QCOMPARE(model()->getAllIndexes().value(0).data().toString(), QStringLiteral("None"));
    QCOMPARE(model()->rowCount(), 1);
}

ZK_TEST_MAIN(ZCutoutPresetItemManagerTest)
#include "ZCutoutPresetItemManagerTest.moc"
