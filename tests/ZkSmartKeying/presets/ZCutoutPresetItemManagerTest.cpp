#include "Workspace.h"

#include "ZkWidgets.h"

#include <QDir>
#include <QTemporaryDir>

#include <tuple>

class ZCutoutPresetItemManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
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
        m_manager->loadCutoutPresetFolder();
        takeJournal();
    }

    void cleanup()
    {
        m_manager.reset();
        m_project.reset();
    }

    void findsTheFolder()
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
        QVERIFY(!found({&other}, cutout)); // case counts
        QVERIFY(!found({&first}, cutout + 1));
        QCOMPARE(model()->rowCount(), 1);
        QCOMPARE(found({&second}, cutout), &second);
    }

    void logsHowLoadingStands()
    {
        const QString load = "library.loadFolder(x_subject_smart_cutout_preset_2)\n";
        const QString log = "log 8 ZCutoutPresetItemManager::loadFolder: load cutout preset:";
        const std::tuple<int, bool, QString> rows[] = {
            {0, false, load + log + "zkmsUnknow"},
            {1, true, load + load},
            {2, false, load + log + "zkmsFetchMoreError"},
            {3, false, load},
            {4, true, load + load + log + "zkmsNeedLogin"}};
        zk::test::ExpectedMessage message(QStringLiteral("load cutout preset"));
        LogJournal logJournal;
        for (const auto &[state, again, calls] : rows) {
            m_folder.state = state;
            m_folder.loadAgain = again;
            m_manager->loadCutoutPresetFolder();
            QCOMPARE(takeJournal(), lines(calls));
            QCOMPARE(model()->rowCount(), 3);
        }
        QCOMPARE(m_manager->findMediaItemBySlug(QStringLiteral("b")), &m_items[1]);
        QVERIFY(!m_manager->findMediaItemBySlug(QStringLiteral("z")));
    }

    void checksThumbnailsWhenLoaded()
    {
        // Readable although its name says otherwise; no picture; missing. No code page has all letters.
        QTemporaryDir directory;
        const auto path = [&directory](const char *name) {
            return QDir::toNativeSeparators(directory.filePath(QString::fromUtf8(name)));
        };
        m_items[0].thumbnail = path("ß 片段 🎬.jpg");
        m_items[1].thumbnail = path("№ 片段 🎬.png");
        m_items[2].thumbnail = directory.filePath(QStringLiteral("missing.png"));
        QVERIFY(QImage(8, 8, QImage::Format_Mono).save(m_items[0].thumbnail, "PNG"));
        QFile text(m_items[1].thumbnail);
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("no picture") > 0);
        text.close();
        int notices = 0;
        ZkCustomEventListener listener(QStringLiteral("NotifySmartCutoutModelLoadFinished"),
                                       [&notices](const ZkCustomEvent &) { return ++notices > 0; });
        Folder other(QStringLiteral("other"));
        LogJournal log;
        model()->onAllMediaChangedFinishEvent(&other); // none of ours
        QCOMPARE(takeJournal(), QStringList());
        model()->onAllMediaChangedFinishEvent(&m_folder);
        const QString logged = "log 4 ZCutoutPresetItemManager::downloadItem: "
                               "cutout:download result:1, name:item %1, type:0";
        QCOMPARE(takeJournal(),
                 QStringList({"library.downloadItem(b,0)",
                              logged.arg('b'),
                              "library.downloadItem(c,0)",
                              logged.arg('c')}));
        QVERIFY(QFile::exists(m_items[0].thumbnail) && !QFile::exists(m_items[1].thumbnail));
        QCOMPARE(notices, 1);
    }

    void downloadsPicks()
    {
        const std::tuple<int, int, bool> rows[] = {{ZKVBLMODEL::DownloadStarted, 0, true},
                                                   {ZKVBLMODEL::DownloadStarted, 3, false},
                                                   {ZKVBLMODEL::DownloadRunning, 0, true},
                                                   {ZKVBLMODEL::DownloadRefused, 0, false}};
        for (const auto &[started, error, success] : rows) {
            zk::test::ExpectedMessage message(m_failure);
            m_project->library.downloadResult = started;
            m_manager->downloadItem(model()->index(0, 0), callback("picked"));
            finish(1, 0); // not what is waited for
            finish(0, error);
            finish(0, 0); // waited for no more
            const QString calls = "library.downloadItem(a,2)\npicked(%1,a)";
            QCOMPARE(takeJournal(), lines(calls.arg(QVariant(success).toString())));
            QCOMPARE(toasts(), success ? 0 : 1);
            qDeleteAll(QApplication::topLevelWidgets());
        }
    }

    void picksFollowEachOther()
    {
        m_manager->downloadItem(QModelIndex(), callback("nothing"));
        m_manager->downloadItem(model()->index(0, 0), callback("first"));
        m_manager->downloadItem(model()->index(0, 0), callback("again"));
        m_manager->downloadItem(model()->index(1, 0), callback("second"));
        QCOMPARE(takeJournal(),
                 lines("library.downloadItem(a,2)\nlibrary.downloadItem(a,2)\n"
                       "library.downloadItem(b,2)"));
        // The callback of the latest pick hears of whatever ends first, and only of that.
        finish(0, 0);
        finish(1, 0);
        QCOMPARE(takeJournal(), lines("second(true,a)"));
        // A callback may pick the next one.
        m_manager->downloadItem(model()->index(0, 0), [this](bool, IZkAbstractMediaItem *) {
            m_manager->downloadItem(model()->index(2, 0), callback("next"));
        });
        finish(0, 0);
        finish(2, 0);
        QCOMPARE(noted("next"), lines("next(true,c)"));
        // A refused one does not stand in the way of those behind it.
        zk::test::ExpectedMessage message(m_failure);
        m_project->library.downloadResult = ZKVBLMODEL::DownloadRefused;
        m_manager->downloadItem(model()->index(0, 0), callback("refused"));
        m_project->library.downloadResult = ZKVBLMODEL::DownloadStarted;
        m_manager->downloadItem(model()->index(1, 0), callback("after"));
        finish(1, 0);
        QCOMPARE(noted("refused|after"), lines("refused(false,a)\nafter(true,b)"));
        qDeleteAll(QApplication::topLevelWidgets());
        // One that is on disk takes the place of what is waited for.
        m_items[1].missing = false;
        m_manager->downloadItem(model()->index(0, 0), callback("first"));
        m_manager->downloadItem(model()->index(1, 0), callback("second"));
        finish(0, 0);
        QCOMPARE(takeJournal(), lines("library.downloadItem(a,2)"));
    }

    void startsOverWhenTheTreeIsReloaded()
    {
        m_manager->downloadItem(model()->index(0, 0), callback("picked"));
        IZkCategoryTreeEventObserver *const observer = m_project->library.treeObservers.value(0);
        observer->afterCategoryTreeReload(); // still offered: goes on
        finish(0, 0);
        QCOMPARE(noted("picked"), lines("picked(true,a)"));
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

    void worksWithoutAHost()
    {
        cleanup();
        auto *const manager = new ZCutoutPresetItemManager(nullptr);
        manager->loadCutoutPresetFolder();
        QCOMPARE(manager->itemModel()->index(0, 0).data().toString(), QStringLiteral("None"));
        QSignalSpy destroyed(manager, &QObject::destroyed);
        manager->release(); // deferred: its own callback may be what releases it
        QCOMPARE(destroyed.count(), 0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(destroyed.count(), 1);
    }

private:
    ZCutoutPresetItemModel *model() { return m_manager->itemModel(); }
    void finish(int media, int error)
    {
        model()->onDownloadFinishedEvent(&m_medias[media], ZKVBLMODEL::DownloadPreset, error);
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

    const QString m_failure = QStringLiteral("download Fail!|does not support raise");
    std::unique_ptr<ProjectManager> m_project;
    std::unique_ptr<ZCutoutPresetItemManager> m_manager;
    Folder m_folder {QStringLiteral("x_subject_smart_cutout_preset_2")};
    MediaItem m_items[3] {
        {1, QStringLiteral("a")}, {2, QStringLiteral("b")}, {3, QStringLiteral("c")}};
    Media m_medias[3] {{QStringLiteral("A"), &m_items[0]},
                       {QStringLiteral("B"), &m_items[1]},
                       {QStringLiteral("C"), &m_items[2]}};
};

ZK_TEST_MAIN(ZCutoutPresetItemManagerTest)
#include "ZCutoutPresetItemManagerTest.moc"
