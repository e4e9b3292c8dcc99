#include "ZkDrawnScene.h"

#include "../engine/ZkDrawnTextures.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace zk::bench {

namespace {

constexpr int room = 40; // pixels on every side of the landscape, for the pan

cv::Matx23d moveBy(const cv::Vec2d &shift, double degrees)
{
    const cv::Point2f middle(drawnSize.width * 0.5f, drawnSize.height * 0.5f);
    cv::Matx23d matrix = cv::getRotationMatrix2D(middle, degrees, 1.0);
    matrix(0, 2) += shift[0];
    matrix(1, 2) += shift[1];
    return matrix;
}

} // namespace

DrawnScene::DrawnScene(ObjectKind kind, std::uint64_t seed)
{
    cv::RNG random(seed * 7919 + 17);
    random.next();
    const Palette around = anyPalette(random);
    Palette own = anyPalette(random);
    if (kind == ObjectKind::Alike)
        own[2] = around[0];
    m_landscape = texture(withRoom(room), around, 160.0, random);
    m_object = texture(drawnSize, own, 70.0, random);
    m_shape = shapeOf(kind, random);
    m_pan = anyWay(random, 0.0, 3.0);
    m_motion = anyWay(random, 1.0, 5.0);
    m_turn = random.uniform(-1.0, 1.0);
    m_grain = random.next();
}

cv::Mat DrawnScene::shapeOf(ObjectKind kind, cv::RNG &random) const
{
    cv::Mat shape = cv::Mat::zeros(drawnSize, CV_8U);
    const cv::Point middle(drawnSize.width / 2, drawnSize.height / 2);
    const int length = random.uniform(40, 100), width = random.uniform(25, 60);
    cv::ellipse(shape,
                middle,
                {length, width},
                random.uniform(0.0, 180.0),
                0,
                360,
                255,
                cv::FILLED,
                cv::LINE_AA);
    const int limbs = kind == ObjectKind::Limbs ? random.uniform(3, 6) : 0;
    for (int i = 0; i < limbs; ++i) {
        const cv::Vec2d way = anyWay(random, 1.1, 1.7) * double(length);
        const cv::Point end(middle.x + cvRound(way[0]), middle.y + cvRound(way[1]));
        cv::line(shape, middle, end, 255, random.uniform(5, 22), cv::LINE_AA);
    }
    return shape;
}

cv::Mat DrawnScene::mask(int index) const
{
    cv::Mat result;
    cv::warpAffine(m_shape, result, moveBy(m_motion * index, m_turn * index), drawnSize);
    cv::GaussianBlur(result, result, {3, 3}, 0.0);
    return result;
}

cv::Mat DrawnScene::frame(int index) const
{
    cv::Mat behind, object;
    const cv::Matx23d pan(1, 0, m_pan[0] * index - room, 0, 1, m_pan[1] * index - room);
    cv::warpAffine(m_landscape, behind, pan, drawnSize, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    cv::warpAffine(m_object, object, moveBy(m_motion * index, m_turn * index), drawnSize);
    const cv::Mat seen = mixed(behind, object, asShare(mask(index)));
    return photograph(seen, m_grain + std::uint64_t(index + 100));
}

} // namespace zk::bench
