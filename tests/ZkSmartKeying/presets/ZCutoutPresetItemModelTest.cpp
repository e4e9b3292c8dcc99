#include "Workspace.h"

#include <QAbstractItemModelTester>

namespace {

// The model says its row count for every parent. The tester takes that for a tree, so it sees the
// list without it.
class Rows : public ZCutoutPresetItemModel
{
public:
    Rows()
        : ZCutoutPresetItemModel(nullptr)
    { }
    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : ZCutoutPresetItemModel::rowCount(parent);
    }
    QStringList names() const
    {
        QStringList texts;
        for (const QModelIndex &index : getAllIndexes())
            texts += index.data().toString();
        return texts;
    }
};

} // namespace

class ZCutoutPresetItemModelTest : public QObject
{
    Q_OBJECT

private slots:
    void answersRoles();
    void isAFlatReadOnlyList();
    void keepsNoneOnTop();
    void followsItsFolder();
    void reportsDownloads_data();
    void reportsDownloads();
    void subscribes();

private:
    MediaItem m_item {11, QStringLiteral("glow")};
    Media m_glow {QStringLiteral("Glow"), &m_item};
    Media m_bare {QStringLiteral("Bare"), nullptr};
    Media m_nested {QStringLiteral("Nested"), nullptr};
    Folder m_folder {QStringLiteral("folder")};
    Folder m_other {QStringLiteral("other")};
};

void ZCutoutPresetItemModelTest::answersRoles()
{
    m_item.thumbnail = QStringLiteral("/thumbs/glow.png");
    m_folder.own = {&m_glow, &m_bare};
    m_folder.nested = {&m_nested};
    ZCutoutPresetItemModel model(nullptr);
    model.load(&m_folder);
    model.addVirtualNoneItem();
    const auto values = [&model](int row) {
        QStringList texts;
        for (int role : {0, 3, 258, 259, 261, 262})
            texts += model.index(row, 0).data(role).toString();
        return texts;
    };
    QCOMPARE(values(0),
             QStringList(
                 {"None", "None", "None", ":/Resource/DefaultMask/icon54_mask-none.png", "0", ""}));
    QCOMPARE(values(1), QStringList({"Glow", "Glow", "Glow", "/thumbs/glow.png", "11", "glow"}));
    QCOMPARE(values(2), QStringList({"Bare", "Bare", "Bare", "", "0", ""}));
    QCOMPARE(model.index(3, 0).data().toString(), QStringLiteral("Nested"));
    QCOMPARE(model.index(1, 0).data(260).value<IZkAbstractMedia *>(), &m_glow);
    QVERIFY(!model.index(1, 0).data(Qt::DecorationRole).isValid());
    QVERIFY(!model.data(QModelIndex(), 0).isValid());
    QCOMPARE(ZCutoutPresetItemModel::mediaFromIndex(model.index(2, 0)), &m_bare);
    QCOMPARE(ZCutoutPresetItemModel::mediaItemFromIndex(model.index(1, 0)), &m_item);
    QVERIFY(!ZCutoutPresetItemModel::mediaItemFromIndex(model.index(2, 0)));
    QVERIFY(!ZCutoutPresetItemModel::mediaFromIndex(QModelIndex()));
    const QModelIndex last = model.index(3, 0);
    model.setFolder(nullptr); // "None" alone is left, and the index is stale
    QVERIFY(!model.data(last, 0).isValid());
}

void ZCutoutPresetItemModelTest::isAFlatReadOnlyList()
{
    m_folder.own = {&m_glow, &m_bare};
    ZCutoutPresetItemModel model(nullptr);
    model.load(&m_folder);
    const QModelIndex first = model.index(0, 0);
    QCOMPARE(model.rowCount(first), model.rowCount());
    QCOMPARE(model.columnCount(first), 1);
    QVERIFY(!model.hasChildren(first) && !model.parent(first).isValid());
    QVERIFY(!model.index(0, 1).isValid() && !model.index(0, 0, first).isValid());
    QVERIFY(!model.setData(first, QStringLiteral("x")));
    QCOMPARE(first.data().toString(), QStringLiteral("Glow"));
}

void ZCutoutPresetItemModelTest::keepsNoneOnTop()
{
    m_folder.own = {&m_glow};
    m_folder.nested.clear();
    Rows model;
    QAbstractItemModelTester tester(&model);
    model.load(nullptr);
    QCOMPARE(model.rowCount(), 0);
    model.load(&m_folder);
    QCOMPARE(model.names(), QStringList({"Glow"})); // nobody has asked for "None"
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    model.addVirtualNoneItem();
    model.addVirtualNoneItem();
    QCOMPARE(inserted.count(), 1);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.load(&m_folder);
    QCOMPARE(reset.count(), 1);
    QCOMPARE(model.names(), QStringList({"None", "Glow"}));
    QCOMPARE(model.getAllIndexes().size(), 2);
}

