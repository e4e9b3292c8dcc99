#include "ZkDiffusion.h"

#include <vector>

namespace zk::engine {

namespace {

constexpr int sweeps = 6; // pairs of relaxation sweeps on each level

template<int N>
struct Level
{
    cv::Mat_<cv::Vec<float, N>> values;
    cv::Mat_<uchar> state;
};

template<int N>
Level<N> halved(const Level<N> &fine)
{
    const cv::Size size((fine.state.cols + 1) / 2, (fine.state.rows + 1) / 2);
    Level<N> coarse {cv::Mat_<cv::Vec<float, N>>::zeros(size), cv::Mat_<uchar>::zeros(size)};
    cv::Mat_<uchar> count = cv::Mat_<uchar>::zeros(size);
    for (int y = 0; y < fine.state.rows; ++y) {
        for (int x = 0; x < fine.state.cols; ++x) {
            uchar &state = coarse.state(y / 2, x / 2);
            state = std::max(state, fine.state(y, x));
            if (fine.state(y, x) == DiffusionKnown) {
                coarse.values(y / 2, x / 2) += fine.values(y, x);
                ++count(y / 2, x / 2);
            }
        }
    }
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            if (count(y, x) > 1)
                coarse.values(y, x) *= 1.0f / float(count(y, x));
        }
    }
    return coarse;
}

template<int N>
void relax(Level<N> &level, const cv::Point &at)
{
    cv::Vec<float, N> sum = cv::Vec<float, N>::all(0.0f);
    int count = 0;
    const auto add = [&](int y, int x) {
        if (level.state(y, x) != DiffusionOutside) {
            sum += level.values(y, x);
            ++count;
        }
    };
    if (at.y > 0)
        add(at.y - 1, at.x);
    if (at.y + 1 < level.state.rows)
        add(at.y + 1, at.x);
    if (at.x > 0)
        add(at.y, at.x - 1);
    if (at.x + 1 < level.state.cols)
        add(at.y, at.x + 1);
    if (count > 0)
        level.values(at) = sum * (1.0f / float(count));
}

template<int N>
void solve(Level<N> &level)
{
    std::vector<cv::Point> unknown;
    for (int y = 0; y < level.state.rows; ++y) {
        for (int x = 0; x < level.state.cols; ++x) {
            if (level.state(y, x) == DiffusionUnknown)
                unknown.emplace_back(x, y);
        }
    }
    if (unknown.empty())
        return;
    for (const cv::Point &at : unknown)
        level.values(at) = cv::Vec<float, N>::all(0.0f);
    if (level.state.total() > 1) {
        Level<N> coarse = halved(level);
        solve(coarse);
        for (const cv::Point &at : unknown)
            level.values(at) = coarse.values(at.y / 2, at.x / 2);
    }
    for (int i = 0; i < sweeps; ++i) {
        for (auto at = unknown.begin(); at != unknown.end(); ++at)
            relax(level, *at);
        for (auto at = unknown.rbegin(); at != unknown.rend(); ++at)
            relax(level, *at);
    }
}

template<int N>
void diffuseChannels(cv::Mat *values, const cv::Mat &state)
{
    Level<N> level {*values, state};
    solve(level);
}

} // namespace

void diffuse(cv::Mat *values, const cv::Mat &state)
{
    CV_Assert(values->depth() == CV_32F && values->size() == state.size());
    switch (values->channels()) {
    case 1:
        return diffuseChannels<1>(values, state);
    case 2:
        return diffuseChannels<2>(values, state);
    default:
        return diffuseChannels<3>(values, state);
    }
}

void fillSmoothly(cv::Mat *picture, const cv::Mat &mask)
{
    cv::Mat values;
    picture->convertTo(values, CV_32F);
    cv::Mat state(mask.size(), CV_8U, cv::Scalar(DiffusionKnown));
    state.setTo(DiffusionUnknown, mask);
    diffuse(&values, state);
    cv::Mat filled;
    values.convertTo(filled, CV_8U);
    filled.copyTo(*picture, mask);
}

} // namespace zk::engine
