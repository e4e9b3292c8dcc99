#include "ZkTestMain.h"

#include "ZkFrameCache.h"

#include <thread>

using zk::media::FrameCache;

namespace {

const QString Clip = QStringLiteral("clip");

// 4 KiB of one value.
QImage image(int value)
{
    QImage result(32, 32, QImage::Format_RGBA8888);
    result.fill(QColor(value, 0, 0));
    return result;
}

} // namespace

class ZkFrameCacheTest : public QObject
{
    Q_OBJECT

private slots:
    void dropsTheLeastRecentlyUsed()
    {
        FrameCache cache(3 * 4096);
        for (int i = 0; i < 3; ++i)
            cache.insert(Clip, i, image(i));
        QCOMPARE(cache.find(Clip, 0), image(0));
        cache.insert(Clip, 3, image(3));
        QVERIFY(cache.find(Clip, 1).isNull());
        for (const int held : {0, 2, 3})
            QCOMPARE(cache.find(Clip, held), image(held));
        cache.insert(Clip, 3, image(9));
        QCOMPARE(cache.find(Clip, 3), image(9));
        QCOMPARE(cache.bytes(), qint64(3 * 4096));
    }

    void neverHoldsMoreThanItsLimit()
    {
        FrameCache cache(10000);
        cache.insert(Clip, 99, QImage(300, 300, QImage::Format_RGBA8888));
        QVERIFY(cache.find(Clip, 99).isNull());
        cache.setMaxBytes(qint64(6) << 30); // beyond what an int can count
        const QString other = QStringLiteral("other");
        for (int i = 0; i < 4; ++i) {
            cache.insert(Clip, i, image(i));
            cache.insert(other, i, image(100 + i));
        }
        cache.remove(Clip);
        QVERIFY(cache.find(Clip, 2).isNull());
        QCOMPARE(cache.find(other, 2), image(102));
        QCOMPARE(cache.bytes(), qint64(4 * 4096));
        cache.setMaxBytes(5000);
        QCOMPARE(cache.bytes(), qint64(4096));
    }

    void isThreadSafe()
    {
        FrameCache cache(20 * 4096);
        std::atomic<int> wrong {0};
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&cache, &wrong, thread] {
                for (int i = 0; i < 2000; ++i) {
                    const int frame = (i * 7 + thread) % 50;
                    cache.insert(Clip, frame, image(frame));
                    const QImage found = cache.find(Clip, frame + 1);
                    if (!found.isNull() && qRed(found.pixel(5, 5)) != frame + 1)
                        ++wrong;
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(wrong.load(), 0);
        QVERIFY(cache.bytes() <= 20 * 4096);
    }
};

ZK_TEST_CORE_MAIN(ZkFrameCacheTest)
#include "ZkFrameCacheTest.moc"
