#include "Workspace.h"

#include <QElapsedTimer>
#include <QTimer>

#include <tuple>

namespace {

// The new result is on screen once the progress has come to that percentage, not after some time.
void answerAt(
    Workspace &space, int percent, const std::function<void()> &before = [] {})
{
    ZkSmartKeyingPresenter *const presenter = space.presenter.get();
    space.player->seekDelay = -1;
    QTest::qWait(5); // what construction has painted is on screen
    QObject::connect(
        presenter, &ZkSmartKeyingPresenter::sigSegmentProgressValueChanged, [=](int value) {
            if (value != percent)
                return;
            before();
            QTimer::singleShot(
                0, presenter->playerPresenter(), &ZkMediaPlayerPresenter::sigSeekFinished);
        });
}

const QString logged =
    QStringLiteral("log 4 ZkSmartKeyingPresenterPrivate::executeEventLoopWait: %1");

} // namespace

class ZkSmartKeyingSegmentTest : public QObject
{
    Q_OBJECT

private slots:
    void timelineChanges()
    {
        const QString area = "player.update\nsigAIRemoveSelectArea";
        const QString segment = "player.update\nsigSmartKeyingSegmentChanged\n";
        const QString effect = "player.update\nsigEffect";
        const QPair<QVector<QPair<int, int>>, QString> rows[] = {
            {{{13, 88}}, area + "Add"},
            {{{13, 90}, {13, 89}}, area + "Remove"}, // the first kind wins
            {{{13, 90}}, area + "Update"},
            {{{5, 2}, {13, 88}}, area + "Add"}, // hides an effect
            {{{13, 42}}, segment},
            {{{5, 3}, {13, 1}}, segment + effect + "Removed"},
            {{{5, 10}, {5, 3}, {5, 2}},
             effect + "Added\n" + effect + "Removed\n" + effect + "PropertyChanged"},
            {{{5, 4}, {6, 2}}, QString()}};
        for (const auto &row : rows) {
            Workspace space;
            ZkTimelineChanges changes;
            for (const auto &record : row.first)
                changes.add(record.first, record.second);
            space.record();
            space.controller->clip.line.report(changes);
            QCOMPARE(takeJournal(), lines(row.second));
        }
    }

    void dropsSegmentChangesThatArriveMeanwhile()
    {
        Workspace space;
        int count = 0;
        connect(space.presenter.get(), &ZkSmartKeyingPresenter::sigSmartKeyingSegmentChanged, [&] {
            if (++count > 1)
                return;
            ZkTimelineChanges both(13, 1);
            both.add(5, 2);
            space.controller->clip.line.report(both); // as a whole
            space.report(5, 3); // an effect alone is reported
            space.report(13, 88); // so is an area
        });
        space.record();
        space.report(13, 1);
        QCOMPARE(noted("sig"),
                 lines("sigEffectRemoved\nsigAIRemoveSelectAreaAdd\nsigSmartKeyingSegmentChanged"));
        space.report(13, 1); // the guard is gone
        QCOMPARE(count, 2);
    }

    void countsOneStroke()
    {
        Workspace space;
        answerAt(space, 80);
        space.player->frame = 9;
        LogJournal log;
        space.record();
        space.presenter->setMask(strokes());
        QStringList expected = lines("sigSegmentProgressStatusChanged(true)\n"
                                     "sigUIControlsEnabledChanged(false)\n0\n10\n10\n"
                                     "controller.addMask(9)\nplayer.update");
        expected += logged.arg("Progress mode wait started");
        expected += lines("12\n15\n18\n21\n24\n26\n29\n32\n35\n38\n40\n43\n46\n49\n52\n54\n57\n60\n"
                          "63\n66\n68\n71\n74\n77\n80");
        expected += logged.arg("Algorithm finished signal received, quitting event loop");
        expected += logged.arg("Progress mode wait completed");
        expected += lines("85\n90\n95\nsigSmartKeyingSegmentChanged\n96\n97\n98\n99\n100\n"
                          "sigSegmentProgressStatusChanged(false)\n"
                          "event smart_cutout_use func_name=cutout_mask source_format=mp4 "
                          "result=success error_code= fail_reason= duration=N ms "
                          "project_id=project-9 is_newproject=true\n"
                          "sigUIControlsEnabledChanged(true)");
        QCOMPARE(takeJournal().replaceInStrings(
                     QRegularExpression("sigSegmentProgressValueChanged\\((\\d+)\\)"), "\\1"),
                 expected);
        // It stays for a second, then the next one may start.
        QTest::qWait(500);
        QCOMPARE(space.presenter->segmentProgress(), 100);
        QTRY_COMPARE_WITH_TIMEOUT(space.presenter->segmentProgress(), 0, 1500);
    }

