// Objects are erased from clips of a project, from the menu to the saved result, with the real eraser.
#include "WindowBench.h"

#include "../erasing/ErasingBench.h"

#include "ZkCompareView.h"
#include "ZkEditingPage.h"
#include "ZkEraseTasks.h"
#include "ZkLoginDialog.h"
#include "ZkMediaReader.h"
#include "ZkResultDialog.h"
#include "ZkTaskCard.h"
#include "ZkTaskStrip.h"

#include <QLabel>
#include <QSlider>
#include <QStatusBar>

#include <csignal>
#include <optional>

using namespace zk::app;
using namespace zk::datamodel;
using namespace zk::test;
using State = EraseTasks::State;

namespace {

constexpr int erasingMs = 60000;

QImage frameOf(const QString &path, qint64 frame)
{
    QString error;
    const auto reader = zk::media::MediaReader::open(path, &error);
    return reader ? reader->frameAt(frame) : QImage();
}

// Mean of the differences of all colours where the matte is as asked, 0 to 255.
double distance(const QImage &a, const QImage &b, const QImage &matte, bool isInside)
{
    double sum = 0;
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if ((qGray(matte.pixel(x, y)) > 200) != isInside)
                continue;
            const QRgb left = a.pixel(x, y);
            const QRgb right = b.pixel(x, y);
            sum += qAbs(qRed(left) - qRed(right)) + qAbs(qGreen(left) - qGreen(right))
                + qAbs(qBlue(left) - qBlue(right));
            ++count;
        }
    }
    return sum / (3.0 * qMax(1, count));
}

} // namespace

