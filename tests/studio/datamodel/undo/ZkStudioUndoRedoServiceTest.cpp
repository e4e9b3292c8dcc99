#include "undo/ZkStudioUndoRedoService.h"

#include "ZkTestMain.h"

class ZkStudioUndoRedoServiceTest : public QObject, public IZkUndoRedoServiceEventObserver
{
    Q_OBJECT

public:
    void onUndoRedoChangedEvent() override
    {
        ++notices;
        if (const auto callback = onNotice) // which may replace itself
            callback();
    }

private:
    using Test = ZkStudioUndoRedoServiceTest;

    // Sets the test's value and reports an added effect.
    class Item : public IZkUndoRedoItem
    {
    public:
        Item(Test *test, int value)
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
            m_test->service->report({ZKTIMELINE::EffectChange, ZKTIMELINE::EffectAdded});
        }
        Test *const m_test;
        const int m_before;
        const int m_after;
    };

    void push(int to) { service->push(new Item(this, to)); }

    int value = 0;
    int items = 0; // that are alive
    int notices = 0;
    std::function<void()> onNotice;
    QVector<ZkTimelineChanges> reports;
    std::function<void()> onReport;
    std::unique_ptr<ZkStudioUndoRedoService> service;

private Q_SLOTS:
    void init()
    {
        value = notices = 0;
        reports.clear();
        onReport = onNotice = nullptr;
        service = std::make_unique<ZkStudioUndoRedoService>([this](const ZkTimelineChanges &set) {
            reports.append(set);
            if (const auto callback = onReport)
                callback();
        });
        service->addObserver(this);
    }

    void stepsAndBack()
    {
        QVERIFY(!service->undo() && !service->redo());
        push(5);
        QCOMPARE(service->undoText(), QStringLiteral("to 5"));
        QVERIFY(service->undo());
        QCOMPARE(value, 0);
        QCOMPARE(service->redoText(), QStringLiteral("to 5"));
        QVERIFY(service->redo());
        QCOMPARE(value, 5);
        QCOMPARE(reports.size(), 3);
        service->undo();
        push(7);
        QVERIFY(!service->canRedo());
        QCOMPARE(items, 1);
        service->clearHistory();
        QCOMPARE(value, 7);
        QCOMPARE(items, 0);
        QCOMPARE(notices, 6);
    }

    void macroIsOneStep()
    {
        service->beginMacro(QStringLiteral("outer"), QStringLiteral("test"));
        push(1);
        service->beginMacro(QStringLiteral("inner"));
        push(2);
        service->endMacro();
        QCOMPARE(service->undoText(), QStringLiteral("outer"));
        QCOMPARE(notices, 0);
        service->endMacro();
        QCOMPARE(notices, 1);
        QCOMPARE(service->undoStepCount(), 1);
        reports.clear();
        QVERIFY(service->undo());
        QCOMPARE(value, 0);
        QCOMPARE(reports.size(), 1);
        QVERIFY(service->redo());
        QCOMPARE(value, 2);
    }

    void emptyMacroLeavesNothing()
    {
        push(1);
        service->undo();
        {
            ZkUndoRedoCommander outer(service.get(), QStringLiteral("outer"), QString());
            ZkUndoRedoCommander inner(service.get(), QStringLiteral("inner"), QString());
        }
        QVERIFY(!service->canUndo() && service->canRedo());
        QCOMPARE(notices, 2);
    }

    void openMacroIsClosedFirst()
    {
        push(1);
        notices = 0;
        {
            ZkUndoRedoCommander macro(service.get(), QStringLiteral("macro"), QString());
            push(2);
            push(3);
            QVERIFY(service->undo());
        }
        QCOMPARE(value, 1);
        QCOMPARE(notices, 1);
        service->beginMacro(QStringLiteral("macro"));
        push(4);
        service->clearHistory();
        service->endMacro(); // nothing open
        QCOMPARE(value, 4);
        QCOMPARE(service->undoStepCount(), 0);
    }

    void suspendedRecordingLeavesNoStep()
    {
        {
            ZkDisableUndoRedoCommander outer(service.get());
            ZkUndoRedoEnableCommander noEffect(service.get(), true);
            push(7);
            QCOMPARE(items, 0);
        }
        QVERIFY(service->isRecording() && !service->canUndo());
        QCOMPARE(value, 7);
        QCOMPARE(reports.size(), 1);
        QCOMPARE(notices, 0);
    }

    void recordsComeAfterTheStep()
    {
        // By then the step is there, observers know of it, and another one may follow.
        onReport = [this] {
            onReport = nullptr;
            QCOMPARE(notices, 1);
            QVERIFY(service->undo());
        };
        push(4);
        QCOMPARE(value, 0);
        QVERIFY(service->canRedo());
    }

    void pausedEventsComeAsOneSet()
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
    }

    void observersMayDoAnything()
    {
        class Second : public IZkUndoRedoServiceEventObserver
        {
        public:
            int calls = 0;
            void onUndoRedoChangedEvent() override { ++calls; }
        } second, third;
        service->addObserver(&second);
        onNotice = [&] {
            onNotice = nullptr;
            service->removeObserver(&second);
            service->addObserver(&third);
            service->undo();
        };
        push(9);
        QCOMPARE(value, 0);
        QCOMPARE(second.calls, 0);
        QCOMPARE(third.calls, 1); // it heard the undo
        onNotice = [this] { service.reset(); };
        service->pauseEvents(); // the records go with the service
        push(1);
        QVERIFY(!service);
        QCOMPARE(items, 0);
        QCOMPARE(third.calls, 1);
    }

    void oldestStepsAreForgotten()
    {
        push(1);
        const quint64 afterFirst = service->stateId();
        for (int to = 2; to <= 1001; ++to) {
            service->beginMacro(QStringLiteral("step"));
            push(to);
            service->endMacro();
        }
        QCOMPARE(service->undoStepCount(), 1000);
        QCOMPARE(items, 1000);
        const quint64 last = service->stateId();
        while (service->undo()) { }
        QCOMPARE(value, 1);
        QCOMPARE(service->stateId(), afterFirst);
        while (service->redo()) { }
        QVERIFY(value == 1001 && service->stateId() == last);
    }
};

ZK_TEST_CORE_MAIN(ZkStudioUndoRedoServiceTest)
#include "ZkStudioUndoRedoServiceTest.moc"
