// What becomes of an erasing, from stage to stage.
#include "ZkEraseTasks.h"

#include "ZkErasedFiles.h"

#include "ZkMediaReader.h"

#include <utility>

namespace zk::app {

using erasing::EraseCause;
using erasing::EraseTask;

namespace {

constexpr QSize pictureSize(160, 90); // pixels, enough for twice the card's

QImage pictureOf(const EraseRequest &request, qint64 frame)
{
    QString error;
    const auto reader = media::MediaReader::open(request.media.path, &error);
    const QImage picture = reader ? reader->frameAt(request.inFrame + frame) : QImage();
    return picture.isNull()
        ? picture
        : picture.scaled(pictureSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace

// Runs the work in the thread; the destructor waits for it, and what is posted dies with the object.
template<typename Result>
void EraseTasks::run(int id,
                     std::function<Result()> work,
                     void (EraseTasks::*finished)(int, Result))
{
    m_pool.start([this, id, work = std::move(work), finished] {
        Result result = work();
        QMetaObject::invokeMethod(
            this,
            [this, id, finished, result = std::move(result)] { (this->*finished)(id, result); },
            Qt::QueuedConnection);
    });
}

// The masks of all frames take a while to be put together.
void EraseTasks::prepare(int id)
{
    Entry *const entry = this->entry(id);
    if (!entry)
        return;
    const EraseRequest request = entry->request;
    const auto isGivenUp = entry->isGivenUp;
    const auto work = [request, isGivenUp] {
        Prepared prepared;
        qint64 first = -1;
        for (qint64 frame = 0; frame < request.frameCount && !*isGivenUp; ++frame) {
            prepared.masks.append(request.masks.at(frame));
            if (first < 0 && !prepared.masks.constLast().isEmpty())
                first = frame;
        }
        if (!*isGivenUp)
            prepared.picture = pictureOf(request, qMax<qint64>(0, first));
        return prepared;
    };
    run<Prepared>(id, work, &EraseTasks::onPrepared);
}

void EraseTasks::onPrepared(int id, Prepared prepared)
{
    Entry *const entry = this->entry(id);
    if (!entry)
        return;
    entry->picture = prepared.picture;
    entry->job.mediaPath = entry->request.media.path;
    entry->job.fingerprint = entry->request.fingerprint;
    entry->job.inFrame = entry->request.inFrame;
    entry->job.masks = prepared.masks;
    entry->job.language = m_language;
    entry->job.modelPath = m_model;
    entry->job.output = erasing::EraseOutput::forEditing(freeFileFor(*entry), entry->request.media);
    enqueue(entry);
}

QString EraseTasks::freeFileFor(const Entry &entry) const
{
    QSet<QString> reserved;
    for (const auto &other : m_entries) {
        const QString path = other.second.job.output.path;
        if (!path.isEmpty())
            reserved.insert(withoutSuffix(path));
    }
    return erasedFileFor(entry.request.media.path, reserved);
}

void EraseTasks::enqueue(Entry *entry)
{
    const int id = entry->id;
    entry->percent = 0;
    entry->task = new EraseTask(entry->job, this);
    if (!m_eraser.isEmpty())
        entry->task->setProgram(m_eraser);
    connect(entry->task, &EraseTask::progress, this, [this, id](int percent, const QString &stage) {
        onProgress(id, percent, stage);
    });
    connect(entry->task, &EraseTask::finished, this, [this, id](auto result, const auto &reason) {
        onFinished(id, result, reason);
    });
    connect(entry->task, &EraseTask::noted, this, &EraseTasks::noted);
    entry->stage = tr("Waiting");
    setState(entry, State::Waiting);
    m_queue.add(entry->task);
}

void EraseTasks::onProgress(int id, int percent, const QString &stage)
{
    Entry *const entry = this->entry(id);
    if (!entry)
        return;
    entry->percent = percent;
    entry->stage = stage;
    Q_EMIT changed(id);
}

void EraseTasks::onFinished(int id, EraseTask::Result result, const QString &reason)
{
    Entry *const entry = this->entry(id);
    if (!entry)
        return;
    const EraseCause cause = entry->task->cause();
    std::exchange(entry->task, nullptr)->deleteLater();
    if (result == EraseTask::Result::Cancelled) {
        report(*entry, QStringLiteral("cancel"));
        remove(id);
        return;
    }
    if (result == EraseTask::Result::Failed) {
        fail(entry, cause, reason);
        return;
    }
    entry->stage = tr("Checking");
    setState(entry, State::Checking);
    const QString path = entry->job.output.path;
    const auto work = [path] {
        Probed probed;
        if (datamodel::probeMedia(path, &probed.entry, &probed.error))
            probed.error.clear();
        return probed;
    };
    run<Probed>(id, work, &EraseTasks::onProbed);
}

void EraseTasks::onProbed(int id, Probed probed)
{
    Entry *const entry = this->entry(id);
    if (!entry) // given up meanwhile
        return;
    if (!probed.error.isEmpty()) {
        removeFile(*entry);
        fail(entry, EraseCause::Output, probed.error);
        return;
    }
    entry->result = probed.entry;
    entry->percent = 100;
    entry->stage = tr("Done");
    report(*entry, QStringLiteral("success"));
    setState(entry, State::Done);
    Q_EMIT succeeded(id);
}

void EraseTasks::fail(Entry *entry, EraseCause cause, const QString &reason)
{
    const int id = entry->id;
    entry->cause = cause;
    entry->reason = reason;
    entry->stage = tr("Failed");
    report(*entry, QStringLiteral("fail"));
    setState(entry, State::Failed);
    Q_EMIT failed(id);
}

} // namespace zk::app
