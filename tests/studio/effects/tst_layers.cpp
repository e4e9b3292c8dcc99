// What the layers paint: geometry, colours, and what must hold for every one of them.
#include "TestScene.h"
#include "ZkLookCatalogue.h"
#include "ZkTestMain.h"

#include <cmath>
#include <thread>

using namespace zk::effects;
using namespace zk::effects::test;

namespace {

constexpr int height = 1080; // so that lengths are pixels

Layer below(const Layer::Kind &kind)
{
    return {kind, Layer::Place::Below};
}

Layer above(const Layer::Kind &kind)
{
    return {kind, Layer::Place::Above};
}

OutlineLayer blueOutline(double width, double offset = 0)
{
    OutlineLayer outline;
    outline.colours = {QColor(0, 0, 255)};
    outline.width = width;
    outline.offset = offset;
    return outline;
}

bool isBlue(QRgb pixel)
{
    return qAlpha(pixel) == 255 && (pixel & 0xffffff) == 0x0000ff;
}

// How far right of the middle the alpha falls through one half.
double rightEdge(const QImage &image, int middleX, int y)
{
    for (int x = image.width() - 2; x > middleX; --x) {
        const double inside = alphaAt(image, x, y);
        const double outside = alphaAt(image, x + 1, y);
        if (inside >= 127.5)
            return x + (inside - 127.5) / (inside - outside) - middleX;
    }
    return -1;
}

} // namespace

class TestLayers : public QObject
{
    Q_OBJECT

private slots:
    void outlineScalesWithTheHeight()
    {
        for (const int frameHeight : {540, 1080, 2160}) {
            for (const double offset : {0.0, 20.0}) {
                const double width = 7.3;
                const double scale = frameHeight / 1080.0;
                const int middle = frameHeight / 2;
                const RenderInput input =
                    inputOf(discMatte({300, frameHeight}, {150.5, middle + 0.5}, 80.25));
                const QImage cutout =
                    renderCutout(input, lookOf({below(blueOutline(width, offset))}));

                const double expected = 80.25 + (offset + width) * scale;
                const double edge = rightEdge(cutout, 150, middle);
                QVERIFY2(qAbs(edge - expected) < 0.35, qPrintable(QString::number(edge)));
                QVERIFY(isBlue(cutout.pixel(150 + int(expected - width * scale / 2), middle)));
                QCOMPARE(cutout.pixel(150, middle), input.frame.pixel(150, middle));
                // The space between the object and a line at a distance is empty.
                if (offset > 4)
                    QCOMPARE(alphaAt(cutout, 150 + 80 + int(offset * scale / 2), middle), 0);
                // Round: the same in every direction, to a fraction of a pixel.
                const int diagonal = int((expected - 1.5) * 0.70710678);
                QCOMPARE(alphaAt(cutout, 150 + diagonal, middle - diagonal), 255);
                const int beyond = int(std::ceil((expected + 1.5) * 0.70710678));
                QCOMPARE(alphaAt(cutout, 150 - beyond, middle + beyond), 0);
            }
        }
    }

    void dashesAreEvenAndMove()
    {
        OutlineLayer outline = blueOutline(8, 10);
        outline.dash = 30;
        outline.gap = 20;
        outline.march = 50;
        const QImage matte = discMatte({300, height}, {150.5, 540.5}, 90);
        const QImage cutout = renderCutout(inputOf(matte), lookOf({below(outline)}));
        int changes = 0;
        int dashed = 0;
        constexpr int steps = 3600;
        bool wasDash = alphaAt(cutout, 150 + 104, 540) > 127;
        for (int i = 1; i <= steps; ++i) {
            const double angle = i * 2 * 3.14159265358979 / steps;
            const bool isDash = alphaAt(cutout,
                                        qRound(150 + 104 * std::cos(angle)),
                                        qRound(540 + 104 * std::sin(angle)))
                > 127;
            changes += isDash != wasDash ? 1 : 0;
            dashed += isDash ? 1 : 0;
            wasDash = isDash;
        }
        QCOMPARE(changes, 2 * 13); // 653 px around, 50 px each
        QVERIFY(qAbs(dashed / double(steps) - 0.6) < 0.04);
        QVERIFY(renderCutout(inputOf(matte, 12), lookOf({below(outline)})) != cutout);
    }

