// The plain cutout, what is done to the matte, and putting a cutout on something.
#include "TestScene.h"
#include "ZkTestMain.h"

#include <numeric>

using namespace zk::effects;
using namespace zk::effects::test;

namespace {

constexpr int height = 1080; // so that lengths are pixels

// Object up to the column `edge`.
QImage halfMatte(double edge)
{
    return drawnMatte({200, height},
                      [edge](QPainter &painter) { painter.drawRect(QRectF(0, 0, edge, height)); });
}

// The column at which the row crosses this value, between pixel centres.
double crossing(const QImage &matte, double value)
{
    const uchar *row = matte.constScanLine(height / 2);
    for (int x = 0; x + 1 < matte.width(); ++x) {
        if (row[x] > value && row[x + 1] <= value)
            return x + 0.5 + (row[x] - value) / (row[x] - row[x + 1]);
    }
    return -1;
}

} // namespace

class TestCutout : public QObject
{
    Q_OBJECT

private slots:
    void plainAlphaIsExact()
    {
        QImage frame(QSize(256, 7), QImage::Format_RGBA8888);
        QImage matte(frame.size(), QImage::Format_Grayscale8);
        const int alphas[] = {255, 254, 200, 128, 77, 1, 0};
        for (int y = 0; y < frame.height(); ++y) {
            for (int x = 0; x < frame.width(); ++x) {
                frame.setPixelColor(x, y, QColor(x, 255 - x, 13 * y, alphas[y]));
                matte.scanLine(y)[x] = static_cast<uchar>(x);
            }
        }
        const QImage cutout = renderCutout({frame, matte, 0, 25});
        QCOMPARE(cutout.format(), QImage::Format_RGBA8888);
        for (int y = 0; y < frame.height(); ++y) {
            for (int x = 0; x < frame.width(); ++x) {
                const int alpha = qRound(alphas[y] * x / 255.0);
                const QRgb expected = alpha ? qRgba(x, 255 - x, 13 * y, alpha) : 0;
                QCOMPARE(cutout.pixel(x, y), expected);
            }
        }
    }

    void wrongInputGivesNull()
    {
        const QImage frame = texturedFrame({8, 6});
        QVERIFY(renderCutout({frame, filledMatte({8, 5}, 255), 0, 25}).isNull());
        QVERIFY(renderCutout({}).isNull());
        QVERIFY(applyMatteSettings({}, {}).isNull());
        QVERIFY(compositeOver({}, QColor(Qt::red)).isNull());
        QVERIFY(compositeOver(frame, QImage()).isNull());
        // Other formats are no fault.
        const QImage matte = filledMatte(frame.size(), 255);
        const QImage converted = renderCutout({frame.convertToFormat(QImage::Format_RGB32),
                                               matte.convertToFormat(QImage::Format_RGB32),
                                               0,
                                               25});
        QCOMPARE(converted, renderCutout({frame, matte, 0, 25}));
    }

    void featherHasTheAskedWidth()
    {
        for (const int scale : {1, 2}) { // of a frame 1080 lines high
            for (const double feather : {4.0, 12.0, 60.0}) {
                MatteSettings settings;
                settings.featherPx = feather;
                const QImage soft = applyMatteSettings(halfMatte(100), settings, height * scale);
                const double width = crossing(soft, 25.5) - crossing(soft, 229.5);
                const double expected = feather * scale;
                QVERIFY2(qAbs(width - expected) < 0.5 + 0.06 * expected,
                         qPrintable(QString::number(width)));
                QVERIFY(qAbs(crossing(soft, 127.5) - 100) < 0.2);
            }
        }
    }

