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
        const QStringList arguments =
            QStringLiteral("in.mp4 --mask 12:a:b.png --direction backward --background #102030 "
                           "-o a.mov -o b/%05d.png --matte --json")
                .split(QLatin1Char(' '));
        QCOMPARE(int(options.parse(arguments, &message)), int(ExitCode::Success));
        QCOMPARE(options.matteFrame, qint64(12));
        QCOMPARE(options.matteFile, QStringLiteral("a:b.png"));
        QCOMPARE(int(options.direction), int(CutoutOptions::Direction::Backward));
        QCOMPARE(options.backgroundColour, QColor(0x10, 0x20, 0x30));
        QCOMPARE(options.outputs, (QStringList {"a.mov", "b/%05d.png"}));
        QVERIFY(options.matteOnly && options.json && !options.centred);
    }

    void explainsMistakes()
    {
        const QVector<QStringList> mistakes {
            {"exactly one", "--strokes s.json -o a.mov"},
            {"--strokes", "a -o a.mov"},
            {"one of", "--strokes s.json a --centre -o a.mov"},
            {"-o OUT", "--strokes s.json a"},
            {".webm", "--strokes s.json a -o a.xyz"},
            {"overwrite", "--strokes s.json ./a.mov -o a.mov"},
            {"twice", "--strokes s.json a -o a.mov -o a.mov"},
            {"0:matte.png", "a --mask x.png -o a.mov"},
            {"backward", "--strokes s.json a --direction up -o a.mov"},
            {"colour", "--strokes s.json a --background blurple -o a.mp4"}};
        for (const QStringList &mistake : mistakes) {
            CutoutOptions options;
            QString message;
            const QStringList arguments = mistake.last().split(QLatin1Char(' '));
            QCOMPARE(int(options.parse(arguments, &message)), int(ExitCode::Usage));
            QVERIFY2(message.contains(mistake.first()), qPrintable(message));
        }
    }
};

ZK_TEST_MAIN(TestCutoutOptions)
#include "tst_cutout_options.moc"
