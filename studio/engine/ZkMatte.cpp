#include "ZkMatte.h"

namespace zk::engine {

bool isFrame(const cv::Mat &image)
{
    return !image.empty() && image.dims == 2
        && (image.type() == CV_8UC3 || image.type() == CV_8UC4);
}

bool isMatteOf(const cv::Mat &matte, const cv::Size &size)
{
    return !matte.empty() && matte.dims == 2 && matte.type() == CV_8UC1 && matte.size() == size;
}

cv::Mat hardMatte(const cv::Mat &matte)
{
    return matte >= matteThreshold;
}

int objectArea(const cv::Mat &matte)
{
    return matte.empty() ? 0 : cv::countNonZero(hardMatte(matte));
}

double intersectionOverUnion(const cv::Mat &matteA, const cv::Mat &matteB)
{
    if (!isMatteOf(matteA, matteA.size()) || !isMatteOf(matteB, matteA.size()))
        return 0.0;
    const cv::Mat a = hardMatte(matteA);
    const cv::Mat b = hardMatte(matteB);
    const int unionArea = cv::countNonZero(a | b);
    return unionArea == 0 ? 1.0 : double(cv::countNonZero(a & b)) / unionArea;
}

} // namespace zk::engine
