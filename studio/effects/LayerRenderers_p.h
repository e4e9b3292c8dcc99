// Not public: the renderers of the layers, one overload per kind.
#pragma once

#include "Scene_p.h"
#include "ZkLayers.h"

namespace zk::effects {

// When a layer is at work: before the object is painted, on the object's own pixels, or painting
// around it.
enum class Stage { Backdrop, Object, Paint };

template<class AnyLayer>
constexpr Stage stageOf = Stage::Paint;
template<>
inline constexpr Stage stageOf<BackdropLayer> = Stage::Backdrop;
template<>
inline constexpr Stage stageOf<ColourLayer> = Stage::Object;
template<>
inline constexpr Stage stageOf<ComicLayer> = Stage::Object;
template<>
inline constexpr Stage stageOf<GlitchLayer> = Stage::Object;

// How far beyond the object's box the layer may paint, in pixels. scale: as in Scene. boxSize: the
// longer side of that box.
double reachOf(const OutlineLayer &layer, double scale, double boxSize);
double reachOf(const SketchLayer &layer, double scale, double boxSize);
double reachOf(const GlowLayer &layer, double scale, double boxSize);
double reachOf(const NeonLayer &layer, double scale, double boxSize);
double reachOf(const ShadowLayer &layer, double scale, double boxSize);
double reachOf(const StickerLayer &layer, double scale, double boxSize);
double reachOf(const EchoLayer &layer, double scale, double boxSize);
double reachOf(const GlitchLayer &layer, double scale, double boxSize);
template<class OtherLayer>
double reachOf(const OtherLayer &, double, double)
{
    return 0;
}

// How far from the contour the layer asks for distances, in pixels; 0: it needs no contour at all.
double contourReachOf(const OutlineLayer &layer, double scale);
double contourReachOf(const SketchLayer &layer, double scale);
double contourReachOf(const NeonLayer &layer, double scale);
double contourReachOf(const StickerLayer &layer, double scale);
template<class OtherLayer>
double contourReachOf(const OtherLayer &, double)
{
    return 0;
}

void paint(const OutlineLayer &layer, const Scene &scene, cv::Mat &canvas);
void paint(const SketchLayer &layer, const Scene &scene, cv::Mat &canvas);
void paint(const GlowLayer &layer, const Scene &scene, cv::Mat &canvas);
void paint(const NeonLayer &layer, const Scene &scene, cv::Mat &canvas);
void paint(const ShadowLayer &layer, const Scene &scene, cv::Mat &canvas);
void paint(const StickerLayer &layer, const Scene &scene, cv::Mat &canvas);
void paint(const EchoLayer &layer, const Scene &scene, cv::Mat &canvas);

void treat(const ColourLayer &layer, const Scene &scene, cv::Mat &object);
void treat(const ComicLayer &layer, const Scene &scene, cv::Mat &object);
void treat(const GlitchLayer &layer, const Scene &scene, cv::Mat &object);

// frame and canvas: the whole frame.
void paintBackdrop(const BackdropLayer &layer, const cv::Mat &frame, double scale, cv::Mat &canvas);

} // namespace zk::effects
