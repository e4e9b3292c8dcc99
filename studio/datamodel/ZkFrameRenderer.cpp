#include "ZkFrameRenderer.h"

#include "ZkFrameCache.h"
#include "ZkMediaOpening.h"
#include "ZkPreview.h"
#include "segmentation/ZkAreaOutlines.h"
#include "segmentation/ZkMatteTrack.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"
#include "timeline/ZkStudioTimeline.h"

namespace zk::datamodel {

using zk::effects::Look;
using zk::effects::PreviewSettings;
using zk::effects::PreviewType;
using zk::effects::RenderInput;

struct RenderSnapshot::Data
{
    ZkTimelineFormat format;
    zk::media::MediaInfo media;
    qint64 inFrame = 0;
    qint64 frameCount = 0;
    Look look; // the plain one unless an enabled effect gives another
    bool isCutOut = false;
    PreviewSettings settings;
    // Where the mattes come from: one of the two.
    Segments segments;
    std::shared_ptr<const MatteTrack> track;
    bool showsAreaMasks = true;
    bool showsAreaOutlines = false;

    void takeMasks(const ZkStudioSmartKeyingService &service);
    void takeApplied(const ZkStudioClip &clip);
    // The final matte without invert; null: nothing of this frame is kept.
    QImage matteAt(qint64 frame) const;
    // The same for the eye alone, which may not want to see the objects in areas.
    QImage shownMatteAt(qint64 frame) const;
};

// On an edit timeline selections that were saved belong to it.
QImage RenderSnapshot::Data::matteAt(qint64 frame) const
{
    return track ? track->matteAt(frame) : EraseMasks(segments).pictureAt(frame);
}

QImage RenderSnapshot::Data::shownMatteAt(qint64 frame) const
{
    const SegmentNodePtr node = segments.node(frame);
    if (showsAreaMasks || !node || node->areas.isEmpty())
        return matteAt(frame);
    const auto painted = QSharedPointer<SegmentNode>::create(*node);
    painted->areas.clear();
    painted->result = node->brush;
    Data copy = *this;
    copy.segments.setNode(frame, node->isPainted() ? painted : SegmentNodePtr());
    return copy.matteAt(frame);
}

void RenderSnapshot::Data::takeMasks(const ZkStudioSmartKeyingService &service)
{
    segments = service.segments();
    settings = service.settings();
    showsAreaMasks = service.showsAreaMasks();
    showsAreaOutlines = service.showsAreaOutlines();
    isCutOut = !segments.isEmpty();
}

void RenderSnapshot::Data::takeApplied(const ZkStudioClip &clip)
{
    const ZkStudioEffect *effect = clip.studioEffects()->cutoutEffect();
    track = clip.matteTrack();
    isCutOut = track && effect && effect->isEnabled();
    settings.type = PreviewType::Result;
}

namespace {

// Averaged, for interpolating between neighbours would leave pixels out.
QImage reducedTo(const QSize &size, const QImage &whole)
{
    return whole.isNull() || size.isEmpty()
        ? QImage()
        : whole.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

std::shared_ptr<const RenderSnapshot::Data> dataOf(const ZkStudioTimeline &timeline)
{
    const ZkStudioClip *clip = timeline.clip();
    if (!clip)
        return nullptr;
    auto data = std::make_shared<RenderSnapshot::Data>();
    data->format = timeline.format();
    data->media = clip->media();
    data->inFrame = clip->inFrame();
    data->frameCount = clip->frameCount();
    const ZkStudioEffect *effect = clip->studioEffects()->cutoutEffect();
    if (effect && effect->isEnabled())
        data->look = effect->look();
    if (const ZkStudioSmartKeyingService *service = timeline.shownService())
        data->takeMasks(*service);
    else
        data->takeApplied(*clip);
    return data;
}

} // namespace

RenderSnapshot::RenderSnapshot() = default;
RenderSnapshot::RenderSnapshot(const ZkStudioTimeline &timeline)
    : m_data(dataOf(timeline))
{ }
RenderSnapshot::~RenderSnapshot() = default;
RenderSnapshot::RenderSnapshot(const RenderSnapshot &) = default;
RenderSnapshot &RenderSnapshot::operator=(const RenderSnapshot &) = default;

QString RenderSnapshot::mediaPath() const
{
    return m_data ? m_data->media.path : QString();
}

QSize RenderSnapshot::frameSize() const
{
    return m_data ? m_data->format.frameSize : QSize();
}

qint64 RenderSnapshot::inFrame() const
{
    return m_data ? m_data->inFrame : 0;
}

qint64 RenderSnapshot::frameCount() const
{
    return m_data ? m_data->frameCount : 0;
}

int RenderSnapshot::frameRateNum() const
{
    return m_data ? m_data->format.frameRateNum : 0;
}

int RenderSnapshot::frameRateDen() const
{
    return m_data ? m_data->format.frameRateDen : 1;
}

bool RenderSnapshot::isCutOut() const
{
    return m_data && m_data->isCutOut;
}

class FrameRenderer::Private
{
public:
    QImage decoded(const RenderSnapshot::Data &data, qint64 frame);
    bool openReader(const zk::media::MediaInfo &media);
    // Without a matte unless something is cut out. A null frame: it cannot be decoded.
    RenderInput input(const RenderSnapshot &snapshot, qint64 frame);
    QImage finalMatte(const RenderSnapshot::Data &data, qint64 frame) const;
    Preview plain(const QImage &frame, const QSize &reduced);
    Preview
    composed(const RenderInput &input, const RenderSnapshot::Data &data, const QSize &reduced);

