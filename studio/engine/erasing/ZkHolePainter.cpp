#include "ZkHolePainter.h"

#include "../ZkMaskTools.h"
#include "ZkDiffusion.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace zk::engine {

namespace {

constexpr int ringWidth = 3; // working pixels around the fresh pixels that tell the light
constexpr float mostLight = 25.0f; // grey levels; more is no light but another object

// Catmull-Rom weights of the four pixels around a place.
std::array<float, 4> cubicWeights(float t)
{
    const float s = 1.0f - t;
    return {-0.5f * t * s * s,
            1.0f + t * t * (1.5f * t - 2.5f),
            1.0f + s * s * (1.5f * s - 2.5f),
            -0.5f * s * t * t};
}

// The four rows are mixed first: that is one run over twelve neighbouring bytes.
cv::Vec3f mixedFrom(const std::array<const uchar *, 4> &rows,
                    const std::array<float, 4> &horizontal,
                    const std::array<float, 4> &vertical)
{
    float mixed[12];
    for (int i = 0; i < 12; ++i)
        mixed[i] = vertical[0] * float(rows[0][i]) + vertical[1] * float(rows[1][i])
            + vertical[2] * float(rows[2][i]) + vertical[3] * float(rows[3][i]);
    cv::Vec3f sum;
    for (int c = 0; c < 3; ++c)
        sum[c] = horizontal[0] * mixed[c] + horizontal[1] * mixed[3 + c]
            + horizontal[2] * mixed[6 + c] + horizontal[3] * mixed[9 + c];
    return sum;
}

cv::Vec3f sampled(const cv::Mat &picture, float x, float y)
{
    const int left = cvFloor(x), top = cvFloor(y);
    const auto horizontal = cubicWeights(x - float(left));
    const auto vertical = cubicWeights(y - float(top));
    std::array<const uchar *, 4> rows;
    for (int j = 0; j < 4; ++j)
        rows[std::size_t(j)] = picture.ptr(std::clamp(top - 1 + j, 0, picture.rows - 1));
    if (left >= 1 && left + 2 < picture.cols) {
        for (const uchar *&row : rows)
            row += 3 * (left - 1);
        return mixedFrom(rows, horizontal, vertical);
    }
    std::array<std::array<uchar, 12>, 4> repeated; // the border's pixels go on outside
    for (std::size_t j = 0; j < 4; ++j) {
        for (int i = 0; i < 4; ++i) {
            const int column = std::clamp(left - 1 + i, 0, picture.cols - 1);
            std::copy_n(rows[j] + 3 * column, 3, repeated[j].data() + 3 * i);
        }
        rows[j] = repeated[j].data();
    }
    return mixedFrom(rows, horizontal, vertical);
}

float weightOf(const PixelSource &source)
{
    return 1.0f / (source.cost * source.cost);
}

class Painter
{
public:
    Painter(const std::vector<EraseFrame> &frames,
            int slot,
            const cv::Mat &wanted,
            const std::function<bool()> &stopped)
        : m_frames(frames)
        , m_frame(frames[std::size_t(slot)])
        , m_box(m_frame.work.box)
        , m_wanted(wanted)
        , m_stopped(stopped)
        , m_scale(double(m_frame.full.picture.cols) / m_frame.hole.cols,
                  double(m_frame.full.picture.rows) / m_frame.hole.rows)
    { }

