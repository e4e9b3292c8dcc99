#include "Workspace.h"

#include <QAbstractItemModelTester>

#include <tuple>

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
    void answersRoles()
    {
        m_item.thumbnail = QStringLiteral("/thumbs/glow.png");
        m_folder.own = {&m_glow};
        m_folder.nested = {&m_bare};
        ZCutoutPresetItemModel model(nullptr);
        model.load(&m_folder);
        model.addVirtualNoneItem();
        const QString expected[] = {
            "None\nNone\nNone\n:/Resource/DefaultMask/icon54_mask-none.png\n0",
            "Glow\nGlow\nGlow\n/thumbs/glow.png\n11\nglow",
            "Bare\nBare\nBare\n0"};
        for (int row = 0; row < 3; ++row) {
            QStringList texts;
            for (int role : {0, 3, 258, 259, 261, 262})
                texts += model.index(row, 0).data(role).toString();
            texts.removeAll(QString());
            QCOMPARE(texts, lines(expected[row]));
        }
        const QModelIndex last = model.index(2, 0);
        QCOMPARE(model.index(1, 0).data(260).value<IZkAbstractMedia *>(), &m_glow);
        QCOMPARE(ZCutoutPresetItemModel::mediaFromIndex(last), &m_bare);
        QVERIFY(!ZCutoutPresetItemModel::mediaItemFromIndex(last));
        QVERIFY(!ZCutoutPresetItemModel::mediaItemFromIndex(QModelIndex()));
        QCOMPARE(model.rowCount(last), 3); // whatever the parent
        QVERIFY(!model.hasChildren(last) && !model.index(0, 0, last).isValid());
        QVERIFY(!model.setData(last, QStringLiteral("x")));
        model.setFolder(nullptr); // "None" alone is left, and the index is stale
        QVERIFY(!model.data(last, 0).isValid());
    }

    void keepsNoneOnTop()
    {
        m_folder.own = {&m_glow};
        m_folder.nested.clear();
        Rows model;
        QAbstractItemModelTester tester(&model);
        model.load(nullptr);
        model.load(&m_folder);
        QCOMPARE(model.names(), QStringList({"Glow"})); // nobody has asked for "None"
        model.addVirtualNoneItem();
        model.addVirtualNoneItem();
        QCOMPARE(model.names(), QStringList({"None", "Glow"}));
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        model.load(&m_folder);
        QCOMPARE(reset.count(), 1);
        QCOMPARE(model.names(), QStringList({"None", "Glow"}));
    }

    void followsItsFolder()
    {
        m_folder.own = {&m_glow};
        Rows model;
        QAbstractItemModelTester tester(&model);
        model.setFolder(&m_folder);
        QCOMPARE(model.rowCount(), 0);
        model.load(&m_folder);
        model.onAfterAddItemEvent(&m_other, &m_bare);
        model.onAfterAddItemEvent(&m_folder, nullptr);
        QCOMPARE(model.names(), QStringList({"Glow"}));
        model.onAfterAddItemEvent(&m_folder, &m_bare);
        model.onAfterRemoveItemEvent(&m_other, &m_glow);
        model.onAfterRemoveItemEvent(&m_folder, nullptr);
        QCOMPARE(model.names(), QStringList({"Glow", "Bare"}));
        model.onAfterRemoveItemEvent(&m_folder, &m_glow);
        model.onAfterRemoveItemEvent(&m_folder, &m_glow); // not in the list any more
        QCOMPARE(model.names(), QStringList({"Bare"}));
    }

    void reportsDownloads()
    {
        const QString finished = "dataChanged\nsigItemDownloadFinished(%1)";
        const std::tuple<int, int, int, QString> rows[] = {{10, 0, 0, "dataChanged"},
                                                           {10, 1, 0, QString()},
                                                           {10, 2, 0, finished.arg("false")},
                                                           {10, 2, 7, finished.arg("true")},
                                                           {1, 2, 0, QString()}};
        for (const auto &[kind, type, error, calls] : rows) {
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
            QCOMPARE(names, lines(calls));
            if (!changed.isEmpty())
                QCOMPARE(changed.at(0).at(0).toModelIndex(), model.index(1, 0));
            model.onItemDataChangedEvent(&m_glow); // not in the list
            QCOMPARE(takeJournal(), QStringList());
        }
    }

private:
    MediaItem m_item {11, QStringLiteral("glow")};
    Media m_glow {QStringLiteral("Glow"), &m_item};
    Media m_bare {QStringLiteral("Bare"), nullptr};
    Folder m_folder {QStringLiteral("folder")};
    Folder m_other {QStringLiteral("other")};
};

ZK_TEST_MAIN(ZCutoutPresetItemModelTest)
#include "ZCutoutPresetItemModelTest.moc"
