#include "ZkGridMaxFlow.h"

#include <algorithm>
#include <limits>

namespace zk::engine {

namespace {

// The directions come in pairs, so that direction ^ 1 leads back.
constexpr int opposite(int direction)
{
    return direction ^ 1;
}

constexpr int unlimited = std::numeric_limits<int>::max();

} // namespace

GridMaxFlow::GridMaxFlow(const cv::Size &size)
    : m_size(size)
    , m_stride(size.width + 2)
    , m_offsets {1,
                 -1,
                 m_stride,
                 -m_stride,
                 m_stride + 1,
                 -m_stride - 1,
                 m_stride - 1,
                 1 - m_stride}
    // A frame of nodes without capacity saves every check for the border.
    , m_nodes(static_cast<std::size_t>(m_stride) * (size.height + 2))
{ }

void GridMaxFlow::setLink(int x, int y, int direction, int capacity)
{
    const int node = indexOf(x, y);
    m_nodes[node].capacity[2 * direction] = capacity;
    m_nodes[node + m_offsets[2 * direction]].capacity[2 * direction + 1] = capacity;
}

bool GridMaxFlow::isSource(int x, int y) const
{
    return m_nodes[indexOf(x, y)].tree == Source;
}

// What can still flow between a node and its neighbour in the sense of the node's tree: away from the
// source, or towards the sink.
int GridMaxFlow::residual(int node, int direction) const
{
    if (m_nodes[node].tree == Source)
        return m_nodes[node].capacity[direction];
    return m_nodes[node + m_offsets[direction]].capacity[opposite(direction)];
}

void GridMaxFlow::activate(int node)
{
    if (m_nodes[node].active)
        return;
    m_nodes[node].active = true;
    m_active.push_back(node);
}

void GridMaxFlow::plantTrees()
{
    for (int y = 0; y < m_size.height; ++y) {
        for (int x = 0; x < m_size.width; ++x) {
            Node &node = m_nodes[indexOf(x, y)];
            if (node.terminal == 0)
                continue;
            node.tree = node.terminal > 0 ? Source : Sink;
            node.parent = Terminal;
            node.distance = 1;
            activate(indexOf(x, y));
        }
    }
}

void GridMaxFlow::solve()
{
    plantTrees();
    while (!m_active.empty()) {
        const int node = m_active.front();
        Meeting meeting;
        if (m_nodes[node].tree != Free && grow(node, &meeting)) {
            ++m_time;
            augment(meeting);
            adoptOrphans();
            continue; // the same node may meet the other tree again
        }
        m_active.pop_front();
        m_nodes[node].active = false;
    }
}

bool GridMaxFlow::grow(int index, Meeting *meeting)
{
    const Node &node = m_nodes[index];
    for (int direction = 0; direction < 8; ++direction) {
        if (residual(index, direction) == 0)
            continue;
        const int otherIndex = index + m_offsets[direction];
        Node &other = m_nodes[otherIndex];
        if (other.tree == Free) {
            other.tree = node.tree;
            other.parent = std::uint8_t(opposite(direction));
            other.time = node.time;
            other.distance = node.distance + 1;
            activate(otherIndex);
        } else if (other.tree != node.tree) {
            *meeting = node.tree == Source ? Meeting {index, otherIndex, direction}
                                           : Meeting {otherIndex, index, opposite(direction)};
            return true;
        } else if (other.time <= node.time && other.distance > node.distance + 1) {
            // A shorter way to the terminal: later paths stay short.
            other.parent = std::uint8_t(opposite(direction));
            other.time = node.time;
            other.distance = node.distance + 1;
        }
    }
    return false;
}

int GridMaxFlow::bottleneckToTerminal(int node) const
{
    int bottleneck = unlimited;
    while (m_nodes[node].parent != Terminal) {
        const int direction = m_nodes[node].parent;
        const int parent = node + m_offsets[direction];
        const int capacity = m_nodes[node].tree == Source
            ? m_nodes[parent].capacity[opposite(direction)]
            : m_nodes[node].capacity[direction];
        bottleneck = std::min(bottleneck, capacity);
        node = parent;
    }
    return std::min(bottleneck, std::abs(m_nodes[node].terminal));
}

void GridMaxFlow::pushToTerminal(int node, int amount)
{
    const bool fromSource = m_nodes[node].tree == Source;
    while (m_nodes[node].parent != Terminal) {
        const int direction = m_nodes[node].parent;
        const int parent = node + m_offsets[direction];
        int &towardsTerminal = m_nodes[node].capacity[direction];
        int &fromTerminal = m_nodes[parent].capacity[opposite(direction)];
        towardsTerminal += fromSource ? amount : -amount;
        fromTerminal += fromSource ? -amount : amount;
        if ((fromSource ? fromTerminal : towardsTerminal) == 0)
            makeOrphan(node);
        node = parent;
    }
    m_nodes[node].terminal += fromSource ? -amount : amount;
    if (m_nodes[node].terminal == 0)
        makeOrphan(node);
}

void GridMaxFlow::augment(const Meeting &meeting)
{
    int &forward = m_nodes[meeting.source].capacity[meeting.direction];
    const int amount = std::min(
        {forward, bottleneckToTerminal(meeting.source), bottleneckToTerminal(meeting.sink)});
    forward -= amount;
    m_nodes[meeting.sink].capacity[opposite(meeting.direction)] += amount;
    pushToTerminal(meeting.source, amount);
    pushToTerminal(meeting.sink, amount);
}

void GridMaxFlow::makeOrphan(int node)
{
    m_nodes[node].parent = Orphan;
    m_orphans.push_back(node);
}

void GridMaxFlow::adoptOrphans()
{
    while (!m_orphans.empty()) {
        const int node = m_orphans.front();
        m_orphans.pop_front();
        adopt(node);
    }
}

// Steps to the terminal along the parents, or "unlimited" when the path ends at an orphan. Paths that
// were walked at this time already are not walked again.
int GridMaxFlow::distanceToTerminal(int index)
{
    int steps = 0;
    while (true) {
        Node &node = m_nodes[index];
        if (node.time == m_time && node.parent < Orphan)
            return steps + node.distance;
        if (node.parent >= Orphan)
            return unlimited;
        ++steps;
        if (node.parent == Terminal) {
            node.time = m_time;
            node.distance = 1;
            return steps;
        }
        index += m_offsets[node.parent];
    }
}

void GridMaxFlow::stampPath(int index, int distance)
{
    while (m_nodes[index].time != m_time) {
        m_nodes[index].time = m_time;
        m_nodes[index].distance = distance--;
        index += m_offsets[m_nodes[index].parent];
    }
}

void GridMaxFlow::adopt(int index)
{
    Node &node = m_nodes[index];
    int best = unlimited;
    for (int direction = 0; direction < 8; ++direction) {
        const int otherIndex = index + m_offsets[direction];
        const Node &other = m_nodes[otherIndex];
        if (other.tree != node.tree)
            continue;
        const int capacity =
            node.tree == Source ? other.capacity[opposite(direction)] : node.capacity[direction];
        if (capacity == 0)
            continue;
        const int distance = distanceToTerminal(otherIndex);
        if (distance == unlimited)
            continue;
        stampPath(otherIndex, distance);
        if (distance < best) {
            best = distance;
            node.parent = std::uint8_t(direction);
        }
    }
    if (best == unlimited) {
        release(index);
        return;
    }
    node.time = m_time;
    node.distance = best + 1;
}

// No path is left: the node becomes free, its children become orphans, and neighbours that could grow
// into it are awake again.
void GridMaxFlow::release(int index)
{
    Node &node = m_nodes[index];
    for (int direction = 0; direction < 8; ++direction) {
        const int otherIndex = index + m_offsets[direction];
        Node &other = m_nodes[otherIndex];
        if (other.tree != node.tree)
            continue;
        if (residual(otherIndex, opposite(direction)) > 0)
            activate(otherIndex);
        if (other.parent == opposite(direction))
            makeOrphan(otherIndex);
    }
    node.tree = Free;
    node.parent = NoParent;
}

} // namespace zk::engine
