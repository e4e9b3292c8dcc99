#pragma once

#include "../segmentation/ZkEncodedMatte.h"

#include "ZkGlobal.h"
#include "datamodel/ZkSmartKeyingTypes.h"

#include <QVector>

class ZkStudioClip;

namespace zk::datamodel {

// Makes a clip of the project look like its edited copy, as one undo step of the project's timeline; no
// step when nothing of it changes. The mattes are those of all frames.
void applyCutout(ZkStudioClip *clip,
                 const ZkStudioClip &edited,
                 ZKSMARTKEYING::ZkSmartKeyingBusinessType type,
                 const QVector<EncodedMatte> &mattes);

// Takes the cutout, and what was painted for it, off a clip of the project, as one undo step of that text on
// its timeline. Does nothing without one.
ZKDATAMODEL_EXPORT void removeCutout(ZkStudioClip *clip, const QString &text);

} // namespace zk::datamodel
