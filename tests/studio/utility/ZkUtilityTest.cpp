#include "ZkTestMain.h"

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
};

ZK_TEST_CORE_MAIN(ZkUtilityTest)
#include "ZkUtilityTest.moc"