    void placeDecidesWhatIsCovered()
    {
        const RenderInput input = inputOf(discMatte({300, height}, {150.5, 540.5}, 80));
        const OutlineLayer inside = blueOutline(10, -20);
        QCOMPARE(renderCutout(input, lookOf({below(inside)})), renderCutout(input));
        const QImage cutout = renderCutout(input, lookOf({above(inside)}));
        QVERIFY(isBlue(cutout.pixel(150 + 65, 540)));
        QCOMPARE(cutout.pixel(150 + 75, 540), input.frame.pixel(150 + 75, 540));

        // Of two layers the later one lies above.
        OutlineLayer wide = blueOutline(20);
        wide.colours = {Qt::red};
        const QImage both = renderCutout(input, lookOf({below(wide), below(blueOutline(10))}));
        QVERIFY(isBlue(both.pixel(150 + 85, 540)));
        QCOMPARE(both.pixel(150 + 95, 540), qRgb(255, 0, 0));
    }

    void gradientsRunWhereTheyShould()
    {
        const RenderInput input = inputOf(discMatte({300, height}, {150.5, 540.5}, 80));
        OutlineLayer outline = blueOutline(20);
        outline.colours = {Qt::red, Qt::blue};
        const QImage down = renderCutout(input, lookOf({below(outline)}));
        QCOMPARE(down.pixel(150, 540 - 90), qRgb(255, 0, 0));
        QCOMPARE(down.pixel(150, 540 + 90), qRgb(0, 0, 255));
        QVERIFY(qAbs(qRed(down.pixel(150 + 90, 540)) - 128) < 4);

        outline.gradient = OutlineLayer::Gradient::Around;
        outline.angle = 0;
        outline.spin = 180;
        const QImage around = renderCutout(input, lookOf({below(outline)}));
        QVERIFY(qRed(around.pixel(150 + 90, 540)) > 250);
        QVERIFY(qBlue(around.pixel(150 - 90, 540)) > 250);
        const QImage turned = renderCutout(inputOf(input.matte, 25), lookOf({below(outline)}));
        QVERIFY(qBlue(turned.pixel(150 + 90, 540)) > 250);
    }

    void glowFadesOutwardsOrInwards()
    {
        const RenderInput input = inputOf(discMatte({400, height}, {200.5, 540.5}, 80));
        GlowLayer glow;
        glow.colour = QColor(0, 255, 0);
        glow.radius = 60;
        const QImage outer = renderCutout(input, lookOf({below(glow)}));
        int last = 256;
        for (int x = 200 + 82; x < 200 + 80 + 40; x += 4) {
            const QRgb pixel = outer.pixel(x, 540);
            QVERIFY(qAlpha(pixel) < last && qAlpha(pixel) > 0);
            QCOMPARE(qGreen(pixel), 255);
            last = qAlpha(pixel);
        }
        QCOMPARE(alphaAt(outer, 200 + 80 + 100, 540), 0);

        glow.inner = true;
        const QImage inner = renderCutout(input, lookOf({above(glow)}));
        QVERIFY(qGreen(inner.pixel(200 + 77, 540)) > 200);
        QCOMPARE(alphaAt(inner, 200 + 84, 540), 0);
    }

    void shadowFallsWhereItShould()
    {
        const RenderInput input = inputOf(discMatte({400, height}, {200.5, 540.5}, 60));
        ShadowLayer shadow;
        shadow.colour = QColor(10, 20, 30);
        shadow.dx = 40;
        shadow.dy = -30;
        shadow.blur = 0;
        shadow.opacity = 0.5;
        const QImage hard = renderCutout(input, lookOf({below(shadow)}));
        QCOMPARE(hard.pixel(200 + 40 + 50, 540 - 30), qRgba(10, 20, 30, 128));
        QCOMPARE(alphaAt(hard, 200 - 62, 540 + 10), 0);
        QCOMPARE(alphaAt(hard, 200 + 40 + 64, 540 - 30), 0);

        shadow.blur = 40;
        const int beyond =
            alphaAt(renderCutout(input, lookOf({below(shadow)})), 200 + 40 + 64, 540 - 30);
        QVERIFY(beyond > 5 && beyond < 64);
    }

    void coloursChangeTheObjectAlone()
    {
        const RenderInput input = inputOf(discMatte({100, 90}, {50, 45}, 30));
        ColourLayer grey;
        grey.saturation = 0;
        const QRgb pixel = renderCutout(input, lookOf({below(grey)})).pixel(50, 45);
        QVERIFY(qRed(pixel) == qGreen(pixel) && qRed(pixel) == qBlue(pixel));
        const QImage plain = renderCutout(input);
        for (const Layer &layer : {below(grey), below(ComicLayer())}) {
            const QImage treated = renderCutout(input, lookOf({layer}));
            QVERIFY(treated != plain);
            for (int x = 0; x < 100; ++x)
                QCOMPARE(alphaAt(treated, x, 45), alphaAt(plain, x, 45));
        }
    }

