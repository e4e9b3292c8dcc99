// What moves otherwise than its surroundings. The functions are not public.
#pragma once

#include <opencv2/core.hpp>

#include <memory>
#include <vector>

namespace zk::engine {

struct ForeignMotionOptions
{
    int gap = 3; // pixels next to what is asked about whose motion it may have spoilt
    double level = 0.9; // this share of the surroundings differs less than what counts
    double noise = 3.0; // grey levels, what differs less counts nowhere
    double gain = 1.5; // logit for each time that a difference exceeds what counts
    double most = 6.0; // logit
    double gainBetween = 6.0; // logit for each time that two differences are that far apart
    double mostBetween = 24.0;
};

// The motion of the surroundings, continued into the rest of the picture, against what is seen there in
// other pictures, some frames before and after. Pictures are CV_8UC3 of one size; Without others every logit is 0.
class ForeignMotion
{
public:
    ForeignMotion(const cv::Mat &picture,
                  const std::vector<cv::Mat> &others,
                  const cv::Mat &surroundings, // CV_8UC1
                  const ForeignMotionOptions &options = {});

    // Where none of the others shows what this picture shows, something else moves: the more it differs the
    // higher the logit, CV_32FC1, 0 .. most.
    cv::Mat logits() const;
    // Whether a pixel goes with what the mask (CV_8UC1) covers, or with the surroundings: CV_32FC1, a logit
    // of at most mostBetween either way; 0 where neither is known, and everywhere when the mask does not
    // move against its surroundings.
    cv::Mat logitsBetween(const cv::Mat &mask) const;

private:
    struct Neighbour;

    // What counts as a difference, in grey levels.
    double noiseOf(const cv::Mat &differences) const;

    ForeignMotionOptions m_options;
    cv::Mat m_picture;
    cv::Mat m_unknown; // where the motion of the surroundings is continued
    std::vector<std::shared_ptr<const Neighbour>> m_neighbours;
};

// What of the picture goes along with what the mask (CV_8UC1) covers, against the motion of what lies
// further away than reach pixels from it: parts that the mask has missed, and what gets lighter when the
// object has gone, its shadow. CV_8UC1, without the mask itself and nothing that is not connected to it;
// empty when there is nothing, as when neither moves.
cv::Mat movingAlong(const cv::Mat &picture,
                    const std::vector<cv::Mat> &others,
                    const cv::Mat &mask,
                    int reach,
                    const ForeignMotionOptions &options = {});

} // namespace zk::engine
