// Shows what would be erased.
#pragma once

#include "ZkExporter.h"

#include "ZkEraseJob.h"

namespace zk::app {

class ProgressReport;

// Writes the clip with the job's masks over it to the job's output.
ExportOutcome writeErasePreview(const datamodel::RenderSnapshot &snapshot,
                                const erasing::EraseJob &job,
                                ProgressReport *report);

// A frame with a mask over it, as the workspace shows it.
QImage withSelection(const QImage &frame, const QImage &mask);

} // namespace zk::app
