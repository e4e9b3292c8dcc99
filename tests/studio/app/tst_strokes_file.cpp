#include "ZkStrokesFile.h"
#include "ZkTestMain.h"

#include <QApplication>
#include <QTemporaryDir>

using zk::app::Stroke;
using zk::app::StrokesFile;

class TestStrokesFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsStrokes()
    {
        StrokesFile file;
        QString error;
        QVERIFY2(file.load(write("{\"strokes\":[{\"frame\":3,\"mode\":\"remove\",\"width\":2.5,"
                                 "\"points\":[[1,2],[3.5,4]]}]}"),
                           &error),
                 qPrintable(error));
        QCOMPARE(file.strokes().size(), 1);
        const Stroke stroke = file.strokes().constFirst();
        QCOMPARE(stroke.frame, qint64(3));
        QCOMPARE(stroke.mode, Stroke::Mode::Remove);
        QCOMPARE(stroke.width, 2.5);
        QCOMPARE(stroke.points, (QVector<QPointF> {{1, 2}, {3.5, 4}}));
    }

    void namesFileLineAndField_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("expected");
        const auto row = [](const QByteArray &stroke, const char *expected) {
            const QByteArray first =
                "{\"frame\":0,\"mode\":\"keep\",\"width\":3,\"points\":[[1,1]]}";
            QTest::newRow(expected)
                << QByteArray("{\n\"strokes\": [\n" + first + ",\n" + stroke + "\n]}")
                << QString::fromLatin1(expected);
        };
        const QByteArray good = "{\"mode\":\"keep\",\"points\":[[1,1]]";
        row(good + ",\"frame\":0,\n\n\"width\":0}", ":6: strokes[1].width: ");
        row(good + ",\"width\":3,\n\"frame\":0.5}", ":5: strokes[1].frame: ");
        row(good + ",\"width\":3}", ":4: strokes[1].frame: is missing");
        row("{\"a\":\"],}]\\\"{[\",\n\"x\":1}", ":4: strokes[1].a: unknown field");
        row(R"({"frame":0,"mode":"kepp","width":3,"points":[]})", ":4: strokes[1].mode: ");
        row(R"({"frame":0,"mode":"keep","width":3,"points":[[1,1],[2]]})",
            ":4: strokes[1].points[1]: ");
        row("7", ":4: strokes[1]: ");
        QTest::newRow("syntax") << QByteArray("{\n\"strokes\": [\n{]}")
                                << QStringLiteral(":3: is not valid JSON");
        QTest::newRow("empty") << QByteArray() << QStringLiteral(":1: is not valid JSON");
    }
    void namesFileLineAndField()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, expected);
        StrokesFile file;
        QString error;
        const QString path = write(text);
        QVERIFY(!file.load(path, &error));
        QVERIFY2(error.startsWith(path + expected), qPrintable(error));
        QVERIFY(file.strokes().isEmpty());
    }

    void refusesWhatTheClipLacks()
    {
        const auto fits = [this](const QByteArray &stroke, const QString &expected) {
            StrokesFile file;
            QString error;
            file.load(write(R"({"strokes":[{"mode":"keep","width":4,)" + stroke + "}]}"), &error);
            const bool fits = file.fits(QSize(64, 48), 10, &error);
            return error.contains(expected) && fits == error.isEmpty();
        };
        QVERIFY(fits(R"("frame":10,"points":[[1,1]])", QStringLiteral("frames 0 to 9")));
        QVERIFY(fits(R"("frame":0,"points":[[-3,9],[-9,20]])",
                     QStringLiteral("outside the 64x48 frame")));
        QVERIFY(fits(R"("frame":9,"points":[[-1,10]])", QString())); // its edge is inside
    }

    void paintsAtCanvasScale()
    {
        Stroke stroke;
        stroke.width = 4;
        stroke.points = {{10, 10}};
        const QImage dot = stroke.paint(QSize(40, 20), QSize(80, 40));
        QCOMPARE(dot.size(), QSize(80, 40));
        QCOMPARE(qAlpha(dot.pixel(20, 20)), 255);
        QCOMPARE(qAlpha(dot.pixel(20 + 3, 20)), 255); // 4 source pixels are 8 canvas pixels wide
        QCOMPARE(qAlpha(dot.pixel(20 + 5, 20)), 0);
        stroke.points.append({30, 10});
        QCOMPARE(qAlpha(stroke.paint(QSize(40, 20), QSize(80, 40)).pixel(40, 20)), 255);
    }

private:
    QString write(const QByteArray &text)
    {
        const QString path = m_folder.filePath(QStringLiteral("strokes.json"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write the test file");
        return path;
    }

    QTemporaryDir m_folder;
};

ZK_TEST_MAIN(TestStrokesFile)
#include "tst_strokes_file.moc"
