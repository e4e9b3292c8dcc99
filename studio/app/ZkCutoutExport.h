// Renders the cutout of a timeline once and writes it everywhere it was asked for.
#pragma once

#include "ZkContactSheet.h"
#include "ZkCutoutOptions.h"
#include "ZkFrameRenderer.h"
#include "ZkMediaWriter.h"

#include <functional>
#include <memory>
#include <vector>

namespace zk::app {

class ProgressReport;

class CutoutExport
{
public:
    CutoutExport(const CutoutOptions &options, ProgressReport *report);
    ~CutoutExport();

    // Success when every output is complete; otherwise the outputs that were not completed yet are
    // absent, and the report has the reason.
    ExitCode run(const datamodel::RenderSnapshot &snapshot);

private:
    struct Output
    {
        QString path;
        bool hasAlpha;
        std::unique_ptr<media::MediaWriter> writer;
    };

    ExitCode fail(ExitCode code, const QString &message);
    ExitCode open(const datamodel::RenderSnapshot &snapshot);
    ExitCode writeFrame(const datamodel::RenderSnapshot &snapshot, qint64 frame);
    ExitCode finish();
    QImage pictureFor(const Output &output, const QImage &cutout, const QImage &matte) const;
    void addToSheet(const datamodel::RenderSnapshot &snapshot,
                    qint64 frame,
                    const QImage &matte,
                    const QImage &cutout);
    ExitCode compare(qint64 frame, const QImage &matte);

    const CutoutOptions &m_options;
    ProgressReport *m_report;
    datamodel::FrameRenderer m_renderer;
    QImage m_background;
    std::vector<Output> m_outputs;
    QVector<qint64> m_sheetFrames;
    ContactSheet m_sheet;
    double m_overlapSum = 0;
    int m_comparedFrames = 0;
};

} // namespace zk::app
