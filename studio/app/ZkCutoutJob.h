// A cutout from the command line: does with the presenter what a person does with the workspace.
#pragma once

#include "ZkCutoutOptions.h"
#include "ZkStrokesFile.h"
#include "ZkStudioSession.h"

#include <QImage>

namespace zk::app {

class ProgressReport;

class CutoutJob
{
public:
    CutoutJob(const CutoutOptions &options, ProgressReport *report);

    // Does everything; the report has told about it when it returns.
    ExitCode run();

private:
    ExitCode fail(ExitCode code, const QString &message);
    ExitCode interrupted();

    ExitCode readInputs();
    ExitCode readMatte();
    ExitCode open();
    ExitCode segment();
    ExitCode paint(const Stroke &stroke);
    ExitCode track();
    ExitCode dress();
    ExitCode save();

    bool seek(qint64 frame);
    qint64 firstFrame() const;
    qint64 lastFrame() const;

    const CutoutOptions &m_options;
    ProgressReport *m_report;
    StrokesFile m_strokes;
    QImage m_matte;
    StudioSession m_session;
};

} // namespace zk::app
