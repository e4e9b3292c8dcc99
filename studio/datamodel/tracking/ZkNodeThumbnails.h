#pragma once

#include "../segmentation/ZkSegmentSettings.h"
#include "../segmentation/ZkSegments.h"

#include <QHash>
#include <QImage>

#include <functional>

namespace zk::datamodel {

// Small pictures of nodes with their masks over them. Frames are decoded once and kept small; a mask is
// drawn again only after it, or how it is shown, has changed. GUI thread only.
class NodeThumbnails
{
public:
    using FrameReader = std::function<QImage(qint64 frame)>;

    static constexpr QSize largest {320, 240}; // pixels

    // The node's frame keeps its shape. Null when the frame cannot be read.
    QImage find(qint64 frame,
                const SegmentNode &node,
                const SegmentSettings &settings,
                const FrameReader &read);

private:
    struct Entry
    {
        QImage frame; // small
        quint64 revision = 0;
        QColor colour;
        int alpha = 0;
        QImage picture; // of that revision, colour and alpha
        quint64 use = 0;
    };
    static constexpr int capacity = 100; // about 30 MB

    Entry &entryFor(qint64 frame);

    QHash<qint64, Entry> m_entries;
    quint64 m_lastUse = 0;
};

} // namespace zk::datamodel
