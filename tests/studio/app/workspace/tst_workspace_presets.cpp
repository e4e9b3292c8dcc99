// The preset picker of a workspace.
#include "WorkspaceBench.h"

#include "LibraryFixture.h"
#include "TestHttpServer.h"
#include "ZkPresetListModel.h"
#include "ZkStudioMediaLibrary.h"
#include "library/ZkAnalytics.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListView>

using zk::app::PresetListModel;
using zk::test::WorkspaceBench;
using zk::test::WorkspaceClip;

class TestWorkspacePresets : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestHttpServer> m_server;
    std::unique_ptr<WorkspaceBench> m_bench;

    QListView *list() const { return m_bench->find<QListView>("WorkspacePresetList"); }
    QModelIndex preset(const QString &slug) const
    {
        const QAbstractItemModel *const model = list()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            const QModelIndex index = model->index(row, 0);
            if (index.data(ZCutoutPresetItemModel::SlugRole).toString() == slug)
                return index;
        }
        return QModelIndex();
    }
    int stateOf(const QString &slug) const
    {
        return preset(slug).data(PresetListModel::StateRole).toInt();
    }
    bool isApplied(const QString &slug) const
    {
        return preset(slug).data(PresetListModel::AppliedRole).toBool();
    }
    void clickOn(const QString &slug)
    {
        list()->scrollTo(preset(slug));
        QTest::mouseClick(list()->viewport(),
                          Qt::LeftButton,
                          Qt::NoModifier,
                          list()->visualRect(preset(slug)).center());
    }
    QString effectSlug() const
    {
        const IZkEffect *const effect = m_bench->presenter()->getEffect();
        return effect ? effect->descriptor()->slug() : QString();
    }
    void open(const QUrl &server = QUrl())
    {
        m_bench = std::make_unique<WorkspaceBench>(WorkspaceClip::instance().path(), server);
    }
    // All share one library, so what one has downloaded is there for the next.
    void openWithServer(const QString &slug)
    {
        m_server = std::make_unique<TestHttpServer>();
        QVERIFY(m_server->serve({makeLook(slug, 1, 30)}));
        open(m_server->url());
        QSignalSpy refreshed(m_bench->manager.studioLibrary(),
                             &ZkStudioMediaLibrary::sigRefreshFinished);
        QVERIFY(m_bench->manager.studioLibrary()->refreshCatalogue());
        QTRY_COMPARE_WITH_TIMEOUT(refreshed.count(), 1, 10000);
        QVERIFY(m_bench->open());
        QTRY_VERIFY_WITH_TIMEOUT(preset(slug).isValid(), 10000);
    }
    QString packagePath() const
    {
        const QDir packages(m_server->directory.filePath(QStringLiteral("packages")));
        return QStringLiteral("/packages/") + packages.entryList(QDir::Files).first();
    }

