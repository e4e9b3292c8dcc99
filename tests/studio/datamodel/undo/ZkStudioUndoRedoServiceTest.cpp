#include "undo/ZkStudioUndoRedoService.h"

#include "ZkTestMain.h"

#include <QPointer>

namespace {

const ZkTimelineChanges effectAdded(ZKTIMELINE::EffectChange, ZKTIMELINE::EffectAdded);

class Observer : public IZkUndoRedoServiceEventObserver
{
public:
    int calls = 0;
    std::function<void()> onCall;
    void onUndoRedoChangedEvent() override
    {
        ++calls;
        if (onCall)
            onCall();
    }
};

} // namespace

class ZkStudioUndoRedoServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void oneStep();
    void macroIsOneStep();
    void emptyMacroLeavesNothing();
    void openMacroIsClosedFirst_data();
    void openMacroIsClosedFirst();
    void suspendedRecordingLeavesNoStep();
    void newStepDropsRedo();
    void recordsComeAfterTheStep();
    void pausedEventsComeAsOneSet();
    void observersMayChangeTheList();
    void observerMayUndo();
    void observerMayDeleteTheService();
    void blockedServiceRefuses();
    void itemThatPushesIsDoneButNotRecorded();

private:
    class Item;
    void push(int value) { service->push(makeItem(value)); }
    IZkUndoRedoItem *makeItem(int value);

    int value = 0;
    int items = 0; // that are alive
    QVector<ZkTimelineChanges> reports;
    std::function<void()> onReport;
    std::unique_ptr<ZkStudioUndoRedoService> service;
    Observer observer;
};

class ZkStudioUndoRedoServiceTest::Item : public IZkUndoRedoItem
{
public:
    Item(ZkStudioUndoRedoServiceTest *test, int value)
        : m_test(test)
        , m_before(test->value)
        , m_after(value)
    {
        ++m_test->items;
    }
    ~Item() override { --m_test->items; }
    void redo() override { set(m_after); }
    void undo() override { set(m_before); }
    QString description() const override { return QStringLiteral("to %1").arg(m_after); }

private:
    void set(int value)
    {
        m_test->value = value;
        m_test->service->report(effectAdded);
    }
    ZkStudioUndoRedoServiceTest *const m_test;
    const int m_before;
    const int m_after;
};

IZkUndoRedoItem *ZkStudioUndoRedoServiceTest::makeItem(int value)
{
    return new Item(this, value);
}

void ZkStudioUndoRedoServiceTest::init()
{
    value = 0;
    reports.clear();
    onReport = nullptr;
    service = std::make_unique<ZkStudioUndoRedoService>([this](const ZkTimelineChanges &changes) {
        reports.append(changes);
        if (onReport)
            onReport();
    });
    observer = Observer();
    service->addObserver(&observer);
}

void ZkStudioUndoRedoServiceTest::oneStep()
{
    QVERIFY(!service->canUndo() && !service->canRedo() && !service->undo() && !service->redo());
    QCOMPARE(observer.calls, 0);
    push(5);
    QCOMPARE(value, 5);
    QCOMPARE(service->undoText(), QStringLiteral("to 5"));
    QCOMPARE(service->undoStepCount(), 1);
    QVERIFY(service->undo());
    QCOMPARE(value, 0);
    QVERIFY(!service->canUndo() && service->canRedo());
    QCOMPARE(service->redoText(), QStringLiteral("to 5"));
    QVERIFY(service->redo());
    QCOMPARE(value, 5);
    QCOMPARE(observer.calls, 3);
    QCOMPARE(reports.size(), 3);
    service->clearHistory();
    QCOMPARE(value, 5);
    QCOMPARE(items, 0);
    QCOMPARE(observer.calls, 4);
}

void ZkStudioUndoRedoServiceTest::macroIsOneStep()
{
    service->beginMacro(QStringLiteral("outer"), QStringLiteral("test"));
    QVERIFY(!service->canUndo());
    push(1);
    service->beginMacro(QStringLiteral("inner"));
    push(2);
    service->endMacro();
    QVERIFY(service->canUndo());
    QCOMPARE(service->undoText(), QStringLiteral("outer"));
    QCOMPARE(service->undoStepCount(), 1);
    QCOMPARE(observer.calls, 0);
    service->endMacro();
    QCOMPARE(observer.calls, 1);
    QCOMPARE(service->undoStepCount(), 1);
    reports.clear();
    QVERIFY(service->undo());
    QCOMPARE(value, 0);
    QCOMPARE(reports.size(), 1);
    QVERIFY(service->redo());
    QCOMPARE(value, 2);
    QCOMPARE(observer.calls, 3);
}

void ZkStudioUndoRedoServiceTest::emptyMacroLeavesNothing()
{
    push(1);
    service->undo();
    observer.calls = 0;
    {
        ZkUndoRedoCommander outer(service.get(), QStringLiteral("outer"), QString());
        ZkUndoRedoCommander inner(service.get(), QStringLiteral("inner"), QString());
    }
    QCOMPARE(service->undoStepCount(), 0);
    QVERIFY(service->canRedo());
    QCOMPARE(observer.calls, 0);
    service->endMacro(); // nothing open
    push(3);
    QCOMPARE(service->undoText(), QStringLiteral("to 3"));
}

void ZkStudioUndoRedoServiceTest::openMacroIsClosedFirst_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<int>("valueAfter");
    QTest::addColumn<int>("stepsAfter");
    QTest::newRow("undo") << 0 << 1 << 1;
    QTest::newRow("redo") << 1 << 3 << 2;
    QTest::newRow("clear") << 2 << 3 << 0;
}

