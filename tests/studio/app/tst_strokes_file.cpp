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
    void readsStrokes();
    void namesFileLineAndField_data();
    void namesFileLineAndField();
    void refusesWhatTheClipLacks_data();
    void refusesWhatTheClipLacks();
    void paintsAtCanvasScale();

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

void TestStrokesFile::readsStrokes()
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

void TestStrokesFile::namesFileLineAndField_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QByteArray &stroke, const char *expected) {
        const QByteArray good = "{\"frame\":0,\"mode\":\"keep\",\"width\":3,\"points\":[[1,1]]}";
        QTest::newRow(name) << QByteArray("{\n\"strokes\": [\n" + good + ",\n" + stroke + "\n]}")
                            << QString::fromLatin1(expected);
    };
    row("mode",
        "{\"frame\":0,\n\"mode\":\"kepp\",\"width\":3,\"points\":[[1,1]]}",
        ":5: strokes[1].mode: ");
    row("width",
        "{\"frame\":0,\"mode\":\"keep\",\n\n\"width\":0,\"points\":[[1,1]]}",
        ":6: strokes[1].width: ");
    row("point",
        "{\"frame\":0,\"mode\":\"keep\",\"width\":3,\"points\":[[1,1],\n[2]]}",
        ":5: strokes[1].points[1]: ");
    row("no points",
        "{\"frame\":0,\"mode\":\"keep\",\"width\":3,\"points\":[]}",
        ":4: strokes[1].points: ");
    row("half a frame",
        "{\"mode\":\"keep\",\n\"frame\":0.5,\"width\":3,\"points\":[[1,1]]}",
        ":5: strokes[1].frame: ");
    row("missing",
        "{\"mode\":\"keep\",\"width\":3,\"points\":[[1,1]]}",
        ":4: strokes[1].frame: is missing");
    row("unknown, after tricky text",
        "{\"frame\":0,\"mode\":\"keep\",\"width\":3,\"points\":[[1,1]],\n"
        "\"note\":\"a,}]\\\"{[\",\n\"x\":1}",
        ":5: strokes[1].note: unknown field");
    row("no object", "7", ":4: strokes[1]: ");
    QTest::newRow("syntax") << QByteArray("{\n\"strokes\": [\n{]}")
                            << QStringLiteral(":3: is not valid JSON");
    QTest::newRow("no list") << QByteArray("{\n}") << QStringLiteral(":1: strokes: ");
    QTest::newRow("empty") << QByteArray() << QStringLiteral(":1: is not valid JSON");
}

void TestStrokesFile::namesFileLineAndField()
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

void TestStrokesFile::refusesWhatTheClipLacks_data()
{
    QTest::addColumn<QByteArray>("stroke");
    QTest::addColumn<QString>("expected");
    QTest::newRow("past the end") << QByteArray("\"frame\":10,\"width\":3,\"points\":[[1,1]]")
                                  << QStringLiteral("frames 0 to 9");
    QTest::newRow("outside") << QByteArray("\"frame\":0,\"width\":4,\"points\":[[-3,10],[-9,20]]")
                             << QStringLiteral("outside the 64x48 frame");
    QTest::newRow("on the edge") << QByteArray("\"frame\":9,\"width\":4,\"points\":[[-1,10]]")
                                 << QString();
}

void TestStrokesFile::refusesWhatTheClipLacks()
{
    QFETCH(QByteArray, stroke);
    QFETCH(QString, expected);
    StrokesFile file;
    QString error;
    QVERIFY(file.load(write("{\"strokes\":[{\"mode\":\"keep\"," + stroke + "}]}"), &error));
    QCOMPARE(file.fits(QSize(64, 48), 10, &error), expected.isEmpty());
    QVERIFY2(error.contains(expected), qPrintable(error));
}

void TestStrokesFile::paintsAtCanvasScale()
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

ZK_TEST_MAIN(TestStrokesFile)
#include "tst_strokes_file.moc"
