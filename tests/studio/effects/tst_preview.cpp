// The player's preview modes, pixel by pixel.
#include "TestScene.h"
#include "ZkPreview.h"
#include "ZkTestMain.h"

using namespace zk::effects;
using namespace zk::effects::test;

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

class TestPreview : public QObject
{
    Q_OBJECT

private slots:
    void pixelValues()
    {
        using Type = PreviewType;
        const QRgb frame = qRgb(100, 200, 50);
        const QRgb black = qRgb(0, 0, 0);
        const QRgb white = qRgb(255, 255, 255);
        const QRgb dimmed = qRgb(50, 100, 25);
        const QRgb red = qRgb(162, 120, 30); // 0.4 of pure red over the frame
        const QRgb reddish = qRgb(131, 160, 40);
        const struct
        {
            Type type;
            bool invert;
            QVector<QRgb> pixels; // of none, half and all of the object
        } rows[] = {{Type::Interactive, false, {frame, reddish, red}},
                    {Type::Interactive, true, {red, reddish, frame}},
                    {Type::Result, false, {black, dimmed, frame}},
                    {Type::Result, true, {frame, dimmed, black}},
                    {Type::Alpha, false, {black, qRgb(128, 128, 128), white}},
                    // On the first square, which is white.
                    {Type::Grid, false, {white, qRgb(177, 227, 152), frame}}};
        for (const auto &row : rows) {
            PreviewSettings settings;
            settings.type = row.type;
            settings.invert = row.invert;
            settings.overlayColour = QColor(255, 0, 0, 7); // its alpha must not matter
            settings.overlayAlpha = 102;
            const QImage picture = composePreview(stripes(), nullptr, settings);
            QCOMPARE(picture.format(), QImage::Format_ARGB32_Premultiplied);
            QCOMPARE(picture.size(), size);
            for (int i = 0; i < row.pixels.size(); ++i) {
                const QRgb is = picture.pixel(1 + 16 * i, 0);
                const QRgb expected = row.pixels.at(i);
                QVERIFY2(qAlpha(is) == 255 && qAbs(qRed(is) - qRed(expected)) <= 1
                             && qAbs(qGreen(is) - qGreen(expected)) <= 1
                             && qAbs(qBlue(is) - qBlue(expected)) <= 1,
                         qPrintable(QStringLiteral("type %1: %2 instead of %3")
                                        .arg(int(row.type))
                                        .arg(QColor(is).name(), QColor(expected).name())));
            }
            if (row.type == Type::Grid)
                QCOMPARE(picture.pixel(5, 1), qRgb(0xcc, 0xcc, 0xcc));
        }
    }

    void looksShowOutsideTheInteractiveMode()
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

    void framesWithoutMatteAreShown()
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
};

ZK_TEST_CORE_MAIN(TestPreview)
#include "tst_preview.moc"
