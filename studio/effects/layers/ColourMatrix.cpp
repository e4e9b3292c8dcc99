#include "ColourMatrix_p.h"

namespace zk::effects {

namespace {

// What the channels add to the brightness that is seen (BT.709).
const cv::Vec3f &lumaWeights()
{
    static const cv::Vec3f weights(0.2126F, 0.7152F, 0.0722F);
    return weights;
}

cv::Vec3f vectorOf(const QColor &colour)
{
    return {static_cast<float>(colour.red()),
            static_cast<float>(colour.green()),
            static_cast<float>(colour.blue())};
}

} // namespace

void ColourMatrix::append(const cv::Matx33f &factors, const cv::Vec3f &offset)
{
    m_factors = factors * m_factors;
    m_offset = factors * m_offset + offset;
}

void ColourMatrix::saturate(double amount)
{
    const float kept = static_cast<float>(amount);
    cv::Matx33f factors = cv::Matx33f::eye() * kept;
    for (int to = 0; to < 3; ++to) {
        for (int from = 0; from < 3; ++from)
            factors(to, from) += (1 - kept) * lumaWeights()[from];
    }
    append(factors);
}

void ColourMatrix::brighten(double factor)
{
    append(cv::Matx33f::eye() * static_cast<float>(factor));
}

void ColourMatrix::contrast(double factor)
{
    const float offset = static_cast<float>(127.5 * (1 - factor));
    append(cv::Matx33f::eye() * static_cast<float>(factor), cv::Vec3f::all(offset));
}

void ColourMatrix::tint(const QColor &colour, double strength)
{
    const float kept = static_cast<float>(1 - strength);
    const cv::Vec3f factors =
        cv::Vec3f::all(kept) + vectorOf(colour) * static_cast<float>(strength / 255);
    append(cv::Matx33f::diag(factors));
}

void ColourMatrix::duotone(const QColor &dark, const QColor &light, double strength)
{
    const float amount = static_cast<float>(strength);
    const cv::Vec3f step = (vectorOf(light) - vectorOf(dark)) * (amount / 255);
    cv::Matx33f factors = cv::Matx33f::eye() * (1 - amount);
    for (int to = 0; to < 3; ++to) {
        for (int from = 0; from < 3; ++from)
            factors(to, from) += step[to] * lumaWeights()[from];
    }
    append(factors, vectorOf(dark) * amount);
}

void ColourMatrix::apply(cv::Mat &picture) const
{
    const cv::Matx33f f = m_factors;
    const cv::Vec3f o = m_offset;
    forEachRow(picture.rows, [&](int y) {
        Rgba *row = picture.ptr<Rgba>(y);
        for (int x = 0; x < picture.cols; ++x) {
            Rgba &pixel = row[x];
            if (!pixel[3])
                continue;
            const float r = pixel[0];
            const float g = pixel[1];
            const float b = pixel[2];
            pixel[0] = toByte(f(0, 0) * r + f(0, 1) * g + f(0, 2) * b + o[0]);
            pixel[1] = toByte(f(1, 0) * r + f(1, 1) * g + f(1, 2) * b + o[1]);
            pixel[2] = toByte(f(2, 0) * r + f(2, 1) * g + f(2, 2) * b + o[2]);
        }
    });
}

} // namespace zk::effects
