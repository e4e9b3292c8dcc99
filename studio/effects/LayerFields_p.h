// Not public: the fields of every layer with their names in files and their bounds.
//
// One table serves both reading and writing: describe() hands every field to a visitor, which has
// number(), integer(), flag(), colour(), colours() and choice().
#pragma once

#include "ZkLook.h"

namespace zk::effects {

constexpr double maxLength = 400; // px at 1080; wider effects would cost more than they look

inline const char *typeName(const OutlineLayer &)
{
    return "outline";
}
inline const char *typeName(const SketchLayer &)
{
    return "sketch";
}
inline const char *typeName(const GlowLayer &)
{
    return "glow";
}
inline const char *typeName(const NeonLayer &)
{
    return "neon";
}
inline const char *typeName(const ShadowLayer &)
{
    return "shadow";
}
inline const char *typeName(const StickerLayer &)
{
    return "sticker";
}
inline const char *typeName(const EchoLayer &)
{
    return "echo";
}
inline const char *typeName(const BackdropLayer &)
{
    return "backdrop";
}
inline const char *typeName(const ColourLayer &)
{
    return "colour";
}
inline const char *typeName(const ComicLayer &)
{
    return "comic";
}
inline const char *typeName(const GlitchLayer &)
{
    return "glitch";
}

template<class Visitor>
void describe(MatteSettings &matte, Visitor &visit)
{
    visit.number("feather", matte.featherPx, 0, maxLength);
    visit.number("shift", matte.shiftPx, -maxLength, maxLength);
    visit.number("decontaminate", matte.decontaminate, 0, 1);
}

template<class Visitor>
void describe(OutlineLayer &layer, Visitor &visit)
{
    visit.colours("colours", layer.colours);
    visit.choice("gradient", layer.gradient, {"linear", "around"});
    visit.number("angle", layer.angle, -360, 360);
    visit.number("spin", layer.spin, -720, 720);
    visit.number("width", layer.width, 0, maxLength);
    visit.number("offset", layer.offset, -maxLength, maxLength);
    visit.number("softness", layer.softness, 0, maxLength);
    visit.number("roundness", layer.roundness, 0, 100);
    visit.number("dash", layer.dash, 0, maxLength);
    visit.number("gap", layer.gap, 0, maxLength);
    visit.number("march", layer.march, -2000, 2000);
    visit.number("opacity", layer.opacity, 0, 1);
}

template<class Visitor>
void describe(SketchLayer &layer, Visitor &visit)
{
    visit.colour("colour", layer.colour);
    visit.number("width", layer.width, 0, maxLength);
    visit.number("offset", layer.offset, -maxLength, maxLength);
    visit.number("wobble", layer.wobble, 0, 100);
    visit.number("waveLength", layer.waveLength, 4, 2000);
    visit.integer("strokes", layer.strokes, 1, 8);
    visit.number("rate", layer.rate, 0, 60);
    visit.number("opacity", layer.opacity, 0, 1);
}

template<class Visitor>
void describe(GlowLayer &layer, Visitor &visit)
{
    visit.colour("colour", layer.colour);
    visit.number("radius", layer.radius, 0, maxLength);
    visit.number("strength", layer.strength, 0, 4);
    visit.flag("inner", layer.inner);
}

template<class Visitor>
void describe(NeonLayer &layer, Visitor &visit)
{
    visit.colour("core", layer.core);
    visit.colour("halo", layer.halo);
    visit.number("width", layer.width, 0, 100);
    visit.number("offset", layer.offset, -maxLength, maxLength);
    visit.number("radius", layer.radius, 0, maxLength);
    visit.number("strength", layer.strength, 0, 4);
    visit.number("roundness", layer.roundness, 0, 100);
    visit.number("pulse", layer.pulse, 0, 30);
    visit.number("pulseDepth", layer.pulseDepth, 0, 1);
}

template<class Visitor>
void describe(ShadowLayer &layer, Visitor &visit)
{
    visit.colour("colour", layer.colour);
    visit.number("dx", layer.dx, -maxLength, maxLength);
    visit.number("dy", layer.dy, -maxLength, maxLength);
    visit.number("blur", layer.blur, 0, maxLength);
    visit.number("opacity", layer.opacity, 0, 1);
}

template<class Visitor>
void describe(StickerLayer &layer, Visitor &visit)
{
    visit.colour("colour", layer.colour);
    visit.number("width", layer.width, 0, maxLength);
    visit.number("roundness", layer.roundness, 0, 100);
    visit.colour("shadow", layer.shadow);
    visit.number("shadowOffset", layer.shadowOffset, -100, 100);
    visit.number("shadowBlur", layer.shadowBlur, 0, 100);
    visit.number("shadowOpacity", layer.shadowOpacity, 0, 1);
}

template<class Visitor>
void describe(EchoLayer &layer, Visitor &visit)
{
    visit.integer("count", layer.count, 1, 12);
    visit.number("dx", layer.dx, -maxLength, maxLength);
    visit.number("dy", layer.dy, -maxLength, maxLength);
    visit.number("scale", layer.scale, 0.5, 1.5);
    visit.number("opacity", layer.opacity, 0, 1);
    visit.number("fade", layer.fade, 0, 1);
    visit.colour("tint", layer.tint);
    visit.number("tintStrength", layer.tintStrength, 0, 1);
    visit.number("sway", layer.sway, 0, 30);
}

template<class Visitor>
void describe(BackdropLayer &layer, Visitor &visit)
{
    visit.number("saturation", layer.saturation, 0, 3);
    visit.number("brightness", layer.brightness, 0, 3);
    visit.number("blur", layer.blur, 0, 200);
    visit.colour("tint", layer.tint);
    visit.number("tintStrength", layer.tintStrength, 0, 1);
    visit.number("opacity", layer.opacity, 0, 1);
}

template<class Visitor>
void describe(ColourLayer &layer, Visitor &visit)
{
    visit.number("saturation", layer.saturation, 0, 3);
    visit.number("brightness", layer.brightness, 0, 3);
    visit.number("contrast", layer.contrast, 0, 3);
    visit.colour("tint", layer.tint);
    visit.number("tintStrength", layer.tintStrength, 0, 1);
    visit.colour("dark", layer.dark);
    visit.colour("light", layer.light);
    visit.number("duotone", layer.duotone, 0, 1);
}

template<class Visitor>
void describe(ComicLayer &layer, Visitor &visit)
{
    visit.integer("levels", layer.levels, 2, 32);
    visit.number("saturation", layer.saturation, 0, 3);
    visit.colour("inkColour", layer.inkColour);
    visit.number("ink", layer.ink, 0, 1);
    visit.number("inkWidth", layer.inkWidth, 0.5, 20);
    visit.number("dotSize", layer.dotSize, 0, 100);
    visit.number("dots", layer.dots, 0, 1);
}

template<class Visitor>
void describe(GlitchLayer &layer, Visitor &visit)
{
    visit.number("shift", layer.shift, 0, 200);
    visit.number("jitter", layer.jitter, 0, maxLength);
    visit.number("sliceHeight", layer.sliceHeight, 4, 1000);
    visit.number("chance", layer.chance, 0, 1);
    visit.number("scanlines", layer.scanlines, 0, 1);
    visit.number("rate", layer.rate, 0, 60);
}

} // namespace zk::effects
