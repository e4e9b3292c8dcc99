// The frames that the eraser holds at a time, and the stages that fill their holes. Not public.
#pragma once

#include "ZkEraseCrew.h"
#include "ZkEraseFrame.h"
#include "ZkEraseMotion.h"
#include "ZkHolePainter.h"
#include "ZkSourceTrace.h"

#include <chrono>
#include <vector>

namespace zk::engine {

// Adds the time that it lives to a stage's.
class StageTimer
{
public:
    explicit StageTimer(double *seconds)
        : m_seconds(seconds)
    { }
    ~StageTimer()
    {
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - m_start;
        *m_seconds += taken.count();
    }
    StageTimer(const StageTimer &) = delete;
    StageTimer &operator=(const StageTimer &) = delete;

private:
    double *m_seconds;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

// Frames in the order of the clip. The first ones may be finished: they lend, and their filling counts
// as truth, so that what was made up goes on as it began.
class EraseWindow
{
public:
    EraseWindow(const EraserOptions &options,
                const Inpainter &inpainter,
                EraseCrew *crew,
                EraseTimes *times);

    std::size_t size() const { return m_frames.size(); }
    const EraseFrame &frame(std::size_t slot) const { return m_frames[slot]; }
    // Adds frames at the end; masks may be empty. False when the caller wants to stop.
    bool
    append(int firstIndex, const std::vector<cv::Mat> &pictures, const std::vector<cv::Mat> &masks);
    // Fills the holes of all frames that are not finished. begin, end: of the run's progress.
    bool fill(double begin, double end);
    void finish(std::size_t slot) { m_frames[slot].finished = true; }
    void dropFirst(std::size_t count);

private:
    bool measureMotion(HoleContent content);
    bool traceSeen();
    bool traceMadeUp();
    bool paintSeen(PlateSize size);
    bool makeUp(PlateSize size);
    int emptiestFrame() const;
    bool inpaintFrames(const std::vector<int> &slots, PlateSize size);
    bool inpaint(int slot, PlateSize size) const;
    bool pass(HoleContent content, PlateSize size, double begin, double end);
    bool hasHoles() const;
    bool isOpen(int slot) const;

    EraserOptions m_options;
    const Inpainter &m_inpainter;
    EraseCrew *m_crew;
    EraseTimes *m_times;
    std::vector<EraseFrame> m_frames;
    std::vector<cv::Mat> m_left; // per frame, CV_8UC1 over work.box: not painted yet
};

} // namespace zk::engine