    void shiftMovesTheEdge()
    {
        for (const double shift : {7.0, 0.4, -5.5}) {
            MatteSettings settings;
            settings.shiftPx = shift;
            const QImage half = applyMatteSettings(halfMatte(80.25), settings);
            QVERIFY(qAbs(crossing(half, 127.5) - 80.25 - shift) < 0.2);
            // The frame's border is no edge of the object: nothing shrinks away from it.
            QCOMPARE(int(half.constScanLine(0)[10]), 255);
            QCOMPARE(int(half.constScanLine(height - 1)[0]), 255);

            const QImage disc =
                applyMatteSettings(discMatte({120, 120}, {60, 60}, 30), settings, height);
            double area = 0;
            for (int y = 0; y < disc.height(); ++y)
                area += std::accumulate(disc.constScanLine(y), disc.constScanLine(y) + 120, 0.0);
            const double radius = std::sqrt(area / 255 / 3.14159265);
            QVERIFY2(qAbs(radius - 30 - shift) < 0.25, qPrintable(QString::number(radius)));
            // Softness stays as it was.
            MatteSettings soften;
            soften.featherPx = 20;
            const QImage soft = applyMatteSettings(halfMatte(100), soften);
            const QImage moved = applyMatteSettings(soft, settings);
            const double before = crossing(soft, 25.5) - crossing(soft, 229.5);
            QVERIFY(qAbs(before - crossing(moved, 25.5) + crossing(moved, 229.5)) < 0.5);
        }
    }

    void takesTheBackgroundOutOfTheEdge()
    {
        // A red object in front of green, mixed as a lens mixes them.
        MatteSettings soften;
        soften.featherPx = 6;
        const QImage matte =
            applyMatteSettings(discMatte({160, 160}, {80, 80}, 40), soften, height);
        QImage frame(matte.size(), QImage::Format_RGBA8888);
        for (int y = 0; y < frame.height(); ++y) {
            for (int x = 0; x < frame.width(); ++x) {
                const int cover = matte.constScanLine(y)[x];
                frame.setPixelColor(x, y, QColor(cover * 220 / 255, (255 - cover) * 200 / 255, 0));
            }
        }
        const auto greenOf = [&](double strength) {
            Look look;
            look.matte.decontaminate = strength;
            const QImage cutout = renderCutout({frame, matte, 0, 25}, look);
            qint64 green = 0;
            for (int y = 0; y < cutout.height(); ++y) {
                for (int x = 0; x < cutout.width(); ++x)
                    green += qGreen(cutout.pixel(x, y)) * alphaAt(cutout, x, y);
            }
            const QColor inside = cutout.pixelColor(80, 80);
            return inside == QColor(220, 0, 0) ? green : -1;
        };
        QVERIFY(greenOf(0) > 0 && greenOf(1) >= 0);
        QVERIFY(greenOf(1) * 2 < greenOf(0));
    }

    void compositesOverColourAndPicture()
    {
        QImage cutout(QSize(4, 2), QImage::Format_RGBA8888);
        cutout.fill(Qt::transparent);
        cutout.setPixelColor(1, 0, QColor(200, 100, 0, 255));
        cutout.setPixelColor(2, 0, QColor(255, 255, 255, 51));
        const QImage flat = compositeOver(cutout, QColor(10, 20, 30));
        QCOMPARE(flat.pixel(0, 0), qRgb(10, 20, 30));
        QCOMPARE(flat.pixel(1, 0), qRgb(200, 100, 0));
        QCOMPARE(flat.pixel(2, 0), qRgb(59, 67, 75));
        QCOMPARE(alphaAt(compositeOver(cutout, QColor(0, 0, 0, 128)), 0, 1), 128);

        // Three times as high as wide: of a 4 x 2 cutout it fills the width and loses top and bottom.
        QImage tall(QSize(20, 60), QImage::Format_RGB32);
        tall.fill(Qt::red);
        QPainter(&tall).fillRect(0, 20, 20, 20, Qt::blue);
        const QImage covered = compositeOver(cutout, tall);
        QCOMPARE(covered.size(), cutout.size());
        QCOMPARE(covered.pixel(0, 0), QColor(Qt::blue).rgb());
        QCOMPARE(covered.pixel(3, 1), QColor(Qt::blue).rgb());
        QCOMPARE(covered.pixel(1, 0), qRgb(200, 100, 0));
    }
};

ZK_TEST_CORE_MAIN(TestCutout)
#include "tst_cutout.moc"
