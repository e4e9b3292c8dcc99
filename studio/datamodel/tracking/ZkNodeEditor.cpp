#include "ZkNodeEditor.h"

#include "../ZkMediaOpening.h"
#include "../segmentation/ZkPixels.h"
#include "ZkStrokedParts.h"

#include "ZkBoxSegmenter.h"

#include <opencv2/imgproc.hpp>

namespace zk::datamodel {

namespace {

// Frames between a frame and those that show what moves in it. What is left out of a box can only be found by
// motion, for which slow things need more; along strokes what turns and bends in between does harm.
constexpr int aroundBox = 2;
constexpr int aroundStroke = 1;

cv::Mat decodedPixels(const EncodedMatte &mask)
{
    const QImage image = mask.decoded();
    return pixelsOf(image).clone();
}

EncodedMatte encoded(const cv::Mat &pixels)
{
    return EncodedMatte(greyImage(pixels));
}

// Pixels that are painted (255), none of them outside the box.
struct Painted
{
    cv::Mat pixels;
    cv::Rect box;
};

Painted paintedIn(const cv::Mat &pixels)
{
    return {pixels, cv::boundingRect(pixels)};
}

// Masks of strokes cover a small part of the frame, so only the boxes around them are touched.
EncodedMatte united(const EncodedMatte &mask, const Painted &painted)
{
    if (painted.box.empty() && !mask.isNull())
        return mask;
    const cv::Rect old = rectOf(mask.box());
    const cv::Rect box = mask.isEmpty() ? painted.box : old | painted.box;
    QImage part = greyImage(painted.pixels(box));
    if (!mask.isEmpty()) {
        const QImage before = mask.decodedBox();
        cv::Mat target = writablePixelsOf(part)(old - box.tl());
        cv::bitwise_or(target, pixelsOf(before), target);
    }
    return EncodedMatte::ofPart({painted.pixels.cols, painted.pixels.rows}, {box.x, box.y}, part);
}

EncodedMatte without(const EncodedMatte &mask, const Painted &painted)
{
    const cv::Rect box = rectOf(mask.box());
    const cv::Rect common = box & painted.box;
    if (common.empty() || cv::countNonZero(painted.pixels(common)) == 0)
        return mask;
    QImage part = mask.decodedBox();
    cv::Mat pixels = writablePixelsOf(part);
    pixels.setTo(0, painted.pixels(box));
    return EncodedMatte::ofPart(mask.size(), mask.box().topLeft(), part);
}

// Every pixel belongs to the stroke that touched it last.
void addStroke(SegmentNode *node, NodeEditor::Stroke stroke, const Painted &painted)
{
    node->keep = stroke == NodeEditor::KeepStroke ? united(node->keep, painted)
                                                  : without(node->keep, painted);
    if (stroke == NodeEditor::RemoveStroke)
        node->remove = united(node->remove, painted);
    else if (stroke == NodeEditor::KeepStroke)
        node->remove = without(node->remove, painted);
    node->erase = stroke == NodeEditor::EraseStroke ? united(node->erase, painted)
                                                    : without(node->erase, painted);
}

QSharedPointer<SegmentNode> copyOf(const SegmentNodePtr &node)
{
    auto copy =
        node ? QSharedPointer<SegmentNode>::create(*node) : QSharedPointer<SegmentNode>::create();
    copy->revision = Segments::nextRevision();
    return copy;
}

NodeEditor::Outcome outcome(const SegmentNodePtr &before, const SegmentNodePtr &after)
{
    const bool isSame = before && before->keep == after->keep && before->remove == after->remove
        && before->erase == after->erase && before->given == after->given
        && before->areas == after->areas && before->brush == after->brush
        && before->result == after->result;
    return {true, isSame ? before : after};
}

} // namespace

std::unique_ptr<NodeEditor> NodeEditor::open(const zk::media::MediaInfo &media,
                                             qint64 inFrame,
                                             const zk::engine::EngineBackendsPtr &engine,
                                             QString *error)
{
    auto reader = openMedia(media, error);
    if (!reader)
        return nullptr;
    std::unique_ptr<NodeEditor> editor(new NodeEditor(std::move(reader), inFrame, engine));
    if (editor->readFrame(0))
        return editor;
    *error = QStringLiteral("%1 has no readable picture.").arg(media.path);
    return nullptr;
}

NodeEditor::NodeEditor(std::unique_ptr<zk::media::MediaReader> reader,
                       qint64 inFrame,
                       const zk::engine::EngineBackendsPtr &engine)
    : m_reader(std::move(reader))
    , m_inFrame(inFrame)
    , m_segmenter(engine->createSegmenter())
{ }

NodeEditor::~NodeEditor() = default;

bool NodeEditor::readFrame(qint64 frame)
{
    if (frame == m_frame)
        return true;
    const QImage image = m_reader->frameAt(m_inFrame + frame);
    if (image.isNull())
        return false;
    m_pixels = pixelsOf(image).clone();
    m_frame = frame;
    m_neighbours.clear();
    return true;
}

struct NodeEditor::Edit
{
    Stroke stroke = KeepStroke;
    Painted painted;
    cv::Mat mask; // what the frame shows; empty: nothing
    cv::Mat own; // what of it the brush had made, all 0: nothing; of one object not needed
    bool isSingleObject = true;

