// When what is under way counts as over.
#include "ZkEventDepth.h"
#include "ZkTestMain.h"

#include <QEventLoop>
#include <QTimer>

#include <memory>

using zk::app::EventDepth;

class TestEventDepth : public QObject
{
    Q_OBJECT

    static void post(QObject *context, const std::function<void()> &function)
    {
        QMetaObject::invokeMethod(context, function, Qt::QueuedConnection);
    }

private Q_SLOTS:
    void waitsForEverythingInside_data()
    {
        QTest::addColumn<bool>("isLoop"); // or processes events
        QTest::addColumn<bool>("isYoung"); // made while the work is under way already
        for (const bool isLoop : {true, false}) {
            QTest::addRow("%d", isLoop) << isLoop << false;
        }
        QTest::addRow("young") << true << true;
    }
    void waitsForEverythingInside()
    {
        QFETCH(bool, isLoop);
        QFETCH(bool, isYoung);
        QStringList story;
        std::unique_ptr<EventDepth> depth;
        QEventLoop outermost;
        const auto nest = [&](const std::function<void()> &inside) {
            QEventLoop loop;
            post(this, inside);
            if (!isLoop) {
                QCoreApplication::processEvents();
                QCoreApplication::processEvents();
                return;
            }
            QTimer::singleShot(20, &loop, &QEventLoop::quit);
            loop.exec();
        };
        const auto work = [&] {
            if (isYoung)
                depth = std::make_unique<EventDepth>();
            nest([&] {
                nest([&] {
                    depth->whenIdle([&] {
                        story << QStringLiteral("idle");
                        outermost.quit();
                    });
                    story << QStringLiteral("asked");
                });
                story << QStringLiteral("inner");
            });
            story << QStringLiteral("outer");
        };
        if (!isYoung)
            depth = std::make_unique<EventDepth>();
        post(this, work);
        outermost.exec();
        QCOMPARE(story, QStringList({"asked", "inner", "outer", "idle"}));
    }

    void runsOnceAndMayDieOfIt()
    {
        EventDepth other; // neither keeps the other from coming to rest
        auto *const depth = new EventDepth;
        int calls = 0;
        depth->whenIdle([&calls] { calls += 100; }); // replaced
        depth->whenIdle([&calls, depth] {
            ++calls;
            delete depth;
        });
        QCOMPARE(calls, 0);
        QTRY_COMPARE_WITH_TIMEOUT(calls, 1, 10000);
        QTest::qWait(20);
        QCOMPARE(calls, 1);
    }
};

ZK_TEST_CORE_MAIN(TestEventDepth)
#include "tst_event_depth.moc"