void ZCutoutPresetItemModelTest::followsItsFolder()
{
    m_folder.own = {&m_glow};
    Rows model;
    QAbstractItemModelTester tester(&model);
    model.setFolder(&m_folder);
    QCOMPARE(model.folder(), &m_folder);
    QCOMPARE(model.rowCount(), 0);
    model.load(&m_folder);
    model.onAfterAddItemEvent(&m_other, &m_bare);
    model.onAfterAddItemEvent(&m_folder, nullptr);
    QCOMPARE(model.names(), QStringList({"Glow"}));
    model.onAfterAddItemEvent(&m_folder, &m_bare);
    QCOMPARE(model.names(), QStringList({"Glow", "Bare"}));
    model.onAfterRemoveItemEvent(&m_other, &m_glow);
    model.onAfterRemoveItemEvent(&m_folder, &m_nested);
    model.onAfterRemoveItemEvent(&m_folder, nullptr);
    QCOMPARE(model.names(), QStringList({"Glow", "Bare"}));
    model.onAfterRemoveItemEvent(&m_folder, &m_glow);
    QCOMPARE(model.names(), QStringList({"Bare"}));
    // None of these tells anything about the rows.
    model.onBeforeClearItemsEvent(&m_folder);
    model.onAfterClearItemsEvent(&m_folder);
    model.onBeforeMoveItemEvent(&m_folder, &m_other, &m_bare);
    model.onAfterMoveItemEvent(&m_folder, &m_other, &m_bare);
    model.onRemoveItemResultEvent(&m_bare, true);
    QCOMPARE(model.names(), QStringList({"Bare"}));
}

void ZCutoutPresetItemModelTest::reportsDownloads_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("error");
    QTest::addColumn<QStringList>("signals_");
    QTest::newRow("thumbnail") << 10 << 0 << 0 << QStringList("dataChanged");
    QTest::newRow("preview") << 10 << 1 << 0 << QStringList();
    QTest::newRow("preset") << 10 << 2 << 0
                            << QStringList({"dataChanged", "sigItemDownloadFinished(false)"});
    QTest::newRow("failed") << 10 << 2 << 7
                            << QStringList({"dataChanged", "sigItemDownloadFinished(true)"});
    QTest::newRow("folder") << 1 << 2 << 0 << QStringList();
}

void ZCutoutPresetItemModelTest::reportsDownloads()
{
    QFETCH(int, kind);
    QFETCH(int, type);
    QFETCH(int, error);
    Media media(QStringLiteral("Media"), &m_item);
    media.mediaKind = kind;
    m_folder.own = {&m_bare, &media};
    ZCutoutPresetItemModel model(nullptr);
    model.load(&m_folder);
    SignalJournal recorder(&model);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    takeJournal();
    model.onDownloadFinishedEvent(&media, ZKVBLMODEL::ZkMediaDownloadType(type), error);
    QStringList names = takeJournal();
    names.replaceInStrings(QRegularExpression("\\(.*(true|false)\\)"), "(\\1)");
    names.replaceInStrings(QRegularExpression("dataChanged\\(.*"), "dataChanged");
    QTEST(names, "signals_");
    if (!changed.isEmpty())
        QCOMPARE(changed.at(0).at(0).toModelIndex(), model.index(1, 0));
    model.onItemDataChangedEvent(&m_glow); // not in the list
    QCOMPARE(takeJournal(), QStringList());
}

void ZCutoutPresetItemModelTest::subscribes()
{
    MediaLibrary library;
    {
        ZCutoutPresetItemModel model(nullptr);
        model.subscribeMediaItemManager(&library);
        model.subscribeMediaItemManager(&library);
        QCOMPARE(library.observers.size(), 1);
        model.unSubscribeMediaItemManager();
        QVERIFY(library.observers.isEmpty());
        model.subscribeMediaItemManager(&library);
        QSignalSpy loaded(&model, &ZCutoutPresetItemModel::sigAllItemsFinishLoad);
        QSignalSpy progress(&model, &ZCutoutPresetItemModel::sigItemDownloadProgressChanged);
        library.observers.at(0)->onAllMediaChangedFinishEvent(&m_other);
        library.observers.at(0)->onDownloadProgressEvent(&m_glow, ZKVBLMODEL::DownloadPreset, 3);
        QCOMPARE(loaded.count(), 1);
        QCOMPARE(progress.count(), 1);
    }
    QVERIFY(library.observers.isEmpty());
}

ZK_TEST_MAIN(ZCutoutPresetItemModelTest)
#include "ZCutoutPresetItemModelTest.moc"