    bool meetsMask() const
    {
        const cv::Rect &box = painted.box;
        return !mask.empty() && !box.empty()
            && cv::countNonZero(mask(box) & painted.pixels(box)) > 0;
    }
};

NodeEditor::Outcome
NodeEditor::stroked(const Segments &segments, qint64 frame, Stroke stroke, const StrokeMap &map)
{
    const QImage mask = segments.matteAt(frame);
    const SegmentNodePtr before = segments.node(frame);
    Edit edit {stroke,
               {pixelsOf(map.pixels), rectOf(map.box)},
               pixelsOf(mask),
               {},
               segments.isSingleObject()};
    if (stroke == EraseStroke && !mask.isNull() && !edit.meetsMask())
        return {true, before};
    const auto node = copyOf(before);
    addStroke(node.data(), stroke, edit.painted);
    const bool isOneObject = edit.isSingleObject && node->areas.isEmpty();
    if (!isOneObject) {
        const bool hasOwn = before && !before->brushMask().isNull();
        edit.own = hasOwn ? decodedPixels(before->brushMask())
                          : cv::Mat(cv::Mat::zeros(edit.painted.pixels.size(), CV_8U));
    }
    if (!(isOneObject ? strokeOneObject(frame, node.data(), edit)
                      : strokeParts(frame, node.data(), edit)))
        return {};
    const bool hasNothing = !edit.isSingleObject && node->result.isEmpty() && node->areas.isEmpty()
        && !segments.tracked().contains(frame);
    return hasNothing ? Outcome {true, {}} : outcome(before, node);
}

// The mask after the stroke; empty when there is nothing to correct, or the frame cannot be read.
cv::Mat NodeEditor::corrected(qint64 frame, const SegmentNode &node, const Edit &edit)
{
    if (edit.stroke == EraseStroke) {
        cv::Mat rest = edit.mask.clone();
        return rest.empty() ? rest : rest.setTo(0, edit.painted.pixels);
    }
    return readFrame(frame) ? segmented(node, edit.mask) : cv::Mat();
}

bool NodeEditor::strokeOneObject(qint64 frame, SegmentNode *node, const Edit &edit)
{
    const cv::Mat result = corrected(frame, *node, edit);
    node->result = encoded(result);
    return !result.empty();
}

bool NodeEditor::strokeParts(qint64 frame, SegmentNode *node, const Edit &edit)
{
    if (edit.stroke == KeepStroke && !edit.isSingleObject && !edit.meetsMask()) {
        const cv::Mat object = newObject(frame, *node, edit.painted.pixels);
        if (!object.empty())
            assemble(node, cv::max(edit.own, object));
        return !object.empty();
    }
    const cv::Mat result = corrected(frame, *node, edit);
    if (result.empty())
        return false;
    if (edit.stroke == KeepStroke) {
        assemble(node,
                 keptByBrush(*node, result, edit.own, edit.painted.pixels, edit.isSingleObject));
        return true;
    }
    // Goes with what is tracked into the frame, too.
    if (!edit.isSingleObject)
        node->erase = united(node->erase, paintedIn((edit.mask >= 128) & (result < 128)));
    takeFromAreas(node, result);
    assemble(node, cv::min(edit.own, result));
    return true;
}

// What the stroke alone marks, whatever else is marked on the frame.
cv::Mat NodeEditor::newObject(qint64 frame, const SegmentNode &node, const cv::Mat &painted)
{
    if (!readFrame(frame))
        return {};
    const cv::Mat remove = node.remove.isEmpty() ? cv::Mat() : decodedPixels(node.remove);
    cv::Mat object = m_segmenter->segment(m_pixels, {painted, remove}, {}, neighbours());
    if (!object.empty() && !node.erase.isEmpty())
        object.setTo(0, decodedPixels(node.erase));
    return object;
}

cv::Mat NodeEditor::segmented(const SegmentNode &node, const cv::Mat &previous)
{
    zk::engine::Scribbles scribbles;
    scribbles.keep = node.keep.isEmpty() ? cv::Mat() : decodedPixels(node.keep);
    scribbles.remove = node.remove.isEmpty() ? cv::Mat() : decodedPixels(node.remove);
    cv::Mat result = m_segmenter->segment(m_pixels, scribbles, previous, neighbours());
    // What was erased stays away until it is painted again.
    if (!result.empty() && !node.erase.isEmpty())
        result.setTo(0, decodedPixels(node.erase));
    return result;
}

NodeEditor::Outcome NodeEditor::given(const SegmentNodePtr &before, const QImage &matte) const
{
    if (matte.isNull())
        return {};
    const auto node = copyOf({});
    const QImage grey = matte.convertToFormat(QImage::Format_Grayscale8);
    node->given = EncodedMatte(
        grey.scaled(m_reader->info().size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    node->result = node->given;
    return outcome(before, node);
}

EncodedMatte NodeEditor::objectIn(qint64 frame, const QRect &box, bool isSingleObject)
{
    if (!readFrame(frame))
        return {};
    zk::engine::BoxSegmenterOptions options;
    options.onlyLargest = isSingleObject;
    return encoded(zk::engine::segmentBox(m_pixels,
                                          {box.x(), box.y(), box.width(), box.height()},
                                          options,
                                          framesAround(frame, aroundBox)));
}

// What moves against its surroundings shows between them; where there is none it is empty.
std::vector<cv::Mat> NodeEditor::framesAround(qint64 frame, int distance) const
{
    std::vector<cv::Mat> result;
    for (const qint64 other : {frame - distance, frame + distance}) {
        const QImage image = m_inFrame + other < 0 ? QImage() : picture(other);
        result.push_back(image.isNull() ? cv::Mat() : pixelsOf(image).clone());
    }
    return result;
}

// Of the frame that was read last.
const std::vector<cv::Mat> &NodeEditor::neighbours()
{
    if (m_neighbours.empty() && m_segmenter->looksAtNeighbours())
        m_neighbours = framesAround(m_frame, aroundStroke);
    return m_neighbours;
}

QImage NodeEditor::picture(qint64 frame) const
{
    return m_reader->frameAt(m_inFrame + frame);
}

} // namespace zk::datamodel
