// Maximum flow on a grid in which every pixel has eight neighbours. Not public.
#pragma once

#include <opencv2/core.hpp>

#include <cstdint>
#include <deque>
#include <vector>

namespace zk::engine {

// Grows one search tree from the source and one from the sink over the residual graph, pushes flow
// where they meet, and gives the nodes that lost their path a new parent instead of starting again:
// on pictures, where most pixels are decided by themselves, that needs little more than one pass.
class GridMaxFlow
{
public:
    explicit GridMaxFlow(const cv::Size &size);

    // Capacity from the source (positive) or to the sink (negative).
    void setTerminal(int x, int y, int capacity) { m_nodes[indexOf(x, y)].terminal = capacity; }
    // Capacity between a pixel and its right, lower, lower right or lower left neighbour (0 .. 3), in
    // both directions.
    void setLink(int x, int y, int direction, int capacity);

    void solve();
    // After solve(): on the source's side of the cut. Pixels that no flow decides are on the sink's.
    bool isSource(int x, int y) const;

private:
    enum Tree : std::uint8_t { Free, Source, Sink };
    enum Parent : std::uint8_t { Terminal = 8, Orphan = 9, NoParent = 10 };
    struct Node
    {
        int capacity[8] = {};
        int terminal = 0;
        int time = 0;
        int distance = 0;
        std::uint8_t parent = NoParent;
        Tree tree = Free;
        bool active = false;
    };
    struct Meeting
    {
        int source = -1;
        int sink = -1;
        int direction = 0; // from source to sink
    };

    int indexOf(int x, int y) const { return (y + 1) * m_stride + x + 1; }
    int residual(int node, int direction) const;
    void activate(int node);
    void plantTrees();
    bool grow(int node, Meeting *meeting);
    int bottleneckToTerminal(int node) const;
    void pushToTerminal(int node, int amount);
    void augment(const Meeting &meeting);
    void makeOrphan(int node);
    void adoptOrphans();
    void adopt(int node);
    int distanceToTerminal(int node);
    void stampPath(int node, int distance);
    void release(int node);

    cv::Size m_size;
    int m_stride;
    int m_offsets[8];
    int m_time = 0;
    std::vector<Node> m_nodes;
    std::deque<int> m_active;
    std::deque<int> m_orphans;
};

} // namespace zk::engine
