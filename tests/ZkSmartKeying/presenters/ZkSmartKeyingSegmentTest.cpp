#include "Workspace.h"

#include <QElapsedTimer>
#include <QTimer>

#include <functional>

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

} // namespace

class ZkSmartKeyingSegmentTest : public QObject
{
    Q_OBJECT

private slots:
    void timelineChanges_data();
    void timelineChanges();
    void dropsSegmentChangesThatArriveMeanwhile();
    void countsOneStroke();
    void waitsForTheResultButNotForever();
    void progressCanBeHiddenEarly_data();
    void progressCanBeHiddenEarly();
    void recordsEachSegmentationOnce_data();
    void recordsEachSegmentationOnce();
    void showsTheEffectOfAStillAgain();
    void passesOnUndoRedo();
};

using Records = QVector<QPair<int, int>>;
Q_DECLARE_METATYPE(Records)

void ZkSmartKeyingSegmentTest::timelineChanges_data()
{
    QTest::addColumn<Records>("records");
    QTest::addColumn<QString>("calls");
    const QString segment = "player.update\nsigSmartKeyingSegmentChanged\n";
    const QString removed = "player.update\nsigEffectRemoved\n";
    QTest::newRow("area added") << Records {{13, 88}} << "player.update\nsigAIRemoveSelectAreaAdd";
    QTest::newRow("area removed") << Records {{13, 89}}
                                  << "player.update\nsigAIRemoveSelectAreaRemove";
    QTest::newRow("area updated") << Records {{13, 90}}
                                  << "player.update\nsigAIRemoveSelectAreaUpdate";
    QTest::newRow("areas, first wins")
        << Records {{13, 90}, {13, 89}} << "player.update\nsigAIRemoveSelectAreaRemove";
    QTest::newRow("area hides effect")
        << Records {{5, 2}, {13, 88}} << "player.update\nsigAIRemoveSelectAreaAdd";
    QTest::newRow("segment") << Records {{13, 1}} << segment;
    QTest::newRow("other segment") << Records {{13, 42}} << segment;
    QTest::newRow("segment and effect") << Records {{5, 3}, {13, 1}} << segment + removed;
    QTest::newRow("all effects") << Records {{5, 10}, {5, 3}, {5, 2}}
                                 << "player.update\nsigEffectAdded\n" + removed
            + "player.update\nsigEffectPropertyChanged";
    QTest::newRow("other effect change") << Records {{5, 4}} << QString();
    QTest::newRow("other kind") << Records {{6, 2}} << QString();
}

void ZkSmartKeyingSegmentTest::timelineChanges()
{
    QFETCH(Records, records);
    QFETCH(QString, calls);
    Workspace space;
    ZkTimelineChanges changes;
    for (const auto &record : qAsConst(records))
        changes.add(record.first, record.second);
    SignalJournal recorder(space.presenter.get());
    takeJournal();
    space.controller->clip.line.report(changes);
    QCOMPARE(takeJournal(), lines(calls.toLatin1().constData()));
}

void ZkSmartKeyingSegmentTest::dropsSegmentChangesThatArriveMeanwhile()
{
    Workspace space;
    takeJournal();
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
    SignalJournal recorder(space.presenter.get());
    space.report(13, 1);
    QCOMPARE(noted({"sig"}),
             lines("sigEffectRemoved\nsigAIRemoveSelectAreaAdd\nsigSmartKeyingSegmentChanged"));
    space.report(13, 1); // the guard is gone
    QCOMPARE(count, 2);
}

