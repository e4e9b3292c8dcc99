// Not public: changes of colour that are sums of products of the channels.
#pragma once

#include "../Pixels_p.h"

namespace zk::effects {

// From R, G, B in 0..255 to R, G, B. Every step acts on the result of the steps before it.
class ColourMatrix
{
public:
    void saturate(double amount); // 0: grey, 1: as it is
    void brighten(double factor);
    void contrast(double factor); // about the middle grey
    void tint(const QColor &colour, double strength); // multiplies
    void duotone(const QColor &dark, const QColor &light, double strength);

    // Alpha stays; pixels with alpha 0 too.
    void apply(cv::Mat &picture) const;

private:
    void append(const cv::Matx33f &factors, const cv::Vec3f &offset = {});

    cv::Matx33f m_factors = cv::Matx33f::eye();
    cv::Vec3f m_offset;
};

} // namespace zk::effects
