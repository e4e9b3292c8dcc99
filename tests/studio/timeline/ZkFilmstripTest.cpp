#include "ZkFilmstrip.h"
#include "EditBench.h"
#include "ZkTestMain.h"
#include "ZkTimelineScale.h"

#include <QPainter>

using namespace zk::test;
using namespace zk::timeline;

class ZkFilmstripTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thumbnailsAreTheFrames()
    {
        const EditBench bench(EditClip::instance().path(), ZKSMARTKEYING::SmartCutout, {4, 11});
        TimelineScale scale;
        scale.setFrameCount(8);
        scale.setWidth(8 * 80 + 2 * TimelineScale::sideMargin);
        Filmstrip strip;
        strip.setClip(bench.clip());
        QSignalSpy loaded(&strip, &Filmstrip::sigLoaded);
        strip.prepare(scale, 45, 1);
        QTRY_COMPARE_WITH_TIMEOUT(loaded.count(), 8, 10000);
        for (int frame = 0; frame < 8; ++frame) {
            const QColor seen = averageOf(painted(strip, scale, frame));
            // The clip begins at frame 4 of its file.
            const QColor truth = averageOf(EditClip::instance().frame(frame + 4));
            QVERIFY2(std::abs(seen.red() - truth.red()) + std::abs(seen.blue() - truth.blue()) < 12,
                     qPrintable(seen.name() + truth.name()));
        }
        // What is there is not asked for again; another clip begins anew.
        strip.prepare(scale, 45, 1);
        strip.setClip(nullptr);
        QCOMPARE(strip.cachedBytes(), 0);
        strip.prepare(scale, 45, 1);
        QVERIFY(painted(strip, scale, 0).pixelColor(40, 20).alpha() == 0);
        QCOMPARE(loaded.count(), 8);
    }

    void neighboursStandInAndRequestsAreReplaced()
    {
        const EditBench bench;
        TimelineScale scale;
        scale.setFrameCount(EditClip::frames);
        scale.setWidth(100); // one thumbnail for all
        Filmstrip strip;
        strip.setClip(bench.clip());
        QSignalSpy loaded(&strip, &Filmstrip::sigLoaded);
        strip.prepare(scale, 45, 1);
        QTRY_COMPARE_WITH_TIMEOUT(loaded.count(), 1, 10000);
        scale.zoomTo(80, 0);
        QVERIFY(painted(strip, scale, 0).pixelColor(40, 20).alpha() == 255);

        ThumbnailLoader loader;
        QSignalSpy pictures(&loader, &ThumbnailLoader::sigLoaded);
        loader.setSource(bench.clip()->media(), {32, 18});
        QVector<qint64> many(2000, 3);
        loader.request(many);
        loader.request({9, 99});
        const auto isLast = [&] { return !pictures.isEmpty() && pictures.last().at(0) == 99; };
        QTRY_VERIFY_WITH_TIMEOUT(isLast(), 10000);
        QVERIFY(pictures.count() < 10);
        QVERIFY(pictures.last().at(1).value<QImage>().isNull()); // beyond the end
        QCOMPARE(pictures.at(pictures.count() - 2).at(1).value<QImage>().size(), QSize(32, 18));
        zk::media::MediaInfo missing = bench.clip()->media();
        missing.path = QStringLiteral("/no/such/clip.mkv");
        loader.setSource(missing, {32, 18});
        pictures.clear();
        loader.request({0});
        QTRY_COMPARE_WITH_TIMEOUT(pictures.count(), 1, 10000);
        QVERIFY(pictures.first().at(1).value<QImage>().isNull());
        // Destroyed in the middle of work.
        loader.setSource(bench.clip()->media(), {32, 18});
        loader.request(many);
    }

private:
    // What the strip shows of the frame.
    static QImage painted(const Filmstrip &strip, const TimelineScale &scale, qint64 frame)
    {
        QImage image(80, 45, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.translate(-scale.leftOf(frame), 0);
        const double left = scale.leftOf(frame);
        strip.paint(&painter, QRectF(0, 0, scale.width(), 45), scale, left, left + 79);
        return image;
    }
    static QColor averageOf(const QImage &image)
    {
        return image.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixelColor(0, 0);
    }
};

ZK_TEST_MAIN(ZkFilmstripTest)
#include "ZkFilmstripTest.moc"
