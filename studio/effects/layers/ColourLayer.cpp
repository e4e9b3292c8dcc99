#include "../LayerRenderers_p.h"
#include "ColourMatrix_p.h"

namespace zk::effects {

void treat(const ColourLayer &layer, const Scene &, cv::Mat &object)
{
    ColourMatrix colours;
    colours.saturate(layer.saturation);
    colours.brighten(layer.brightness);
    colours.contrast(layer.contrast);
    colours.tint(layer.tint, layer.tintStrength);
    colours.duotone(layer.dark, layer.light, layer.duotone);
    colours.apply(object);
}

} // namespace zk::effects
