#include "ZkEraseTask.h"

#include "ZkEraseTexts.h"
#include "ZkHostLink.h"

#include "ZkOutputFolder.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QTimer>

namespace zk::erasing {

namespace {

// Of the whole, in percent: where the stages begin.
constexpr int erasingFrom = 2;
constexpr int finishingFrom = 98;
constexpr int killTimeoutMs = 5000;

} // namespace

EraseTask::EraseTask(const EraseJob &job, QObject *parent)
    : QObject(parent)
    , m_job(job)
    , m_program(QCoreApplication::applicationFilePath())
    , m_stage(EraseTexts::preparing())
{
    qRegisterMetaType<zk::erasing::EraseTask::Result>();
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &EraseTask::onOutput);
    connect(&m_process, &QProcess::errorOccurred, this, &EraseTask::onProcessError);
    connect(&m_process,
            QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished),
            this,
            &EraseTask::onProcessFinished);
}

EraseTask::~EraseTask()
{
    m_process.disconnect(this);
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished(killTimeoutMs);
}

void EraseTask::start()
{
    if (m_state != State::Waiting)
        return;
    m_state = State::Running;
    if (prepare())
        launch();
    else
        concludeLater();
}

bool EraseTask::failed(EraseCause cause, const QString &reason)
{
    m_cause = cause;
    m_reason = reason;
    return false;
}

bool EraseTask::isSourceAsBefore()
{
    const QString change = changeOf(m_job);
    return change.isEmpty() || failed(EraseCause::Source, change);
}

bool EraseTask::prepare()
{
    if (!isSourceAsBefore())
        return false;
    QString error;
    m_folder = media::OutputFolder::create(m_job.output.path, &error);
    return (m_folder && saveJob(m_job, m_folder->outputPath(), m_folder->path(), &error))
        || failed(EraseCause::Output, error);
}

void EraseTask::launch()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    m_process.setProcessEnvironment(environment);
    m_process.start(m_program, {QStringLiteral("erase-worker"), m_folder->path()});
}

void EraseTask::cancel()
{
    if (m_state == State::Finished || m_isCancelled || m_hasResult)
        return;
    m_isCancelled = true;
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        return;
    }
    m_state = State::Running;
    concludeLater();
}

void EraseTask::onOutput()
{
    while (m_process.canReadLine())
        onMessage(QJsonDocument::fromJson(m_process.readLine()).object());
}

void EraseTask::onMessage(const QJsonObject &message)
{
    const QString event = message.value(message::event).toString();
    if (m_isCancelled)
        return;
    if (event == message::progress)
        setProgress(message.value(message::stage).toInt(), message.value(message::percent).toInt());
    else if (event == message::error)
        failed(EraseCause(message.value(message::cause).toInt()),
               message.value(message::text).toString());
    else if (event == message::note)
        Q_EMIT noted(message.value(message::text).toString());
    else if (event == message::done)
        takeResult();
}

void EraseTask::takeResult()
{
    QString error;
    m_hasResult = isSourceAsBefore()
        && (m_folder->place(m_job.masks.size(), &error) || failed(EraseCause::Output, error));
    if (m_hasResult)
        m_process.write(message::taken);
    m_process.closeWriteChannel();
}

void EraseTask::setProgress(int stage, int percentOfStage)
{
    QString text = EraseTexts::preparing();
    int percent = 0;
    if (stage == message::Erasing) {
        text = EraseTexts::erasing();
        percent = erasingFrom + percentOfStage * (finishingFrom - erasingFrom) / 100;
    } else if (stage == message::Finishing) {
        text = EraseTexts::finishing();
        percent = finishingFrom;
    }
    m_percent = qMax(m_percent, percent);
    m_stage = text;
    Q_EMIT progress(m_percent, m_stage);
}

void EraseTask::onProcessError(QProcess::ProcessError error)
{
    // The others are followed by finished().
    if (error != QProcess::FailedToStart)
        return;
    failed(EraseCause::Worker, EraseTexts::cannotStart(m_program, m_process.errorString()));
    concludeLater();
}

void EraseTask::onProcessFinished(int code, QProcess::ExitStatus status)
{
    onOutput();
    if (m_cause == EraseCause::None && !m_hasResult && !m_isCancelled)
        failed(EraseCause::Worker,
               EraseTexts::endedUnexpectedly(status == QProcess::CrashExit, code));
    conclude();
}

void EraseTask::concludeLater()
{
    QTimer::singleShot(0, this, &EraseTask::conclude);
}

void EraseTask::conclude()
{
    if (m_state == State::Finished)
        return;
    m_state = State::Finished;
    m_folder.reset();
    if (m_hasResult) {
        m_percent = 100;
        Q_EMIT progress(m_percent, m_stage);
        Q_EMIT finished(Result::Succeeded, QString());
    } else if (m_isCancelled) {
        Q_EMIT finished(Result::Cancelled, QString());
    } else {
        Q_EMIT finished(Result::Failed, m_reason);
    }
}

} // namespace zk::erasing
