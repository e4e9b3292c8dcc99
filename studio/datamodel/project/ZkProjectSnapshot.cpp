#include "ZkProjectSnapshot.h"

#include "../segmentation/ZkMatteTrack.h"
#include "ZkErasingRecords.h"
#include "ZkProjectRecords.h"

#include "datamodel/ZkTimeline.h"

#include <QDir>
#include <QSet>

namespace zk::datamodel {

namespace {

using zk::storage::ClipRecord;
using zk::storage::EffectRecord;
using zk::storage::MatteRecord;
using zk::storage::MediaRecord;
using zk::storage::NodeRecord;
using zk::storage::ProjectRecord;
using zk::storage::SegmentationRecord;
using zk::storage::TrackedRecord;

// To rows.

MatteRecord recordOf(const EncodedMatte &matte)
{
    return {matte.size(), matte.box(), matte.objectPixels(), matte.data()};
}

// Empty where none leads there, as between drives.
QString relativePath(const QString &path, const QString &folder)
{
    const QString relative = QDir(folder).relativeFilePath(path);
    return QDir::isRelativePath(relative) ? relative : QString();
}

MediaRecord recordOf(const MediaEntry &entry, const QString &folder)
{
    const zk::media::MediaInfo &info = entry.info;
    MediaRecord record;
    record.id = entry.id;
    record.path = info.path;
    record.relativePath = relativePath(info.path, folder);
    record.fileSize = entry.fileSize;
    record.modified = entry.modified.toMSecsSinceEpoch();
    record.size = info.size;
    record.frameRateNum = info.frameRateNum;
    record.frameRateDen = info.frameRateDen;
    record.frameCount = info.frameCount;
    record.hasAudio = info.hasAudio;
    record.isStill = info.isStill;
    record.isAnimatedGif = info.isAnimatedGif;
    record.hasAlpha = info.hasAlpha;
    record.isVariableRate = info.isVariableRate;
    record.rotation = info.rotation;
    record.formatSuffix = info.formatSuffix;
    return record;
}

// The plain cutout has no settings.
EffectRecord recordOf(const ProjectSnapshot::Effect &effect)
{
    const QByteArray settings = effect.look.slug.isEmpty() ? QByteArray() : effect.look.toJson();
    return {ZKTIMELINE::SmartKeyingEffect, effect.slug, settings, effect.isEnabled};
}

NodeRecord recordOf(qint64 frame, const SegmentNode &node)
{
    return {frame,
            node.revision,
            recordOf(node.keep),
            recordOf(node.remove),
            recordOf(node.erase),
            recordOf(node.given),
            recordOf(node.result)};
}

void appendSide(qint64 frame,
                bool isForward,
                const TrackedSide &side,
                QVector<TrackedRecord> *records)
{
    if (!side.matte.isNull())
        records->append({frame,
                         isForward,
                         recordOf(side.matte),
                         double(side.confidence),
                         side.seed,
                         side.seedRevision,
                         side.serial});
}

SegmentationRecord recordOf(const ProjectSnapshot::Segmentation &segmentation)
{
    SegmentationRecord record;
    record.businessType = segmentation.type;
    record.previewType = int(segmentation.settings.type);
    record.overlayColour = segmentation.settings.overlayColour.name(QColor::HexArgb);
    record.overlayAlpha = segmentation.settings.overlayAlpha;
    record.isInverted = segmentation.settings.invert;
    const auto &nodes = segmentation.segments.nodes();
    for (auto it = nodes.constBegin(); it != nodes.constEnd(); ++it)
        record.nodes.append(recordOf(it.key(), *it.value()));
    const auto &tracked = segmentation.segments.tracked();
    for (auto it = tracked.constBegin(); it != tracked.constEnd(); ++it) {
        appendSide(it.key(), true, it.value().forward, &record.tracked);
        appendSide(it.key(), false, it.value().backward, &record.tracked);
    }
    record.erasing = erasingRecords(segmentation.segments);
    return record;
}

ClipRecord recordOf(const ProjectSnapshot::Clip &clip)
{
    ClipRecord record;
    record.id = clip.id;
    record.media = clip.media;
    record.inFrame = clip.inFrame;
    record.frameCount = clip.frameCount;
    record.playhead = clip.playhead;
    for (const ProjectSnapshot::Effect &effect : clip.effects)
        record.effects.append(recordOf(effect));
    for (const ProjectSnapshot::Segmentation &segmentation : clip.segmentations)
        record.segmentations.append(recordOf(segmentation));
    if (clip.mattes) {
        for (const EncodedMatte &matte : clip.mattes->mattes())
            record.mattes.append(recordOf(matte));
    }
    for (const ProjectSnapshot::Draft &draft : clip.drafts) {
        record.drafts.append(recordOf(draft));
        for (const ProjectSnapshot::Effect &effect : draft.effects)
            record.draftEffects.append(recordOf(effect));
    }
    return record;
}

// From rows. Each is false when they are damaged.

// Reads mattes of the frames of one clip.
class MatteDecoder
{
public:
    explicit MatteDecoder(const QSize &frameSize)
        : m_frameSize(frameSize)
    { }