    void backdropStaysBehind()
    {
        const RenderInput input = inputOf(discMatte({100, 90}, {50, 45}, 20));
        BackdropLayer backdrop;
        backdrop.saturation = 0;
        backdrop.brightness = 0.5;
        backdrop.opacity = 0.5;
        const QImage cutout = renderCutout(input, lookOf({above(backdrop)}));
        QCOMPARE(cutout.pixel(50, 45), input.frame.pixel(50, 45));
        const QRgb corner = cutout.pixel(2, 3);
        QCOMPARE(qAlpha(corner), 128);
        QCOMPARE(qRed(corner), qBlue(corner));
        QVERIFY(qRed(corner) < qGray(input.frame.pixel(2, 3)));
    }

    void echoesFade()
    {
        const RenderInput input = inputOf(discMatte({400, height}, {300, 540}, 30));
        EchoLayer echo;
        echo.count = 2;
        echo.dx = -80;
        echo.opacity = 0.5;
        echo.fade = 0.5;
        const QImage cutout = renderCutout(input, lookOf({below(echo)}));
        QCOMPARE(cutout.pixel(220, 540), (input.frame.pixel(300, 540) & 0xffffff) | 0x80000000U);
        QCOMPARE(alphaAt(cutout, 140, 540), 64);
        QCOMPARE(alphaAt(cutout, 60, 540), 0);
    }

    // What must hold for every look: it shows, the rest of the frame does not matter, no size or matte
    // breaks it, and it is the same in several threads at once.
    void everyLook()
    {
        const RenderInput input = inputOf(discMatte({320, 270}, {140, 130}, 45), 7);
        const RenderInput wider = inputOf(discMatte({457, 270}, {140, 130}, 45), 7);
        const QImage plain = renderCutout(input);
        const QVector<Look> looks = LookCatalogue::builtin();
        QVector<QImage> alone;
        for (const Look &look : looks) {
            const QImage cutout = renderCutout(input, look);
            QVERIFY2(largestDifference(cutout, plain) > 40, qPrintable(look.slug));
            // A backdrop shows the whole frame; its blur may look beyond the cut.
            QCOMPARE(renderCutout(wider, look).copy(0, 0, 280, 270), cutout.copy(0, 0, 280, 270));
            for (const QSize &size : {QSize(1, 1), QSize(7, 5), QSize(2, 61), QSize(101, 33)}) {
                for (const int value : {0, 1, 127, 255})
                    QCOMPARE(renderCutout(inputOf(filledMatte(size, value)), look).size(), size);
            }
            alone.append(cutout);
        }
        std::vector<QVector<QImage>> results(3);
        std::vector<std::thread> threads;
        for (QVector<QImage> &result : results) {
            threads.emplace_back([&result, &input, &looks] {
                for (const Look &look : looks)
                    result.append(renderCutout(input, look));
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        for (const QVector<QImage> &result : results)
            QVERIFY(result == alone);
    }
    void linesDoNotRunAlongTheFrame()
    {
        const RenderInput input = inputOf(filledMatte({320, 270}, 255));
        SketchLayer sketch;
        sketch.offset = -40;
        NeonLayer neon;
        neon.offset = -30;
        const QImage plain = renderCutout(input);
        for (const Layer &layer : {above(blueOutline(20, -30)), above(sketch), above(neon)})
            QCOMPARE(largestDifference(renderCutout(input, lookOf({layer})), plain), 0);
    }

    // A bar through the whole frame looks the same up to the border, wherever the frame is cut.
    void objectsGoOnBeyondTheFrame()
    {
        const auto bar = [](int width) {
            return drawnMatte({width, 270}, [](QPainter &painter) {
                painter.drawRect(QRectF(-10, 120.3, 2000, 25));
            });
        };
        const QStringList slugs {
            "solid-border", "double-border", "glow", "neon", "drop-shadow", "sticker"};
        int found = 0;
        for (Look look : LookCatalogue::builtin()) {
            if (!slugs.contains(look.slug))
                continue;
            ++found;
            look.matte.decontaminate = 0; // that looks at colours, which the cut does take away
            // Shadows fall from beyond the left border too.
            const QImage narrow = renderCutout(inputOf(bar(220)), look);
            const QImage wide = renderCutout(inputOf(bar(420)), look);
            QVERIFY2(largestDifference(narrow, wide.copy(0, 0, 220, 270)) <= 1,
                     qPrintable(look.slug));
            for (int y = 0; y < 270; ++y)
                QVERIFY(qAbs(alphaAt(narrow, 219, y) - alphaAt(narrow, 110, y)) <= 1);
            const RenderInput none = inputOf(filledMatte({64, 48}, 0));
            QCOMPARE(largestDifference(renderCutout(none, look), renderCutout(none)), 0);
        }
        QCOMPARE(found, slugs.size());
    }
};

ZK_TEST_CORE_MAIN(TestLayers)
#include "tst_layers.moc"
