#include "Render_p.h"

#include "LayerRenderers_p.h"
#include "Matte_p.h"
#include "Pixels_p.h"

#include <QtEndian>

#include <algorithm>
#include <memory>
#include <type_traits>

namespace zk::effects {

namespace {

// In a form that compilers turn into vector instructions.
void cutRow(const quint32 *pixels, const uchar *matte, int n, quint32 *to)
{
    for (int x = 0; x < n; ++x) {
        const quint32 pixel = qFromLittleEndian(pixels[x]);
        const auto opacity = quint16((pixel >> 24) & 0xff);
        const auto alpha = quint16(quint16(opacity * quint16(matte[x]) + 127) / 255);
        const quint32 cut = (pixel & 0x00ffffff) | (quint32(alpha) << 24);
        to[x] = qToLittleEndian(alpha == 0 ? 0 : cut);
    }
}

void renderPlain(const RenderJob &job, cv::Mat &result)
{
    forEachRow(job.frame.rows, [&](int y) {
        cutRow(job.frame.ptr<quint32>(y),
               job.matte.ptr<uchar>(y),
               job.frame.cols,
               result.ptr<quint32>(y));
    });
}

struct Needs
{
    double reach = 0; // px that the layers paint beyond the object
    double contour = 0; // px that the contour's distances must hold for; 0: not needed
};

Needs needsOf(const Look &look, double scale, const cv::Rect &box)
{
    Needs needs;
    const double boxSize = std::max(box.width, box.height);
    double treated = 0; // layers on the object's own pixels move what the others start from
    for (const Layer &layer : look.layers) {
        std::visit(
            [&](const auto &kind) {
                const double reach = reachOf(kind, scale, boxSize);
                if (stageOf<std::decay_t<decltype(kind)>> == Stage::Object)
                    treated += reach;
                else
                    needs.reach = std::max(needs.reach, reach);
                needs.contour = std::max(needs.contour, contourReachOf(kind, scale));
            },
            layer.kind);
    }
    needs.reach += treated + 1;
    return needs;
}

// The object's part of the frame with its final alpha. Colours stay where alpha is 0.
cv::Mat objectOf(const cv::Mat &frame, const cv::Mat &alpha)
{
    cv::Mat object(frame.size(), CV_8UC4);
    forEachRow(frame.rows, [&](int y) {
        const Rgba *from = frame.ptr<Rgba>(y);
        const uchar *cover = alpha.ptr<uchar>(y);
        Rgba *to = object.ptr<Rgba>(y);
        for (int x = 0; x < frame.cols; ++x)
            to[x] = Rgba(from[x][0], from[x][1], from[x][2], cover[x]);
    });
    return object;
}

cv::Mat alphaOf(const cv::Mat &frame, const cv::Mat &matte)
{
    cv::Mat alpha(frame.size(), CV_8U);
    forEachRow(frame.rows, [&](int y) {
        const Rgba *from = frame.ptr<Rgba>(y);
        const uchar *cover = matte.ptr<uchar>(y);
        uchar *to = alpha.ptr<uchar>(y);
        for (int x = 0; x < frame.cols; ++x)
            to[x] = multiplied(from[x][3], cover[x]);
    });
    return alpha;
}

void paintBackdrops(const RenderJob &job, const Look &look, cv::Mat &result)
{
    for (const Layer &layer : look.layers) {
        if (const auto *backdrop = std::get_if<BackdropLayer>(&layer.kind))
            paintBackdrop(*backdrop, job.frame, job.scale, result);
    }
}

void treatObject(const Look &look, Scene &scene)
{
    for (const Layer &layer : look.layers) {
        std::visit(
            [&scene](const auto &kind) {
                if constexpr (stageOf<std::decay_t<decltype(kind)>> == Stage::Object)
                    treat(kind, scene, scene.object);
            },
            layer.kind);
    }
}

void paintLayers(const Look &look, Layer::Place place, const Scene &scene, cv::Mat &canvas)
{
    for (const Layer &layer : look.layers) {
        if (layer.place != place)
            continue;
        std::visit(
            [&](const auto &kind) {
                if constexpr (stageOf<std::decay_t<decltype(kind)>> == Stage::Paint)
                    paint(kind, scene, canvas);
            },
            layer.kind);
    }
}

void renderObject(const RenderJob &job, const Look &look, const cv::Mat &matte, cv::Mat &result)
{
    const cv::Rect matteBox = boxOf(matte);
    if (matteBox.empty())
        return;
    const Needs needs = needsOf(look, job.scale, matteBox);
    Scene scene;
    scene.region = regionAround(matteBox, needs.reach, matte.size());
    scene.scale = job.scale;
    scene.time = job.time;
    scene.alpha = alphaOf(job.frame(scene.region), matte(scene.region));
    scene.box = boxOf(scene.alpha);
    if (scene.box.empty())
        return;
    std::unique_ptr<ContourField> contour;
    if (needs.contour > 0) {
        contour =
            std::make_unique<ContourField>(scene.alpha, needs.contour, contourSmoothing(job.scale));
        scene.contour = contour.get();
    }
    scene.object = objectOf(job.frame(scene.region), scene.alpha);
    if (look.matte.decontaminate > 0)
        decontaminate(scene.object, look.matte.decontaminate, job.scale);
    treatObject(look, scene);

    cv::Mat canvas = result(scene.region);
    paintLayers(look, Layer::Place::Below, scene, canvas);
    paintOver(canvas, scene.object);
    paintLayers(look, Layer::Place::Above, scene, canvas);
}

} // namespace

void renderInto(const RenderJob &job, const Look &look, cv::Mat &result)
{
    if (look.layers.isEmpty() && look.matte.isPlain()) {
        renderPlain(job, result);
        return;
    }
    result.setTo(cv::Scalar::all(0));
    paintBackdrops(job, look, result);
    renderObject(job, look, withSettings(job.matte, look.matte, job.scale), result);
}

} // namespace zk::effects