void ZkSmartKeyingSegmentTest::countsOneStroke()
{
    Workspace space;
    answerAt(space, 80);
    space.player->frame = 9;
    SignalJournal recorder(space.presenter.get());
    LogJournal log;
    takeJournal();
    space.presenter->setMask(strokes());
    const QString waiting = "log 4 ZkSmartKeying/ZkSmartKeyingPresenterPrivate "
                            "ZkSmartKeyingPresenterPrivate::executeEventLoopWait: ";
    QStringList expected = lines("sigSegmentProgressStatusChanged(true)\n"
                                 "sigUIControlsEnabledChanged(false)\n0\n10\n10\n"
                                 "controller.addMask(9)\nplayer.update");
    expected += waiting + "Progress mode wait started";
    expected += lines("12\n15\n18\n21\n24\n26\n29\n32\n35\n38\n40\n43\n46\n49\n52\n54\n57\n60\n63\n"
                      "66\n68\n71\n74\n77\n80");
    expected += waiting + "Algorithm finished signal received, quitting event loop";
    expected += waiting + "Progress mode wait completed";
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

void ZkSmartKeyingSegmentTest::waitsForTheResultButNotForever()
{
    Workspace space;
    LogJournal log;
    space.presenter->setPlayerEditMode(ZkSmartKeyingPresenter::RemoveMode);
    QTest::qWait(10); // what construction has painted is on screen
    takeJournal();
    space.presenter->setMask(strokes());
    const QString prefix = "log 4 ZkSmartKeying/ZkSmartKeyingPresenterPrivate "
                           "ZkSmartKeyingPresenterPrivate::executeEventLoopWait: ";
    QStringList expected {prefix + "Simple mode wait started",
                          prefix + "Seek finished signal received, quitting event loop",
                          prefix + "Simple mode wait completed"};
    QCOMPARE(noted({"log 4"}), expected);

    space.player->seekDelay = -1;
    QElapsedTimer timer;
    timer.start();
    space.presenter->setMask(strokes());
    QVERIFY(timer.elapsed() >= 5500);
    expected.removeAt(1);
    QCOMPARE(noted({"log 4"}), expected);
    // The listener is gone with the wait.
    emit space.presenter->playerPresenter()->sigSeekFinished();
    QCOMPARE(noted({"log"}), QStringList());
}

void ZkSmartKeyingSegmentTest::progressCanBeHiddenEarly_data()
{
    QTest::addColumn<int>("way");
    QTest::addColumn<QStringList>("signals_");
    const QStringList released = lines("sigSegmentProgressStatusChanged(false)\n"
                                       "sigUIControlsEnabledChanged(true)\n"
                                       "sigSmartKeyingSegmentChanged");
    QTest::newRow("progress off") << 0 << released;
    QTest::newRow("forced") << 1 << released;
    QTest::newRow("other tool") << 2
                                << lines("sigPlayerEditModeChanged\n"
                                         "sigSegmentProgressStatusChanged(false)\n"
                                         "sigSmartKeyingSegmentChanged");
}

void ZkSmartKeyingSegmentTest::progressCanBeHiddenEarly()
{
    QFETCH(int, way);
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    SignalJournal recorder(&presenter);
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
    QTEST(noted({"sig"}), "signals_");
    QVERIFY(!presenter.canShowSegmentProgress());
    QCOMPARE(presenter.segmentProgress(), way == 1 ? 0 : 40);
}

void ZkSmartKeyingSegmentTest::recordsEachSegmentationOnce_data()
{
    QTest::addColumn<QImage>("mask");
    QTest::addColumn<qint64>("frame");
    QTest::addColumn<QString>("outcome");
    QTest::newRow("fine") << strokes() << qint64(0) << "result=success error_code= fail_reason=";
    QTest::newRow("bad image") << QImage() << qint64(0)
                               << "result=failed error_code=E002 "
                                  "fail_reason=Invalid mask image - null or empty";
    QTest::newRow("bad frame") << strokes() << qint64(-1)
                               << "result=failed error_code=E003 "
                                  "fail_reason=Invalid current frame";
}

void ZkSmartKeyingSegmentTest::recordsEachSegmentationOnce()
{
    QFETCH(QImage, mask);
    QFETCH(qint64, frame);
    QFETCH(QString, outcome);
    Workspace space;
    ZkSmartKeyingPresenter &presenter = *space.presenter;
    zk::test::ExpectedMessage rejected(QStringLiteral("setMask failed"));
    presenter.setMask(QImage()); // marks nothing while nothing is being recorded
    answerAt(space, 40, [&] {
        space.player->frame = frame;
        presenter.setMask(mask);
        space.player->frame = 0;
        frame = 0;
        mask = strokes();
    });
    takeJournal();
    presenter.setMask(strokes());
    const QStringList sent = noted({"event", "controller.addMask"});
    QCOMPARE(sent.size(), 2);
    QVERIFY2(sent.at(1).contains(outcome), qPrintable(sent.at(1)));
    presenter.setMask(strokes());
    QVERIFY(noted({"event"}).value(0).contains("result=success error_code= fail_reason= "));
}

void ZkSmartKeyingSegmentTest::showsTheEffectOfAStillAgain()
{
    const QString call = "controller.addMask(0)";
    const QString off = "effect.setEnabled(glow,false)";
    const QString on = "effect.setEnabled(glow,true)";
    const struct
    {
        int type;
        bool enabled;
        QStringList calls;
    } rows[] = {{4, true, {off, call, on}}, {4, false, {call, on}}, {1, true, {off, call}}};
    for (const auto &row : rows) {
        Workspace space;
        space.controller->clip.clipType = row.type;
        space.carry(ZKTIMELINE::SmartKeyingEffect, "glow", row.enabled);
        takeJournal();
        space.presenter->setMask(strokes());
        QCOMPARE(noted({"effect", "controller"}), row.calls);
        // What the user did not do cannot be undone.
        QCOMPARE(space.presenter->undoRedoService()->undoStepCount(), 0);
    }
}

void ZkSmartKeyingSegmentTest::passesOnUndoRedo()
{
    Workspace space;
    SignalJournal recorder(space.presenter.get());
    takeJournal();
    space.presenter->changePenPixelWidth(50);
    space.presenter->undoRedoService()->undo();
    QCOMPARE(takeJournal(),
             lines("sigPenDrawWidthChanged(50)\nsigPenPixelWidthChanged(50)\nsigUndoRedoChanged\n"
                   "sigPenDrawWidthChanged(30)\nsigPenPixelWidthChanged(30)\nsigUndoRedoChanged"));
}

ZK_TEST_MAIN(ZkSmartKeyingSegmentTest)
#include "ZkSmartKeyingSegmentTest.moc"
