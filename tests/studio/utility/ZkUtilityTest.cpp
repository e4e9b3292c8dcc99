#include "ZkTestMain.h"

#include "ZkCore.h"
#include "ZkUtility.h"

class ZkUtilityTest : public QObject
{
    Q_OBJECT

private slots:
    void fitsARectangleIntoAWindow()
    {
        const QRectF window(8, 8, 80, 60);
        const auto fitted = [&](double ratio) {
            return ZkUtility::getFitCentralWindowRectByRatio(window, ratio);
        };
        QCOMPARE(fitted(4.0 / 3), window);
        QCOMPARE(fitted(2), QRectF(8, 18, 80, 40));
        QCOMPARE(fitted(0.5), QRectF(33, 8, 30, 60));
        QVERIFY(fitted(0).isEmpty());
        QVERIFY(ZkUtility::getFitCentralWindowRectByRatio(QRectF(), 1).isEmpty());
    }

    void timerLogsItsScope()
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

ZK_TEST_CORE_MAIN(ZkUtilityTest)
#include "ZkUtilityTest.moc"
