#include "ZkTestMain.h"

#include "ZkMediaReader.h"
#include "ZkSampleClip.h"
#include "ZkTestClips.h"

#include <QJsonArray>
#include <QTemporaryDir>

using namespace zk::media;

namespace {

SampleOptions smallOptions()
{
    SampleOptions options;
    options.size = {320, 180};
    options.frames = 24;
    return options;
}

double meanOf(const QImage &matte)
{
    double sum = 0;
    for (int y = 0; y < matte.height(); ++y) {
        for (int x = 0; x < matte.width(); ++x)
            sum += matte.constScanLine(y)[x] / 255.0;
    }
    return sum / (matte.width() * matte.height());
}

// The share of pixels that are neither fully inside nor fully outside.
double softShare(const QImage &matte)
{
    int soft = 0;
    for (int y = 0; y < matte.height(); ++y) {
        for (int x = 0; x < matte.width(); ++x)
            soft += matte.constScanLine(y)[x] % 255 != 0 ? 1 : 0;
    }
    return double(soft) / (matte.width() * matte.height());
}

} // namespace

class ZkSampleClipTest : public QObject
{
    Q_OBJECT

private slots:
    void isTheSameEveryTime();
    void objectMovesAndIsPartlyHidden();
    void strokesLieWhereTheySay();
    void writesClipAndMattes();
};

void ZkSampleClipTest::isTheSameEveryTime()
{
    const SampleClip first(smallOptions());
    const SampleClip second(smallOptions());
    QCOMPARE(first.frame(9), second.frame(9));
    QCOMPARE(first.matte(9), second.matte(9));
    QCOMPARE(first.frame(9).size(), QSize(320, 180));
    QCOMPARE(first.matte(9).format(), QImage::Format_Grayscale8);
    // Even where nothing moves, the grain does.
    QVERIFY(first.frame(9) != first.frame(10));
    QVERIFY(first.frame(-1).isNull() && first.matte(24).isNull());
}

void ZkSampleClipTest::objectMovesAndIsPartlyHidden()
{
    const SampleClip clip(smallOptions());
    double largest = 0;
    double smallest = 1;
    for (int i = 0; i < 24; ++i) {
        const QImage matte = clip.matte(i);
        largest = qMax(largest, meanOf(matte));
        smallest = qMin(smallest, meanOf(matte));
        QVERIFY(softShare(matte) > 0.005 && softShare(matte) < 0.08);
    }
    QVERIFY2(largest > 0.1 && largest < 0.3, qPrintable(QString::number(largest)));
    QVERIFY2(smallest > 0.5 * largest && smallest < 0.92 * largest,
             qPrintable(QString::number(smallest / largest)));
}

void ZkSampleClipTest::strokesLieWhereTheySay()
{
    for (const QSize size : {QSize(320, 180), QSize(640, 360), QSize(1280, 720)}) {
        SampleOptions options = smallOptions();
        options.size = size;
        const SampleClip clip(options);
        const QImage matte = clip.matte(0);
        const QJsonArray strokes = clip.strokes().value(QLatin1String("strokes")).toArray();
        QSet<QString> modes;
        for (const QJsonValue &entry : strokes) {
            const QJsonObject stroke = entry.toObject();
            const QString mode = stroke.value(QLatin1String("mode")).toString();
            modes.insert(mode);
            const int reach = stroke.value(QLatin1String("width")).toInt() / 2;
            for (const QJsonValue &value : stroke.value(QLatin1String("points")).toArray()) {
                const QPoint point(value.toArray().at(0).toInt(), value.toArray().at(1).toInt());
                for (const int side : {-reach, reach}) {
                    const QPoint edge = point + QPoint(side, 0);
                    QVERIFY(matte.rect().contains(edge));
                    QCOMPARE(qGray(matte.pixel(edge)), mode == QLatin1String("keep") ? 255 : 0);
                }
            }
        }
        QCOMPARE(modes, (QSet<QString> {QStringLiteral("keep"), QStringLiteral("remove")}));
    }
}

void ZkSampleClipTest::writesClipAndMattes()
{
    const QTemporaryDir folder;
    const SampleClip clip(smallOptions());
    QString error;
    const QString file = folder.filePath(QStringLiteral("sample.mkv"));
    const QString mattes = folder.filePath(QStringLiteral("truth"));
    QVERIFY2(clip.write(file, mattes, &error, true), qPrintable(error));
    const auto reader = MediaReader::open(file, &error);
    QVERIFY2(reader, qPrintable(error));
    QCOMPARE(reader->info().frameCount, qint64(24));
    QCOMPARE(reader->info().frameRate(), 24.0);
    QCOMPARE(reader->frameAt(13), clip.frame(13));
    QCOMPARE(QImage(mattes + QStringLiteral("/00013.png")), clip.matte(13));
    QCOMPARE(QDir(mattes).entryList(QDir::Files).size(), 24);
    QVERIFY(qAbs(zk::test::soundOf(file).seconds - 1) < 0.05);
    QVERIFY(zk::test::soundOf(file).onset < 0.01);

    QVERIFY(!clip.write(folder.filePath(QStringLiteral("none/a.mkv")), QString(), &error));
    QVERIFY(error.contains(QLatin1String("does not exist")));
}

ZK_TEST_CORE_MAIN(ZkSampleClipTest)
#include "ZkSampleClipTest.moc"
