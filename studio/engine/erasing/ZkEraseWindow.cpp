#include "ZkEraseWindow.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace zk::engine {

namespace {

constexpr int mostKeyFrames = 6; // frames that are made up one after the other; what is left after
    // them is made up frame by frame

// A pixel that was made up is its own source.
void sourceFromItself(EraseFrame *frame, int slot, const cv::Mat &pixels)
{
    const cv::Rect &box = frame->work.box;
    for (int y = box.y; y < box.br().y; ++y) {
        for (int x = box.x; x < box.br().x; ++x) {
            if (pixels.at<uchar>(y - box.y, x - box.x)) {
                const PixelSource own {float(x), float(y), 1.0f, slot};
                frame->earlier.at(x, y) = own;
                frame->later.at(x, y) = own;
            }
        }
    }
}

// The pixels of the frame itself that belong to these pixels of working size, over the whole frame.
cv::Mat atFullSize(const EraseFrame &frame, const cv::Mat &pixels)
{
    cv::Mat work = cv::Mat::zeros(frame.hole.size(), CV_8U), full;
    cv::Mat part = work(frame.work.box);
    pixels.copyTo(part);
    cv::resize(work, full, frame.full.picture.size(), 0, 0, cv::INTER_NEAREST);
    cv::Mat result = cv::Mat::zeros(full.size(), CV_8U);
    full(frame.full.box).copyTo(result(frame.full.box), frame.full.hole);
    return result;
}

} // namespace

EraseWindow::EraseWindow(const EraserOptions &options,
                         const Inpainter &inpainter,
                         EraseCrew *crew,
                         EraseTimes *times)
    : m_options(options)
    , m_inpainter(inpainter)
    , m_crew(crew)
    , m_times(times)
{ }

bool EraseWindow::append(int firstIndex,
                         const std::vector<cv::Mat> &pictures,
                         const std::vector<cv::Mat> &masks)
{
    const std::size_t before = m_frames.size();
    m_frames.resize(before + pictures.size());
    return m_crew->run(int(pictures.size()), [&](int i) {
        const std::size_t k = std::size_t(i);
        m_frames[before + k] = makeEraseFrame(firstIndex + i, pictures[k], masks[k], m_options);
    });
}

void EraseWindow::dropFirst(std::size_t count)
{
    m_frames.erase(m_frames.begin(), m_frames.begin() + std::ptrdiff_t(count));
}

bool EraseWindow::isOpen(int slot) const
{
    const EraseFrame &frame = m_frames[std::size_t(slot)];
    return !frame.finished && !frame.isWhole();
}

bool EraseWindow::hasHoles() const
{
    for (int i = 0; i < int(m_frames.size()); ++i) {
        if (isOpen(i))
            return true;
    }
    return false;
}

bool EraseWindow::fill(double begin, double end)
{
    m_crew->setProgress(begin, end);
    if (!hasHoles())
        return true;
    const double middle = 0.5 * (begin + end);
    if (m_frames.size() > 1 && !pass(HoleContent::Nothing, PlateSize::Work, begin, middle))
        return false;
    if (!pass(HoleContent::Filled, PlateSize::Full, middle, end))
        return false;
    for (EraseFrame &frame : m_frames)
        frame.filled = true;
    return true;
}

bool EraseWindow::pass(HoleContent content, PlateSize size, double begin, double end)
{
    const double measured = begin + 0.6 * (end - begin);
    const double painted = begin + 0.8 * (end - begin);
    m_crew->setProgress(begin, measured);
    if (!measureMotion(content))
        return false;
    m_crew->setProgress(measured, painted);
    if (!paintSeen(size))
        return false;
    m_crew->setProgress(painted, end);
    return makeUp(size);
}

bool EraseWindow::measureMotion(HoleContent content)
{
    const StageTimer timer(&m_times->motion);
    const auto stopped = [this] { return m_crew->stopped(); };
    return m_crew->run(int(m_frames.size()) - 1, [&](int i) {
        EraseFrame &earlier = m_frames[std::size_t(i)];
        EraseFrame &later = m_frames[std::size_t(i) + 1];
        // The last window has measured them better than the first pass could.
        const bool better = content == HoleContent::Nothing && earlier.filled && later.filled;
        const bool known = better || (earlier.finished && later.finished);
        const bool cut = content == HoleContent::Filled && earlier.toNext.box.empty();
        if (!known && !cut)
            measureEraseMotion(&earlier, &later, content, stopped);
    });
}

