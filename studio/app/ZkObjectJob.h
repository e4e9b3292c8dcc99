// What commands on an object have in common: they do with a workspace's presenter what a person does
// with the workspace.
#pragma once

#include "ZkObjectOptions.h"
#include "ZkProgressReport.h"
#include "ZkStrokesFile.h"
#include "ZkStudioSession.h"

#include "ZkModelChoice.h"

#include <QImage>

#include <functional>

namespace zk::app {

// Every step returns Success or has told the report what is wrong.
class ObjectJob
{
protected:
    ObjectJob(const ObjectOptions &options, ProgressReport *report);
    ~ObjectJob() = default;

    // One after another as long as they succeed; then the report sums up.
    template<typename Job, size_t count>
    ExitCode runSteps(Job *job, ExitCode (Job::*const (&steps)[count])())
    {
        for (const auto step : steps) {
            const ExitCode code = (job->*step)();
            if (code != ExitCode::Success)
                return code;
        }
        m_report->summary();
        return ExitCode::Success;
    }
    ExitCode fail(ExitCode code, const QString &message);
    ExitCode interrupted();

    // The strokes file or the given matte.
    ExitCode readSelection();
    // The networks, of which there must be none for other work.
    ExitCode readModels(const QVector<engine::EngineRole> &roles);
    // The clip; the selection must fit it.
    ExitCode openClip();
    // The workspace on the clip, with the first frame on screen.
    ExitCode openWorkspace(bool (StudioSession::*begin)(QString *error));
    bool seek(qint64 frame);
    // The strokes or the matte.
    ExitCode paintSelection();
    ExitCode requireObject(bool hasObject);
    // Success also when there was nothing to track.
    ExitCode track();

    ProgressReport *const m_report;
    models::ModelChoice m_models;
    StudioSession m_session;
    // Those of strokes and the matte; at least one when track() is called.
    QVector<qint64> m_markedFrames;

private:
    bool waitForPicture(const std::function<void()> &request);
    void beginTracking();
    void noteSceneCuts();
    ExitCode checkMatte(const QSize &size, qint64 frameCount);
    ExitCode paint(const Stroke &stroke);

    const ObjectOptions &m_object;
    StrokesFile m_strokes;
    QImage m_matte;
};

} // namespace zk::app
