#include "ZkYuvPicture.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <vector>

namespace zk::media {

namespace {

// The loops here are written so that compilers turn them into vector instructions for 16 bit lanes:
// no branches, and no wider numbers in between.

constexpr int FactorBits = 13;
// Of numbers before they are multiplied, and of products.
constexpr int Bits = 7;
constexpr int ProductBits = Bits + FactorBits - 16;
// Half a level, and half of what the products together lose.
constexpr int Rounding = (1 << (ProductBits - 1)) + 1;

constexpr int BlackOfLimitedRange = 16;
constexpr double LevelsOfLimitedLuma = 219;
constexpr double LevelsOfLimitedColour = 224;

qint16 factorOf(double value)
{
    return qint16(std::lround(value * (1 << FactorBits)));
}

inline qint16 product(qint16 a, qint16 b)
{
    return qint16((int(a) * int(b)) >> 16);
}

inline qint16 level(qint16 value)
{
    const auto whole = qint16(value >> ProductBits);
    return whole < 0 ? 0 : whole > 255 ? 255 : whole;
}

// Three parts of the row that is nearer and one of the other one, about 0, times 4.
void blendRows(const uchar *nearer, const uchar *other, int n, qint16 *to)
{
    for (int i = 0; i < n; ++i)
        to[i] = qint16(3 * nearer[i] + other[i] - 4 * 128);
}

// The same from left to right; from[-1] and from[n] are read, too.
void spread(const qint16 *from, int n, qint16 *to)
{
    constexpr int scale = (1 << Bits) / 16;
    for (int i = 0; i < n; ++i) {
        to[2 * i] = qint16((3 * from[i] + from[i - 1]) * scale);
        to[2 * i + 1] = qint16((3 * from[i] + from[i + 1]) * scale);
    }
}

void colourRow(
    const uchar *y, const qint16 *u, const qint16 *v, int n, const YuvColours &colours, quint32 *to)
{
    const YuvColours c = colours;
    for (int x = 0; x < n; ++x) {
        const auto luma =
            qint16(product(qint16((y[x] - c.black) * (1 << Bits)), c.luma) + Rounding);
        const qint16 red = level(qint16(luma + product(v[x], c.redOfV)));
        const qint16 green =
            level(qint16(luma - product(u[x], c.greenOfU) - product(v[x], c.greenOfV)));
        const qint16 blue = level(qint16(luma + product(u[x], c.blueOfU)));
        const auto low = quint16(red | (green << 8));
        const auto high = quint16(blue | 0xff00);
        to[x] = qToLittleEndian(quint32(low) | (quint32(high) << 16));
    }
}

// One of the planes of colour, brought to every pixel of a row.
class ColourPlane
{
public:
    ColourPlane(const AVFrame &picture, int plane)
        : m_rows(picture.data[plane])
        , m_stride(picture.linesize[plane])
        , m_width((picture.width + 1) / 2)
        , m_height((picture.height + 1) / 2)
        , m_blended(size_t(m_width) + 2)
        , m_row(size_t(m_width) * 2)
    { }

    const qint16 *row(int y)
    {
        const int nearer = y / 2;
        const int other = std::clamp(y % 2 == 0 ? nearer - 1 : nearer + 1, 0, m_height - 1);
        qint16 *blended = m_blended.data() + 1;
        blendRows(rowAt(nearer), rowAt(other), m_width, blended);
        blended[-1] = blended[0];
        blended[m_width] = blended[m_width - 1];
        spread(blended, m_width, m_row.data());
        return m_row.data();
    }

private:
    const uchar *rowAt(int row) const { return m_rows + qptrdiff(row) * m_stride; }

    const uchar *m_rows;
    int m_stride;
    int m_width;
    int m_height;
    std::vector<qint16> m_blended;
    std::vector<qint16> m_row;
};

} // namespace

YuvColours::YuvColours(const int *coefficients, bool isFullRange)
    : black(isFullRange ? 0 : BlackOfLimitedRange)
    , luma(factorOf(isFullRange ? 1 : 255 / LevelsOfLimitedLuma))
{
    // They are for the limited range.
    const double share = (isFullRange ? LevelsOfLimitedColour / 255 : 1) / (1 << 16);
    redOfV = factorOf(coefficients[0] * share);
    blueOfU = factorOf(coefficients[1] * share);
    greenOfU = factorOf(coefficients[2] * share);
    greenOfV = factorOf(coefficients[3] * share);
}

bool isPlainYuv(const AVFrame &picture)
{
    return picture.format == AV_PIX_FMT_YUV420P || picture.format == AV_PIX_FMT_YUVJ420P;
}

void convertYuv(const AVFrame &picture, const YuvColours &colours, QImage *image)
{
    ColourPlane u(picture, 1);
    ColourPlane v(picture, 2);
    uchar *to = image->bits();
    for (int y = 0; y < picture.height; ++y) {
        colourRow(picture.data[0] + qptrdiff(y) * picture.linesize[0],
                  u.row(y),
                  v.row(y),
                  picture.width,
                  colours,
                  reinterpret_cast<quint32 *>(to + qptrdiff(y) * image->bytesPerLine()));
    }
}

} // namespace zk::media
