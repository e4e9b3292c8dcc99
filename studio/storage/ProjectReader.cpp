#include "ProjectRows_p.h"

namespace zk::storage {

bool ProjectReader::read(ProjectRecord *project)
{
    if (!readMattes() || !readMedia() || !readClips() || !readEffects() || !readSegmentations()
        || !readNodes() || !readTracked() || !readApplied() || !readProject(true))
        return false;
    *project = m_project;
    return true;
}

bool ProjectReader::readSummary(ProjectRecord *project)
{
    if (!readClips() || !readProject(false))
        return false;
    *project = m_project;
    return true;
}

bool ProjectReader::readMattes()
{
    return m_database.readTable(ProjectTable::Matte, [this](const QVariantList &row) {
        MatteRecord matte;
        matte.size = QSize(row.at(1).toInt(), row.at(2).toInt());
        matte.box =
            QRect(row.at(3).toInt(), row.at(4).toInt(), row.at(5).toInt(), row.at(6).toInt());
        matte.objectPixels = row.at(7).toInt();
        matte.pixels = row.at(8).toByteArray();
        m_mattes.insert(row.at(0).toLongLong(), matte);
        return !matte.isNull();
    });
}

bool ProjectReader::readMedia()
{
    return m_database.readTable(ProjectTable::Media, [this](const QVariantList &row) {
        MediaRecord media;
        media.id = row.at(1).toLongLong();
        media.path = row.at(2).toString();
        media.relativePath = row.at(3).toString();
        media.fileSize = row.at(4).toLongLong();
        media.modified = row.at(5).toLongLong();
        media.size = QSize(row.at(6).toInt(), row.at(7).toInt());
        media.frameRateNum = row.at(8).toInt();
        media.frameRateDen = row.at(9).toInt();
        media.frameCount = row.at(10).toLongLong();
        media.hasAudio = row.at(11).toBool();
        media.isStill = row.at(12).toBool();
        media.isAnimatedGif = row.at(13).toBool();
        media.hasAlpha = row.at(14).toBool();
        media.isVariableRate = row.at(15).toBool();
        media.rotation = row.at(16).toInt();
        media.formatSuffix = row.at(17).toString();
        m_project.media.append(media);
        return true;
    });
}

bool ProjectReader::readClips()
{
    return m_database.readTable(ProjectTable::Clip, [this](const QVariantList &row) {
        ClipRecord clip;
        clip.id = row.at(1).toLongLong();
        clip.media = row.at(2).toLongLong();
        clip.inFrame = row.at(3).toLongLong();
        clip.frameCount = row.at(4).toLongLong();
        clip.playhead = row.at(5).toLongLong();
        m_project.clips.append(clip);
        return true;
    });
}

bool ProjectReader::readEffects()
{
    return m_database.readTable(ProjectTable::Effect, [this](const QVariantList &row) {
        ClipRecord *clip = findClip(row.at(0));
        if (clip)
            clip->effects.append({row.at(1).toInt(),
                                  row.at(2).toString(),
                                  row.at(3).toByteArray(),
                                  row.at(4).toBool()});
        return clip != nullptr;
    });
}

bool ProjectReader::readSegmentations()
{
    return m_database.readTable(ProjectTable::Segmentation, [this](const QVariantList &row) {
        ClipRecord *clip = findClip(row.at(0));
        if (!clip || findSegmentation(row.at(0), row.at(1)))
            return false;
        SegmentationRecord segmentation;
        segmentation.businessType = row.at(1).toInt();
        segmentation.previewType = row.at(2).toInt();
        segmentation.overlayColour = row.at(3).toString();
        segmentation.overlayAlpha = row.at(4).toInt();
        segmentation.isInverted = row.at(5).toBool();
        clip->segmentations.append(segmentation);
        return true;
    });
}

bool ProjectReader::readNodes()
{
    return m_database.readTable(ProjectTable::Node, [this](const QVariantList &row) {
        SegmentationRecord *segmentation = findSegmentation(row.at(0), row.at(1));
        NodeRecord node;
        node.frame = row.at(2).toLongLong();
        node.revision = quint64(row.at(3).toLongLong());
        if (!segmentation || !findMatte(row.at(4), &node.keep)
            || !findMatte(row.at(5), &node.remove) || !findMatte(row.at(6), &node.erase)
            || !findMatte(row.at(7), &node.given) || !findMatte(row.at(8), &node.result))
            return false;
        segmentation->nodes.append(node);
        return true;
    });
}

bool ProjectReader::readTracked()
{
    return m_database.readTable(ProjectTable::Tracked, [this](const QVariantList &row) {
        SegmentationRecord *segmentation = findSegmentation(row.at(0), row.at(1));
        TrackedRecord tracked;
        tracked.frame = row.at(2).toLongLong();
        tracked.isForward = row.at(3).toBool();
        tracked.confidence = row.at(5).toDouble();
        tracked.seed = row.at(6).toLongLong();
        tracked.seedRevision = quint64(row.at(7).toLongLong());
        tracked.serial = quint64(row.at(8).toLongLong());
        if (!segmentation || !findMatte(row.at(4), &tracked.matte))
            return false;
        segmentation->tracked.append(tracked);
        return true;
    });
}

bool ProjectReader::readApplied()
{
    return m_database.readTable(ProjectTable::Applied, [this](const QVariantList &row) {
        ClipRecord *clip = findClip(row.at(0));
        MatteRecord matte;
        if (!clip || row.at(1).toLongLong() != clip->mattes.size() || !findMatte(row.at(2), &matte))
            return false;
        clip->mattes.append(matte);
        return true;
    });
}

bool ProjectReader::readProject(bool checksDigest)
{
    bool isThere = false;
    const bool isRead = m_database.readTable(ProjectTable::Project, [&](const QVariantList &row) {
        m_project.id = row.at(0).toString();
        m_project.application = row.at(1).toString();
        m_project.saved = QDateTime::fromMSecsSinceEpoch(row.at(2).toLongLong(), Qt::UTC);
        m_project.origin = row.at(3).toString();
        m_project.currentClip = row.at(4).toLongLong();
        isThere = !isThere && (!checksDigest || row.at(5).toByteArray() == m_database.digest());
        return isThere;
    });
    return isRead && isThere;
}

// Of no id there is no matte.
bool ProjectReader::findMatte(const QVariant &id, MatteRecord *matte) const
{
    if (id.isNull())
        return true;
    *matte = m_mattes.value(id.toLongLong());
    return !matte->isNull();
}

ClipRecord *ProjectReader::findClip(const QVariant &id)
{
    for (ClipRecord &clip : m_project.clips) {
        if (clip.id == id.toLongLong())
            return &clip;
    }
    return nullptr;
}

SegmentationRecord *ProjectReader::findSegmentation(const QVariant &clip, const QVariant &type)
{
    ClipRecord *found = findClip(clip);
    if (!found)
        return nullptr;
    for (SegmentationRecord &segmentation : found->segmentations) {
        if (segmentation.businessType == type.toInt())
            return &segmentation;
    }
    return nullptr;
}

} // namespace zk::storage
