// A project with something in every field.
#pragma once

#include "ZkProjectRecords.h"

namespace zk::test {

inline storage::MatteRecord matteRecord(int seed, const QByteArray &pixels)
{
    return {QSize(64, 48), QRect(seed % 8, 2, 10, 20), seed, pixels};
}

inline storage::SegmentationRecord segmentationRecord(int type, const storage::MatteRecord &shared)
{
    using namespace storage;
    SegmentationRecord record {
        type, 1 + type, QStringLiteral("#40e53e4a"), 99, type == 1, {}, {}, {}};
    NodeRecord node;
    node.frame = 4;
    node.revision = 77;
    node.keep = matteRecord(1, "keep");
    node.remove = matteRecord(2, "remove");
    node.erase = matteRecord(3, "erase");
    node.given = {QSize(64, 48), QRect(), 0, QByteArray()}; // nothing in it
    node.result = shared;
    NodeRecord bare;
    bare.frame = 9;
    record.nodes = {node, bare};
    record.tracked = {{5, true, shared, 0.1f, 4, 77, 80},
                      {5, false, matteRecord(4, "b"), 1, -1, 0, 81}};
    record.erasing = {{-1, 4, 0, QRectF(), MatteRecord()},
                      {-1, 4, 12, QRectF(0.1, 0.25, 1.0 / 3, 0.5), matteRecord(7, "area")},
                      {1, 6, 0, QRectF(), shared}};
    return record;
}

inline storage::ProjectRecord projectRecord()
{
    using namespace storage;
    ProjectRecord project;
    project.id = QStringLiteral("0d1f");
    project.origin = QString::fromUtf8("/home/jörg/film.zkproj");
    project.currentClip = 4;
    MediaRecord media;
    media.id = 2;
    media.path = QStringLiteral("/a/clip.mp4");
    media.relativePath = QStringLiteral("../clip.mp4");
    media.fileSize = Q_INT64_C(5000000000);
    media.modified = 1700000000123;
    media.size = QSize(64, 48);
    media.frameRateNum = 30000;
    media.frameRateDen = 1001;
    media.frameCount = 300;
    media.hasAudio = media.hasAlpha = true;
    media.rotation = 90;
    media.formatSuffix = QStringLiteral("mp4");
    MediaRecord still = media;
    still.id = 1;
    still.isStill = still.isVariableRate = still.isAnimatedGif = true;
    project.media = {media, still};
    const MatteRecord shared = matteRecord(5, QByteArray(3000, 's'));
    ClipRecord clip {4, 2, 10, 20, 7, {}, {}, {}, {}, {}};
    clip.effects = {{55, QStringLiteral("neon"), "{\"a\":1}", false},
                    {55, QString(), QByteArray(), true}};
    clip.segmentations = {segmentationRecord(1, shared), segmentationRecord(2, shared)};
    clip.mattes = {shared, MatteRecord(), matteRecord(6, "applied")};
    clip.drafts = {segmentationRecord(1, shared)};
    clip.draftEffects = {{55, QStringLiteral("glow"), "{\"b\":2}", true}};
    project.clips = {clip, {3, 1, 0, 1, 0, {}, {}, {}, {}, {}}};
    return project;
}

} // namespace zk::test
