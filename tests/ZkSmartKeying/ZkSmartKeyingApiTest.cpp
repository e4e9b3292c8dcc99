// Uses the module as another program does: through the library, by what it exports.
#include "ZkTestMain.h"

#include <ZCutoutPresetItemManager.h>
#include <ZCutoutPresetItemModel.h>
#include <ZkSmartKeyingPresenter.h>

class ZkSmartKeyingApiTest : public QObject
{
    Q_OBJECT

private slots:
    void presenterIsExported();
    void presetsWorkWithoutAHost();
};

void ZkSmartKeyingApiTest::presenterIsExported()
{
    const QMetaObject &meta = ZkSmartKeyingPresenter::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 33); // its signals, and no slots
    QCOMPARE(meta.indexOfSignal("sigFrameZoomed()"), meta.methodOffset());
    QVERIFY(meta.indexOfSignal("sigPrompt(PromptType)") >= 0);
    QCOMPARE(QByteArray(meta.superClass()->className()), QByteArray("ZkPresenter"));
    // Known to the linker, and harmless without a host.
    ZkSmartKeyingPresenter::trackSmartCutoutClickEvent(QStringLiteral("undo"), QString());
    QVERIFY(!ZkSmartKeyingPresenter::isSmartKeyingEffect(nullptr));
}

void ZkSmartKeyingApiTest::presetsWorkWithoutAHost()
{
    auto *const manager = new ZCutoutPresetItemManager(nullptr);
    manager->loadCutoutPresetFolder();
    const ZCutoutPresetItemModel *const model = manager->itemModel();
    QCOMPARE(model->rowCount(), 1);
    QCOMPARE(model->index(0, 0).data(ZCutoutPresetItemModel::NameRole).toString(),
             QStringLiteral("None"));
    QSignalSpy destroyed(manager, &QObject::destroyed);
    manager->release();
    QCOMPARE(destroyed.count(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(destroyed.count(), 1);
}

ZK_TEST_MAIN(ZkSmartKeyingApiTest)
#include "ZkSmartKeyingApiTest.moc"