private Q_SLOTS:
    void cleanup()
    {
        m_bench.reset();
        m_server.reset();
    }

    void appliesByMouseAndKeyAndFollowsUndo()
    {
        open();
        QVERIFY(m_bench->open());
        QTRY_VERIFY_WITH_TIMEOUT(preset(QStringLiteral("glow")).isValid(), 10000);
        const QAbstractItemModelTester tester(list()->model());
        QVERIFY(isApplied(QString()));
        QVERIFY(!m_bench->isEnabled("WorkspaceEffectEnabled"));

        clickOn(QStringLiteral("glow"));
        QCOMPARE(effectSlug(), QStringLiteral("glow"));
        QVERIFY(isApplied(QStringLiteral("glow")) && !isApplied(QString()));
        clickOn(QStringLiteral("glow"));
        QCOMPARE(m_bench->presenter()->undoRedoService()->undoStepCount(), 1);

        m_bench->click("WorkspaceEffectEnabled");
        QVERIFY(!m_bench->presenter()->isEffectEnabled());
        m_bench->key(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(m_bench->find<QCheckBox>("WorkspaceEffectEnabled")->isChecked());
        m_bench->key(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(isApplied(QString()) && effectSlug().isEmpty());

        // The list's arrows are its own: the playhead stays where it is.
        list()->setFocus();
        list()->setCurrentIndex(list()->model()->index(0, 0));
        QTest::keyClick(list(), Qt::Key_Right);
        QTest::keyClick(list(), Qt::Key_Return);
        QCOMPARE(effectSlug(),
                 list()->model()->index(1, 0).data(ZCutoutPresetItemModel::SlugRole).toString());
        QCOMPARE(m_bench->presenter()->currentFrame(), qint64(0));
    }

    void searchesAndReportsWhatIsSeen()
    {
        QTemporaryDir folder;
        const QString records = folder.filePath(QStringLiteral("records"));
        QVERIFY(zk::datamodel::Analytics::switchOn(records));
        open();
        QVERIFY(m_bench->open());
        QTRY_VERIFY_WITH_TIMEOUT(list()->model()->rowCount() > 12, 10000);
        const auto exposed = [&records] {
            QFile file(records);
            return file.open(QIODevice::ReadOnly)
                ? int(file.readAll().count("smart_cutout_effects_expose"))
                : 0;
        };
        QTRY_VERIFY_WITH_TIMEOUT(exposed() > 0, 10000);
        const int all = list()->model()->rowCount() - 1;
        QVERIFY(exposed() < all);
        list()->scrollToBottom();
        QTRY_VERIFY_WITH_TIMEOUT(exposed() > 6, 10000);

        auto *const search = m_bench->find<QLineEdit>("WorkspacePresetSearch");
        search->setFocus();
        QTest::keyClicks(search, QStringLiteral("neon"));
        QVERIFY(list()->model()->rowCount() > 1 && list()->model()->rowCount() < all);
        QVERIFY(preset(QStringLiteral("neon")).isValid());
        QTest::keyClicks(search, QStringLiteral("zzz"));
        QCOMPARE(list()->model()->rowCount(), 1);
        QVERIFY(m_bench->find<QWidget>("WorkspacePresetNotice")->isVisible());
        zk::datamodel::Analytics::switchOff();
    }

    void downloadsWhatIsPicked()
    {
        const QString far = QStringLiteral("far");
        openWithServer(far);
        QCOMPARE(stateOf(far), int(PresetListModel::OnServer));
        m_server->setBehaviour(packagePath(), TestHttpServer::Status404);
        {
            const zk::test::ExpectedMessage expected(QStringLiteral("[Ff]ail"));
            clickOn(far);
            QCOMPARE(stateOf(far), int(PresetListModel::Downloading));
            QVERIFY(m_bench->page->isBusy());
            QTRY_COMPARE_WITH_TIMEOUT(stateOf(far), int(PresetListModel::DownloadFailed), 10000);
        }
        QVERIFY(!m_bench->page->isBusy());
        QVERIFY(m_bench->find<QWidget>("WorkspacePresetRetry")->isVisible());
        QVERIFY(effectSlug().isEmpty() && isApplied(QString()));

        m_server->setBehaviour(packagePath(), TestHttpServer::Slow);
        m_bench->click("WorkspacePresetRetry");
        QTRY_VERIFY_WITH_TIMEOUT(preset(far).data(PresetListModel::PercentRole).toInt() > 0, 10000);
        QTRY_COMPARE_WITH_TIMEOUT(effectSlug(), far, 10000);
        QCOMPARE(stateOf(far), int(PresetListModel::OnDisk));
        QVERIFY(isApplied(far));
        QVERIFY(m_bench->find<QWidget>("WorkspacePresetNotice")->isHidden());
    }

    void offersToTryAgainWhenTheServerIsAway()
    {
        openWithServer(QStringLiteral("furthest"));

        QVERIFY(m_bench->find<QWidget>("WorkspacePresetNotice")->isHidden());
        m_server->setBehaviour(QStringLiteral("/catalogue.json"), TestHttpServer::Status404);
        {
            const zk::test::ExpectedMessage expected(QStringLiteral("."));
            QVERIFY(m_bench->manager.studioLibrary()->refreshCatalogue());
            QTRY_VERIFY_WITH_TIMEOUT(m_bench->find<QWidget>("WorkspacePresetRetry")->isVisible(),
                                     10000);
        }
        m_server->setBehaviour(QStringLiteral("/catalogue.json"), TestHttpServer::Whole);
        m_bench->click("WorkspacePresetRetry");
        QTRY_VERIFY_WITH_TIMEOUT(m_bench->find<QWidget>("WorkspacePresetNotice")->isHidden(),
                                 10000);
    }
};

ZK_TEST_MAIN(TestWorkspacePresets)
#include "tst_workspace_presets.moc"
