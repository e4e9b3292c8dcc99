#include "WindowBench.h"

#include "ZkExportDialog.h"
#include "ZkMediaReader.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

#include <optional>

using namespace zk::app;
using zk::media::SampleClip;
using namespace zk::test;

class TestWindowExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        bench.emplace();
        bench->importBoth();
        EditorBench::cutOut(bench->project()->currentClip());
        bench->press(Qt::Key_E, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(dialog() && dialog()->isVisible(), timeoutMs);
    }
    void cleanup() { bench.reset(); }

    void writesTheChosenFormat_data()
    {
        QTest::addColumn<int>("format"); // row of the box
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<bool>("matteOnly");
        QTest::addColumn<int>("background"); // row of the box
        QTest::addColumn<QColor>("below"); // what comes in place of the lower half
        QTest::newRow("transparent") << 2 << ".mkv" << false << 0 << QColor(0, 0, 0, 0);
        QTest::newRow("over black") << 4 << ".mp4" << false << 0 << QColor(0, 0, 0);
        QTest::newRow("over green") << 4 << ".mp4" << false << 1 << QColor(0x00, 0xb1, 0x40);
        QTest::newRow("matte") << 2 << ".mkv" << true << 0 << QColor(0, 0, 0);
    }
    void writesTheChosenFormat()
    {
        QFETCH(int, format);
        QFETCH(QString, suffix);
        QFETCH(bool, matteOnly);
        QFETCH(int, background);
        QFETCH(QColor, below);
        child<QComboBox>("ExportDialog_Format")->setCurrentIndex(format);
        QVERIFY(target()->text().endsWith(suffix));
        type(bench->file(QStringLiteral("out")));
        child<QCheckBox>("ExportDialog_MatteOnly")->setChecked(matteOnly);
        child<QComboBox>("ExportDialog_Background")->setCurrentIndex(background);
        QVERIFY(child<QLabel>("ExportDialog_Summary")->text().contains(QStringLiteral("160 × 90")));
        QVERIFY(exportNow().contains(QLatin1String("1 clip")));
        QVERIFY(child("ExportDialog_Show")->isVisible());

        QString error;
        const auto reader = zk::media::MediaReader::open(bench->file("out" + suffix), &error);
        QVERIFY2(reader, qPrintable(error));
        QCOMPARE(reader->info().frameCount, qint64(WindowClips::frames));
        const QColor pixel = reader->frameAt(5).pixelColor(80, 80);
        QCOMPARE(pixel.alpha(), below.alpha());
        if (below.alpha() > 0) // H.264 comes close
            QVERIFY2(qAbs(pixel.green() - below.green()) < 12
                         && qAbs(pixel.red() - below.red()) < 12,
                     qPrintable(pixel.name()));
    }

    void writesAllClips()
    {
        auto *clips = child<QComboBox>("ExportDialog_Clip");
        clips->setCurrentIndex(clips->count() - 1);
        child<QComboBox>("ExportDialog_Format")->setCurrentIndex(3); // pictures
        type(bench->file(QStringLiteral("out")));
        QVERIFY(exportNow().contains(QLatin1String("2 clip")));
        for (const char *folder : {"out-01", "out-02"})
            QCOMPARE(QDir(bench->file(QLatin1String(folder))).count(),
                     uint(WindowClips::frames + 2));
    }

    void asksBeforeItReplaces()
    {
        const QString path = bench->file(QStringLiteral("out.mkv"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("precious") > 0);
        file.close();
        child<QComboBox>("ExportDialog_Format")->setCurrentIndex(2);
        type(path);
        {
            const NextDialog question("QMessageBox", pressKey(Qt::Key_Escape));
            QTest::mouseClick(child("ExportDialog_Export"), Qt::LeftButton);
            QVERIFY(question.text().contains(QLatin1String("out.mkv")));
        }
        QVERIFY(!dialog()->isExporting());
        QCOMPARE(QFileInfo(path).size(), qint64(8));
    }

    void explainsFailures()
    {
        type(bench->file(QStringLiteral("no/such/folder/out")));
        const NextDialog complaint("QMessageBox", pressKey(Qt::Key_Escape));
        const QString said = exportNow();
        QVERIFY2(said.contains(QLatin1String("no/such/folder")), qPrintable(said));
        QVERIFY(complaint.hasCome());
        QVERIFY(child("ExportDialog_Export")->isVisible());
    }

    // The editor goes on; what is written is what was there at the start.
    void letsTheEditorBeUsedMeanwhile()
    {
        auto *clips = child<QComboBox>("ExportDialog_Clip");
        clips->setCurrentIndex(clips->count() - 1);
        QVERIFY(bench->project()->moveClip(0, 1));
        QCOMPARE(clips->currentText(), QStringLiteral("All clips, a file each"));
        QVERIFY(clips->itemText(0).endsWith(QLatin1String("second.mkv")));
        type(bench->file(QStringLiteral("out.mov")));
        QTest::mouseClick(child("ExportDialog_Export"), Qt::LeftButton);
        QVERIFY(dialog()->isExporting() && !QApplication::activeModalWidget());
        QVERIFY(bench->project()->save(bench->file(QStringLiteral("film.zkproj")), nullptr));
        bench->press(Qt::Key_N, Qt::ControlModifier);
        QVERIFY(bench->project()->clipCount() == 0 && clips->count() == 0);
        QTRY_VERIFY_WITH_TIMEOUT(!dialog()->isExporting(), timeoutMs);
        QVERIFY2(status()->text().contains(QLatin1String("2 clip")), qPrintable(status()->text()));
        QVERIFY(QFile::exists(bench->file(QStringLiteral("out-02.mov"))));
        QVERIFY(!child("ExportDialog_Export")->isEnabled());
    }

    void cancels_data()
    {
        QTest::addColumn<bool>("closesWindow");
        QTest::newRow("by Esc") << false;
        QTest::newRow("by closing the window") << true;
    }
    void cancels()
    {
        QFETCH(bool, closesWindow);
        // One that takes longer to write than to say so.
        const QString film = bench->file(QStringLiteral("film.mkv"));
        QString error;
        QVERIFY2(SampleClip({WindowClips::size, 500, 24}).write(film, {}, &error),
                 qPrintable(error));
        bench->drop(bench->window.get(), {film});
        auto *clips = child<QComboBox>("ExportDialog_Clip");
        QTRY_COMPARE_WITH_TIMEOUT(bench->project()->clipCount(), 3, timeoutMs);
        clips->setCurrentIndex(2);
        child<QComboBox>("ExportDialog_Format")->setCurrentIndex(1); // the slowest
        type(bench->file(QStringLiteral("out")));
        QTest::mouseClick(child("ExportDialog_Export"), Qt::LeftButton);
        QVERIFY(dialog()->isExporting());
        if (closesWindow) {
            bench->project()->save(bench->file(QStringLiteral("film.zkproj")), nullptr);
            const NextDialog question("QMessageBox", [](QDialog *box) {
                QTest::mouseClick(static_cast<QMessageBox *>(box)->buttons().constFirst(),
                                  Qt::LeftButton);
            });
            QVERIFY(bench->window->close());
            QVERIFY(!dialog());
        } else {
            QTest::keyClick(dialog(), Qt::Key_Escape);
            QTRY_VERIFY_WITH_TIMEOUT(!dialog()->isExporting(), timeoutMs);
            QVERIFY(status()->text().contains(QLatin1String("Cancelled")));
        }
        QCOMPARE(QDir(bench->file(QString())).entryList({"*out*"}, QDir::Files | QDir::Hidden),
                 QStringList());
    }

private:
    ExportDialog *dialog() const { return bench->find<ExportDialog>("ExportDialog"); }
    template<typename T = QWidget>
    T *child(const char *name) const
    {
        return dialog()->findChild<T *>(QLatin1String(name));
    }
    QLineEdit *target() const { return child<QLineEdit>("ExportDialog_Target"); }
    QLabel *status() const { return child<QLabel>("ExportDialog_Status"); }
    void type(const QString &path)
    {
        target()->selectAll();
        QTest::keyClicks(target(), path);
    }
    // What the dialog says at the end.
    QString exportNow()
    {
        QTest::mouseClick(child("ExportDialog_Export"), Qt::LeftButton);
        if (!QTest::qWaitFor([this] { return !dialog()->isExporting(); }, timeoutMs))
            return QStringLiteral("timed out");
        return status()->text();
    }

    std::optional<EditorBench> bench;
};

ZK_TEST_MAIN(TestWindowExport)
#include "tst_window_export.moc"