    EncodedMatte operator()(const MatteRecord &record)
    {
        EncodedMatte matte;
        if (record.isNull())
            return matte;
        m_isGood = m_isGood && record.size == m_frameSize
            && EncodedMatte::fromParts(
                       record.size, record.box, record.objectPixels, record.pixels, &matte);
        return matte;
    }
    bool isGood() const { return m_isGood; }

private:
    const QSize m_frameSize;
    bool m_isGood = true;
};

bool read(const MediaRecord &record, const QString &folder, MediaEntry *entry)
{
    zk::media::MediaInfo &info = entry->info;
    entry->id = record.id;
    entry->fileSize = record.fileSize;
    entry->modified = QDateTime::fromMSecsSinceEpoch(record.modified, Qt::UTC);
    info.path = record.path;
    info.size = record.size;
    info.frameRateNum = record.frameRateNum;
    info.frameRateDen = record.frameRateDen;
    info.frameCount = record.frameCount;
    info.hasAudio = record.hasAudio;
    info.isStill = record.isStill;
    info.isAnimatedGif = record.isAnimatedGif;
    info.hasAlpha = record.hasAlpha;
    info.isVariableRate = record.isVariableRate;
    info.rotation = record.rotation;
    info.formatSuffix = record.formatSuffix;
    if (entry->id < 1 || info.size.isEmpty() || info.frameRateNum < 1 || info.frameRateDen < 1
        || info.frameCount < 1)
        return false;
    QStringList places;
    if (!record.relativePath.isEmpty())
        places.append(QDir::cleanPath(QDir(folder).absoluteFilePath(record.relativePath)));
    places.append(record.path);
    *entry = lookedUp(*entry, places);
    return true;
}

bool read(const EffectRecord &record, ProjectSnapshot::Effect *effect)
{
    effect->slug = record.slug;
    effect->isEnabled = record.isEnabled;
    return record.type == ZKTIMELINE::SmartKeyingEffect
        && (record.settings.isEmpty()
            || zk::effects::Look::fromJson(record.settings, &effect->look));
}

SegmentNodePtr nodeOf(const NodeRecord &record, MatteDecoder *matte)
{
    const auto node = QSharedPointer<SegmentNode>::create();
    node->keep = (*matte)(record.keep);
    node->remove = (*matte)(record.remove);
    node->erase = (*matte)(record.erase);
    node->given = (*matte)(record.given);
    node->result = (*matte)(record.result);
    node->revision = record.revision;
    return node;
}

void readSettings(const SegmentationRecord &record, SegmentSettings *settings)
{
    settings->type = zk::effects::PreviewType(qBound(1, record.previewType, 4));
    const QColor colour(record.overlayColour);
    if (colour.isValid())
        settings->overlayColour = colour;
    settings->overlayAlpha = qBound(0, record.overlayAlpha, 255);
    settings->invert = record.isInverted;
}

bool read(const SegmentationRecord &record,
          const QSize &frameSize,
          ProjectSnapshot::Segmentation *segmentation)
{
    using namespace ZKSMARTKEYING;
    if (record.businessType != SmartCutout && record.businessType != AIErasing)
        return false;
    segmentation->type = ZkSmartKeyingBusinessType(record.businessType);
    readSettings(record, &segmentation->settings);
    MatteDecoder matte(frameSize);
    for (const NodeRecord &node : record.nodes) {
        segmentation->segments.setNode(node.frame, nodeOf(node, &matte));
        Segments::skipRevisions(node.revision);
    }
    QMap<qint64, TrackedMattes> tracked;
    for (const TrackedRecord &side : record.tracked) {
        TrackedMattes &mattes = tracked[side.frame];
        auto &way = side.isForward ? mattes.forward : mattes.backward;
        way = {
            matte(side.matte), float(side.confidence), side.seed, side.seedRevision, side.serial};
        Segments::skipRevisions(side.serial);
    }
    segmentation->segments.setTracked(tracked);
    return matte.isGood() && readErasing(record.erasing, frameSize, &segmentation->segments);
}

bool read(const QVector<EffectRecord> &records, QVector<ProjectSnapshot::Effect> *effects)
{
    bool isGood = true;
    for (const EffectRecord &record : records) {
        effects->append(ProjectSnapshot::Effect());
        isGood = isGood && read(record, &effects->last());
    }
    return isGood;
}

bool readDrafts(const ClipRecord &record, const QSize &frameSize, ProjectSnapshot::Clip *clip)
{
    bool isGood = true;
    for (const SegmentationRecord &segmentation : record.drafts) {
        ProjectSnapshot::Draft draft;
        isGood = isGood && read(segmentation, frameSize, &draft);
        if (draft.type == ZKSMARTKEYING::SmartCutout)
            isGood = isGood && read(record.draftEffects, &draft.effects);
        clip->drafts.append(draft);
    }
    return isGood;
}

bool readMattes(const ClipRecord &record, const QSize &frameSize, ProjectSnapshot::Clip *clip)
{
    if (record.mattes.isEmpty())
        return true;
    MatteDecoder decode(frameSize);
    QVector<EncodedMatte> mattes;
    for (const MatteRecord &matte : record.mattes)
        mattes.append(decode(matte));
    clip->mattes = std::make_shared<const MatteTrack>(mattes);
    return decode.isGood() && mattes.size() == record.frameCount;
}

bool read(const ClipRecord &record, const MediaEntry &media, ProjectSnapshot::Clip *clip)
{
    clip->id = record.id;
    clip->media = record.media;
    clip->inFrame = record.inFrame;
    clip->frameCount = record.frameCount;
    clip->playhead = record.playhead;
    bool isGood = record.id > 0 && record.inFrame >= 0 && record.frameCount > 0
        && record.inFrame + record.frameCount <= media.info.frameCount;
    isGood = isGood && read(record.effects, &clip->effects);
    for (const SegmentationRecord &segmentation : record.segmentations) {
        clip->segmentations.append(ProjectSnapshot::Segmentation());
        isGood = isGood && read(segmentation, media.info.size, &clip->segmentations.last());
    }
    isGood = isGood && readDrafts(record, media.info.size, clip);
    return isGood && readMattes(record, media.info.size, clip);
}

const MediaEntry *find(const QVector<MediaEntry> &media, qint64 id)
{
    for (const MediaEntry &entry : media) {
        if (entry.id == id)
            return &entry;
    }
    return nullptr;
}

} // namespace

zk::storage::ProjectRecord ProjectSnapshot::toRecord(const QString &folder) const
{
    ProjectRecord record;
    record.id = id;
    record.origin = origin;
    record.currentClip = currentClip;
    for (const MediaEntry &entry : media)
        record.media.append(recordOf(entry, folder));
    for (const Clip &clip : clips)
        record.clips.append(recordOf(clip));
    return record;
}

bool ProjectSnapshot::fromRecord(const zk::storage::ProjectRecord &record,
                                 const QString &folder,
                                 const ReadingStep &step)
{
    *this = ProjectSnapshot();
    id = record.id;
    origin = record.origin;
    currentClip = record.currentClip;
    QSet<qint64> ids;
    for (const MediaRecord &row : record.media) {
        if (!step(media.size(), record.media.size()))
            return false;
        media.append(MediaEntry());
        if (!read(row, folder, &media.last()) || ids.contains(row.id))
            return false;
        ids.insert(row.id);
    }
    for (const ClipRecord &row : record.clips) {
        const MediaEntry *entry = find(media, row.media);
        clips.append(Clip());
        if (!entry || ids.contains(row.id) || !read(row, *entry, &clips.last()))
            return false;
        ids.insert(row.id);
    }
    return !id.isEmpty();
}

} // namespace zk::datamodel
