// Not public: the cross-section of a line that follows the contour.
#pragma once

#include "../Pixels_p.h"

namespace zk::effects {

// In pixels from the contour. Each side fades over `softness`, half of it beyond the side.
struct LineBand
{
    float inner = 0;
    float outer = 0;
    float softness = 1;

    float coverage(float distance) const
    {
        const float reach = softness / 2;
        if (distance >= outer + reach || distance <= inner - reach)
            return 0;
        const float outside = clamped((outer - distance) / softness + 0.5F);
        const float inside = clamped((distance - inner) / softness + 0.5F);
        // A line that is thinner than a pixel covers only a part of it: the product would be too
        // little, the sum of both minus one is exact.
        return clamped(outside + inside - 1);
    }
};

} // namespace zk::effects
