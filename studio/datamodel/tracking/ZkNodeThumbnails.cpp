#include "ZkNodeThumbnails.h"

#include <algorithm>

namespace zk::datamodel {

namespace {

QImage drawn(const QImage &frame, const SegmentNode &node, SegmentSettings settings)
{
    zk::effects::RenderInput input;
    input.frame = frame;
    input.matte =
        node.result.decoded().scaled(frame.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    input.matte = input.matte.convertToFormat(QImage::Format_Grayscale8);
    settings.type = zk::effects::PreviewType::Interactive;
    return zk::effects::composePreview(input, nullptr, settings);
}

} // namespace

NodeThumbnails::Entry &NodeThumbnails::entryFor(qint64 frame)
{
    if (!m_entries.contains(frame) && m_entries.size() >= capacity) {
        const auto oldest =
            std::min_element(m_entries.begin(),
                             m_entries.end(),
                             [](const Entry &a, const Entry &b) { return a.use < b.use; });
        m_entries.erase(oldest);
    }
    Entry &entry = m_entries[frame];
    entry.use = ++m_lastUse;
    return entry;
}

QImage NodeThumbnails::find(qint64 frame,
                            const SegmentNode &node,
                            const SegmentSettings &settings,
                            const FrameReader &read)
{
    Entry &entry = entryFor(frame);
    if (entry.frame.isNull()) {
        const QImage image = read(frame);
        const QSize size =
            image.size().scaled(largest, Qt::KeepAspectRatio).boundedTo(image.size());
        entry.frame =
            image.scaled(size.expandedTo({1, 1}), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    const bool isKnown = !entry.picture.isNull() && entry.revision == node.revision
        && entry.colour == settings.overlayColour && entry.alpha == settings.overlayAlpha;
    if (!isKnown && !entry.frame.isNull()) {
        entry.picture = drawn(entry.frame, node, settings);
        entry.revision = node.revision;
        entry.colour = settings.overlayColour;
        entry.alpha = settings.overlayAlpha;
    }
    return entry.picture;
}

} // namespace zk::datamodel