    std::shared_ptr<zk::media::FrameCache> cache;
    qint64 keptBytes = 0;
    std::unique_ptr<zk::media::MediaReader> reader;
    QString error;

private:
    Preview m_plain; // of the picture with that key
    qint64 m_plainKey = 0;
};

bool FrameRenderer::Private::openReader(const zk::media::MediaInfo &media)
{
    if (!reader || reader->info().path != media.path) {
        reader = openMedia(media, &error);
        if (reader)
            reader->keepPictures(keptBytes);
    }
    return reader != nullptr;
}

QImage FrameRenderer::Private::decoded(const RenderSnapshot::Data &data, qint64 frame)
{
    if (frame < 0 || frame >= data.frameCount) {
        error = QStringLiteral("Frame %1 is outside the clip.").arg(frame);
        return {};
    }
    const qint64 sourceFrame = data.inFrame + frame;
    QImage image = cache->find(data.media.path, sourceFrame);
    if (!image.isNull() || !openReader(data.media))
        return image;
    image = reader->frameAt(sourceFrame);
    if (image.isNull())
        error = QStringLiteral("Frame %1 of %2 cannot be read.").arg(frame).arg(data.media.path);
    else
        cache->insert(data.media.path, sourceFrame, image);
    return image;
}

RenderInput FrameRenderer::Private::input(const RenderSnapshot &snapshot, qint64 frame)
{
    RenderInput input;
    const RenderSnapshot::Data *data = snapshot.data();
    if (!data) {
        error = QStringLiteral("There is no clip to show.");
        return input;
    }
    input.frame = decoded(*data, frame);
    input.frameIndex = frame;
    input.frameRate = double(data->format.frameRateNum) / data->format.frameRateDen;
    if (data->isCutOut && !input.frame.isNull())
        input.matte = data->matteAt(frame);
    return input;
}

QImage FrameRenderer::Private::finalMatte(const RenderSnapshot::Data &data, qint64 frame) const
{
    QImage matte = data.matteAt(frame);
    if (matte.isNull()) {
        matte = QImage(data.media.size, QImage::Format_Grayscale8);
        matte.fill(0);
    }
    return data.settings.invert ? zk::effects::invertedMatte(matte) : matte;
}

namespace {

// Enough for the last frame, of which a player asks again and again.
std::shared_ptr<zk::media::FrameCache> smallCache()
{
    constexpr qint64 bytes = 64 * 1024 * 1024;
    return std::make_shared<zk::media::FrameCache>(bytes);
}

} // namespace

FrameRenderer::FrameRenderer(std::shared_ptr<zk::media::FrameCache> cache, qint64 keptBytes)
    : d(std::make_unique<Private>())
{
    d->cache = cache ? std::move(cache) : smallCache();
    d->keptBytes = keptBytes;
}

FrameRenderer::~FrameRenderer() = default;

QImage FrameRenderer::source(const RenderSnapshot &snapshot, qint64 frame)
{
    return d->input(snapshot, frame).frame;
}

// Without a mask.
FrameRenderer::Preview FrameRenderer::Private::plain(const QImage &frame, const QSize &reduced)
{
    if (m_plainKey != frame.cacheKey())
        m_plain = {zk::effects::opaquePicture(frame), QImage()};
    m_plainKey = frame.cacheKey();
    if (m_plain.reduced.size() != reduced)
        m_plain.reduced = reducedTo(reduced, m_plain.whole);
    return m_plain;
}

FrameRenderer::Preview FrameRenderer::Private::composed(const RenderInput &input,
                                                        const RenderSnapshot::Data &data,
                                                        const QSize &reduced)
{
    Preview preview;
    // Looks are left out, so all that a mask changes is the colour over the frame.
    const bool isOverlay = data.settings.type == PreviewType::Interactive && !data.settings.invert;
    if (isOverlay)
        preview = plain(input.frame, reduced);
    else
        preview.whole = zk::effects::composePreview(input, &data.look, data.settings);
    const bool hasOverlay = isOverlay && !input.matte.isNull();
    if (hasOverlay)
        preview.whole = zk::effects::overlaid(preview.whole, input.matte, data.settings);
    if (data.showsAreaOutlines)
        drawAreaOutlines(
            &preview.whole, data.segments.node(input.frameIndex), data.settings.overlayColour);
    if (!isOverlay || data.showsAreaOutlines)
        preview.reduced = reducedTo(reduced, preview.whole);
    else if (hasOverlay && !reduced.isEmpty())
        preview.reduced = zk::effects::overlaid(preview.reduced, input.matte, data.settings);
    return preview;
}

FrameRenderer::Preview
FrameRenderer::preview(const RenderSnapshot &snapshot, qint64 frame, const QSize &reduced)
{
    RenderInput input = d->input(snapshot, frame);
    if (input.frame.isNull())
        return {};
    if (!snapshot.isCutOut())
        return d->plain(input.frame, reduced);
    input.matte = snapshot.data()->shownMatteAt(frame);
    return d->composed(input, *snapshot.data(), reduced);
}

QImage FrameRenderer::cutout(const RenderSnapshot &snapshot, qint64 frame)
{
    RenderInput input = d->input(snapshot, frame);
    if (input.frame.isNull() || !snapshot.isCutOut())
        return input.frame;
    input.matte = d->finalMatte(*snapshot.data(), frame);
    return zk::effects::renderCutout(input, snapshot.data()->look);
}

QImage FrameRenderer::matte(const RenderSnapshot &snapshot, qint64 frame)
{
    const RenderSnapshot::Data *data = snapshot.data();
    if (!data || frame < 0 || frame >= data->frameCount) {
        d->error = QStringLiteral("Frame %1 is outside the clip.").arg(frame);
        return {};
    }
    if (data->isCutOut)
        return zk::effects::applyMatteSettings(d->finalMatte(*data, frame), data->look.matte);
    QImage opaque(data->media.size, QImage::Format_Grayscale8);
    opaque.fill(255);
    return opaque;
}

QString FrameRenderer::errorString() const
{
    return d->error;
}

} // namespace zk::datamodel
