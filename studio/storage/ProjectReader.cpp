#include "ProjectRows_p.h"

namespace zk::storage {

bool ProjectReader::read(ProjectRecord *project)
{
    using Table = ProjectTable;
    constexpr auto segmentations = &ClipRecord::segmentations;
    if (!readMattes() || !readMedia() || !readClips()
        || !readEffects(Table::Effect, &ClipRecord::effects)
        || !readSegmentations(Table::Segmentation, segmentations)
        || !readNodes(Table::Node, segmentations) || !readTracked(Table::Tracked, segmentations)
        || !readApplied() || !readProject(true) || !readDrafts() || !readErasing())
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

bool ProjectReader::readEffects(ProjectTable table, Effects effects)
{
    return m_database.readTable(table, [=](const QVariantList &row) {
        ClipRecord *clip = findClip(row.at(0));
        if (clip)
            (clip->*effects)
                .append({row.at(1).toInt(),
                         row.at(2).toString(),
                         row.at(3).toByteArray(),
                         row.at(4).toBool()});
        return clip != nullptr;
    });
}

bool ProjectReader::readSegmentations(ProjectTable table, Segmentations which)
{
    return m_database.readTable(table, [=](const QVariantList &row) {
        ClipRecord *clip = findClip(row.at(0));
        if (!clip || findSegmentation(row.at(0), row.at(1), which))
            return false;
        SegmentationRecord segmentation;
        segmentation.businessType = row.at(1).toInt();
        segmentation.previewType = row.at(2).toInt();
        segmentation.overlayColour = row.at(3).toString();
        segmentation.overlayAlpha = row.at(4).toInt();
        segmentation.isInverted = row.at(5).toBool();
        (clip->*which).append(segmentation);
        return true;
    });
}

bool ProjectReader::readNodes(ProjectTable table, Segmentations which)
{
    return m_database.readTable(table, [=](const QVariantList &row) {
        SegmentationRecord *segmentation = findSegmentation(row.at(0), row.at(1), which);
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

bool ProjectReader::readTracked(ProjectTable table, Segmentations which)
{
    return m_database.readTable(table, [=](const QVariantList &row) {
        SegmentationRecord *segmentation = findSegmentation(row.at(0), row.at(1), which);
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

bool ProjectReader::hasTables(const QString &prefix, bool *hasThem)
{
    QSqlQuery query;
    if (!m_database.run(
            QStringLiteral("SELECT count(*) FROM sqlite_master WHERE name LIKE '%1%'").arg(prefix),
            &query)
        || !query.next())
        return false;
    *hasThem = query.value(0).toInt() > 0;
    return true;
}

bool ProjectReader::readDrafts()
{
    using Table = ProjectTable;
    bool hasDrafts = false;
    return hasTables(QStringLiteral("draft"), &hasDrafts)
        && (!hasDrafts
            || (readEffects(Table::DraftEffect, &ClipRecord::draftEffects)
                && readSegmentations(Table::DraftSegmentation, &ClipRecord::drafts)
                && readNodes(Table::DraftNode, &ClipRecord::drafts)
                && readTracked(Table::DraftTracked, &ClipRecord::drafts)
                && readSeal(Table::DraftSeal)));
}

bool ProjectReader::readErasing()
{
    bool hasErasing = false;
    if (!hasTables(QStringLiteral("erasing"), &hasErasing))
        return false;
    if (!hasErasing)
        return true;
    const auto take = [this](const QVariantList &row) {
        const Segmentations which =
            row.at(2).toBool() ? &ClipRecord::drafts : &ClipRecord::segmentations;
        SegmentationRecord *segmentation = findSegmentation(row.at(0), row.at(1), which);
        ErasingRecord erasing;
        erasing.selection = row.at(3).toInt();
        erasing.frame = row.at(4).toLongLong();
        erasing.area = row.at(5).toLongLong();
        erasing.rect = QRectF(
            row.at(6).toDouble(), row.at(7).toDouble(), row.at(8).toDouble(), row.at(9).toDouble());
        if (!segmentation || !findMatte(row.at(10), &erasing.matte))
            return false;
        segmentation->erasing.append(erasing);
        return true;
    };
    return m_database.readTable(ProjectTable::Erasing, take) && readSeal(ProjectTable::ErasingSeal);
}

bool ProjectReader::readSeal(ProjectTable table)
{
    bool isGood = false;
    return m_database.readTable(table, [&](const QVariantList &row) {
        isGood = !isGood && row.at(0).toByteArray() == m_database.digest();
        return isGood;
    }) && isGood;
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

SegmentationRecord *
ProjectReader::findSegmentation(const QVariant &clip, const QVariant &type, Segmentations which)
{
    ClipRecord *found = findClip(clip);
    if (!found)
        return nullptr;
    for (SegmentationRecord &segmentation : found->*which) {
        if (segmentation.businessType == type.toInt())
            return &segmentation;
    }
    return nullptr;
}

} // namespace zk::storage
