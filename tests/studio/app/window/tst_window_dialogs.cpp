#include "WindowBench.h"

#include "ZkFormat.h"
#include "ZkModelField.h"
#include "ZkOnnxWriter.h"
#include "ZkPreferences.h"
#include "segmentation/ZkStudioSmartKeyingService.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSpinBox>
#include <QStatusBar>
#include <QTableWidget>

#include <optional>

using namespace zk::app;
using namespace zk::test;
using zk::engine::EngineRole;

class TestWindowDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { bench.emplace(); }
    void cleanup() { bench.reset(); }

    void listsTheKeys()
    {
        QMultiHash<QString, QString> keys;
        const NextDialog table("zk::app::ShortcutsDialog", [&keys](QDialog *dialog) {
            const auto *rows = dialog->findChild<QTableWidget *>();
            for (int row = 0; row < rows->rowCount(); ++row)
                keys.insert(rows->item(row, 0)->text(), rows->item(row, 1)->text());
            QTest::keyClick(dialog, Qt::Key_Escape);
        });
        bench->press(Qt::Key_F1);
        QVERIFY(table.hasCome());
        QVERIFY(keys.contains(QStringLiteral("Smart Cutout"), QStringLiteral("Ctrl+K")));
        QCOMPARE(keys.value(QStringLiteral("Play or Pause")), QStringLiteral("Space"));
        QVERIFY(keys.values().contains(QStringLiteral("W"))); // the workspace's
    }

    void showsNumbersAsPeopleReadThem()
    {
        QCOMPARE(durationText(72, 24), QStringLiteral("3.0 s"));
        QCOMPARE(durationText(24 * 125, 24), QStringLiteral("02:05"));
        QCOMPARE(durationText(25 * 3725, 25), QStringLiteral("1:02:05"));
        zk::media::MediaInfo info;
        info.frameRateNum = 30000;
        info.frameRateDen = 1001;
        QCOMPARE(rateText(info), QStringLiteral("29.97 fps"));
        QCOMPARE(timeLeftText(-1), QString());
        QCOMPARE(timeLeftText(61001), QStringLiteral("1 min 2 s left"));
        QCOMPARE(withoutMnemonic(QStringLiteral("导入(&I)...")), QStringLiteral("导入..."));
    }

    void keepsTheSettings()
    {
        QCOMPARE(Preferences::areAnalyticsAllowed(), false);
        const NextDialog settings("zk::app::SettingsDialog", [](QDialog *dialog) {
            auto *language = dialog->findChild<QComboBox *>();
            language->setCurrentIndex(language->findData(QStringLiteral("de")));
            auto *seconds = dialog->findChild<QSpinBox *>();
            seconds->selectAll();
            QTest::keyClicks(seconds, QStringLiteral("20"));
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        bench->press(Qt::Key_Comma, Qt::ControlModifier);
        QVERIFY(settings.hasCome());
        QCOMPARE(Preferences::autosaveSeconds(), 20);
        QVERIFY(!Preferences::areAnalyticsAllowed());
        // At once, also in the menus.
        const QMenuBar *menus = bench->window->menuBar();
        QTRY_COMPARE_WITH_TIMEOUT(
            menus->actions().constFirst()->text(), QStringLiteral("&Datei"), timeoutMs);
    }

    void takesNetworksThatFit()
    {
        const QString network = bench->file(QStringLiteral("track.onnx"));
        QFile file(network);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(
            QByteArray::fromStdString(OnnxWriter::linear({{{"image", 3}, {"previous_matte", 1}},
                                                          "matte",
                                                          1,
                                                          {0, 0, 0, 0},
                                                          20, // everything is the object
                                                          true,
                                                          96,
                                                          64})
                                          .file()));
        file.close();
        const auto choose = [](ModelField *field, const QString &path) {
            const NextDialog files("QFileDialog", typePath(path));
            QTest::mouseClick(field->findChild<QPushButton *>("ModelField_Choose"), Qt::LeftButton);
            QVERIFY(files.hasCome());
        };
        const auto accept = [](QDialog *dialog) {
            auto *buttons = dialog->findChild<QDialogButtonBox *>();
            QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
        };
        const auto openSettings = [&](const std::function<void(ModelField *)> &hand) {
            const NextDialog settings("zk::app::SettingsDialog", [&](QDialog *dialog) {
                hand(dialog->findChildren<ModelField *>().at(int(EngineRole::Tracking)));
                accept(dialog);
            });
            bench->press(Qt::Key_Comma, Qt::ControlModifier);
            QVERIFY(settings.hasCome());
        };
        openSettings([&](ModelField *field) {
            const auto *state = field->findChild<QLabel *>("ModelField_State");
            QVERIFY(state->isHidden());
            choose(field, WindowClips::instance().text());
            QVERIFY2(state->text().contains("this is no ONNX file"), qPrintable(state->text()));
            QVERIFY(field->file().path.isEmpty());
            choose(field, network);
            QVERIFY2(state->text().contains("96 x 64"), qPrintable(state->text()));
        });
        QCOMPARE(Preferences::modelFile(EngineRole::Tracking), network);
        QCOMPARE(Preferences::modelFile(EngineRole::Segmentation), QString());
        ZkSmartKeyingPresenter *presenter = bench->trackMatte();
        QVERIFY(presenter);
        QTRY_VERIFY_WITH_TIMEOUT(!presenter->isTrackingMode(), timeoutMs);
        QImage everything(WindowClips::size, QImage::Format_Grayscale8);
        everything.fill(255);
        QCOMPARE(static_cast<ZkStudioTimeline *>(presenter->editTimeline())
                     ->shownService()
                     ->segments()
                     .matteAt(WindowClips::frames - 1),
                 everything);
        bench->stop();
        bench->start();
        openSettings([&](ModelField *field) {
            QCOMPARE(field->file().path, network);
            QTest::mouseClick(field->findChild<QPushButton *>("ModelField_BuiltIn"),
                              Qt::LeftButton);
        });
        QCOMPARE(Preferences::modelFile(EngineRole::Tracking), QString());
    }

    void saysOnceThatANetworkIsGone()
    {
        Preferences::setModelFile(EngineRole::Tracking, bench->file(QStringLiteral("gone.onnx")));
        bench->stop();
        bench->start();
        bench->importBoth();
        const QStatusBar *status = bench->window->statusBar();
        QVERIFY(!status->currentMessage().contains(QLatin1String("gone.onnx")));
        bench->press(Qt::Key_K, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(status->currentMessage().contains("gone.onnx cannot be read"),
                                 timeoutMs);
        QTRY_VERIFY_WITH_TIMEOUT(bench->window->workspace()->isOpen(), timeoutMs);
    }

private:
    std::optional<EditorBench> bench;
};

ZK_TEST_MAIN(TestWindowDialogs)
#include "tst_window_dialogs.moc"
