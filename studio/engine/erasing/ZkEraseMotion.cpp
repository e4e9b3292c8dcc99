#include "ZkEraseMotion.h"

#include "../ZkMaskTools.h"
#include "ZkFlowCompletion.h"

#include <opencv2/imgproc.hpp>

namespace zk::engine {

namespace {

constexpr int around = 64; // working pixels around a hole in which motion is measured
constexpr int corrupted = 8; // so far a hole's filling spoils the flow outside of it

cv::Mat brightness(const Plate &plate, const cv::Rect &box)
{
    cv::Mat gray;
    cv::cvtColor(plate.picture(box), gray, cv::COLOR_RGB2GRAY);
    return gray;
}

// Pixels whose motion leads into the mask.
cv::Mat leadingInto(const cv::Mat &mask, const cv::Mat &flow)
{
    cv::Mat result = cv::Mat::zeros(mask.size(), CV_8U);
    const cv::Rect inside({0, 0}, mask.size());
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            const cv::Vec2f &go = flow.at<cv::Vec2f>(y, x);
            const cv::Point end(cvRound(float(x) + go[0]), cvRound(float(y) + go[1]));
            if (inside.contains(end) && mask.at<uchar>(end))
                result.at<uchar>(y, x) = 255;
        }
    }
    return result;
}

// Nothing that is known moved consistently, and what came is not what was there.
bool isSceneCut(const cv::Mat &from,
                const cv::Mat &to,
                const cv::Mat &flow,
                const cv::Mat &known,
                const cv::Mat &error)
{
    if (cv::countNonZero(known) < 64)
        return false;
    const double agreeing = cv::mean((error < 9.0) / 255, known)[0];
    cv::Mat difference;
    cv::absdiff(from, movedBack(to, flow), difference);
    const double left = cv::mean(difference, known)[0];
    return agreeing < 0.35 && left > 18.0;
}

// The two motions between two frames, in the box around their holes.
class PairMotion
{
public:
    PairMotion(const EraseFrame &earlier, const EraseFrame &later, const cv::Rect &box)
        : m_hole(earlier.hole(box))
        , m_holeLater(later.hole(box))
        , m_before(brightness(earlier.work, box))
        , m_after(brightness(later.work, box))
    { }

    bool measure(const std::function<bool()> &stopped)
    {
        forward = flowBetween(m_before, m_after);
        if (stopped())
            return false;
        backward = flowBetween(m_after, m_before);
        m_error = contradictions(forward, backward);
        m_errorLater = contradictions(backward, forward);
        return !stopped();
    }
    // False at a scene cut.
    bool completeAroundHoles(const std::function<bool()> &stopped)
    {
        const cv::Mat spoilt = grownMask(m_hole, corrupted);
        const cv::Mat spoiltLater = grownMask(m_holeLater, corrupted);
        const cv::Mat hidden = spoilt | leadingInto(spoiltLater, forward);
        const cv::Mat hiddenLater = spoiltLater | leadingInto(spoilt, backward);
        if (isSceneCut(m_before, m_after, forward, ~hidden, m_error))
            return false;
        complete(hidden, hiddenLater, stopped);
        return true;
    }
    void completeContradictions(const std::function<bool()> &stopped)
    {
        const cv::Mat hidden = m_hole & (m_error > mostContradiction);
        complete(hidden, m_holeLater & (m_errorLater > mostContradiction), stopped);
    }

    cv::Mat forward;
    cv::Mat backward;

private:
    void complete(const cv::Mat &hidden,
                  const cv::Mat &hiddenLater,
                  const std::function<bool()> &stopped)
    {
        completeFlow(&forward, hidden, m_error);
        if (!stopped())
            completeFlow(&backward, hiddenLater, m_errorLater);
    }

    cv::Mat m_hole;
    cv::Mat m_holeLater;
    cv::Mat m_before;
    cv::Mat m_after;
    cv::Mat m_error;
    cv::Mat m_errorLater;
};

} // namespace

void measureEraseMotion(EraseFrame *earlier,
                        EraseFrame *later,
                        HoleContent content,
                        const std::function<bool()> &stopped)
{
    earlier->toNext = {};
    later->toPrevious = {};
    const cv::Rect holes = earlier->work.box | later->work.box;
    if (holes.empty())
        return;
    const cv::Rect box = grownBox(holes, {around, around}, earlier->hole.size());
    PairMotion motion(*earlier, *later, box);
    if (!motion.measure(stopped))
        return;
    if (content == HoleContent::Filled)
        motion.completeContradictions(stopped);
    else if (!motion.completeAroundHoles(stopped))
        return;
    earlier->toNext = {box, motion.forward};
    later->toPrevious = {box, motion.backward};
}

} // namespace zk::engine
