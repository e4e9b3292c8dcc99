#include "WindowBench.h"

#include "ZkEditorPage.h"
#include "ZkPreviewPanel.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkWidgets.h"
#include "ZkWorkspacePage.h"

#include <QAccessible>
#include <QCheckBox>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QShortcut>
#include <QSlider>

#include <optional>

using namespace zk::app;
using namespace zk::datamodel;
using namespace zk::test;

class TestWindowEditing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { bench.emplace(); }
    void cleanup() { bench.reset(); }

    void importsWhatIsDropped()
    {
        // On the bin: media alone.
        const QPoint onBin = bin()->mapTo(window(), bin()->rect().center());
        bench->drop(window(),
                    onBin,
                    {clips().first(), clips().text(), clips().path(QStringLiteral("missing.mp4"))});
        const NextDialog complaint("QMessageBox", pressKey(Qt::Key_Escape));
        QTRY_VERIFY_WITH_TIMEOUT(complaint.hasCome(), timeoutMs);
        QVERIFY2(complaint.text().contains(QLatin1String("notes.mkv")),
                 qPrintable(complaint.text()));
        QVERIFY(complaint.text().contains(QLatin1String("missing.mp4")));
        QCOMPARE(project()->media().size(), 1);
        QCOMPARE(project()->clipCount(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(
            !bin()->model()->index(0, 0).data(Qt::DecorationRole).value<QPixmap>().isNull(),
            timeoutMs);

        // Enter on the bin adds its file to the clips; a double click does, too.
        bin()->setFocus();
        bin()->setCurrentIndex(bin()->model()->index(0, 0));
        bench->press(Qt::Key_Return);
        QCOMPARE(project()->clipCount(), 1);
        const QPoint middle = bin()->visualRect(bin()->model()->index(0, 0)).center();
        QTest::mouseClick(bin()->viewport(), Qt::LeftButton, {}, middle);
        QTest::mouseDClick(bin()->viewport(), Qt::LeftButton, {}, middle);
        QCOMPARE(project()->clipCount(), 2);

        // On the clips: in between.
        bench->drop(list()->viewport(), {clips().second()});
        QTRY_COMPARE_WITH_TIMEOUT(project()->clipCount(), 3, timeoutMs);
        QCOMPARE(project()->currentClip()->name(), QStringLiteral("second.mkv"));
    }

    void undoesAnImportInOneStep()
    {
        bench->importBoth();
        QAction *undo = bench->action("Action_Undo");
        QVERIFY2(undo->text().contains(QLatin1String("Import 2")), qPrintable(undo->text()));
        bench->press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(project()->clipCount(), 0);
        QCOMPARE(project()->media().size(), 0);
        QCOMPARE(list()->model()->rowCount(), 0);
        QVERIFY(!undo->isEnabled());
        bench->press(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(list()->model()->rowCount(), 2);
    }

    void ordersAndRemovesClips()
    {
        bench->importBoth();
        list()->setFocus();
        QCOMPARE(project()->indexOf(project()->currentClip()), 0);
        bench->press(Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(names(), (QStringList {"second.mkv", "first.mkv"}));
        QVERIFY(!bench->action("Action_MoveLater")->isEnabled());

        // Dragging the last clip before the first one.
        QAbstractItemModel *model = list()->model();
        const std::unique_ptr<QMimeData> dragged(model->mimeData({model->index(1, 0)}));
        QVERIFY(model->dropMimeData(dragged.get(), Qt::MoveAction, 0, 0, QModelIndex()));
        QCOMPARE(names(), (QStringList {"first.mkv", "second.mkv"}));
        QVERIFY(!model->dropMimeData(dragged.get(), Qt::MoveAction, 1, 0, QModelIndex()));

        // The arrows walk through the list, not through the frames.
        bench->press(Qt::Key_Right);
        QCOMPARE(project()->currentClip()->name(), QStringLiteral("second.mkv"));
        QCOMPARE(player()->currentFrame(), qint64(0));
        bench->press(Qt::Key_Delete);
        QCOMPARE(names(), QStringList {"first.mkv"});
        QCOMPARE(project()->currentClip()->name(), QStringLiteral("first.mkv"));

        bin()->setFocus();
        bin()->setCurrentIndex(bin()->model()->index(0, 0));
        const NextDialog refusal("QMessageBox", pressKey(Qt::Key_Escape));
        bench->press(Qt::Key_Delete);
        QVERIFY(refusal.hasCome());
        bin()->setFocus();
        bin()->setCurrentIndex(bin()->model()->index(1, 0));
        bench->press(Qt::Key_Delete);
        QCOMPARE(project()->media().size(), 1);
    }

    void playsByKeys()
    {
        bench->importBoth();
        bench->find("PreviewPanel_Picture")->setFocus();
        QTRY_COMPARE_WITH_TIMEOUT(player()->duration(), int(clips().frames), timeoutMs);
        bench->press(Qt::Key_Right);
        bench->press(Qt::Key_Right);
        bench->press(Qt::Key_Left);
        QCOMPARE(player()->currentFrame(), qint64(1));
        bench->press(Qt::Key_End);
        QCOMPARE(player()->currentFrame(), qint64(clips().frames - 1));
        bench->press(Qt::Key_Home);
        bench->press(Qt::Key_Space);
        QTRY_COMPARE_WITH_TIMEOUT(player()->state(), int(ZKPLAYER::PlayingState), timeoutMs);
        bench->press(Qt::Key_Slash, Qt::ControlModifier);
        QCOMPARE(player()->currentFrame(), qint64(0));

        // Each clip keeps its place.
        player()->seek(5);
        project()->setCurrentClip(project()->clipAt(1));
        QCOMPARE(player()->currentFrame(), qint64(0));
        project()->setCurrentClip(project()->clipAt(0));
        QCOMPARE(player()->currentFrame(), qint64(5));
    }

    void switchesAndRemovesTheCutout()
    {
        bench->importBoth();
        auto *isOn = bench->find<QCheckBox>("ClipProperties_CutoutOn");
        QVERIFY(!isOn->isVisible() && !bench->action("Action_RemoveCutout")->isEnabled());
        EditorBench::cutOut(project()->currentClip());
        QVERIFY(isOn->isVisible() && isOn->isChecked());
        // Space presses what has the focus, and plays otherwise.
        isOn->setFocus(Qt::TabFocusReason);
        bench->press(Qt::Key_Space);
        const IZkEffect *effect = project()->currentClip()->clip()->studioEffects()->cutoutEffect();
        QVERIFY(!effect->isEnabled());
        QVERIFY(player()->state() != ZKPLAYER::PlayingState);
        bench->press(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(effect->isEnabled() && isOn->isChecked());

        bench->action("Action_RemoveCutout")->trigger();
        QVERIFY(!project()->currentClip()->isCutOut() && !isOn->isVisible());
        bench->press(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(project()->currentClip()->isCutOut() && isOn->isVisible());
    }

    void relinksMissingFiles()
    {
        const QString moved = bench->file(QStringLiteral("moved.mkv"));
        QVERIFY(QFile::copy(clips().first(), moved));
        window()->openFiles({moved});
        QTRY_COMPARE_WITH_TIMEOUT(project()->clipCount(), 1, timeoutMs);
        QVERIFY(QFile::remove(moved));
        project()->checkMedia();
        QVERIFY(project()->currentClip()->isOffline());
        QVERIFY(bench->find("PreviewPanel_Offline")->isVisible());
        QVERIFY(!bench->action("Action_SmartCutout")->isEnabled());

        const NextDialog wrong("QFileDialog", typePath(clips().text()));
        const NextDialog complaint("QMessageBox", pressKey(Qt::Key_Escape));
        bench->action("Action_RelinkClip")->trigger();
        QVERIFY(wrong.hasCome() && complaint.hasCome());
        QVERIFY(project()->currentClip()->isOffline());
        const NextDialog right("QFileDialog", typePath(clips().second()));
        bench->action("Action_RelinkClip")->trigger();
        QVERIFY(right.hasCome());
        QVERIFY(!project()->currentClip()->isOffline());
        QVERIFY(bench->find("PreviewPanel_Picture")->isVisible());
    }

    void commitsWhatIsTyped()
    {
        bench->importBoth();
        auto *time = bench->find("PreviewBar_Position")->findChild<QLineEdit *>();
        QTRY_VERIFY_WITH_TIMEOUT(time->isEnabled(), timeoutMs);
        time->setFocus();
        time->selectAll();
        QTest::keyClicks(time, QStringLiteral("7"));
        QCOMPARE(player()->currentFrame(), qint64(0));
        ZkMessage message(ZKMESSAGE::CommitFocusedEditor);
        SceneView scene(window());
        QVERIFY(scene.sendSceneMessage(&message));
        QCOMPARE(player()->currentFrame(), qint64(7));
        ZkMessage unknown(ZKMESSAGE::CommitFocusedEditor + 1);
        QVERIFY(!scene.sendSceneMessage(&unknown));
    }

    void hasOneOwnerPerKey()
    {
        bench->importBoth();
        QVERIFY2(doubledKeys().isEmpty(), qPrintable(doubledKeys().join(QLatin1Char(' '))));
        bench->press(Qt::Key_K, Qt::ControlModifier);
        QVERIFY(window()->workspace()->isOpen());
        QVERIFY2(doubledKeys().isEmpty(), qPrintable(doubledKeys().join(QLatin1Char(' '))));
        for (const char *name : {"Action_PlayPause", "Action_NextFrame", "Action_FitTimeline"})
            QVERIFY2(!bench->action(name)->isEnabled(), name);
        QVERIFY(bench->action("Action_Undo")->text().contains(QLatin1String("\tCtrl+Z")));
        QVERIFY(bench->action("Action_SaveProject")->isEnabled());

        // Closing the window closes the workspace first.
        QSignalSpy closed(window()->workspace(), &WorkspaceHost::closed);
        const NextDialog question("QMessageBox", press(QMessageBox::Discard));
        window()->close();
        QTRY_COMPARE_WITH_TIMEOUT(closed.count(), 1, timeoutMs);
        QTRY_VERIFY_WITH_TIMEOUT(!window()->isVisible(), timeoutMs);
        QVERIFY(bench->action("Action_PlayPause")->isEnabled());
        QCOMPARE(bench->action("Action_Undo")->shortcut(), QKeySequence(Qt::CTRL + Qt::Key_Z));
    }

    void closesInTheMiddleOfTracking()
    {
        const ZkSmartKeyingPresenter *presenter = bench->trackMatte();
        QVERIFY(presenter && presenter->isTrackingMode());
        // What the workspace asks, and what the project asks then.
        const NextDialog questions(
            "QMessageBox", press(QMessageBox::Discard), press(QMessageBox::Discard));
        window()->close();
        QTRY_VERIFY_WITH_TIMEOUT(!window()->isVisible(), timeoutMs);
        QVERIFY(!project()->clipAt(0)->isCutOut());
    }

    void namesEveryWidget()
    {
        bench->importBoth();
        const auto widgets = window()->findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisibleTo(window()))
                continue;
            const QAccessibleInterface *accessible =
                QAccessible::queryAccessibleInterface(const_cast<QWidget *>(widget));
            const QByteArray what = widget->metaObject()->className() + QByteArray(" ")
                + widget->objectName().toUtf8() + " in "
                + widget->parentWidget()->objectName().toUtf8();
            QVERIFY2(accessible && !accessible->text(QAccessible::Name).isEmpty(),
                     what.constData());
        }
    }

private:
    // Keys of the window that several enabled actions or shortcuts want at once.
    QStringList doubledKeys() const
    {
        QStringList keys;
        QStringList doubled;
        const auto note = [&](const QKeySequence &key) {
            if (key.isEmpty())
                return;
            if (keys.contains(key.toString()))
                doubled.append(key.toString());
            keys.append(key.toString());
        };
        const auto actions = window()->findChildren<QAction *>();
        for (const QAction *action : actions) {
            if (action->isEnabled() && action->shortcutContext() == Qt::WindowShortcut)
                note(action->shortcut());
        }
        const auto shortcuts = window()->findChildren<QShortcut *>();
        for (const QShortcut *shortcut : shortcuts) {
            if (shortcut->isEnabled() && shortcut->context() == Qt::WindowShortcut)
                note(shortcut->key());
        }
        return doubled;
    }
    QStringList names() const
    {
        QStringList names;
        for (int i = 0; i < project()->clipCount(); ++i)
            names.append(project()->clipAt(i)->name());
        return names;
    }
    static const WindowClips &clips() { return WindowClips::instance(); }
    MainWindow *window() const { return bench->window.get(); }
    Project *project() const { return bench->project(); }
    QListView *bin() const { return bench->find<QListView>("MediaBin_List"); }
    QListView *list() const { return bench->find<QListView>("ClipList_List"); }
    ZkMediaPlayerPresenter *player() const
    {
        return bench->find<PreviewPanel>("PreviewPanel")->player();
    }

    std::optional<EditorBench> bench;
};

ZK_TEST_MAIN(TestWindowEditing)
#include "tst_window_editing.moc"
