#include "WindowBench.h"

#include "ZkProjectStore.h"
#include "ZkRecentFiles.h"

#include <QListWidget>
#include <QMenu>
#include <QProgressBar>
#include <QSplitter>

#include <optional>

using namespace zk::app;
using namespace zk::datamodel;
using namespace zk::test;

class TestWindowProject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { bench.emplace(); }
    void cleanup() { bench.reset(); }

    void savesAndReopens()
    {
        const QString path = bench->file(QStringLiteral("film.zkproj"));
        bench->importBoth();
        QVERIFY(window()->isWindowModified());
        NextDialog saving("QFileDialog", typePath(bench->file(QStringLiteral("film"))));
        bench->press(Qt::Key_S, Qt::ControlModifier);
        QVERIFY(saving.hasCome());
        QTRY_VERIFY_WITH_TIMEOUT(!window()->isWindowModified(), timeoutMs);
        QVERIFY(window()->windowTitle().startsWith(QLatin1String("film[*]")));
        QVERIFY(QFile::exists(path));

        // A second save asks nothing.
        bench->project()->removeClip(0);
        bench->press(Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(!window()->isWindowModified(), timeoutMs);

        bench->press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(bench->project()->clipCount(), 0);
        NextDialog opening("QFileDialog", typePath(path));
        bench->press(Qt::Key_O, Qt::ControlModifier);
        QVERIFY(opening.hasCome());
        QCOMPARE(bench->project()->clipCount(), 1);
        QCOMPARE(bench->project()->clipAt(0)->name(), QStringLiteral("second.mkv"));
        QVERIFY(!window()->isWindowModified());
    }

    void asksBeforeChangesAreLost_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("closes");
        QTest::addColumn<int>("savedClips");
        QTest::newRow("cancel") << int(QMessageBox::Cancel) << false << 0;
        QTest::newRow("discard") << int(QMessageBox::Discard) << true << 0;
        QTest::newRow("save") << int(QMessageBox::Save) << true << 2;
    }
    void asksBeforeChangesAreLost()
    {
        QFETCH(int, answer);
        QFETCH(bool, closes);
        QFETCH(int, savedClips);
        const QString path = bench->file(QStringLiteral("film.zkproj"));
        QString error;
        QVERIFY2(bench->project()->save(path, &error), qPrintable(error));
        bench->importBoth();
        const NextDialog question("QMessageBox", press(QMessageBox::StandardButton(answer)));
        QCOMPARE(window()->close(), closes);
        QVERIFY(question.text().contains(QLatin1String("film")));
        QCOMPARE(bench->project()->isDirty(), answer != QMessageBox::Save);
        bench->stop();
        // What the user has thrown away is not offered again.
        QCOMPARE(Autosave::recoverable(bench->autosaves()).isEmpty(), closes);
        Project saved;
        QVERIFY2(saved.open(path, &error), qPrintable(error));
        QCOMPARE(saved.clipCount(), savedClips);
    }

    void offersWhatACrashHasLeft_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("recover") << "RecoveryDialog_Recover";
        QTest::newRow("delete") << "RecoveryDialog_Delete";
    }
    void offersWhatACrashHasLeft()
    {
        QFETCH(QString, button);
        const bool recovers = button == QLatin1String("RecoveryDialog_Recover");
        {
            Project crashed;
            Autosave autosave(&crashed, bench->autosaves());
            QString error;
            QVERIFY(crashed.addClip(crashed.importMedia(WindowClips::instance().first(), &error)));
            autosave.flush();
        }
        const NextDialog recovery("zk::app::RecoveryDialog", [button](QDialog *dialog) {
            QCOMPARE(dialog->findChild<QListWidget *>()->count(), 1);
            const NextDialog sure("QMessageBox", [](QDialog *box) {
                QTest::mouseClick(static_cast<QMessageBox *>(box)->buttons().constFirst(),
                                  Qt::LeftButton);
            });
            QTest::mouseClick(dialog->findChild<QPushButton *>(button), Qt::LeftButton);
        });
        window()->offerRecovery();
        QVERIFY(recovery.hasCome());
        QCOMPARE(bench->project()->clipCount(), recovers ? 1 : 0);
        QCOMPARE(window()->isWindowModified(), recovers);
        QCOMPARE(Autosave::recoverable(bench->autosaves()).size(), 0);
    }

    void saysWhatIsWrongWithAFile()
    {
        const QString path = bench->file(QStringLiteral("broken.zkproj"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no project at all") > 0);
        file.close();
        bench->importBoth();
        const NextDialog boxes(
            "QMessageBox", press(QMessageBox::Discard), pressKey(Qt::Key_Escape));
        window()->openFiles({path});
        QVERIFY(boxes.hasCome());
        QVERIFY2(boxes.text().contains(QLatin1String("broken.zkproj")), qPrintable(boxes.text()));
        QCOMPARE(bench->project()->clipCount(), 2);
        // What was to be discarded is still open, and so it is still autosaved.
        bench->stop();
        QCOMPARE(Autosave::recoverable(bench->autosaves()).size(), 1);
    }

    // Files that were written to since are looked into, which takes its time.
    void opensInTheBackground_data()
    {
        QTest::addColumn<bool>("cancels");
        QTest::newRow("to the end") << false;
        QTest::newRow("cancelled") << true;
    }
    void opensInTheBackground()
    {
        QFETCH(bool, cancels);
        const QString path = bench->file(QStringLiteral("large.zkproj"));
        QVERIFY(bench->project()->save(path, nullptr));
        bench->importBoth();
        zk::storage::ProjectRecord record;
        zk::datamodel::ProjectSnapshot snapshot = bench->project()->snapshot();
        const QVector<MediaEntry> media = snapshot.media;
        for (int i = 0; i < 600; ++i) {
            snapshot.media.append(media.first());
            snapshot.media.last().id = 1000 + i;
            snapshot.media.last().fileSize = 1;
        }
        QVERIFY(zk::storage::ProjectStore::save(path, snapshot.toRecord(bench->file({})), nullptr));
        const NextDialog boxes("QMessageBox", press(QMessageBox::Discard));
        int ticks = 0;
        const NextDialog opening("QProgressDialog", [&](QDialog *dialog) {
            QTRY_VERIFY_WITH_TIMEOUT(dialog->findChild<QProgressBar *>()->value() > 0, timeoutMs);
            ++ticks;
            QVERIFY(!window()->close()); // not now
            if (cancels)
                QTest::keyClick(dialog, Qt::Key_Escape);
        });
        window()->openFiles({path});
        QVERIFY(boxes.hasCome() && opening.hasCome() && ticks == 1);
        QCOMPARE(bench->project()->media().size(), cancels ? 2 : 602);
        QCOMPARE(bench->project()->clipCount(), 2);
        QCOMPARE(bench->project()->isDirty(), cancels);
    }

    void remembersRecentProjects()
    {
        const QString kept = bench->file(QStringLiteral("kept & loved.zkproj"));
        const QString lost = bench->file(QStringLiteral("lost.zkproj"));
        Project project;
        QString error;
        QVERIFY(project.save(lost, &error) && project.save(kept, &error));
        window()->openFiles({lost});
        window()->openFiles({kept});
        QVERIFY(QFile::remove(lost));
        auto *menu = bench->find<QMenu>("MenuRecent");
        Q_EMIT menu->aboutToShow();
        QVERIFY(menu->actions().at(0)->text().contains(QLatin1String("kept && loved.zkproj")));
        QVERIFY(menu->actions().at(0)->isEnabled());
        QVERIFY(!menu->actions().at(1)->isEnabled());
        bench->press(Qt::Key_N, Qt::ControlModifier);
        menu->actions().at(0)->trigger();
        QCOMPARE(bench->project()->path(), kept);
        RecentFiles recent;
        for (int i = 0; i < 20; ++i)
            recent.add(bench->file(QString::number(i)));
        QCOMPARE(recent.files().size(), int(RecentFiles::maximum));
        QVERIFY(recent.files().constFirst().endsWith(QLatin1String("/19")));
    }

    void remembersItsLayout()
    {
        auto *columns = bench->find<QSplitter>("EditorPage_Columns");
        window()->resize(1100, 700);
        columns->setSizes({300, 600, 200});
        const QList<int> before = columns->sizes();
        bench->action("Action_ShowTimeline")->trigger();
        QVERIFY(window()->close());
        bench->stop();
        bench->start();
        QCOMPARE(window()->size(), QSize(1100, 700));
        QCOMPARE(bench->find<QSplitter>("EditorPage_Columns")->sizes(), before);
        QVERIFY(!bench->find("TimelinePanel")->isVisible());
        bench->action("Action_ResetLayout")->trigger();
        QVERIFY(bench->find("TimelinePanel")->isVisible());
        QVERIFY(bench->find<QSplitter>("EditorPage_Columns")->sizes() != before);
    }

    void closesInTheMiddleOfAnImport()
    {
        QStringList many;
        for (int i = 0; i < 50; ++i)
            many.append(WindowClips::instance().first());
        window()->openFiles(many);
        QVERIFY(window()->close());
        bench->stop(); // waits for one file at most
    }

private:
    MainWindow *window() const { return bench->window.get(); }

    std::optional<EditorBench> bench;
};

ZK_TEST_MAIN(TestWindowProject)
#include "tst_window_project.moc"