    HolePaint paint(PlateSize size)
    {
        HolePaint result;
        findFresh();
        result.fresh = m_fresh;
        matchLight();
        result.work = cv::Mat(m_box.size(), CV_8UC3);
        for (int y = 0; y < m_box.height && !m_stopped(); ++y) {
            for (int x = 0; x < m_box.width; ++x) {
                if (m_fresh.at<uchar>(y, x)) {
                    const cv::Vec3f color = workColor({x, y}, {0, 0}) + m_light.at<cv::Vec3f>(y, x);
                    result.work.at<cv::Vec3b>(y, x) = cv::Vec3b(color);
                }
            }
        }
        if (size == PlateSize::Full)
            paintFull(&result);
        return result;
    }

private:
    bool isScaled() const { return m_frame.full.picture.size() != m_frame.hole.size(); }
    const PixelSource &earlier(const cv::Point &at) const
    {
        return m_frame.earlier.at(at.x + m_box.x, at.y + m_box.y);
    }
    const PixelSource &later(const cv::Point &at) const
    {
        return m_frame.later.at(at.x + m_box.x, at.y + m_box.y);
    }
    void findFresh()
    {
        m_fresh = m_wanted.clone();
        m_fresh.forEach<uchar>([this](uchar &fresh, const int *at) {
            const cv::Point place(at[1], at[0]);
            if (!earlier(place).isKnown() && !later(place).isKnown())
                fresh = 0;
        });
    }
    // The mean of the two sources, the nearer one counting more; fetch takes a source's content.
    template<typename Fetch>
    cv::Vec3f mixed(const cv::Point &at, Fetch fetch) const
    {
        const PixelSource &a = earlier(at);
        const PixelSource &b = later(at);
        if (!a.isKnown())
            return fetch(b);
        if (!b.isKnown())
            return fetch(a);
        const float weightA = weightOf(a), weightB = weightOf(b);
        const float share = weightA / (weightA + weightB);
        if (share > 0.95f)
            return fetch(a);
        if (share < 0.05f)
            return fetch(b);
        return share * fetch(a) + (1.0f - share) * fetch(b);
    }
    cv::Vec3f workColor(const cv::Point &at, const cv::Point &offset) const
    {
        return mixed(at, [&](const PixelSource &source) {
            const cv::Mat &picture = m_frames[std::size_t(source.frame)].work.picture;
            return sampled(picture, source.x + float(offset.x), source.y + float(offset.y));
        });
    }

    // The membrane: around the fresh pixels the difference between what is there and what the sources
    // have there, spread inwards.
    void matchLight()
    {
        cv::Mat ring = grownMask(m_fresh, ringWidth);
        ring.setTo(0, m_wanted);
        m_light = cv::Mat::zeros(m_box.size(), CV_32FC3);
        cv::Mat weight = cv::Mat::zeros(m_box.size(), CV_32F);
        for (int y = 0; y < m_box.height && !m_stopped(); ++y) {
            for (int x = 0; x < m_box.width; ++x) {
                if (ring.at<uchar>(y, x) && measureLight({x, y}))
                    weight.at<float>(y, x) = 1.0f;
            }
        }
        cv::Mat state = cv::Mat::zeros(m_box.size(), CV_8U);
        state.setTo(DiffusionKnown, weight > 0.0f);
        state.setTo(DiffusionUnknown, m_fresh);
        cv::blur(m_light, m_light, {7, 7}, {-1, -1}, cv::BORDER_CONSTANT);
        cv::blur(weight, weight, {7, 7}, {-1, -1}, cv::BORDER_CONSTANT);
        m_light.forEach<cv::Vec3f>([&](cv::Vec3f &light, const int *at) {
            light *= 1.0f / std::max(weight.at<float>(at[0], at[1]), 1e-3f);
        });
        diffuse(&m_light, state);
    }
    bool measureLight(const cv::Point &at)
    {
        const cv::Rect inside({0, 0}, m_box.size());
        for (int reach = 1; reach <= ringWidth; ++reach) {
            for (const cv::Point &step :
                 {cv::Point(1, 0), {0, 1}, {-1, 0}, {0, -1}, {1, 1}, {-1, -1}, {1, -1}, {-1, 1}}) {
                const cv::Point near = at + reach * step;
                if (!inside.contains(near) || !m_fresh.at<uchar>(near))
                    continue;
                const cv::Vec3f own = m_frame.work.picture.at<cv::Vec3b>(at + m_box.tl());
                const cv::Vec3f light = own - workColor(near, at - near);
                const bool likely = std::abs(light[0]) < mostLight && std::abs(light[1]) < mostLight
                    && std::abs(light[2]) < mostLight;
                if (likely)
                    m_light.at<cv::Vec3f>(at) = light;
                return likely;
            }
        }
        return false;
    }

