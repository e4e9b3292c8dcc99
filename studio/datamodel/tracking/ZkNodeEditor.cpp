#include "ZkNodeEditor.h"

#include "../ZkMediaOpening.h"
#include "../segmentation/ZkPixels.h"

namespace zk::datamodel {

namespace {

cv::Mat decodedPixels(const EncodedMatte &mask)
{
    const QImage image = mask.decoded();
    return pixelsOf(image).clone();
}

EncodedMatte encoded(const cv::Mat &pixels)
{
    return EncodedMatte(greyImage(pixels));
}

EncodedMatte united(const EncodedMatte &mask, const cv::Mat &map)
{
    return encoded(mask.isEmpty() ? map : cv::Mat(decodedPixels(mask) | map));
}

EncodedMatte without(const EncodedMatte &mask, const cv::Mat &map)
{
    return mask.isEmpty() ? mask : encoded(decodedPixels(mask) & ~map);
}

// Every pixel belongs to the stroke that touched it last.
void addStroke(SegmentNode *node, NodeEditor::Stroke stroke, const cv::Mat &map)
{
    node->keep =
        stroke == NodeEditor::KeepStroke ? united(node->keep, map) : without(node->keep, map);
    if (stroke == NodeEditor::RemoveStroke)
        node->remove = united(node->remove, map);
    else if (stroke == NodeEditor::KeepStroke)
        node->remove = without(node->remove, map);
    node->erase =
        stroke == NodeEditor::EraseStroke ? united(node->erase, map) : without(node->erase, map);
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
        && before->result == after->result;
    return {true, isSame ? before : after};
}

} // namespace

std::unique_ptr<NodeEditor>
NodeEditor::open(const zk::media::MediaInfo &media, qint64 inFrame, QString *error)
{
    auto reader = openMedia(media, error);
    if (!reader)
        return nullptr;
    std::unique_ptr<NodeEditor> editor(new NodeEditor(std::move(reader), inFrame));
    if (editor->readFrame(0))
        return editor;
    *error = QStringLiteral("%1 has no readable picture.").arg(media.path);
    return nullptr;
}

NodeEditor::NodeEditor(std::unique_ptr<zk::media::MediaReader> reader, qint64 inFrame)
    : m_reader(std::move(reader))
    , m_inFrame(inFrame)
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
    return true;
}

NodeEditor::Outcome
NodeEditor::stroked(const Segments &segments, qint64 frame, Stroke stroke, const QImage &map)
{
    const QImage mask = segments.matteAt(frame);
    const cv::Mat painted = pixelsOf(map);
    const SegmentNodePtr before = segments.node(frame);
    const bool hasMask = !mask.isNull();
    if (stroke == EraseStroke && hasMask && cv::countNonZero(pixelsOf(mask) & painted) == 0)
        return {true, before};
    const auto node = copyOf(before);
    addStroke(node.data(), stroke, painted);
    cv::Mat result;
    if (stroke == EraseStroke)
        result = hasMask ? cv::Mat(pixelsOf(mask) & ~painted) : cv::Mat();
    else if (readFrame(frame))
        result = segmented(*node, pixelsOf(mask));
    if (result.empty())
        return {};
    node->result = encoded(result);
    return outcome(before, node);
}

cv::Mat NodeEditor::segmented(const SegmentNode &node, const cv::Mat &previous)
{
    zk::engine::Scribbles scribbles;
    scribbles.keep = node.keep.isEmpty() ? cv::Mat() : decodedPixels(node.keep);
    scribbles.remove = node.remove.isEmpty() ? cv::Mat() : decodedPixels(node.remove);
    cv::Mat result = m_segmenter.segment(m_pixels, scribbles, previous);
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

} // namespace zk::datamodel
