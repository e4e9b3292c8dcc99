// Another file in a clip's place: what erasing has made of it.
#pragma once

#include "ZkMediaEntry.h"

namespace zk::datamodel {

class Project;
class ProjectClip;

// The clip shows the probed file from that frame on, which must have its size, its rate and all its
// frames. One undo step of the project, which also puts the file into the bin and takes away the clip's
// selections for erasing, since they are in the file now; undo brings all of it back. Cutouts and effects
// stay as they are. False, with a sentence for the user and nothing changed, when the file does not fit.
ZKDATAMODEL_EXPORT bool replaceErasedMedia(
    Project *project, ProjectClip *clip, const MediaEntry &probed, qint64 inFrame, QString *error);

} // namespace zk::datamodel
