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
        received.append({message->id(), message->data()});
        return message->id() == taken;
    }

    int taken = ZKMESSAGE::CommitFocusedEditor;
    QVector<QPair<int, QVariant>> received;
};

class Subject
{
public:
    void addObserver(int *observer) { observers.append(observer); }
    void removeObserver(int *observer) { observers.removeOne(observer); }

    QVector<int *> observers;
};

} // namespace

class ZkUIViewTest : public QObject
{
    Q_OBJECT

private slots:
    void messageReachesPresenterOfOutermostView();
    void presenterForgetsItsView();
    void connectorObservesForItsScope();
};

void ZkUIViewTest::messageReachesPresenterOfOutermostView()
{
    View outer;
    View middle(&outer);
    View inner(&middle);
    Presenter scene;
    Presenter own;
    middle.setViewPresenter(&own);
    inner.setViewPresenter(&own);
    ZkMessage message(ZKMESSAGE::CommitFocusedEditor, QStringLiteral("payload"));

    QVERIFY(!inner.sendSceneMessage(&message)); // the outermost view has no presenter yet
    outer.setViewPresenter(&scene);
    QVERIFY(!inner.sendSceneMessage(nullptr));
    QVERIFY(inner.sendSceneMessage(&message));
    QVERIFY(outer.sendSceneMessage(&message));
    ZkMessage unknown(1);
    QVERIFY(!inner.sendSceneMessage(&unknown));

    QVERIFY(own.received.isEmpty());
    const QPair<int, QVariant> expected(4102, QStringLiteral("payload"));
    QCOMPARE(scene.received, (QVector<QPair<int, QVariant>> {expected, expected, {1, QVariant()}}));
}

void ZkUIViewTest::presenterForgetsItsView()
{
    View view;
    ZkPresenter presenter;
    QCOMPARE(presenter.view(), nullptr);
    presenter.setView(&view);
    QCOMPARE(presenter.view(), static_cast<ZkUIView *>(&view));
    presenter.clearView();
    QCOMPARE(presenter.view(), nullptr);
    ZkMessage message(ZKMESSAGE::CommitFocusedEditor);
    QVERIFY(!presenter.dispatchMessage(&message));
}

void ZkUIViewTest::connectorObservesForItsScope()
{
    Subject subject;
    int observer = 0;
    {
        const ZkObserverConnector<Subject, int> connector(&subject, &observer);
        QCOMPARE(subject.observers, QVector<int *> {&observer});
    }
    QVERIFY(subject.observers.isEmpty());
}

ZK_TEST_CORE_MAIN(ZkUIViewTest)
#include "ZkUIViewTest.moc"
