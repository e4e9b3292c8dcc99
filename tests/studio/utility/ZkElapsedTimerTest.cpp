#include "ZkTestMain.h"

#include "ZkCore.h"
#include "ZkUtility.h"

class ZkElapsedTimerTest : public QObject
{
    Q_OBJECT

private slots:
    void logsItsScope()
    {
        QVector<ZkLogRecord> seen;
        const int sink =
            ZkBaseLog::addSink([&](const ZkLogRecord &record) { seen.append(record); });
        ZkElapsedTimer(QStringLiteral("not logged at the initial level"));
        ZkBaseLog::defaultLogger()->setMinimumLevel(ZKLOG::Detail);
        {
            const ZkElapsedTimer timer(QStringLiteral("decode %1"));
            QTest::qSleep(30);
            QVERIFY(seen.isEmpty());
            QVERIFY(timer.elapsedMs() >= 30);
        }
        ZkBaseLog::defaultLogger()->setMinimumLevel(ZKLOG::Info);
        ZkBaseLog::removeSink(sink);

        QCOMPARE(seen.size(), 1);
        QCOMPARE(seen.first().level, int(ZKLOG::Detail));
        const QRegularExpression pattern("^decode %1: (\\d+) ms$");
        QVERIFY(pattern.match(seen.first().message).captured(1).toInt() >= 30);
    }
};

ZK_TEST_CORE_MAIN(ZkElapsedTimerTest)
#include "ZkElapsedTimerTest.moc"
