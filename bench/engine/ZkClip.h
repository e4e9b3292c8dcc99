// Reads the measuring clips: frames, true masks and strokes, at the height that is asked for.
#pragma once

#include <opencv2/core.hpp>
#include <opencv2/videoio.hpp>

#include <string>
#include <vector>

namespace zk::bench {

// A folder with clip.mkv, masks/%05d.png (0/255, one per frame) and strokes.json.
class Clip
{
public:
    // height: of the frames and masks as they are handed out, in pixels; 0 = as they are stored.
    Clip(const std::string &folder, int height);

    bool isOpen() const { return m_capture.isOpened(); }
    // The next frame in R, G, B order; empty after the last one.
    cv::Mat nextFrame();
    // The true mask of a frame; empty when there is none.
    cv::Mat mask(int frame) const;
    // The strokes of this kind ("keep", "remove") on frame 0, painted.
    cv::Mat strokes(const std::string &mode) const;

private:
    cv::Size outputSize(const cv::Size &stored) const;

    std::string m_folder;
    int m_height;
    cv::Size m_stored;
    cv::VideoCapture m_capture;
};

// The clips of a folder, sorted by name.
std::vector<std::string> clipNames(const std::string &folder);

} // namespace zk::bench