class TestWindowErasing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        resized.emplace(QStringLiteral("sigCanvasRectChanged received"));
        bench.emplace();
        bench->stop();
        bench->eraser = QStringLiteral(ZKSTUDIO_PROGRAM);
        bench->start();
        clip = bench->file(QStringLiteral("film.mkv"));
        QVERIFY(QFile::copy(WindowClips::instance().first(), clip));
        bench->window->openFiles({clip});
        QTRY_COMPARE_WITH_TIMEOUT(bench->project()->clipCount(), 1, timeoutMs);
        ZkAccount::instance()->logIn(QStringLiteral("Anna"));
    }
    void cleanup()
    {
        bench.reset();
        resized.reset();
    }

    void erasesAnObject()
    {
        QVERIFY(!strip()->isVisible());
        selectAndCreate();
        QTRY_VERIFY_WITH_TIMEOUT(strip()->isVisible(), timeoutMs);
        QVERIFY(bench->action("Action_ImportMedia")->isEnabled()); // the editor stays usable
        QTRY_VERIFY_WITH_TIMEOUT(hasState(State::Done), erasingMs);
        QVERIFY(bench->window->statusBar()->currentMessage().contains("film.mkv"));
        QVERIFY(!tasks()->find(1)->picture.isNull());
        const QString result = tasks()->find(1)->result.info.path;
        QCOMPARE(QFileInfo(result).path(), QFileInfo(clip).path());

        QTest::mouseClick(card()->findChild<QWidget *>("TaskCard_Open"), Qt::LeftButton);
        auto *dialog = bench->find<ResultDialog>("ResultDialog");
        auto *view = dialog->findChild<CompareView *>();
        QTRY_VERIFY_WITH_TIMEOUT(!view->after().isNull(), timeoutMs);
        const QPoint middle = view->rect().center();
        WorkspaceBench::drag(view, {middle, QPoint(view->width() * 3 / 4, middle.y())});
        QVERIFY2(qAbs(view->divider() - 0.75) < 0.02, qPrintable(QString::number(view->divider())));
        QTest::keyClick(view, Qt::Key_Left);
        QVERIFY(view->divider() < 0.75);
        QTest::keyPress(dialog->findChild<QWidget *>("ResultDialog_Save"), Qt::Key_Space);
        QVERIFY(view->showsBeforeOnly() && dialog->isVisible());
        QTest::keyRelease(dialog, Qt::Key_Space);
        QVERIFY(!view->showsBeforeOnly());
        const QImage firstFrame = view->before();
        dialog->findChild<QSlider *>()->setValue(WindowClips::frames - 1);
        QTRY_VERIFY_WITH_TIMEOUT(view->before() != firstFrame, timeoutMs);

        const QImage unsaved = bench->find("PreviewPanel_Picture")->grab().toImage();
        const int steps = history()->undoStepCount();
        QTest::mouseClick(dialog->findChild<QWidget *>("ResultDialog_Save"), Qt::LeftButton);
        QCOMPARE(projectClip()->clip()->media().path, result);
        QCOMPARE(history()->undoStepCount(), steps + 1);
        QTRY_VERIFY_WITH_TIMEOUT(!strip()->isVisible(), timeoutMs);
        QTRY_VERIFY_WITH_TIMEOUT(bench->find("PreviewPanel_Picture")->grab().toImage() != unsaved,
                                 timeoutMs);

        // Where the balloon was there is the landscape, and the rest is as it was.
        const zk::media::SampleClip sample({WindowClips::size, WindowClips::frames, 24});
        const QImage balloon = sample.matte(2);
        const QImage erased = frameOf(result, 2);
        const QImage landscape = sample.background(2);
        const double before = distance(sample.frame(2), landscape, balloon, true);
        const double after = distance(erased, landscape, balloon, true);
        QVERIFY2(after < 0.7 * before, qPrintable(QString("%1 %2").arg(after).arg(before)));
        const double elsewhere = distance(erased, sample.frame(2), balloon, false);
        QVERIFY2(elsewhere < 6, qPrintable(QString::number(elsewhere)));

        bench->press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(projectClip()->clip()->media().path, clip);
        QVERIFY(
            !projectClip()->clip()->studioService(ZKSMARTKEYING::AIErasing)->segments().isEmpty());
        bench->press(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(projectClip()->clip()->media().path, result);

        QString error;
        QVERIFY(bench->project()->save(bench->file("film.zkproj"), &error));
        Project saved;
        QVERIFY2(saved.open(bench->file("film.zkproj"), &error), qPrintable(error));
        QCOMPARE(saved.clipAt(0)->clip()->media().path, result);
    }

    void erasesFromAStill()
    {
        const zk::media::SampleClip sample({WindowClips::size, 1, 24});
        const QString still = bench->file(QStringLiteral("still.png"));
        QVERIFY(sample.frame(0).save(still));
        bench->window->openFiles({still});
        QTRY_COMPARE_WITH_TIMEOUT(bench->project()->clipCount(), 2, timeoutMs);
        selectAndCreate();
        QTRY_VERIFY_WITH_TIMEOUT(hasState(State::Done), erasingMs);
        QTest::mouseClick(card()->findChild<QWidget *>("TaskCard_Open"), Qt::LeftButton);
        auto *dialog = bench->find<ResultDialog>("ResultDialog");
        QVERIFY(!dialog->findChild<QSlider *>()->isVisible());
        QTest::mouseClick(dialog->findChild<QWidget *>("ResultDialog_Save"), Qt::LeftButton);
        const QImage erased(bench->project()->clipAt(1)->clip()->media().path);
        QCOMPARE(erased.size(), WindowClips::size);
        const QImage landscape = sample.background(0);
        QVERIFY(distance(erased, landscape, sample.matte(0), true)
                < distance(sample.frame(0), landscape, sample.matte(0), true));
    }

    void discardedResultsLeaveNothing()
    {
        selectAndCreate();
        QTRY_VERIFY_WITH_TIMEOUT(hasState(State::Done), erasingMs);
        const QString result = tasks()->find(1)->result.info.path;
        QVERIFY(QFile::exists(result));
        QTest::mouseClick(card()->findChild<QWidget *>("TaskCard_Open"), Qt::LeftButton);
        auto *dialog = bench->find<ResultDialog>("ResultDialog");
        QTest::mouseClick(dialog->findChild<QWidget *>("ResultDialog_Discard"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(!strip()->isVisible(), timeoutMs);
        QVERIFY(!QFile::exists(result));
        QCOMPARE(projectClip()->clip()->media().path, clip);
        // The selection is still there.
        openWorkspace();
        QTRY_COMPARE_WITH_TIMEOUT(page()->findChild<ZkListWidget *>()->count(), 1, timeoutMs);
    }

    void severalQueueAndOneIsCancelled()
    {
        selectAndCreate();
        tasks()->add(tasks()->find(1)->request);
        tasks()->add(tasks()->find(1)->request);
        QTRY_VERIFY_WITH_TIMEOUT(strip()->card(3), timeoutMs);
        QTest::mouseClick(card(2)->findChild<QWidget *>("TaskCard_Cancel"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(!strip()->card(2), timeoutMs);
        QTRY_VERIFY_WITH_TIMEOUT(hasState(State::Done) && hasState(State::Done, 3), erasingMs);
        QVERIFY(tasks()->find(1)->result.info.path != tasks()->find(3)->result.info.path);

        // The second result is not made of what the clip shows by then.
        QString error;
        QVERIFY2(tasks()->save(1, &error), qPrintable(error));
        QVERIFY(tasks()->isStale(3));
        QTest::mouseClick(card(3)->findChild<QWidget *>("TaskCard_Open"), Qt::LeftButton);
        for (const auto answer : {QMessageBox::Cancel, QMessageBox::Save}) {
            QVERIFY(hasState(State::Done, 3));
            const NextDialog question("QMessageBox", press(answer));
            QTest::mouseClick(bench->find<QWidget>("ResultDialog_Save"), Qt::LeftButton);
            QTRY_VERIFY_WITH_TIMEOUT(question.hasCome(), timeoutMs);
        }
        QTRY_VERIFY_WITH_TIMEOUT(!tasks()->find(3), timeoutMs);
    }

    void failuresSayWhatToDo()
    {
        selectAndCreate();
        QVERIFY(QFile::rename(clip, clip + ".away"));
        QTRY_VERIFY_WITH_TIMEOUT(hasState(State::Failed), erasingMs);
        QVERIFY(bench->window->statusBar()->currentMessage().contains("put it back"));
        QVERIFY(QFile::rename(clip + ".away", clip));
        const NextDialog reason("QMessageBox", [](QDialog *dialog) {
            static_cast<QMessageBox *>(dialog)->buttons().first()->click();
        });
        QTest::mouseClick(card()->findChild<QWidget *>("TaskCard_Open"), Qt::LeftButton);
        QVERIFY(reason.text().contains("put it back"));
        // It leads back to the selection.
        QTRY_VERIFY_WITH_TIMEOUT(page(), timeoutMs);
        QVERIFY(!strip()->isVisible());
    }

    void triesAgain()
    {
        selectAndCreate();
        QTRY_VERIFY_WITH_TIMEOUT(hasState(State::Erasing), erasingMs);
        QTRY_VERIFY_WITH_TIMEOUT(killWorker(), erasingMs);
        QTRY_VERIFY_WITH_TIMEOUT(hasState(State::Failed), erasingMs);
        const NextDialog reason("QMessageBox", [](QDialog *dialog) {
            static_cast<QMessageBox *>(dialog)->buttons().first()->click();
        });
        QTest::mouseClick(card()->findChild<QWidget *>("TaskCard_Open"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(hasState(State::Done), erasingMs);
    }

    void leavingAsksAtEveryStage_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("closes"); // or begins a new project
        for (const State state : {State::Preparing, State::Erasing, State::Done, State::Failed}) {
            for (const bool closes : {true, false})
                QTest::addRow("%d %d", int(state), closes) << int(state) << closes;
        }
    }
    void leavingAsksAtEveryStage()
    {
        QFETCH(int, state);
        QFETCH(bool, closes);
        const bool isLost = State(state) != State::Failed;
        selectAndCreate();
        if (!isLost)
            QVERIFY(QFile::rename(clip, clip + ".away"));
        QTRY_VERIFY_WITH_TIMEOUT(int(tasks()->find(1)->state) >= state, erasingMs);
        QString error;
        QVERIFY(bench->project()->save(bench->file("film.zkproj"), &error));
        const auto leave = [&] {
            if (closes)
                bench->window->close();
            else
                bench->action("Action_NewProject")->trigger();
        };
        if (isLost) {
            const NextDialog refusal("QMessageBox", press(QMessageBox::Cancel));
            leave();
            QVERIFY(refusal.hasCome());
            QVERIFY(bench->window->isVisible() && tasks()->find(1));
            const NextDialog consent("QMessageBox", [](QDialog *dialog) {
                static_cast<QMessageBox *>(dialog)->buttons().first()->click();
            });
            leave();
            QVERIFY(consent.hasCome());
        } else {
            leave();
        }
        QCOMPARE(bench->window->isVisible(), !closes);
        QVERIFY(!tasks()->find(1));
        bench->stop();
        const QStringList left =
            QDir(QFileInfo(clip).path())
                .entryList({"film*", ".film*"}, QDir::AllEntries | QDir::Hidden);
        QCOMPARE(left.filter("erased"), QStringList());
    }

    void logsInAndOut()
    {
        QAction *account = bench->action("Action_Account");
        QVERIFY(account->text().contains("Anna"));
        account->trigger();
        QVERIFY(!ZkAccount::instance()->isLoggedIn());
        openWorkspace();
        drawBox();
        QTest::mouseClick(page()->findChild<ZAIGCCreateButton *>(), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(bench->find<LoginDialog>("LoginDialog"), timeoutMs);
        auto *dialog = bench->find<LoginDialog>("LoginDialog");
        QVERIFY(!dialog->findChild<QWidget *>("LoginDialog_LogIn")->isEnabled());
        QTest::keyClicks(dialog->findChild<QLineEdit *>(), " Bert ");
        QTest::keyClick(dialog->findChild<QLineEdit *>(), Qt::Key_Return);
        QCOMPARE(ZkAccount::instance()->userName(), QString("Bert"));
        QVERIFY(account->text().contains("Bert"));
        QVERIFY(page()); // Create is still to be pressed
        bench->stop();
        ZkAccount::instance()->logOut();
        bench->start();
        QCOMPARE(ZkAccount::instance()->userName(), QString("Bert"));
    }

    void selectionsSurviveACrash()
    {
        openWorkspace();
        drawBox();
        QVERIFY(bench->window->isWindowModified());
        bench->stop(); // nobody can be asked
        QVERIFY(bench->recover());
        openWorkspace();
        QTRY_COMPARE_WITH_TIMEOUT(page()->findChild<ZkListWidget *>()->count(), 1, timeoutMs);
        QVERIFY(page()->findChild<ZAIGCCreateButton *>()->isEnabled());
        QTest::keyClick(bench->window.get(), Qt::Key_Z, Qt::ControlModifier);
        QTRY_COMPARE_WITH_TIMEOUT(page()->findChild<ZkListWidget *>()->count(), 0, timeoutMs);
    }

private:
    EditingPage *page() const { return bench->window->workspace()->page(); }
    EraseTasks *tasks() const { return bench->window->eraseTasks(); }
    TaskStrip *strip() const { return bench->find<TaskStrip>("TaskStrip"); }
    TaskCard *card(int id = 1) const { return strip()->card(id); }
    ProjectClip *projectClip() const { return bench->project()->clipAt(0); }
    IZkUndoRedoService *history() const { return bench->project()->undoRedoService(); }
    bool hasState(State state, int id = 1) const
    {
        const EraseTasks::Item *item = tasks()->find(id);
        return item && item->state == state;
    }
    bool killWorker() const
    {
        const auto *task = tasks()->findChild<zk::erasing::EraseTask *>();
        return task && task->processId() > 0 && ::kill(pid_t(task->processId()), SIGKILL) == 0;
    }
    void openWorkspace()
    {
        bench->press(Qt::Key_J, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(page() && page()->isOpen(), timeoutMs);
        QTRY_VERIFY_WITH_TIMEOUT(page()->presenter()->canvasRect().width() > 100, timeoutMs);
        QTRY_VERIFY_WITH_TIMEOUT(page()->presenter()->currentFrame() == 0, timeoutMs);
        QTRY_VERIFY_WITH_TIMEOUT(page()->findChild<ZkMultiCropWidget *>()->isVisible(), timeoutMs);
    }
    void drawBox()
    {
        WorkspaceBench::drag(page()->findChild<ZkMultiCropWidget *>(),
                             boxAround(page()->presenter()->canvasRect()));
        auto *create = page()->findChild<ZAIGCCreateButton *>();
        QTRY_VERIFY_WITH_TIMEOUT(create->isEnabled(), timeoutMs);
    }
    void selectAndCreate()
    {
        openWorkspace();
        drawBox();
        QTest::mouseClick(page()->findChild<ZAIGCCreateButton *>(), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(!page(), timeoutMs);
        QVERIFY(tasks()->find(1));
    }

    // What the workspace says of every change of its size.
    std::optional<ExpectedMessage> resized;
    std::optional<EditorBench> bench;
    QString clip;
};

ZK_TEST_MAIN(TestWindowErasing)
#include "tst_window_erasing.moc"
