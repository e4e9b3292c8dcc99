#include "ZkTestMain.h"

#include "ZkCore.h"

namespace {

class View : public ZkUIView
{
public:
    using ZkUIView::ZkUIView;
    QWidget *widget() override { return nullptr; }
};

class Presenter : public ZkPresenter
{
public:
    bool dispatchMessage(ZkMessage *message) override
    {
        received.append(QStringLiteral("%1:%2").arg(message->id()).arg(message->data().toString()));
        return message->id() == ZKMESSAGE::CommitFocusedEditor;
    }

    QStringList received;
};

} // namespace

class ZkCoreTest : public QObject
{
    Q_OBJECT

private slots:
    void messageReachesPresenterOfOutermostView()
    {
        View outer;
        View middle(&outer);
        View inner(&middle);
        Presenter scene;
        Presenter own;
        inner.setViewPresenter(&own);
        ZkMessage message(ZKMESSAGE::CommitFocusedEditor, "payload");
        ZkMessage unknown(1);

        QVERIFY(!inner.sendSceneMessage(&message)); // the outermost view has no presenter yet
        outer.setViewPresenter(&scene);
        QVERIFY(!inner.sendSceneMessage(nullptr));
        QVERIFY(inner.sendSceneMessage(&message));
        QVERIFY(!inner.sendSceneMessage(&unknown));
        QVERIFY(own.received.isEmpty());
        QCOMPARE(scene.received.join(QLatin1Char(' ')), QStringLiteral("4102:payload 1:"));
    }

    void viewInheritsTheHistory()
    {
        View outer;
        View middle(&outer);
        View inner(&middle);
        QVERIFY(!inner.undoRedoService());
        // Only handed on, never called.
        auto *all = reinterpret_cast<IZkUndoRedoService *>(&outer);
        auto *own = reinterpret_cast<IZkUndoRedoService *>(&middle);
        outer.setUndoRedoService(all);
        QCOMPARE(inner.undoRedoService(), all);
        middle.setUndoRedoService(own);
        QCOMPARE(inner.undoRedoService(), own);
        QCOMPARE(outer.undoRedoService(), all);
        middle.setUndoRedoService(nullptr);
        QCOMPARE(inner.undoRedoService(), all);
    }
};

ZK_TEST_CORE_MAIN(ZkCoreTest)
#include "ZkCoreTest.moc"