    void paintFull(HolePaint *paint) const
    {
        const Plate &plate = m_frame.full;
        if (!isScaled()) {
            const cv::Rect part(plate.box.tl() - m_box.tl(), plate.box.size());
            paint->full = paint->work(part);
            paint->fullFresh = m_fresh(part);
            return;
        }
        paint->full.create(plate.box.size(), CV_8UC3);
        paint->fullFresh = cv::Mat::zeros(plate.box.size(), CV_8U);
        for (int y = 0; y < plate.box.height && !m_stopped(); ++y) {
            for (int x = 0; x < plate.box.width; ++x) {
                if (plate.hole.at<uchar>(y, x))
                    paintFullPixel({x, y}, paint);
            }
        }
    }
    void paintFullPixel(const cv::Point &at, HolePaint *paint) const
    {
        const cv::Point2d work((at.x + m_frame.full.box.x + 0.5) / m_scale.x - 0.5 - m_box.x,
                               (at.y + m_frame.full.box.y + 0.5) / m_scale.y - 0.5 - m_box.y);
        const cv::Point pixel(std::clamp(cvRound(work.x), 0, m_box.width - 1),
                              std::clamp(cvRound(work.y), 0, m_box.height - 1));
        if (!m_fresh.at<uchar>(pixel))
            return;
        const cv::Point2d offset = work - cv::Point2d(pixel);
        const cv::Vec3f color = mixed(pixel, [&](const PixelSource &source) {
            const double x = (double(source.x) + offset.x + 0.5) * m_scale.x - 0.5;
            const double y = (double(source.y) + offset.y + 0.5) * m_scale.y - 0.5;
            const cv::Mat &picture = m_frames[std::size_t(source.frame)].full.picture;
            return sampled(picture, float(x), float(y));
        });
        paint->full.at<cv::Vec3b>(at) = cv::Vec3b(color + lightAt(work));
        paint->fullFresh.at<uchar>(at) = 255;
    }
    cv::Vec3f lightAt(const cv::Point2d &at) const
    {
        const int x = std::clamp(cvFloor(at.x), 0, std::max(0, m_box.width - 2));
        const int y = std::clamp(cvFloor(at.y), 0, std::max(0, m_box.height - 2));
        const float u = std::clamp(float(at.x - x), 0.0f, 1.0f);
        const float v = std::clamp(float(at.y - y), 0.0f, 1.0f);
        const int right = std::min(x + 1, m_box.width - 1);
        const int below = std::min(y + 1, m_box.height - 1);
        cv::Vec3f sum(0.0f, 0.0f, 0.0f);
        float total = 0.0f;
        const auto add = [&](int column, int row, float weight) {
            if (m_fresh.at<uchar>(row, column)) {
                sum += weight * m_light.at<cv::Vec3f>(row, column);
                total += weight;
            }
        };
        add(x, y, (1.0f - u) * (1.0f - v) + 1e-4f);
        add(right, y, u * (1.0f - v) + 1e-4f);
        add(x, below, (1.0f - u) * v + 1e-4f);
        add(right, below, u * v + 1e-4f);
        return total > 0.0f ? sum * (1.0f / total) : sum;
    }

    const std::vector<EraseFrame> &m_frames;
    const EraseFrame &m_frame;
    cv::Rect m_box;
    cv::Mat m_wanted;
    const std::function<bool()> &m_stopped;
    cv::Point2d m_scale;
    cv::Mat m_fresh;
    cv::Mat m_light; // CV_32FC3 over the box
};

} // namespace

HolePaint paintHole(const std::vector<EraseFrame> &frames,
                    int slot,
                    const cv::Mat &wanted,
                    PlateSize size,
                    const std::function<bool()> &stopped)
{
    return Painter(frames, slot, wanted, stopped).paint(size);
}

void applyPaint(EraseFrame *frame, const HolePaint &paint)
{
    paint.work.copyTo(frame->work.picture(frame->work.box), paint.fresh);
    if (!paint.full.empty())
        paint.full.copyTo(frame->full.picture(frame->full.box), paint.fullFresh);
}

} // namespace zk::engine
