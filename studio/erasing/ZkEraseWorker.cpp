#include "ZkEraseWorker.h"

#include "ZkEraseFrames.h"
#include "ZkEraseTexts.h"
#include "ZkHostLink.h"
#include "ZkModelChoice.h"
#include "ZkResultWriter.h"

#include <QCoreApplication>
#include <QDir>

#include <exception>
#include <new>

namespace zk::erasing {

namespace {

// Shares of the frame's height. What hangs on an object, such as an edge that its mask has missed, goes with
// it, and so does its shadow on the ground; who walks beside it hardly.
constexpr double followed = 0.04;
constexpr double shadow = 0.02;

struct Failure
{
    EraseCause cause = EraseCause::None;
    QString text;
};

class EraseWorker
{
public:
    EraseWorker(const EraseJob &job,
                const QString &resultPath,
                const QString &folder,
                HostLink *link)
        : m_job(job)
        , m_resultPath(resultPath)
        , m_masks(maskFileIn(folder))
        , m_link(link)
    {
        if (!job.modelPath.isEmpty())
            m_models.readLater(engine::EngineRole::Inpainting, job.modelPath);
        QObject::connect(&m_models, &models::ModelChoice::failed, [link](const QString &notice) {
            link->send({{message::event, message::note}, {message::text, notice}});
        });
    }

    // No failure: the result is complete.
    Failure run();

private:
    Failure open();
    Failure erase();
    Failure explain(engine::EraseResult result, const QString &sinkError) const;

    const EraseJob &m_job;
    const QString m_resultPath;
    const QString m_masks;
    HostLink *const m_link;
    models::ModelChoice m_models;
    std::unique_ptr<FrameSource> m_source;
    std::unique_ptr<FrameSource> m_transparency;
    std::unique_ptr<ResultWriter> m_writer;
};

Failure EraseWorker::run()
{
    Failure failure {EraseCause::Source, changeOf(m_job)};
    if (failure.text.isEmpty())
        failure = open();
    if (failure.text.isEmpty())
        failure = erase();
    m_writer.reset();
    // What became of the source is the reason of whatever else went wrong.
    const QString change = changeOf(m_job);
    return change.isEmpty() ? failure : Failure {EraseCause::Source, change};
}

Failure EraseWorker::open()
{
    m_link->sendProgress(message::Preparing, 0);
    QString error;
    m_source = FrameSource::open(m_job, m_masks, &error);
    if (m_source && m_source->info().hasAlpha)
        m_transparency = FrameSource::open(m_job, m_masks, &error);
    if (!error.isEmpty())
        return {EraseCause::Source, error};
    m_writer =
        ResultWriter::create(m_job, m_source->info(), m_source->frameCount(), m_resultPath, &error);
    return {EraseCause::Output, error};
}

Failure EraseWorker::erase()
{
    FrameSink sink(m_writer.get(), m_transparency.get());
    const auto goOn = [this](double share) {
        m_link->sendProgress(message::Erasing, int(share * 100));
        return !m_link->isHostGone();
    };
    engine::EraserOptions options;
    // Transparency is continued where the mask is, and nowhere else.
    if (!m_transparency) {
        options.follow = followed;
        options.below = shadow;
    }
    const auto eraser = m_models.engine()->createEraser(options);
    const engine::EraseResult result = eraser->run(*m_source, sink, goOn);
    // The network's notices have come from other threads.
    QCoreApplication::processEvents();
    if (result != engine::EraseResult::Done)
        return explain(result, sink.errorString());
    m_link->sendProgress(message::Finishing, 0);
    QString error;
    m_writer->finish(&error);
    return {EraseCause::Output, error};
}

Failure EraseWorker::explain(engine::EraseResult result, const QString &sinkError) const
{
    switch (result) {
    case engine::EraseResult::SourceFailed:
        return {EraseCause::Source, m_source->errorString()};
    case engine::EraseResult::SinkFailed:
        return {EraseCause::Output, sinkError};
    case engine::EraseResult::Done:
    case engine::EraseResult::Cancelled:
    case engine::EraseResult::Failed:
        break;
    }
    return {EraseCause::Worker, EraseTexts::noMemory()};
}

Failure runGuarded(EraseWorker *worker)
{
    try {
        return worker->run();
    } catch (const std::bad_alloc &) {
        return {EraseCause::Worker, EraseTexts::noMemory()};
    } catch (const std::exception &exception) {
        return {EraseCause::Worker, EraseTexts::failed(QString::fromLocal8Bit(exception.what()))};
    }
}

} // namespace

int runEraseWorker(const QString &folder, void (*selectLanguage)(const QString &code))
{
    HostLink link(folder);
    EraseJob job;
    Failure failure {EraseCause::Worker, EraseTexts::damagedJob()};
    QString resultPath;
    if (loadJob(folder, &job, &resultPath)) {
        if (!job.language.isEmpty())
            selectLanguage(job.language);
        EraseWorker worker(job, resultPath, folder, &link);
        failure = runGuarded(&worker);
    }
    if (link.isHostGone()) {
        QDir(folder).removeRecursively();
        return 1;
    }
    if (!failure.text.isEmpty()) {
        link.send({{message::event, message::error},
                   {message::cause, int(failure.cause)},
                   {message::text, failure.text}});
        return 1;
    }
    link.send({{message::event, message::done}});
    if (link.waitUntilTaken())
        return 0;
    QDir(folder).removeRecursively();
    return 1;
}

} // namespace zk::erasing
