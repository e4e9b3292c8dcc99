// One size of the picture in the search for fitting patches. Not public.
#pragma once

#include <opencv2/core.hpp>

#include <cstdint>
#include <functional>
#include <vector>

namespace zk::engine {

// Coordinates are those of the level's own padded picture. Target pixels are the centres of the
// patches that touch the hole; each has a match, the centre of a patch that is known throughout.
class PatchLevel
{
public:
    static constexpr int radius = 3; // patches are 7 x 7

    // picture: CV_8UC4 (three colours and the strength of texture), hole: CV_8UC1.
    PatchLevel(const cv::Mat &picture, const cv::Mat &hole);

    bool hasSources() const { return !m_sources.empty(); }
    // The hole's content as a start, by smooth filling, and any matches.
    void startAnyhow(std::uint32_t seed);
    // Matches from a level of another size, and the content that follows from them.
    void startFrom(const PatchLevel &other, std::uint32_t seed);
    // One round: better matches for the present content, then new content from the matches.
    void improve(const std::function<bool()> &stopped);

    // Without the padding, CV_8UC4.
    cv::Mat picture() const;

private:
    struct Match
    {
        cv::Point at;
        int cost = 0;
    };

    Match &match(const cv::Point &at) { return m_matches[std::size_t(m_index(at))]; }
    bool isSource(const cv::Point &at) const;
    int costOf(const cv::Point &target, const cv::Point &source, int limit) const;
    cv::Point anySource();
    std::uint32_t random();
    void tryMatch(const cv::Point &target, const cv::Point &source);
    void search(std::size_t i, int step);
    void rescore();
    void vote();

    cv::Mat_<cv::Vec4b> m_picture;
    cv::Mat_<uchar> m_hole;
    cv::Mat_<uchar> m_source;
    cv::Mat_<int> m_index; // of the target at a place, -1 = none
    cv::Mat_<float> m_trust; // falls with the distance from what is known
    std::vector<cv::Point> m_sources;
    std::vector<cv::Point> m_targets;
    std::vector<Match> m_matches;
    std::uint32_t m_random = 1;
};

} // namespace zk::engine
