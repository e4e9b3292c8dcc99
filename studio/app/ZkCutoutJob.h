// A cutout from the command line: does with the presenter what a person does with the workspace.
#pragma once

#include "ZkCutoutOptions.h"
#include "ZkObjectJob.h"

namespace zk::app {

class CutoutJob : private ObjectJob
{
public:
    CutoutJob(const CutoutOptions &options, ProgressReport *report);

    // Does everything; the report has told about it when it returns.
    ExitCode run();

private:
    ExitCode readInputs();
    ExitCode open();
    ExitCode segment();
    ExitCode dress();
    ExitCode save();
    ExitCode write();

    const CutoutOptions &m_options;
};

} // namespace zk::app
