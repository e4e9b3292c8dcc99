#include "ZkTestMain.h"

#include "ZkYuvPicture.h"

#include <random>

using namespace zk::media;

namespace {

// The value of a plane of colour at a pixel: between its four nearest places, in the middle of theirs.
double colourAt(const AVFrame &picture, int plane, int x, int y)
{
    const auto at = [&](int column, int row) {
        const int right = (picture.width - 1) / 2;
        const int bottom = (picture.height - 1) / 2;
        return picture.data[plane][qBound(0, row, bottom) * picture.linesize[plane]
                                   + qBound(0, column, right)];
    };
    const int besideX = x / 2 + (x % 2 == 0 ? -1 : 1);
    const int besideY = y / 2 + (y % 2 == 0 ? -1 : 1);
    return (9 * at(x / 2, y / 2) + 3 * at(besideX, y / 2) + 3 * at(x / 2, besideY)
            + at(besideX, besideY))
        / 16.0
        - 128;
}

FramePtr noise(const QSize &size)
{
    FramePtr picture(av_frame_alloc());
    picture->format = AV_PIX_FMT_YUV420P;
    picture->width = size.width();
    picture->height = size.height();
    av_frame_get_buffer(picture.get(), 0);
    std::mt19937 random(3);
    for (int plane = 0; plane < 3; ++plane) {
        const int rows = plane == 0 ? size.height() : (size.height() + 1) / 2;
        for (int i = 0; i < rows * picture->linesize[plane]; ++i)
            picture->data[plane][i] = uchar(random());
    }
    return picture;
}

} // namespace

class ZkYuvPictureTest : public QObject
{
    Q_OBJECT

private slots:
    // Of BT.709, with Kr = 0.2126 and Kb = 0.0722.
    void isExactToOneLevel_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("isFullRange");
        QTest::newRow("limited") << QSize(64, 36) << false;
        QTest::newRow("full") << QSize(64, 36) << true;
        QTest::newRow("odd") << QSize(37, 23) << false;
        QTest::newRow("a pixel") << QSize(1, 1) << false;
    }

    void isExactToOneLevel()
    {
        QFETCH(QSize, size);
        QFETCH(bool, isFullRange);
        const FramePtr picture = noise(size);
        QImage image(size, QImage::Format_RGBA8888);
        convertYuv(*picture, {sws_getCoefficients(SWS_CS_ITU709), isFullRange}, &image);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const int luma = picture->data[0][y * picture->linesize[0] + x];
                const double white = isFullRange ? luma : (luma - 16) * 255 / 219.0;
                const double scale = isFullRange ? 1 : 255 / 224.0;
                const double u = colourAt(*picture, 1, x, y) * scale;
                const double v = colourAt(*picture, 2, x, y) * scale;
                const double exact[] = {
                    white + 1.5748 * v, white - 0.18732 * u - 0.46812 * v, white + 1.8556 * u, 255};
                const uchar *pixel = image.constScanLine(y) + 4 * x;
                for (int channel = 0; channel < 4; ++channel)
                    QVERIFY(qAbs(pixel[channel] - qBound(0.0, exact[channel], 255.0)) <= 1.2);
            }
        }
    }
};

ZK_TEST_CORE_MAIN(ZkYuvPictureTest)
#include "ZkYuvPictureTest.moc"
