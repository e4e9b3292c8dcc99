#include "ProjectRows_p.h"

#include <QCoreApplication>
#include <QDateTime>

#include <algorithm>

namespace zk::storage {

namespace {

// Mattes that share their bytes are one; the bytes of an empty one are nowhere.
QByteArray keyOf(const MatteRecord &matte)
{
    const quintptr place = matte.pixels.isEmpty() ? 0 : quintptr(matte.pixels.constData());
    QByteArray key;
    for (const qint64 part : {qint64(place),
                              qint64(matte.size.width()),
                              qint64(matte.size.height()),
                              qint64(matte.box.x()),
                              qint64(matte.box.y()),
                              qint64(matte.box.width()),
                              qint64(matte.box.height())})
        key.append(reinterpret_cast<const char *>(&part), int(sizeof part));
    return key;
}

// Texts and bytes that are null would come back as NULL.
QString text(const QString &value)
{
    return value.isNull() ? QStringLiteral("") : value;
}

} // namespace

bool ProjectWriter::write(const ProjectRecord &project)
{
    using Table = ProjectTable;
    constexpr auto segmentations = &ClipRecord::segmentations;
    collect(project);
    return m_database.run(QStringLiteral("BEGIN")) && writeMattes() && writeMedia(project)
        && writeClips(project) && writeEffects(project, Table::Effect, &ClipRecord::effects)
        && writeSegmentations(project, Table::Segmentation, segmentations)
        && writeNodes(project, Table::Node, segmentations)
        && writeTracked(project, Table::Tracked, segmentations) && writeApplied(project)
        && writeProject(project) && writeDrafts(project) && writeErasing(project)
        && m_database.run(QStringLiteral("COMMIT"));
}

void ProjectWriter::collect(const ProjectRecord &project)
{
    for (const ClipRecord &clip : project.clips) {
        for (const SegmentationRecord &segmentation : clip.segmentations)
            collect(segmentation);
        for (const SegmentationRecord &draft : clip.drafts)
            collect(draft);
        for (const MatteRecord &matte : clip.mattes)
            collect(matte);
    }
}

void ProjectWriter::collect(const SegmentationRecord &segmentation)
{
    for (const NodeRecord &node : segmentation.nodes) {
        for (const MatteRecord *matte :
             {&node.keep, &node.remove, &node.erase, &node.given, &node.result})
            collect(*matte);
    }
    for (const TrackedRecord &tracked : segmentation.tracked)
        collect(tracked.matte);
    for (const ErasingRecord &erasing : segmentation.erasing)
        collect(erasing.matte);
}

void ProjectWriter::collect(const MatteRecord &matte)
{
    if (matte.isNull() || m_ids.contains(keyOf(matte)))
        return;
    m_mattes.append(matte);
    m_ids.insert(keyOf(matte), m_mattes.size());
}

QVariant ProjectWriter::idOf(const MatteRecord &matte) const
{
    return matte.isNull() ? QVariant(QVariant::LongLong) : QVariant(m_ids.value(keyOf(matte)));
}

bool ProjectWriter::writeMattes()
{
    bool isGood = m_database.beginTable(ProjectTable::Matte);
    for (int i = 0; i < m_mattes.size() && isGood; ++i) {
        const MatteRecord &matte = m_mattes.at(i);
        isGood = m_database.addRow({i + 1,
                                    matte.size.width(),
                                    matte.size.height(),
                                    matte.box.x(),
                                    matte.box.y(),
                                    matte.box.width(),
                                    matte.box.height(),
                                    matte.objectPixels,
                                    matte.pixels});
    }
    return isGood;
}

bool ProjectWriter::writeMedia(const ProjectRecord &project)
{
    bool isGood = m_database.beginTable(ProjectTable::Media);
    for (int i = 0; i < project.media.size() && isGood; ++i) {
        const MediaRecord &media = project.media.at(i);
        isGood = m_database.addRow({i,
                                    media.id,
                                    text(media.path),
                                    text(media.relativePath),
                                    media.fileSize,
                                    media.modified,
                                    media.size.width(),
                                    media.size.height(),
                                    media.frameRateNum,
                                    media.frameRateDen,
                                    media.frameCount,
                                    int(media.hasAudio),
                                    int(media.isStill),
                                    int(media.isAnimatedGif),
                                    int(media.hasAlpha),
                                    int(media.isVariableRate),
                                    media.rotation,
                                    text(media.formatSuffix)});
    }
    return isGood;
}

bool ProjectWriter::writeClips(const ProjectRecord &project)
{
    bool isGood = m_database.beginTable(ProjectTable::Clip);
    for (int i = 0; i < project.clips.size() && isGood; ++i) {
        const ClipRecord &clip = project.clips.at(i);
        isGood = m_database.addRow(
            {i, clip.id, clip.media, clip.inFrame, clip.frameCount, clip.playhead});
    }
    return isGood;
}

bool ProjectWriter::writeEffects(const ProjectRecord &project, ProjectTable table, Effects effects)
{
    bool isGood = m_database.beginTable(table);
    for (const ClipRecord &clip : project.clips) {
        for (const EffectRecord &effect : clip.*effects)
            isGood = isGood
                && m_database.addRow({clip.id,
                                      effect.type,
                                      text(effect.slug),
                                      effect.settings,
                                      int(effect.isEnabled)});
    }
    return isGood;
}

bool ProjectWriter::writeSegmentations(const ProjectRecord &project,
                                       ProjectTable table,
                                       Segmentations which)
{
    bool isGood = m_database.beginTable(table);
    for (const ClipRecord &clip : project.clips) {
        for (const SegmentationRecord &segmentation : clip.*which)
            isGood = isGood
                && m_database.addRow({clip.id,
                                      segmentation.businessType,
                                      segmentation.previewType,
                                      text(segmentation.overlayColour),
                                      segmentation.overlayAlpha,
                                      int(segmentation.isInverted)});
    }
    return isGood;
}

bool ProjectWriter::writeNodes(const ProjectRecord &project,
                               ProjectTable table,
                               Segmentations which)
{
    bool isGood = m_database.beginTable(table);
    for (const ClipRecord &clip : project.clips) {
        for (const SegmentationRecord &segmentation : clip.*which) {
            for (const NodeRecord &node : segmentation.nodes)
                isGood = isGood
                    && m_database.addRow({clip.id,
                                          segmentation.businessType,
                                          node.frame,
                                          qint64(node.revision),
                                          idOf(node.keep),
                                          idOf(node.remove),
                                          idOf(node.erase),
                                          idOf(node.given),
                                          idOf(node.result)});
        }
    }
    return isGood;
}

bool ProjectWriter::writeTracked(const ProjectRecord &project,
                                 ProjectTable table,
                                 Segmentations which)
{
    bool isGood = m_database.beginTable(table);
    for (const ClipRecord &clip : project.clips) {
        for (const SegmentationRecord &segmentation : clip.*which) {
            for (const TrackedRecord &tracked : segmentation.tracked)
                isGood = isGood
                    && m_database.addRow({clip.id,
                                          segmentation.businessType,
                                          tracked.frame,
                                          int(tracked.isForward),
                                          idOf(tracked.matte),
                                          tracked.confidence,
                                          tracked.seed,
                                          qint64(tracked.seedRevision),
                                          qint64(tracked.serial)});
        }
    }
    return isGood;
}

bool ProjectWriter::writeApplied(const ProjectRecord &project)
{
    bool isGood = m_database.beginTable(ProjectTable::Applied);
    for (const ClipRecord &clip : project.clips) {
        for (int frame = 0; frame < clip.mattes.size() && isGood; ++frame)
            isGood = m_database.addRow({clip.id, frame, idOf(clip.mattes.at(frame))});
    }
    return isGood;
}

bool ProjectWriter::writeProject(const ProjectRecord &project)
{
    return m_database.beginTable(ProjectTable::Project)
        && m_database.addLastRow({text(project.id),
                                  QCoreApplication::applicationVersion(),
                                  QDateTime::currentMSecsSinceEpoch(),
                                  text(project.origin),
                                  project.currentClip});
}

bool ProjectWriter::writeDrafts(const ProjectRecord &project)
{
    using Table = ProjectTable;
    const bool hasDrafts =
        std::any_of(project.clips.begin(), project.clips.end(), [](const ClipRecord &clip) {
            return !clip.drafts.isEmpty();
        });
    return !hasDrafts
        || (writeEffects(project, Table::DraftEffect, &ClipRecord::draftEffects)
            && writeSegmentations(project, Table::DraftSegmentation, &ClipRecord::drafts)
            && writeNodes(project, Table::DraftNode, &ClipRecord::drafts)
            && writeTracked(project, Table::DraftTracked, &ClipRecord::drafts)
            && m_database.beginTable(Table::DraftSeal) && m_database.addLastRow({}));
}

bool ProjectWriter::writeErasing(const ProjectRecord &project)
{
    const auto isErasing = [](const SegmentationRecord &record) {
        return !record.erasing.isEmpty();
    };
    const auto hasErasing = [&](const ClipRecord &clip) {
        return std::any_of(clip.segmentations.begin(), clip.segmentations.end(), isErasing)
            || std::any_of(clip.drafts.begin(), clip.drafts.end(), isErasing);
    };
    if (!std::any_of(project.clips.begin(), project.clips.end(), hasErasing))
        return true;
    bool isGood = m_database.beginTable(ProjectTable::Erasing);
    for (const ClipRecord &clip : project.clips)
        isGood = isGood && writeErasing(clip, &ClipRecord::segmentations)
            && writeErasing(clip, &ClipRecord::drafts);
    return isGood && m_database.beginTable(ProjectTable::ErasingSeal) && m_database.addLastRow({});
}

bool ProjectWriter::writeErasing(const ClipRecord &clip, Segmentations which)
{
    bool isGood = true;
    for (const SegmentationRecord &segmentation : clip.*which) {
        for (const ErasingRecord &erasing : segmentation.erasing)
            isGood = isGood
                && m_database.addRow({clip.id,
                                      segmentation.businessType,
                                      int(which == &ClipRecord::drafts),
                                      erasing.selection,
                                      erasing.frame,
                                      erasing.area,
                                      erasing.rect.x(),
                                      erasing.rect.y(),
                                      erasing.rect.width(),
                                      erasing.rect.height(),
                                      idOf(erasing.matte)});
    }
    return isGood;
}

} // namespace zk::storage
