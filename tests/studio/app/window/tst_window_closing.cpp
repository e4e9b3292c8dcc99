// The window, its workspace and its project are left while something runs, and nothing painted is lost.
#include "WindowBench.h"

#include "LibraryFixture.h"
#include "TestHttpServer.h"
#include "ZCutoutPresetItemModel.h"
#include "ZkEditingPage.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkWidgets.h"
#include "project/ZkAutosave.h"
#include "segmentation/ZkStudioSmartKeyingService.h"

#include <QListView>
#include <QStatusBar>
#include <QWindow>

#include <optional>

using namespace zk::app;
using namespace zk::datamodel;
using namespace zk::test;
using Way = void (*)(EditorBench *);
Q_DECLARE_METATYPE(Way)

namespace {

void newProject(EditorBench *bench)
{
    bench->action("Action_NewProject")->trigger();
}

void openOther(EditorBench *bench)
{
    bench->window->openFiles({bench->file(QStringLiteral("other.zkproj"))});
}

void closeWindow(EditorBench *bench)
{
    bench->window->close();
}

} // namespace

class TestWindowClosing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        bench.emplace();
        Project other;
        QString error;
        QVERIFY(other.save(bench->file(QStringLiteral("other.zkproj")), &error));
        bench->importBoth();
        QVERIFY(bench->project()->save(bench->file(QStringLiteral("film.zkproj")), &error));
    }
    void cleanup() { bench.reset(); }

    void leavesInTheMiddleOfWork_data()
    {
        QTest::addColumn<QString>("work");
        QTest::addColumn<Way>("leave");
        const QVector<QPair<const char *, Way>> ways {
            {"close", &closeWindow}, {"new", &newProject}, {"open", &openOther}};
        for (const char *work : {"segmenting", "tracking", "applying"}) {
            for (const auto &way : ways)
                QTest::addRow("%s, %s", work, way.first) << QString::fromLatin1(work) << way.second;
        }
    }
    void leavesInTheMiddleOfWork()
    {
        QFETCH(QString, work);
        QFETCH(Way, leave);
        const ExpectedMessage untracked(QStringLiteral("frames have no mask"));
        openWorkspace();
        const QPointer<EditingPage> page = this->page();
        // The workspace asks, and the project, too, should the work be done by then.
        const NextDialog questions(
            "QMessageBox", press(QMessageBox::Discard), press(QMessageBox::Discard));
        bool hasLeft = false;
        const auto leaveOnce = [&] {
            if (!std::exchange(hasLeft, true))
                leave(&*bench);
        };
        if (work == QLatin1String("segmenting"))
            connect(page->presenter(),
                    &ZkSmartKeyingPresenter::sigSegmentProgressValueChanged,
                    page,
                    [&](int percent) {
                        if (percent >= 10)
                            leaveOnce();
                    });
        dragOverObject();
        if (work != QLatin1String("segmenting")) {
            QTRY_VERIFY_WITH_TIMEOUT(hasMask() && !page->isBusy(), timeoutMs);
            const bool tracks = work == QLatin1String("tracking");
            QTest::mouseClick(page->findChild<QWidget *>(
                                  QLatin1String(tracks ? "WorkspaceTrackBoth" : "WorkspaceApply")),
                              Qt::LeftButton);
            QVERIFY(page->isBusy());
            leaveOnce();
        }
        QTRY_VERIFY_WITH_TIMEOUT(!page, timeoutMs);
        const bool isClosed = leave == &closeWindow;
        QTRY_COMPARE_WITH_TIMEOUT(bench->window->isHidden(), isClosed, timeoutMs);
        QTRY_COMPARE_WITH_TIMEOUT(bench->project()->clipCount(), isClosed ? 2 : 0, timeoutMs);
        bench->stop();
        // What was given up is not offered again.
        QVERIFY(Autosave::recoverable(bench->autosaves()).isEmpty());
    }

    // As when the session ends: nobody can be asked.
    void keepsWhatWasPaintedWhenItIsTornDown_data()
    {
        QTest::addColumn<QString>("button"); // empty: nothing runs
        QTest::newRow("painted") << QString();
        QTest::newRow("tracking") << "WorkspaceTrackBoth";
        QTest::newRow("applying") << "WorkspaceApply";
    }
    void keepsWhatWasPaintedWhenItIsTornDown()
    {
        QFETCH(QString, button);
        const ExpectedMessage untracked(QStringLiteral("frames have no mask"));
        openWorkspace();
        QVERIFY(!bench->window->isWindowModified());
        paint();
        QVERIFY(bench->window->isWindowModified());
        if (!button.isEmpty())
            QTest::mouseClick(page()->findChild<QWidget *>(button), Qt::LeftButton);
        const EncodedMatte painted = service()->segments().node(0)->result;
        bench->stop();

        QVERIFY(bench->recover());
        QVERIFY(bench->window->statusBar()->currentMessage().contains("first.mkv"));
        openWorkspace();
        QCOMPARE(service()->segments().node(0)->result.data(), painted.data());
        QVERIFY(page()->findChild<QWidget *>("WorkspaceApply")->isEnabled());
        // It can be taken back like everything else.
        QTest::keyClick(bench->window.get(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!hasMask());
    }

    // A save in the middle keeps the unfinished work, Cancel gives it up, and Apply makes it the clip's.
    void savesUnfinishedWork()
    {
        const QString file = bench->project()->path();
        const ExpectedMessage untracked(QStringLiteral("frames have no mask"));
        openWorkspace();
        paint();
        QTest::keyClick(bench->window.get(), Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(!bench->window->isWindowModified(), timeoutMs);
        Project saved;
        QString error;
        QVERIFY(saved.open(file, &error));
        QCOMPARE(saved.clipsWithDrafts().size(), 1);
        QVERIFY(!saved.clipAt(0)->isCutOut());

        page()->closeWithoutAsking();
        QTRY_VERIFY_WITH_TIMEOUT(!bench->window->workspace()->isOpen(), timeoutMs);
        QVERIFY(bench->project()->clipsWithDrafts().isEmpty() && bench->project()->isDirty());

        QVERIFY(bench->project()->open(file, &error));
        openWorkspace();
        QVERIFY(hasMask());
        QTest::mouseClick(page()->findChild<QWidget *>("WorkspaceApply"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(!bench->window->workspace()->isOpen(), timeoutMs);
        QVERIFY(bench->project()->clipAt(0)->isCutOut());
        QVERIFY(bench->project()->clipsWithDrafts().isEmpty());
    }

    void closesInTheMiddleOfADownload()
    {
        bench->stop();
        TestHttpServer server;
        QVERIFY(server.serve({makeLook(QStringLiteral("slow"), 1, 30)}));
        const QDir packages(server.directory.filePath(QStringLiteral("packages")));
        server.setBehaviour(QStringLiteral("/packages/") + packages.entryList(QDir::Files).first(),
                            TestHttpServer::Stall);
        bench->start(server.url());
        bench->window->openFiles({bench->file(QStringLiteral("film.zkproj"))});
        openWorkspace();
        auto *const list = page()->findChild<QListView *>("WorkspacePresetList");
        const auto slow = [list] {
            return list->model()
                ->match(list->model()->index(0, 0), ZCutoutPresetItemModel::SlugRole, "slow")
                .value(0);
        };
        QTRY_VERIFY_WITH_TIMEOUT(slow().isValid(), timeoutMs);
        list->scrollTo(slow());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(slow()).center());
        QVERIFY(page()->isBusy());
        bench->window->close();
        QTRY_VERIFY_WITH_TIMEOUT(bench->window->isHidden(), timeoutMs);
        bench->stop();
    }

private:
    EditingPage *page() const { return bench->window->workspace()->page(); }
    ZkStudioSmartKeyingService *service() const
    {
        return static_cast<ZkStudioSmartKeyingService *>(page()->presenter()->smartKeyingService());
    }
    bool hasMask() const { return service()->isEraseEnabled(0); }
    ZkDrawingWidget *canvas() const { return page()->findChild<ZkDrawingWidget *>(); }
    void openWorkspace()
    {
        bench->press(Qt::Key_K, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(page() && page()->isOpen(), timeoutMs);
        QTRY_VERIFY_WITH_TIMEOUT(canvas()->isVisible() && canvas()->canvasRect().width() > 100,
                                 timeoutMs);
        QTRY_VERIFY_WITH_TIMEOUT(page()->presenter()->currentFrame() == 0, timeoutMs);
    }
    // A stroke over the balloon, whose mask comes later.
    void dragOverObject() const
    {
        const QRect frame = canvas()->canvasRect();
        QWindow *target = canvas()->window()->windowHandle();
        const auto at = [&](double x, double y) {
            return canvas()->mapTo(canvas()->window(),
                                   frame.topLeft()
                                       + QPoint(int(frame.width() * x), int(frame.height() * y)));
        };
        QTest::mousePress(target, Qt::LeftButton, Qt::NoModifier, at(0.28, 0.3));
        QTest::mouseMove(target, at(0.3, 0.38));
        QTest::mouseMove(target, at(0.32, 0.45));
        QTest::mouseRelease(target, Qt::LeftButton, Qt::NoModifier, at(0.32, 0.45));
    }
    void paint()
    {
        dragOverObject();
        QTRY_VERIFY_WITH_TIMEOUT(hasMask() && !page()->isBusy(), timeoutMs);
    }

    std::optional<EditorBench> bench;
};

ZK_TEST_MAIN(TestWindowClosing)
#include "tst_window_closing.moc"
