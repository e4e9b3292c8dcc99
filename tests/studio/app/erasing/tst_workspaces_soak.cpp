// Both workspaces are opened, used and closed in turn, and leave nothing behind:
//   tst_workspaces_soak --rounds 50
#include "ErasingBench.h"

#include <QPixmapCache>

#ifdef __GLIBC__
#include <malloc.h>
#endif

using zk::test::ErasingBench;
using zk::test::WorkspaceBench;

namespace {

int rounds = 3;

// What the program holds, in bytes; 0 where it is not known. Pages that are resident would count what the
// allocator keeps of every thread's heap, too.
qint64 bytesInUse()
{
#ifdef __GLIBC__
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks + info.hblkhd);
#else
    return 0;
#endif
}

// When what was asked of other threads has been let go of, too.
qint64 settledBytes()
{
    qint64 least = bytesInUse();
    for (int i = 0; i < 20; ++i) {
        QTest::qWait(25);
        least = qMin(least, bytesInUse());
    }
    return least;
}

} // namespace

class TestWorkspacesSoak : public QObject
{
    Q_OBJECT

    static void close(WorkspaceBench *bench)
    {
        bench->page->closeWithoutAsking();
        QVERIFY(bench->waitForClosed());
        QVERIFY(!bench->page->isOpen());
    }
    static void cutOut()
    {
        WorkspaceBench bench;
        QVERIFY(bench.open());
        QVERIFY(bench.paint());
        bench.click("WorkspaceTrackForward");
        QTRY_VERIFY_WITH_TIMEOUT(!bench.page->isBusy(), 60000);
        bench.page->undo();
        close(&bench);
    }
    static void erase()
    {
        ErasingBench bench;
        QVERIFY(bench.open());
        QVERIFY(bench.drawBox());
        bench.erasing()->beginTracking();
        QTRY_VERIFY_WITH_TIMEOUT(bench.button(QStringLiteral("Save")), 60000);
        QTest::mouseClick(bench.button(QStringLiteral("Save")), Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(bench.masks()->savedSelectionCount(), 1, 10000);
        bench.page->undo();
        close(&bench);
    }

private Q_SLOTS:
    // Icons that were drawn are kept, up to a limit that 50 rounds would not reach.
    void initTestCase() { QPixmapCache::setCacheLimit(256); }
    void leavesNothingBehind()
    {
        // By the fifth round everything has been allocated that is kept for the next one.
        qint64 settled = 0;
        for (int round = 1; round <= rounds; ++round) {
            cutOut();
            erase();
            if (QTest::currentTestFailed())
                return;
            if (round == 5)
                settled = settledBytes();
        }
        if (settled == 0)
            return;
        const double growth = double(settledBytes() - settled) / double(settled);
        qInfo("%.1f %% more memory after %d rounds than after 5", growth * 100, rounds);
        QVERIFY(growth < 0.1);
    }
};

int main(int argc, char **argv)
{
    return zk::test::runMain(argc, argv, [](int count, char **values) {
        if (count == 3 && QByteArray(values[1]) == "--rounds")
            rounds = QByteArray(values[2]).toInt();
        QApplication application(count, values);
        TestWorkspacesSoak test;
        return QTest::qExec(&test, 1, values);
    });
}
#include "tst_workspaces_soak.moc"
