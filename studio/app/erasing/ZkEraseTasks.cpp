#include "ZkEraseTasks.h"

#include "datamodel/ZkSmartMaskEvents.h"
#include "project/ZkMediaChange.h"
#include "project/ZkProject.h"
#include "timeline/ZkStudioClip.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace zk::app {

using datamodel::ProjectClip;
using erasing::EraseCause;
using erasing::EraseTask;

namespace {

constexpr int secondMs = 1000;

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

// Failures leave none.
void EraseTasks::removeFile(const Entry &entry)
{
    if (entry.state == State::Checking || entry.state == State::Done)
        QFile::remove(entry.job.output.path);
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
    removeFile(*entry);
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
    removeFile(*entry);
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
        removeFile(*entry);
        remove(id);
    }
}

} // namespace zk::app
