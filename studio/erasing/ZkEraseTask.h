// One erasing, done by a process of its own: a crash or a cancel never takes the editor down.
#pragma once

#include "ZkEraseJob.h"

#include <QObject>
#include <QProcess>
#include <QString>

#include <memory>

namespace zk::media {
class OutputFolder;
}

namespace zk::erasing {

// GUI thread only. The result is one new file, or sequence, at the job's output path, complete or
// absent: it grows in a hidden folder beside it, which goes with the task. When the host is killed the
// process ends by itself and removes that folder.
//
// Signals never come from inside start() or cancel().
class ZKERASING_EXPORT EraseTask : public QObject
{
    Q_OBJECT

public:
    enum class Result { Succeeded, Failed, Cancelled };
    Q_ENUM(Result)

    explicit EraseTask(const EraseJob &job, QObject *parent = nullptr);
    // Ends the process.
    ~EraseTask() override;

    // The program that has the command erase-worker; initially the one that runs.
    void setProgram(const QString &path) { m_program = path; }
    const EraseJob &job() const { return m_job; }

    // Once.
    void start();
    // finished() follows with Cancelled within 200 ms, and nothing is left; unless the result was there
    // already. Also before start(), which does nothing any more then.
    void cancel();

    bool hasStarted() const { return m_state != State::Waiting; }
    bool isFinished() const { return m_state == State::Finished; }
    int percent() const { return m_percent; }
    // What is being done, for the user.
    QString stage() const { return m_stage; }
    // None unless it has failed.
    EraseCause cause() const { return m_cause; }
    qint64 processId() const { return m_process.processId(); } // 0 while there is none

Q_SIGNALS:
    // Percent 0..100, never falling.
    void progress(int percent, const QString &stage);
    // Something that does not keep it from going on, in a sentence for the user.
    void noted(const QString &notice);
    // The reason is a sentence for the user; empty unless the result is Failed.
    void finished(zk::erasing::EraseTask::Result result, const QString &reason);

private:
    enum class State { Waiting, Running, Finished };

    bool prepare();
    bool isSourceAsBefore();
    bool failed(EraseCause cause, const QString &reason);
    void launch();
    void onOutput();
    void onMessage(const QJsonObject &message);
    void takeResult();
    void onProcessError(QProcess::ProcessError error);
    void onProcessFinished(int code, QProcess::ExitStatus status);
    void setProgress(int stage, int percentOfStage);
    void concludeLater();
    void conclude();

    const EraseJob m_job;
    QString m_program;
    QProcess m_process;
    std::unique_ptr<media::OutputFolder> m_folder;
    State m_state = State::Waiting;
    bool m_isCancelled = false;
    bool m_hasResult = false;
    EraseCause m_cause = EraseCause::None;
    QString m_reason;
    int m_percent = 0;
    QString m_stage;
};

} // namespace zk::erasing
