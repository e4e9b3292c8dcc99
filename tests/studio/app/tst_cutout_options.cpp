#include "ZkCutoutOptions.h"
#include "ZkTestMain.h"

#include <QApplication>

using zk::app::CutoutOptions;
using zk::app::ExitCode;

class TestCutoutOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEverything()
    {
        CutoutOptions options;
        QString message;
        const QStringList arguments {"in.mp4",
                                     "--mask",
                                     "12:a:b.png",
                                     "--direction",
                                     "backward",
                                     "--background",
                                     "#102030",
                                     "-o",
                                     "a.mov",
                                     "-o",
                                     "b/%05d.png",
                                     "--matte",
                                     "--json"};
        QCOMPARE(int(options.parse(arguments, &message)), int(ExitCode::Success));
        QCOMPARE(options.matteFrame, qint64(12));
        QCOMPARE(options.matteFile, QStringLiteral("a:b.png"));
        QCOMPARE(int(options.direction), int(CutoutOptions::Direction::Backward));
        QCOMPARE(options.backgroundColour, QColor(0x10, 0x20, 0x30));
        QCOMPARE(options.outputs, (QStringList {"a.mov", "b/%05d.png"}));
        QVERIFY(options.matteOnly && options.json && !options.centred);
    }

    void explainsMistakes_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("expected");
        const QStringList strokes {"--strokes", "s.json"};
        QTest::newRow("no input") << (strokes + QStringList {"-o", "a.mov"}) << "exactly one";
        QTest::newRow("no object") << QStringList {"a", "-o", "a.mov"} << "--strokes";
        QTest::newRow("two objects")
            << (strokes + QStringList {"a", "--centre", "-o", "a.mov"}) << "one of";
        QTest::newRow("format") << (strokes + QStringList {"a", "-o", "a.xyz"}) << ".webm";
        QTest::newRow("same file")
            << (strokes + QStringList {"./a.mov", "-o", "a.mov"}) << "overwrite";
        QTest::newRow("twice") << (strokes + QStringList {"a", "-o", "a.mov", "-o", "a.mov"})
                               << "twice";
        QTest::newRow("mask") << QStringList {"a", "--mask", "x.png", "-o", "a.mov"}
                              << "0:matte.png";
    }
    void explainsMistakes()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, expected);
        CutoutOptions options;
        QString message;
        QCOMPARE(int(options.parse(arguments, &message)), int(ExitCode::Usage));
        QVERIFY2(message.contains(expected), qPrintable(message));
    }
};

ZK_TEST_MAIN(TestCutoutOptions)
#include "tst_cutout_options.moc"