void ZkStudioUndoRedoServiceTest::openMacroIsClosedFirst()
{
    QFETCH(int, operation);
    push(1);
    observer.calls = 0;
    {
        ZkUndoRedoCommander macro(service.get(), QStringLiteral("macro"), QString());
        push(2);
        push(3);
        if (operation == 0)
            QVERIFY(service->undo());
        else if (operation == 1)
            QVERIFY(!service->redo());
        else
            service->clearHistory();
    }
    QTEST(value, "valueAfter");
    QTEST(service->undoStepCount(), "stepsAfter");
    QCOMPARE(observer.calls, 1);
}

void ZkStudioUndoRedoServiceTest::suspendedRecordingLeavesNoStep()
{
    {
        ZkDisableUndoRedoCommander outer(service.get());
        ZkUndoRedoEnableCommander noEffect(service.get(), true);
        {
            ZkUndoRedoEnableCommander inner(service.get(), false);
        }
        QVERIFY(!service->isRecording());
        push(7);
        QCOMPARE(items, 0);
    }
    QVERIFY(service->isRecording());
    QCOMPARE(value, 7);
    QCOMPARE(reports.size(), 1);
    QCOMPARE(observer.calls, 0);
    QVERIFY(!service->canUndo());
}

void ZkStudioUndoRedoServiceTest::newStepDropsRedo()
{
    push(1);
    push(2);
    service->undo();
    push(3);
    QVERIFY(!service->canRedo());
    QCOMPARE(items, 2);
    service->undo();
    QCOMPARE(value, 1);
}

void ZkStudioUndoRedoServiceTest::recordsComeAfterTheStep()
{
    // By then the step is there, observers know of it, and another one may follow.
    onReport = [this] {
        QCOMPARE(observer.calls, 1);
        onReport = nullptr;
        QVERIFY(service->undo());
    };
    push(4);
    QCOMPARE(value, 0);
    QVERIFY(service->canRedo());
}

void ZkStudioUndoRedoServiceTest::pausedEventsComeAsOneSet()
{
    service->pauseEvents();
    {
        ZkPauseEventCommander pause(service.get());
        push(1);
        push(2);
        service->report({ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData});
    }
    QVERIFY(reports.isEmpty());
    service->resumeEvents();
    QCOMPARE(reports.size(), 1);
    QVERIFY(reports.first().contains(ZKTIMELINE::EffectChange, ZKTIMELINE::EffectAdded));
    QVERIFY(reports.first().contains(ZKTIMELINE::SegmentChange, ZKTIMELINE::SegmentData));
    service->pauseEvents();
    service->resumeEvents();
    QCOMPARE(reports.size(), 1);
}

void ZkStudioUndoRedoServiceTest::observersMayChangeTheList()
{
    Observer removed;
    Observer added;
    observer.onCall = [&] {
        service->removeObserver(&observer);
        service->removeObserver(&removed);
        service->addObserver(&added);
    };
    service->addObserver(&removed);
    push(1);
    QCOMPARE(removed.calls, 0);
    QCOMPARE(added.calls, 0);
    push(2);
    QCOMPARE(observer.calls, 1);
    QCOMPARE(added.calls, 1);
}

void ZkStudioUndoRedoServiceTest::observerMayUndo()
{
    Observer second;
    service->addObserver(&second);
    observer.onCall = [this] {
        if (value == 9)
            QVERIFY(service->undo());
    };
    push(9);
    QCOMPARE(value, 0);
    QCOMPARE(second.calls, 2);
    QCOMPARE(reports.size(), 1); // of both steps: the first one's had not gone out yet
}

void ZkStudioUndoRedoServiceTest::observerMayDeleteTheService()
{
    Observer second;
    service->addObserver(&second);
    observer.onCall = [this] { service.reset(); };
    service->pauseEvents(); // the item's report stays with the service
    push(1);
    QVERIFY(!service);
    QCOMPARE(second.calls, 0);
    QVERIFY(reports.isEmpty());
    QCOMPARE(items, 0);
}

void ZkStudioUndoRedoServiceTest::blockedServiceRefuses()
{
    push(1);
    push(2);
    service->undo();
    service->setBlocked(true);
    QVERIFY(!service->undo());
    QVERIFY(!service->redo());
    QCOMPARE(value, 1);
    QVERIFY(service->canUndo() && service->canRedo());
    service->setBlocked(false);
    QVERIFY(service->undo());
    QCOMPARE(value, 0);
}

void ZkStudioUndoRedoServiceTest::itemThatPushesIsDoneButNotRecorded()
{
    class Pusher : public IZkUndoRedoItem
    {
    public:
        explicit Pusher(ZkStudioUndoRedoServiceTest *test)
            : m_test(test)
        { }
        void redo() override { m_test->push(6); }
        void undo() override { QVERIFY(!m_test->service->undo()); }

    private:
        ZkStudioUndoRedoServiceTest *const m_test;
    };
    const zk::test::ExpectedMessage expected(QStringLiteral("pushed from inside another"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("pushed from inside")));
    service->push(new Pusher(this));
    QCOMPARE(value, 6);
    QCOMPARE(service->undoStepCount(), 1);
    QVERIFY(service->undo());
    QCOMPARE(service->undoStepCount(), 0);
}

ZK_TEST_CORE_MAIN(ZkStudioUndoRedoServiceTest)
#include "ZkStudioUndoRedoServiceTest.moc"
