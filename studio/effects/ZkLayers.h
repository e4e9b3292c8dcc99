// The parameters of the layers that a look is made of; one struct per renderer.
//
// Lengths are pixels of a frame that is 1080 high and scale with the frame's height. Angles are
// degrees, clockwise, 0 to the right. Opacities and strengths are 0..1 unless a comment says more.
// Rates are per second of the clip's own time, so a rendered frame depends on its index alone.
#pragma once

#include <QColor>
#include <QVector>

#include <variant>

namespace zk::effects {

// A line along the object's contour: plain, dashed, soft, or in a gradient. Two of them make a
// double line.
struct OutlineLayer
{
    enum class Gradient {
        Linear, // across the object's bounding box, along `angle`
        Around // around the centre of the box, beginning at `angle`
    };
    QVector<QColor> colours {Qt::white}; // one: plain; more: a gradient
    Gradient gradient = Gradient::Linear;
    double angle = 90;
    double spin = 0; // degrees per second that the gradient turns
    double width = 12;
    double offset = 0; // from the contour to the line's inner side; negative: inside the object
    double softness = 0; // over which the sides fade
    double roundness = 0; // rounds the corners of the line
    double dash = 0; // length of a dash and of the space after it, along the contour;
    double gap = 0; // the line is solid when either is 0
    double march = 0; // how far the dashes move per second
    double opacity = 1;
};

// A line as if drawn by hand, drawn anew `rate` times per second.
struct SketchLayer
{
    QColor colour = Qt::white;
    double width = 5;
    double offset = 6;
    double wobble = 6; // how far the line strays
    double waveLength = 90; // along the contour, from bend to bend
    int strokes = 2; // lines over each other
    double rate = 8;
    double opacity = 1;
};

// Light around the object, or from its edge inwards.
struct GlowLayer
{
    QColor colour = Qt::white;
    double radius = 40;
    double strength = 1; // 0..4; above 1 the light stays full for a part of the radius
    bool inner = false;
};

// A bright tube along the contour with a coloured halo.
struct NeonLayer
{
    QColor core = Qt::white;
    QColor halo = QColor(0x2d, 0xe2, 0xff);
    double width = 6;
    double offset = 8;
    double radius = 46; // of the halo
    double strength = 1; // 0..4
    double roundness = 4; // as of OutlineLayer
    double pulse = 0; // beats per second; 0: steady
    double pulseDepth = 0.5; // how much darker it is between two beats
};

struct ShadowLayer
{
    QColor colour = Qt::black;
    double dx = 14;
    double dy = 18;
    double blur = 24; // 0: a hard edge
    double opacity = 0.55;
};

// The thick rounded border of a sticker, with a thin shadow.
struct StickerLayer
{
    QColor colour = Qt::white;
    double width = 22;
    double roundness = 10;
    QColor shadow = Qt::black;
    double shadowOffset = 6; // downwards
    double shadowBlur = 12;
    double shadowOpacity = 0.45;
};

// Fainter and fainter copies of the object behind it.
struct EchoLayer
{
    int count = 3;
    double dx = -46; // from a copy to the next
    double dy = 0;
    double scale = 1; // from a copy to the next, about the centre of the object
    double opacity = 0.55; // of the first copy
    double fade = 0.6; // from a copy to the next
    QColor tint = Qt::white;
    double tintStrength = 0;
    double sway = 0; // full swings of the copies per second; 0: they stand still
};

// The picture itself stays behind everything else, with other colours. Ignores the layer's place.
struct BackdropLayer
{
    double saturation = 1; // 0: grey
    double brightness = 1;
    double blur = 0;
    QColor tint = Qt::black;
    double tintStrength = 0;
    double opacity = 1;
};

// Other colours for the object. Ignores the layer's place.
struct ColourLayer
{
    double saturation = 1;
    double brightness = 1;
    double contrast = 1;
    QColor tint = Qt::white; // multiplied in
    double tintStrength = 0;
    QColor dark = Qt::black; // the two ends of a duotone
    QColor light = Qt::white;
    double duotone = 0; // how much of the duotone
};

// Flat colours, ink along the edges and a halftone screen. Ignores the layer's place.
struct ComicLayer
{
    int levels = 6;
    double saturation = 1.35;
    QColor inkColour = QColor(0x14, 0x12, 0x1a);
    double ink = 1;
    double inkWidth = 3;
    double dotSize = 11; // from dot to dot; 0: no screen
    double dots = 0.5;
};

// Torn slices and split colour channels, different `rate` times per second. Ignores the place.
struct GlitchLayer
{
    double shift = 12; // between the channels
    double jitter = 60; // how far a slice moves at most
    double sliceHeight = 46; // on average
    double chance = 0.35; // for a slice to move
    double scanlines = 0.15; // how much darker every second line is
    double rate = 12;
};

struct Layer
{
    enum class Place { Below, Above }; // the object
    using Kind = std::variant<OutlineLayer,
                              SketchLayer,
                              GlowLayer,
                              NeonLayer,
                              ShadowLayer,
                              StickerLayer,
                              EchoLayer,
                              BackdropLayer,
                              ColourLayer,
                              ComicLayer,
                              GlitchLayer>;
    Kind kind;
    Place place = Place::Below;
};

} // namespace zk::effects
