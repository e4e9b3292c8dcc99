#include "ZkTestMain.h"

#include "ZkCore.h"

#include <QSemaphore>

#include <atomic>
#include <memory>
#include <thread>

namespace {

const QString type = QStringLiteral("resourceChanged");

bool post(const QVariant &data = QVariant())
{
    return ZkCustomEventManager::instance()->postEvent(type, data);
}

} // namespace

class ZkCustomEventTest : public QObject
{
    Q_OBJECT

private slots:
    void deliversInOrderUntilTaken()
    {
        QStringList calls;
        const auto record = [&calls](const char *name, bool take) {
            return [&calls, name, take](const ZkCustomEvent &event) {
                calls.append(QLatin1String(name) + event.data.toString());
                return take && event.data.toInt() == 2;
            };
        };
        QVERIFY(!post(0));
        {
            const ZkCustomEventListener a(type, record("a", false));
            const ZkCustomEventListener other(QStringLiteral("another type"),
                                              record("other", true));
            const ZkCustomEventListener empty(type, nullptr);
            const ZkCustomEventListener b(type, record("b", true));
            const ZkCustomEventListener c(type, record("c", true));
            QVERIFY(!post(1));
            QVERIFY(post(2));
        }
        QVERIFY(!post(2));
        QCOMPARE(calls.join(QLatin1Char(' ')), QStringLiteral("a1 b1 c1 a2 b2"));
    }

    void handlerMayPostRegisterAndDestroy()
    {
        QStringList calls;
        std::unique_ptr<ZkCustomEventListener> own;
        std::unique_ptr<ZkCustomEventListener> later;
        std::unique_ptr<ZkCustomEventListener> added;
        const auto name = [&calls](const char *text) {
            return [&calls, text](const ZkCustomEvent &) {
                calls.append(QLatin1String(text));
                return false;
            };
        };
        auto captured = std::make_shared<int>();
        const std::weak_ptr<int> watched = captured;
        bool livedOn = false;
        own = std::make_unique<ZkCustomEventListener>(
            type, [&, captured](const ZkCustomEvent &event) {
                const int depth = event.data.toInt();
                calls.append(QStringLiteral("own%1").arg(depth));
                if (depth == 0) {
                    post(1);
                    return false;
                }
                later.reset();
                own.reset();
                livedOn = !watched.expired();
                added = std::make_unique<ZkCustomEventListener>(type, name("added"));
                return false;
            });
        const ZkCustomEventListener kept(type, name("kept"));
        later = std::make_unique<ZkCustomEventListener>(type, name("later"));

        captured.reset();

        post(0);
        QVERIFY(livedOn); // a handler is not destroyed while it runs ...
        QVERIFY(watched.expired()); // ... and not kept when it has returned
        QCOMPARE(calls.join(QLatin1Char(' ')), QStringLiteral("own0 own1 kept kept"));
        calls.clear();
        post(0);
        QCOMPARE(calls.join(QLatin1Char(' ')), QStringLiteral("kept added"));
    }

    void destructorWaitsForOtherThreads()
    {
        QSemaphore entered;
        std::atomic<bool> returned {false};
        auto listener = std::make_unique<ZkCustomEventListener>(type, [&](const ZkCustomEvent &) {
            entered.release();
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            returned = true;
            return true;
        });
        std::thread poster([] { post(); });
        entered.acquire();
        listener.reset();
        QVERIFY(returned);
        poster.join();
    }

    void listenersComeAndGoWhileThreadsPost()
    {
        std::atomic<bool> stop {false};
        std::atomic<int> delivered {0};
        std::atomic<int> late {0};
        std::vector<std::thread> posters;
        const auto postAlways = [&stop] {
            while (!stop)
                post();
        };
        posters.reserve(3);
        for (int i = 0; i < 3; ++i)
            posters.emplace_back(postAlways);
        const QDeadlineTimer deadline(20000);
        for (int round = 0; (round < 300 || delivered < 300) && !deadline.hasExpired(); ++round) {
            std::atomic<bool> alive {true};
            {
                const ZkCustomEventListener listener(type, [&](const ZkCustomEvent &) {
                    std::this_thread::yield();
                    ++(alive ? delivered : late);
                    return false;
                });
                std::this_thread::yield();
            }
            alive = false;
        }
        stop = true;
        for (std::thread &poster : posters)
            poster.join();
        QVERIFY(delivered >= 300);
        QCOMPARE(late.load(), 0);
    }
};

ZK_TEST_CORE_MAIN(ZkCustomEventTest)
#include "ZkCustomEventTest.moc"