    void waitsForTheResultButNotForever()
    {
        Workspace space;
        LogJournal log;
        space.presenter->setPlayerEditMode(ZkSmartKeyingPresenter::RemoveMode);
        QTest::qWait(10); // what construction has painted is on screen
        takeJournal();
        space.presenter->setMask(strokes());
        QStringList expected {logged.arg("Simple mode wait started"),
                              logged.arg("Seek finished signal received, quitting event loop"),
                              logged.arg("Simple mode wait completed")};
        QCOMPARE(noted("log 4"), expected);

        space.player->seekDelay = -1;
        QElapsedTimer timer;
        timer.start();
        space.presenter->setMask(strokes());
        QVERIFY(timer.elapsed() >= 5500);
        expected.removeAt(1);
        QCOMPARE(noted("log 4"), expected);
        // The listener is gone with the wait.
        emit space.presenter->playerPresenter()->sigSeekFinished();
        QCOMPARE(noted("log"), QStringList());
    }

    void progressCanBeHiddenEarly()
    {
        const QString released = "sigSegmentProgressStatusChanged(false)\n"
                                 "sigUIControlsEnabledChanged(true)\n"
                                 "sigSmartKeyingSegmentChanged";
        const QString expected[] = {released,
                                    released,
                                    "sigPlayerEditModeChanged\n"
                                    "sigSegmentProgressStatusChanged(false)\n"
                                    "sigSmartKeyingSegmentChanged"};
        for (int way = 0; way < 3; ++way) {
            Workspace space;
            ZkSmartKeyingPresenter &presenter = *space.presenter;
            space.record();
            // In the middle of the ramp, which must end there.
            answerAt(space, 40, [&] {
                QVERIFY(presenter.canShowSegmentProgress());
                takeJournal();
                if (way == 0)
                    presenter.setProgressEnabled(false);
                else if (way == 1)
                    presenter.forceHideProgress();
                else
                    presenter.setPlayerEditMode(ZkSmartKeyingPresenter::HandMode);
            });
            presenter.setMask(strokes());
            QCOMPARE(noted("sig"), lines(expected[way]));
            QVERIFY(!presenter.canShowSegmentProgress());
            QCOMPARE(presenter.segmentProgress(), way == 1 ? 0 : 40);
        }
    }

    void recordsEachSegmentationOnce()
    {
        const QString failure = "result=failed error_code=%1 fail_reason=%2";
        const std::tuple<QImage, qint64, QString> rows[] = {
            {strokes(), 0, "result=success error_code= fail_reason="},
            {QImage(), 0, failure.arg("E002", "Invalid mask image - null or empty")},
            {strokes(), -1, failure.arg("E003", "Invalid current frame")}};
        for (const auto &row : rows) {
            Workspace space;
            ZkSmartKeyingPresenter &presenter = *space.presenter;
            zk::test::ExpectedMessage rejected(QStringLiteral("setMask failed"));
            presenter.setMask(QImage()); // marks nothing while nothing is being recorded
            bool disturbed = false;
            answerAt(space, 40, [&] {
                if (std::exchange(disturbed, true))
                    return;
                space.player->frame = std::get<qint64>(row);
                presenter.setMask(std::get<QImage>(row));
                space.player->frame = 0;
            });
            takeJournal();
            presenter.setMask(strokes());
            const QStringList sent = noted("event|controller.addMask");
            QCOMPARE(sent.size(), 2);
            QVERIFY2(sent.at(1).contains(std::get<QString>(row)), qPrintable(sent.at(1)));
            presenter.setMask(strokes());
            QVERIFY(noted("event").value(0).contains("result=success error_code= fail_reason= "));
        }
    }

    void showsTheEffectOfAStillAgain()
    {
        const QString call = "controller.addMask(0)";
        const QString off = "effect.setEnabled(glow,false)";
        const QString on = "effect.setEnabled(glow,true)";
        const std::tuple<int, bool, QStringList> rows[] = {
            {4, true, {off, call, on}}, {4, false, {call, on}}, {1, true, {off, call}}};
        for (const auto &[type, enabled, calls] : rows) {
            Workspace space;
            space.controller->clip.clipType = type;
            space.carry(ZKTIMELINE::SmartKeyingEffect, "glow", enabled);
            takeJournal();
            space.presenter->setMask(strokes());
            QCOMPARE(noted("effect|controller"), calls);
            // What the user did not do cannot be undone.
            QCOMPARE(space.presenter->undoRedoService()->undoStepCount(), 0);
        }
    }
};

ZK_TEST_MAIN(ZkSmartKeyingSegmentTest)
#include "ZkSmartKeyingSegmentTest.moc"
