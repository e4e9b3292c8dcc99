#include "ZkEraseTasks.h"

#include "ZkMediaReader.h"
#include "datamodel/ZkSmartMaskEvents.h"
#include "project/ZkMediaChange.h"
#include "project/ZkProject.h"
#include "timeline/ZkStudioClip.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <utility>

namespace zk::app {

using datamodel::EncodedMatte;
using datamodel::ProjectClip;
using erasing::EraseCause;
using erasing::EraseTask;

namespace {

constexpr QSize pictureSize(160, 90); // pixels, enough for twice the card's
constexpr int secondMs = 1000;

QImage pictureOf(const EraseRequest &request, qint64 frame)
{
    QString error;
    const auto reader = media::MediaReader::open(request.media.path, &error);
    const QImage picture = reader ? reader->frameAt(request.inFrame + frame) : QImage();
    return picture.isNull()
        ? picture
        : picture.scaled(pictureSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

QString folderFor(const QString &mediaPath)
{
    const QFileInfo beside(QFileInfo(mediaPath).absolutePath());
    if (beside.isWritable())
        return beside.filePath();
    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
        + QStringLiteral("/erased");
    QDir().mkpath(own);
    return own;
}

QString reasonKey(EraseCause cause)
{
    switch (cause) {
    case EraseCause::Source:
        return QStringLiteral("source");
    case EraseCause::Output:
        return QStringLiteral("output");
    case EraseCause::Worker:
        return QStringLiteral("worker");
    case EraseCause::None:
        break;
    }
    return {};
}

} // namespace

EraseTasks::EraseTasks(datamodel::Project *project, const QString &eraser, QObject *parent)
    : QObject(parent)
    , m_project(project)
    , m_eraser(eraser)
{
    m_pool.setMaxThreadCount(1);
    connect(&m_queue, &erasing::EraseQueue::changed, this, [this] {
        if (m_queue.tasks().isEmpty())
            return;
        for (auto &entry : m_entries) {
            if (entry.second.task == m_queue.tasks().constFirst()
                && entry.second.state == State::Waiting) {
                entry.second.clock.start();
                setState(&entry.second, State::Erasing);
                return;
            }
        }
    });
}

EraseTasks::~EraseTasks()
{
    for (auto &entry : m_entries) {
        *entry.second.isGivenUp = true;
        delete entry.second.task;
    }
    m_pool.clear();
    m_pool.waitForDone();
}

QString EraseTasks::program() const
{
    return m_eraser.isEmpty() ? QCoreApplication::applicationFilePath() : m_eraser;
}

bool EraseTasks::isServiceThere() const
{
    return QFileInfo(program()).isExecutable();
}

EraseTasks::Entry *EraseTasks::entry(int id)
{
    const auto place = m_entries.find(id);
    return place == m_entries.end() ? nullptr : &place->second;
}

const EraseTasks::Item *EraseTasks::find(int id) const
{
    const auto place = m_entries.find(id);
    return place == m_entries.end() ? nullptr : &place->second;
}

QVector<int> EraseTasks::ids() const
{
    QVector<int> ids;
    for (const auto &entry : m_entries)
        ids.append(entry.first);
    return ids;
}

int EraseTasks::unfinishedCount() const
{
    int count = 0;
    for (const auto &entry : m_entries)
        count += entry.second.state == State::Failed ? 0 : 1;
    return count;
}

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

int EraseTasks::add(const EraseRequest &request)
{
    const int id = ++m_lastId;
    Entry &entry = m_entries[id];
    entry.id = id;
    entry.request = request;
    entry.stage = tr("Preparing");
    QMetaObject::invokeMethod(
        this,
        [this, id] {
            if (!find(id))
                return;
            Q_EMIT added(id);
            prepare(id);
        },
        Qt::QueuedConnection);
    return id;
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
    entry->job.output = erasing::EraseOutput::forEditing(resultPath(*entry), entry->request.media);
    enqueue(entry);
}

bool EraseTasks::isReserved(const QString &path) const
{
    for (const auto &entry : m_entries) {
        if (QFileInfo(entry.second.job.output.path).completeBaseName() == QFileInfo(path).fileName()
            && QFileInfo(entry.second.job.output.path).absolutePath()
                == QFileInfo(path).absolutePath())
            return true;
    }
    return false;
}

// Without a suffix; nothing there has that name, whatever its suffix.
QString EraseTasks::resultPath(const Entry &entry) const
{
    const QFileInfo source(entry.request.media.path);
    const QDir folder(folderFor(source.filePath()));
    const QString name = source.completeBaseName() + QStringLiteral("-erased");
    for (int number = 1;; ++number) {
        const QString path =
            folder.filePath(number == 1 ? name : QStringLiteral("%1-%2").arg(name).arg(number));
        const bool isTaken =
            !folder.entryList({QFileInfo(path).fileName() + QStringLiteral(".*")}, QDir::Files)
                 .isEmpty();
        if (!isTaken && !isReserved(path))
            return path;
    }
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
    if (!entry) { // given up meanwhile
        return;
    }
    if (!probed.error.isEmpty()) {
        QFile::remove(entry->job.output.path);
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

void EraseTasks::report(const Entry &entry, const QString &result)
{
    ZkSmartMaskRemoveRecord record;
    record.result = result;
    record.maskCount = entry.request.maskCount;
    record.duration = entry.clock.isValid() ? int(entry.clock.elapsed() / secondMs) : 0;
    record.reason = reasonKey(entry.cause);
    ZkSmartMaskRemoveEvent(record).sendEvent();
}

void EraseTasks::setState(Entry *entry, State state)
{
    entry->state = state;
    Q_EMIT changed(entry->id);
}

void EraseTasks::remove(int id)
{
    m_entries.erase(id);
    Q_EMIT removed(id);
}

void EraseTasks::cancel(int id)
{
    Entry *const entry = this->entry(id);
    if (!entry || entry->state == State::Done || entry->state == State::Failed)
        return;
    *entry->isGivenUp = true;
    if (entry->task) {
        entry->task->cancel(); // its end takes it off the list
        return;
    }
    if (entry->state == State::Checking)
        QFile::remove(entry->job.output.path);
    report(*entry, QStringLiteral("cancel"));
    remove(id);
}

void EraseTasks::retry(int id)
{
    Entry *const entry = this->entry(id);
    if (!entry || entry->state != State::Failed)
        return;
    entry->cause = EraseCause::None;
    entry->reason.clear();
    enqueue(entry);
}

void EraseTasks::dismiss(int id)
{
    const Entry *const entry = this->entry(id);
    if (!entry || (entry->state != State::Done && entry->state != State::Failed))
        return;
    if (entry->state == State::Done)
        QFile::remove(entry->job.output.path);
    remove(id);
}

bool EraseTasks::isStale(int id) const
{
    const Item *const item = find(id);
    const ProjectClip *const clip = item ? m_project->findClip(item->request.clip) : nullptr;
    return clip
        && (clip->clip()->media().path != item->job.mediaPath
            || clip->clip()->inFrame() != item->job.inFrame);
}

bool EraseTasks::save(int id, QString *error)
{
    const Item *const item = find(id);
    if (!item || item->state != State::Done)
        return false;
    ProjectClip *const clip = m_project->findClip(item->request.clip);
    if (!clip) {
        *error = tr("The clip was removed from the project. Undo that, or discard the result.");
        return false;
    }
    if (!QFile::exists(item->result.info.path)) {
        *error = tr("%1 is no longer there; erase again.")
                     .arg(QDir::toNativeSeparators(item->result.info.path));
        return false;
    }
    if (!datamodel::replaceErasedMedia(m_project, clip, item->result, 0, error))
        return false;
    remove(id);
    return true;
}

void EraseTasks::dropAll()
{
    const QVector<int> all = ids();
    for (int id : all) {
        Entry *const entry = this->entry(id);
        if (!entry)
            continue;
        *entry->isGivenUp = true;
        if (EraseTask *const task = std::exchange(entry->task, nullptr)) {
            task->disconnect(this);
            delete task;
        }
        if (entry->state == State::Done || entry->state == State::Checking)
            QFile::remove(entry->job.output.path);
        remove(id);
    }
}

} // namespace zk::app
