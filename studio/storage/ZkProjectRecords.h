// The rows of a project file.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QVector>

namespace zk::storage {

// A compressed mask. Records with the same bytes (not merely equal ones) are stored once.
struct MatteRecord
{
    QSize size; // of the frame; empty: no mask
    QRect box; // of the pixels that the bytes hold
    int objectPixels = 0;
    QByteArray pixels;

    bool isNull() const { return size.isEmpty(); }
};

struct MediaRecord
{
    qint64 id = 0;
    QString path; // absolute
    QString relativePath; // to the folder of the project; empty: there is no way from there
    qint64 fileSize = 0; // bytes
    qint64 modified = 0; // ms since 1970, UTC
    // What was found in it.
    QSize size;
    int frameRateNum = 0;
    int frameRateDen = 1;
    qint64 frameCount = 0;
    bool hasAudio = false;
    bool isStill = false;
    bool isAnimatedGif = false;
    bool hasAlpha = false;
    bool isVariableRate = false;
    int rotation = 0;
    QString formatSuffix;
};

struct EffectRecord
{
    int type = 0;
    QString slug;
    QByteArray settings;
    bool isEnabled = true;
};

struct NodeRecord
{
    qint64 frame = 0;
    quint64 revision = 0;
    MatteRecord keep;
    MatteRecord remove;
    MatteRecord erase;
    MatteRecord given;
    MatteRecord result;
};

struct TrackedRecord
{
    qint64 frame = 0;
    bool isForward = true;
    MatteRecord matte;
    double confidence = 0;
    qint64 seed = -1;
    quint64 seedRevision = 0;
    quint64 serial = 0;
};

// What only a workspace with areas or saved selections has: a mask of one frame, and what it is.
struct ErasingRecord
{
    // That was saved, from 0, and then this is its mask of the frame; -1: no such.
    int selection = -1;
    qint64 frame = 0;
    // Id of the area whose object this is; 0: the part of the node that has no area.
    qint64 area = 0;
    QRectF rect; // of the area, in fractions of the frame
    MatteRecord matte;
};

struct SegmentationRecord
{
    int businessType = 0;
    int previewType = 0;
    QString overlayColour; // #aarrggbb
    int overlayAlpha = 0;
    bool isInverted = false;
    QVector<NodeRecord> nodes; // by frame
    QVector<TrackedRecord> tracked; // by frame
    QVector<ErasingRecord> erasing; // in their order
};

struct ClipRecord
{
    qint64 id = 0;
    qint64 media = 0;
    qint64 inFrame = 0;
    qint64 frameCount = 0;
    qint64 playhead = 0;
    QVector<EffectRecord> effects; // in their order
    QVector<SegmentationRecord> segmentations;
    QVector<MatteRecord> mattes; // of the applied cutout, frame by frame; empty: none
    // What was done in a workspace and neither applied nor given up, one for each workspace.
    QVector<SegmentationRecord> drafts;
    QVector<EffectRecord> draftEffects; // beside the draft of the cutout
};

struct ProjectRecord
{
    QString id;
    QString origin; // of an autosave: the project's own file
    qint64 currentClip = 0;
    QVector<MediaRecord> media;
    QVector<ClipRecord> clips; // in their order

    // Set by reading; writing puts in what is true then.
    QString application; // version of the program that wrote it
    QDateTime saved; // UTC
};

} // namespace zk::storage
