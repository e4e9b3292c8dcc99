// Host data model: timeline, clips and effects, undo, smart keying, the media library, the project
// and analytics.
#pragma once

#include "datamodel/ZkMediaLibrary.h"
#include "datamodel/ZkPropertyBatchSetter.h"
#include "datamodel/ZkSmartKeyingEditing.h"
#include "datamodel/ZkSmartKeyingTypes.h"
#include "datamodel/ZkSmartMaskEvents.h"
#include "datamodel/ZkTimeline.h"
#include "datamodel/ZkTrackEvent.h"
#include "datamodel/ZkUndoRedo.h"
