#pragma once

#include "../segmentation/ZkSegments.h"
#include "../segmentation/ZkStrokeMap.h"

#include "ZkMediaInfo.h"
#include "backend/ZkEngineBackends.h"

#include <memory>
#include <vector>

namespace zk::media {
class MediaReader;
}

namespace zk::datamodel {

// Turns strokes on a frame into the node that the frame has afterwards. It keeps the frame that was
// painted last, decoded and with its features, because strokes on one frame come in rows. One thread
// only.
class NodeEditor
{
public:
    enum Stroke { KeepStroke, RemoveStroke, EraseStroke };

    // Null, with a sentence for the user, when the media has no readable picture.
    static std::unique_ptr<NodeEditor> open(const zk::media::MediaInfo &media,
                                            qint64 inFrame,
                                            const zk::engine::EngineBackendsPtr &engine,
                                            QString *error);
    ~NodeEditor();

    struct Outcome
    {
        bool succeeded = false;
        SegmentNodePtr node; // the frame's own one, or none, when nothing has changed
    };

    // The map is Format_Grayscale8 of the frame's size, 255 where it was painted. A stroke corrects the
    // mask that the frame has. It fails when there is nothing to correct, or the frame cannot be read.
    // Of several objects, a keep stroke that does not meet the mask begins another one, objects in areas
    // stay with their areas, and a node of which nothing is left goes.
    Outcome stroked(const Segments &segments, qint64 frame, Stroke stroke, const StrokeMap &map);
    // The matte is scaled to the frame's size; its grey value is the opacity of the object.
    Outcome given(const SegmentNodePtr &before, const QImage &matte) const;
    // The object in a box of the frame, or all of the box; "no mask" when the frame cannot be read.
    EncodedMatte objectIn(qint64 frame, const QRect &box, bool isSingleObject);
    // The frame itself; null when it cannot be read.
    QImage picture(qint64 frame) const;

private:
    Q_DISABLE_COPY(NodeEditor)
    struct Edit;
    NodeEditor(std::unique_ptr<zk::media::MediaReader> reader,
               qint64 inFrame,
               const zk::engine::EngineBackendsPtr &engine);

    bool readFrame(qint64 frame);
    std::vector<cv::Mat> framesAround(qint64 frame, int distance) const;
    const std::vector<cv::Mat> &neighbours();
    cv::Mat segmented(const SegmentNode &node, const cv::Mat &previous);
    cv::Mat corrected(qint64 frame, const SegmentNode &node, const Edit &edit);
    bool strokeOneObject(qint64 frame, SegmentNode *node, const Edit &edit);
    bool strokeParts(qint64 frame, SegmentNode *node, const Edit &edit);
    cv::Mat newObject(qint64 frame, const SegmentNode &node, const cv::Mat &painted);

    const std::unique_ptr<zk::media::MediaReader> m_reader;
    const qint64 m_inFrame;
    const std::unique_ptr<zk::engine::SegmentationBackend> m_segmenter;
    qint64 m_frame = -1; // that m_pixels shows
    cv::Mat m_pixels;
    std::vector<cv::Mat> m_neighbours; // of that frame; none: not read
};

} // namespace zk::datamodel
