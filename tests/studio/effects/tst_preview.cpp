// The player's preview modes, pixel by pixel.
#include "TestScene.h"
#include "ZkPreview.h"
#include "ZkTestMain.h"

using namespace zk::effects;
using namespace zk::effects::test;

class TestPreview : public QObject
{
    Q_OBJECT

private slots:
    void pixelValues_data();
    void pixelValues();
    void looksShowOutsideTheInteractiveMode();
    void framesWithoutMatteAreShown();
};

Q_DECLARE_METATYPE(zk::effects::PreviewType)

namespace {

const QSize size(64, 33);

// Columns 0..15: no object, 16..31: half, from 32 on: all.
RenderInput stripes()
{
    RenderInput input;
    input.frame = QImage(size, QImage::Format_RGBA8888);
    input.frame.fill(QColor(100, 200, 50));
    input.matte = filledMatte(size, 0);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 16; x < size.width(); ++x)
            input.matte.scanLine(y)[x] = x < 32 ? 128 : 255;
    }
    return input;
}

} // namespace

void TestPreview::pixelValues_data()
{
    QTest::addColumn<PreviewType>("type");
    QTest::addColumn<bool>("invert");
    QTest::addColumn<QRgb>("none");
    QTest::addColumn<QRgb>("half");
    QTest::addColumn<QRgb>("full");
    const QRgb frame = qRgb(100, 200, 50);
    const QRgb overlaid = qRgb(162, 120, 30); // 0.4 of pure red over the frame
    QTest::newRow("interactive") << PreviewType::Interactive << false << frame << qRgb(131, 160, 40)
                                 << overlaid;
    QTest::newRow("interactive, inverted")
        << PreviewType::Interactive << true << overlaid << qRgb(131, 160, 40) << frame;
    QTest::newRow("result") << PreviewType::Result << false << qRgb(0, 0, 0) << qRgb(50, 100, 25)
                            << frame;
    QTest::newRow("result, inverted")
        << PreviewType::Result << true << frame << qRgb(50, 100, 25) << qRgb(0, 0, 0);
    QTest::newRow("alpha") << PreviewType::Alpha << false << qRgb(0, 0, 0) << qRgb(128, 128, 128)
                           << qRgb(255, 255, 255);
    // On the first square, which is white.
    QTest::newRow("grid") << PreviewType::Grid << false << qRgb(255, 255, 255)
                          << qRgb(177, 227, 152) << frame;
}

void TestPreview::pixelValues()
{
    QFETCH(PreviewType, type);
    QFETCH(bool, invert);
    QFETCH(QRgb, none);
    QFETCH(QRgb, half);
    QFETCH(QRgb, full);
    PreviewSettings settings;
    settings.type = type;
    settings.invert = invert;
    settings.overlayColour = QColor(255, 0, 0, 7); // its alpha must not matter
    settings.overlayAlpha = 102;
    const QImage picture = composePreview(stripes(), nullptr, settings);
    QCOMPARE(picture.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(picture.size(), size);
    const auto isClose = [&picture](int x, QRgb expected) {
        const QRgb pixel = picture.pixel(x, 0);
        return qAlpha(pixel) == 255 && qAbs(qRed(pixel) - qRed(expected)) <= 1
            && qAbs(qGreen(pixel) - qGreen(expected)) <= 1
            && qAbs(qBlue(pixel) - qBlue(expected)) <= 1;
    };
    QVERIFY2(isClose(1, none), qPrintable(QColor(picture.pixel(1, 0)).name()));
    QVERIFY2(isClose(17, half), qPrintable(QColor(picture.pixel(17, 0)).name()));
    QVERIFY2(isClose(40, full), qPrintable(QColor(picture.pixel(40, 0)).name()));
    if (type == PreviewType::Grid)
        QCOMPARE(picture.pixel(5, 1), qRgb(0xcc, 0xcc, 0xcc));
}

void TestPreview::looksShowOutsideTheInteractiveMode()
{
    const RenderInput input = inputOf(discMatte({120, 90}, {60, 45}, 20));
    OutlineLayer outline;
    outline.colours = {QColor(0, 0, 255)};
    outline.width = 72; // 6 px of this frame
    const Look look = lookOf({{outline, Layer::Place::Below}});
    PreviewSettings settings;
    QCOMPARE(composePreview(input, &look, settings), composePreview(input, nullptr, settings));
    settings.type = PreviewType::Result;
    QCOMPARE(composePreview(input, &look, settings).pixel(83, 45), qRgb(0, 0, 255));
    settings.type = PreviewType::Alpha;
    QCOMPARE(composePreview(input, &look, settings).pixel(83, 45), qRgb(255, 255, 255));
    QCOMPARE(composePreview(input, nullptr, settings).pixel(83, 45), qRgb(0, 0, 0));
}

void TestPreview::framesWithoutMatteAreShown()
{
    RenderInput input = stripes();
    input.matte = QImage();
    PreviewSettings settings;
    const QImage frame = input.frame.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(composePreview(input, nullptr, settings), frame);
    settings.type = PreviewType::Result;
    QCOMPARE(composePreview(input, nullptr, settings).pixel(40, 9), qRgb(0, 0, 0));
    settings.invert = true;
    QCOMPARE(composePreview(input, nullptr, settings), frame);

    input.matte = filledMatte({3, 3}, 255);
    QVERIFY(composePreview(input, nullptr, settings).isNull());
    QVERIFY(composePreview({}, nullptr, settings).isNull());
}

ZK_TEST_CORE_MAIN(TestPreview)
#include "tst_preview.moc"
