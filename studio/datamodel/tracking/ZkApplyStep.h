#pragma once

#include "../segmentation/ZkEncodedMatte.h"

#include "ZkGlobal.h"
#include "datamodel/ZkSmartKeyingTypes.h"

#include <QString>
#include <QVector>

class ZkStudioClip;

namespace zk::datamodel {

// Makes a clip of the project look like its edited copy, as one undo step of the project's timeline; no
// step when nothing of it changes. The mattes are those of all frames.
void applyCutout(ZkStudioClip *clip,
                 const ZkStudioClip &edited,
                 ZKSMARTKEYING::ZkSmartKeyingBusinessType type,
                 const QVector<EncodedMatte> &mattes);

// Gives a clip of the project what is selected on its edited copy to be erased, as one undo step of that
// text on the clip's timeline; no step when there is nothing on either of them.
ZKDATAMODEL_EXPORT void
applySelection(ZkStudioClip *clip, const ZkStudioClip &edited, const QString &text);

// Takes the cutout, and what was painted for it, off a clip of the project, as one undo step of that text on
// its timeline. Does nothing without one.
ZKDATAMODEL_EXPORT void removeCutout(ZkStudioClip *clip, const QString &text);

} // namespace zk::datamodel
