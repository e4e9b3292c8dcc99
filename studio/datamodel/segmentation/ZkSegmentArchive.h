#pragma once

#include "ZkSegments.h"

#include "ZkPreview.h"

namespace zk::datamodel {

// How the masks are shown; of these only invert is part of the result.
using SegmentSettings = zk::effects::PreviewSettings;

// Everything that a segmentation service stores, as bytes for a project file.
QByteArray archived(const Segments &segments, const SegmentSettings &settings);

// False, and nothing has changed, when the data is damaged or of a later version.
bool unarchive(const QByteArray &data, Segments *segments, SegmentSettings *settings);

} // namespace zk::datamodel
