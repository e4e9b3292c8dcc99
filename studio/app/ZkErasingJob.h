// Erasing from the command line: selects with the presenter as a person does with the workspace, then
// runs the erase task.
#pragma once

#include "ZkBoxesFile.h"
#include "ZkEraseOptions.h"
#include "ZkObjectJob.h"

#include "ZkEraseJob.h"

namespace zk::app {

class ErasingJob : private ObjectJob
{
public:
    ErasingJob(const EraseOptions &options, ProgressReport *report);

    // Does everything; the report has told about it when it returns.
    ExitCode run();

private:
    ExitCode readInputs();
    ExitCode open();
    ExitCode select();
    ExitCode addBox(const Box &box);
    ExitCode trackAll();
    ExitCode save();
    ExitCode write();
    ExitCode erase();
    ExitCode compare();

    const EraseOptions &m_options;
    BoxesFile m_boxes;
    erasing::EraseJob m_job;
};

} // namespace zk::app
