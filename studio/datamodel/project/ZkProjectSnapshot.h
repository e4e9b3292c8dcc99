// What a project file holds, as it was at one moment.
#pragma once

#include "../segmentation/ZkSegmentSettings.h"
#include "../segmentation/ZkSegments.h"
#include "ZkMediaEntry.h"

#include "ZkLook.h"
#include "datamodel/ZkSmartKeyingTypes.h"

#include <QVector>

#include <functional>
#include <memory>

namespace zk::storage {
struct ProjectRecord;
}

namespace zk::datamodel {

class MatteTrack;

// Called before each file that is looked for; false ends the reading.
using ReadingStep = std::function<bool(int done, int count)>;

// A value: copies share everything, so that taking one costs next to nothing, and any thread may hold
// and write it while the project is being edited.
struct ZKDATAMODEL_EXPORT ProjectSnapshot
{
    struct Effect // a cutout
    {
        zk::effects::Look look;
        QString slug;
        bool isEnabled = true;
    };
    struct Segmentation
    {
        ZKSMARTKEYING::ZkSmartKeyingBusinessType type = ZKSMARTKEYING::SmartCutout;
        Segments segments;
        SegmentSettings settings;
    };
    // What was done in a workspace and neither applied nor given up.
    struct Draft : Segmentation
    {
        QVector<Effect> effects; // of the cutout workspace; those of the clip in its place
    };
    struct Clip
    {
        qint64 id = 0;
        qint64 media = 0;
        qint64 inFrame = 0;
        qint64 frameCount = 0;
        qint64 playhead = 0; // frame of the clip
        QVector<Effect> effects;
        QVector<Segmentation> segmentations;
        std::shared_ptr<const MatteTrack> mattes; // null: none was applied
        QVector<Draft> drafts; // at most one of each workspace
    };

    QString id;
    QString origin; // of an autosave: the project's own file; empty: it has none
    QVector<MediaEntry> media;
    QVector<Clip> clips;
    qint64 currentClip = 0; // 0: none

    // Paths are also kept relative to the folder.
    zk::storage::ProjectRecord toRecord(const QString &folder) const;
    // False when the rows contradict each other or hold damaged data, or a step was; *this is undefined
    // then. Media are looked for, first relative to the folder.
    bool fromRecord(const zk::storage::ProjectRecord &record,
                    const QString &folder,
                    const ReadingStep &step);
};

} // namespace zk::datamodel
