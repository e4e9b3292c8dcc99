#include "ZkTestMain.h"

#include "ZkMediaReader.h"
#include "ZkSampleClip.h"
#include "ZkTestClips.h"

#include <QJsonArray>
#include <QPainter>
#include <QTemporaryDir>

using namespace zk::media;

namespace {

SampleOptions optionsOf(const QSize &size)
{
    SampleOptions options;
    options.size = size;
    options.frames = 24;
    return options;
}

} // namespace

class ZkSampleClipTest : public QObject
{
    Q_OBJECT

    const SampleClip m_clip {optionsOf({320, 180})};

private slots:
    void isTheSameEveryTime()
    {
        const SampleClip second(optionsOf({320, 180}));
        QCOMPARE(m_clip.frame(9), second.frame(9));
        QCOMPARE(m_clip.matte(9), second.matte(9));
        QCOMPARE(m_clip.matte(9).format(), QImage::Format_Grayscale8);
        // Even where nothing moves, the grain does.
        QVERIFY(m_clip.frame(9) != m_clip.frame(10));
        QVERIFY(m_clip.frame(-1).isNull() && m_clip.matte(24).isNull());
    }

    void objectMovesAndIsPartlyHidden()
    {
        double largest = 0;
        double smallest = 1;
        for (int i = 0; i < 24; ++i) {
            const QImage matte = m_clip.matte(i);
            double mean = 0;
            double soft = 0; // share of the pixels that are neither fully inside nor outside
            for (int y = 0; y < 180; ++y) {
                for (int x = 0; x < 320; ++x) {
                    mean += matte.constScanLine(y)[x] / 255.0 / (320 * 180);
                    soft += matte.constScanLine(y)[x] % 255 != 0 ? 1.0 / (320 * 180) : 0;
                }
            }
            largest = qMax(largest, mean);
            smallest = qMin(smallest, mean);
            QVERIFY(soft > 0.005 && soft < 0.08);
        }
        QVERIFY2(largest > 0.1 && largest < 0.3, qPrintable(QString::number(largest)));
        QVERIFY2(smallest > 0.5 * largest && smallest < 0.92 * largest,
                 qPrintable(QString::number(smallest / largest)));
    }

    void backgroundIsTheFrameWithoutTheObject()
    {
        const QImage frame = m_clip.frame(9);
        const QImage background = m_clip.background(9);
        const QImage matte = m_clip.matte(9);
        int changes = 0;
        for (int y = 0; y < 180; ++y) {
            for (int x = 0; x < 320; ++x) {
                const bool isSame = frame.pixel(x, y) == background.pixel(x, y);
                changes += isSame ? 0 : 1;
                QVERIFY(isSame || qGray(matte.pixel(x, y)) > 0);
            }
        }
        QVERIFY(changes > 180 * 320 / 20);
        const QJsonValue first = m_clip.boxes().value("boxes")[0];
        const QJsonArray rect = first["rect"].toArray();
        const QRect box(rect[0].toInt(), rect[1].toInt(), rect[2].toInt(), rect[3].toInt());
        QImage around = m_clip.matte(first["frame"].toInt());
        QPainter(&around).fillRect(box, Qt::black);
        QImage nothing = around;
        nothing.fill(Qt::black);
        QCOMPARE(around, nothing);
        QVERIFY(box.width() < 200 && box.height() < 170);
    }

    void strokesLieWhereTheySay()
    {
        for (const QSize size : {QSize(320, 180), QSize(640, 360), QSize(1280, 720)}) {
            const SampleClip clip(optionsOf(size));
            const QImage matte = clip.matte(0);
            QSet<QString> modes;
            for (const QJsonValue &stroke : clip.strokes().value("strokes").toArray()) {
                const QString mode = stroke["mode"].toString();
                modes.insert(mode);
                const int reach = stroke["width"].toInt() / 2;
                for (const QJsonValue &value : stroke["points"].toArray()) {
                    const QPoint point(value[0].toInt(), value[1].toInt());
                    for (const int side : {-reach, reach}) {
                        const QPoint edge = point + QPoint(side, 0);
                        QVERIFY(matte.rect().contains(edge));
                        QCOMPARE(qGray(matte.pixel(edge)), mode == QLatin1String("keep") ? 255 : 0);
                    }
                }
            }
            QCOMPARE(modes, (QSet<QString> {"keep", "remove"}));
        }
    }

    void writesClipAndMattes()
    {
        const QTemporaryDir folder;
        QString error;
        const QString file = folder.filePath("sample.mkv");
        const QString mattes = folder.filePath("truth");
        QVERIFY2(m_clip.write(file, mattes, &error, true), qPrintable(error));
        const auto reader = MediaReader::open(file, &error);
        QVERIFY2(reader, qPrintable(error));
        QCOMPARE(reader->info().frameCount, qint64(24));
        QCOMPARE(reader->info().frameRate(), 24.0);
        QCOMPARE(reader->frameAt(13), m_clip.frame(13));
        QCOMPARE(QImage(mattes + "/00013.png"), m_clip.matte(13));
        QCOMPARE(QDir(mattes).entryList(QDir::Files).size(), 24);
        QVERIFY(qAbs(zk::test::soundOf(file).seconds - 1) < 0.05);
        QVERIFY(zk::test::soundOf(file).onset < 0.01);
        QVERIFY(!m_clip.write(folder.filePath("none/a.mkv"), QString(), &error));
    }
};

ZK_TEST_CORE_MAIN(ZkSampleClipTest)
#include "ZkSampleClipTest.moc"
