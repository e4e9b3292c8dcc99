// Exports the cutout of the command line: beside its outputs a contact sheet, and a comparison with true
// mattes.
#pragma once

#include "ZkContactSheet.h"
#include "ZkCutoutOptions.h"
#include "ZkExporter.h"

namespace zk::app {

class ProgressReport;

class CutoutExport
{
public:
    CutoutExport(const CutoutOptions &options, ProgressReport *report);

    // Success when every output is complete; otherwise the outputs that were not completed yet are
    // absent, and the report has the reason.
    ExitCode run(const datamodel::RenderSnapshot &snapshot);

private:
    ExportOutcome take(const datamodel::RenderSnapshot &snapshot,
                       const Exporter::Frame &frame,
                       datamodel::FrameRenderer &renderer);
    void addToSheet(const Exporter::Frame &frame, const QImage &source);
    ExportOutcome compare(qint64 frame, const QImage &matte);
    ExportOutcome saveSheet();

    const CutoutOptions &m_options;
    ProgressReport *m_report;
    QVector<qint64> m_sheetFrames;
    ContactSheet m_sheet;
    double m_overlapSum = 0;
    int m_comparedFrames = 0;
};

// What the report is told of an export's outcome.
ExitCode reportOutcome(const ExportOutcome &outcome, ProgressReport *report);

} // namespace zk::app
