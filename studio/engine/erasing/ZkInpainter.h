// Makes up a part of a picture from the rest of it.
#pragma once

#include "../ZkEngineGlobal.h"

#include <opencv2/core.hpp>

#include <functional>

namespace zk::engine {

class ZKENGINE_EXPORT Inpainter
{
public:
    virtual ~Inpainter();
    // picture: CV_8UC3; hole: CV_8UC1 of its size, non-zero = to be filled. What the picture holds
    // there must not be used, and nothing else is changed. The same input gives the same result, and
    // calls may come from several threads at a time. stopped is to be asked every 50 ms or so; once it
    // says yes the content of the hole does not matter any more. False when nothing could be made up.
    virtual bool
    inpaint(cv::Mat *picture, const cv::Mat &hole, const std::function<bool()> &stopped) const = 0;
};

// Patches of the known part, chosen so that they agree with their neighbours, from coarse to fine.
class ZKENGINE_EXPORT PatchInpainter : public Inpainter
{
public:
    // workingPixels: pictures of a larger area are searched at this one; the colours are then taken
    // from the picture itself.
    explicit PatchInpainter(int workingPixels = 854 * 480);
    bool inpaint(cv::Mat *picture,
                 const cv::Mat &hole,
                 const std::function<bool()> &stopped) const override;

private:
    int m_workingPixels;
};

} // namespace zk::engine