bool EraseWindow::traceSeen()
{
    resetSources(&m_frames);
    return m_crew->run(
        2, [&](int i) { traceSources(&m_frames, i == 0 ? Direction::Earlier : Direction::Later); });
}

bool EraseWindow::traceMadeUp()
{
    return m_crew->run(1, [&](int) {
        traceLeftSources(&m_frames, Direction::Earlier);
        traceLeftSources(&m_frames, Direction::Later);
    });
}

// Paints every pixel that has a source and was not painted yet.
bool EraseWindow::paintSeen(PlateSize size)
{
    const StageTimer timer(&m_times->painting);
    if (m_left.empty()) {
        if (!traceSeen())
            return false;
        for (const EraseFrame &frame : m_frames)
            m_left.push_back(frame.finished ? cv::Mat() : frame.hole(frame.work.box).clone());
    }
    const int count = int(m_frames.size());
    const auto stopped = [this] { return m_crew->stopped(); };
    std::vector<HolePaint> paints(m_frames.size());
    const bool goOn = m_crew->run(count, [&](int i) {
        const cv::Mat &left = m_left[std::size_t(i)];
        if (isOpen(i) && cv::countNonZero(left) > 0)
            paints[std::size_t(i)] = paintHole(m_frames, i, left, size, stopped);
    });
    for (std::size_t i = 0; i < paints.size() && goOn; ++i) {
        if (paints[i].fresh.empty())
            continue;
        applyPaint(&m_frames[i], paints[i]);
        m_left[i].setTo(0, paints[i].fresh);
    }
    return goOn;
}

int EraseWindow::emptiestFrame() const
{
    int most = 0, slot = -1;
    for (int i = 0; i < int(m_frames.size()); ++i) {
        const int count = isOpen(i) ? cv::countNonZero(m_left[std::size_t(i)]) : 0;
        if (count > most) {
            most = count;
            slot = i;
        }
    }
    return slot;
}

bool EraseWindow::inpaint(int slot, PlateSize size) const
{
    const EraseFrame &frame = m_frames[std::size_t(slot)];
    const cv::Mat &left = m_left[std::size_t(slot)];
    const auto stopped = [this] { return m_crew->stopped(); };
    cv::Mat work = frame.work.picture;
    if (size == PlateSize::Work || frame.full.picture.size() == frame.hole.size()) {
        cv::Mat hole = cv::Mat::zeros(frame.hole.size(), CV_8U);
        left.copyTo(hole(frame.work.box));
        const bool done = m_inpainter.inpaint(&work, hole, stopped);
        cv::Mat full = frame.full.picture;
        if (done && size == PlateSize::Full)
            work.copyTo(full, hole);
        return done;
    }
    cv::Mat full = frame.full.picture, small;
    if (!m_inpainter.inpaint(&full, atFullSize(frame, left), stopped))
        return false;
    cv::resize(full, small, work.size(), 0, 0, cv::INTER_AREA);
    cv::Mat part = work(frame.work.box);
    small(frame.work.box).copyTo(part, left);
    return true;
}

bool EraseWindow::inpaintFrames(const std::vector<int> &slots, PlateSize size)
{
    const StageTimer timer(&m_times->makingUp);
    return m_crew->run(int(slots.size()), [&](int i) {
        const int slot = slots[std::size_t(i)];
        if (inpaint(slot, size))
            sourceFromItself(&m_frames[std::size_t(slot)], slot, m_left[std::size_t(slot)]);
        m_left[std::size_t(slot)].setTo(0);
    });
}

// What no frame shows: the frame that lacks most is made up, and its neighbours take from it.
bool EraseWindow::makeUp(PlateSize size)
{
    for (int i = 0; i < mostKeyFrames; ++i) {
        const int slot = emptiestFrame();
        if (slot < 0)
            break;
        if (!inpaintFrames({slot}, size))
            return false;
        if (!traceMadeUp() || !paintSeen(size))
            return false;
    }
    // For measuring the motion once more a smooth filling of the rest is enough.
    if (size == PlateSize::Work) {
        m_left.clear();
        return true;
    }
    std::vector<int> rest;
    for (int i = 0; i < int(m_frames.size()); ++i) {
        if (isOpen(i) && cv::countNonZero(m_left[std::size_t(i)]) > 0)
            rest.push_back(i);
    }
    const bool goOn = inpaintFrames(rest, size);
    m_left.clear();
    return goOn;
}

} // namespace zk::engine
