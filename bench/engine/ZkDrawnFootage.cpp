#include "ZkDrawnFootage.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace zk::bench {

namespace {

constexpr int room = 160; // pixels of the landscape on every side of the frame
constexpr double shutter = 0.5; // of the time between two frames
constexpr int exposures = 3; // that a blurred frame is the mean of
constexpr int kinds = 5;

// The colours of a photograph are greyer than those of a dice.
Palette mutedPalette(cv::RNG &random)
{
    Palette palette = anyPalette(random);
    for (cv::Scalar &color : palette) {
        const double gray = (color[0] + color[1] + color[2]) / 3.0;
        color = color * 0.35 + cv::Scalar::all(gray) * 0.65;
    }
    return palette;
}

double degrees(double angle)
{
    return angle * CV_PI / 180.0;
}

} // namespace

DrawnFootage::Actor DrawnFootage::anyActor(const Palette &palette, cv::RNG &random) const
{
    const bool fast = m_kind == Kind::Fast;
    Actor actor;
    actor.texture = zk::bench::texture(drawnSize, palette, random.uniform(40.0, 90.0), random);
    actor.body = {random.uniform(30, 75), random.uniform(22, 50)};
    actor.start = anyWay(random, 0.0, 60.0);
    actor.motion = anyWay(random, fast ? 4.0 : 0.5, fast ? 7.0 : 3.0);
    actor.start -= actor.motion * (0.5 * count);
    actor.turn = random.uniform(-1.0, 1.0);
    actor.growth = random.uniform(-0.008, 0.012);
    actor.bend = random.uniform(0.0, 5.0);
    const int limbs = m_kind == Kind::Limbs || fast ? random.uniform(3, 6) : 0;
    for (int i = 0; i < limbs; ++i) {
        actor.limbs.push_back({random.uniform(0.0, 360.0),
                               random.uniform(1.3, 2.0) * actor.body.width,
                               fast ? random.uniform(3, 9) : random.uniform(9, 24),
                               random.uniform(5.0, 35.0),
                               random.uniform(0.0, 6.0)});
    }
    return actor;
}

DrawnFootage::DrawnFootage(int number)
    : m_kind(Kind(number % kinds))
    , m_number(number)
{
    cv::RNG random(std::uint64_t(number) * 104729 + 71);
    random.next();
    const Palette around = mutedPalette(random);
    Palette own = mutedPalette(random);
    if (m_kind == Kind::Alike)
        own[2] = around[0];
    const cv::Size wide = withRoom(room);
    m_landscape = texture(wide, around, random.uniform(60.0, 200.0), random);
    m_pan = anyWay(random, 0.0, 3.0);
    m_shake = random.uniform(0.0, 2.0);
    m_light = random.uniform(0.0, 0.15);
    m_postShare = cv::Mat::zeros(wide, CV_32F);
    m_postColor = texture(wide, mutedPalette(random), 50.0, random);
    for (int i = 0; m_kind == Kind::Posts && i < 3; ++i) {
        const int x = random.uniform(room + 100, wide.width - room - 100);
        const cv::Rect post(x, 0, random.uniform(15, 60), wide.height);
        m_postShare(post).setTo(1.0f);
    }
    if (m_kind == Kind::Twin)
        m_actors.push_back(anyActor(own, random));
    m_actors.push_back(anyActor(own, random));
    m_grain = random.next();
}

std::string DrawnFootage::name() const
{
    static const char *const names[] = {"limbs", "posts", "twin", "alike", "fast"};
    return std::string("drawn ") + names[int(m_kind)] + " " + std::to_string(m_number);
}

// From the landscape to the frame.
cv::Matx23d DrawnFootage::camera(double time) const
{
    const cv::Vec2d shake(std::sin(1.7 * time), std::cos(2.3 * time));
    const cv::Vec2d shift = m_pan * (time - 0.5 * count) + shake * m_shake;
    return {1, 0, shift[0] - room, 0, 1, shift[1] - room};
}

// In the actor's own coordinates, its middle in the middle.
cv::Mat DrawnFootage::outlineOf(const Actor &actor, double time) const
{
    cv::Mat outline = cv::Mat::zeros(drawnSize, CV_8U);
    const cv::Point middle(drawnSize.width / 2, drawnSize.height / 2);
    cv::ellipse(outline, middle, actor.body, 0, 0, 360, 255, cv::FILLED, cv::LINE_AA);
    for (const Limb &limb : actor.limbs) {
        const double angle = degrees(limb.angle + limb.swing * std::sin(0.4 * time + limb.phase));
        const cv::Point end(middle.x + cvRound(limb.length * std::cos(angle)),
                            middle.y + cvRound(limb.length * std::sin(angle)));
        cv::line(outline, middle, end, 255, limb.width, cv::LINE_AA);
    }
    return outline;
}

DrawnFootage::Layer DrawnFootage::layerOf(const Actor &actor, double time) const
{
    const double angle = degrees(actor.turn * time);
    const double size = 1.0 / std::pow(1.0 + actor.growth, time);
    const cv::Vec2d place = actor.start + actor.motion * time;
    const cv::Matx22d turn(std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle));
    const cv::Vec2d middle(0.5 * drawnSize.width, 0.5 * drawnSize.height);
    cv::Mat map(drawnSize, CV_32FC2);
    map.forEach<cv::Vec2f>([&](cv::Vec2f &from, const int *at) {
        const cv::Vec2d own = turn * (cv::Vec2d(at[1], at[0]) - middle - place) * size;
        const cv::Vec2d bent(std::sin(0.05 * own[1] + 0.3 * time),
                             std::sin(0.04 * own[0] + 0.23 * time));
        from = own + bent * actor.bend + middle;
    });
    Layer layer;
    cv::remap(actor.texture, layer.color, map, {}, cv::INTER_LINEAR, cv::BORDER_REFLECT);
    cv::remap(outlineOf(actor, time), layer.share, map, {}, cv::INTER_LINEAR);
    cv::GaussianBlur(layer.share, layer.share, {3, 3}, 0.0);
    layer.share = asShare(layer.share);
    return layer;
}

cv::Mat DrawnFootage::posts(double time) const
{
    cv::Mat share;
    cv::warpAffine(m_postShare, share, camera(time), drawnSize);
    return share;
}

cv::Mat DrawnFootage::scene(double time) const
{
    cv::Mat result, post;
    const cv::Matx23d view = camera(time);
    cv::warpAffine(m_landscape, result, view, drawnSize, cv::INTER_LINEAR, cv::BORDER_REFLECT);
    for (const Actor &actor : m_actors) {
        const Layer layer = layerOf(actor, time);
        result = mixed(result, layer.color, layer.share);
    }
    if (m_kind != Kind::Posts)
        return result;
    cv::warpAffine(m_postColor, post, view, drawnSize);
    return mixed(result, post, posts(time));
}

cv::Mat DrawnFootage::frame(int index) const
{
    cv::Mat sum = cv::Mat::zeros(drawnSize, CV_32FC3);
    for (int i = 0; i < exposures; ++i)
        sum += scene(index + shutter * (double(i) / (exposures - 1) - 0.5));
    const double light = (1.0 + m_light * std::sin(0.3 * index)) / exposures;
    return photograph(sum * light, m_grain + std::uint64_t(index));
}

cv::Mat DrawnFootage::mask(int index) const
{
    const Layer object = layerOf(m_actors.back(), index);
    cv::Mat result;
    cv::Mat(object.share.mul(1.0 - posts(index))).convertTo(result, CV_8U, 255.0);
    return result;
}

} // namespace zk::bench
