#pragma once

#include "ZkPreview.h"

namespace zk::datamodel {

// How the masks are shown; of these only invert is part of the result.
using SegmentSettings = zk::effects::PreviewSettings;

} // namespace zk::datamodel
