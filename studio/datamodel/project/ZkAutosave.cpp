#include "ZkAutosave.h"

#include "ZkFileLock.h"
#include "ZkProject.h"
#include "ZkProjectStore.h"
#include "ZkSnapshotWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QScopedValueRollback>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>

namespace zk::datamodel {

using zk::storage::ProjectRecord;
using zk::storage::ProjectStore;

namespace {

// Null while the editor that the autosave belongs to runs.
std::unique_ptr<QLockFile> takeLock(const QString &file)
{
    return zk::storage::takeFileLock(file + QStringLiteral(".lock"), 0);
}

bool describe(const QString &file, RecoverableProject *project)
{
    ProjectRecord record;
    if (ProjectStore::loadSummary(file, &record, nullptr) != ProjectStore::OpenResult::Opened)
        return false;
    project->file = file;
    project->origin = record.origin;
    project->saved = record.saved;
    project->clipCount = record.clips.size();
    const QFileInfo origin(record.origin);
    project->isOlderThanOrigin =
        !record.origin.isEmpty() && origin.exists() && origin.lastModified() > record.saved;
    return true;
}

} // namespace

QString Autosave::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
        + QStringLiteral("/autosave");
}

QVector<RecoverableProject> Autosave::recoverable(const QString &folder)
{
    QVector<RecoverableProject> projects;
    const QFileInfoList files =
        QDir(folder).entryInfoList({QLatin1Char('*') + ProjectStore::fileSuffix()}, QDir::Files);
    for (const QFileInfo &file : files) {
        RecoverableProject project;
        const auto lock = takeLock(file.absoluteFilePath());
        if (lock && describe(file.absoluteFilePath(), &project))
            projects.append(project);
    }
    std::sort(projects.begin(), projects.end(), [](const auto &a, const auto &b) {
        return a.saved > b.saved;
    });
    return projects;
}

bool Autosave::discard(const RecoverableProject &project)
{
    const auto lock = takeLock(project.file);
    return lock && QFile::remove(project.file);
}

Autosave::Autosave(Project *project, const QString &folder, QObject *parent)
    : QObject(parent)
    , m_project(project)
    , m_folder(folder)
    , m_writer(std::make_unique<SnapshotWriter>())
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Autosave::write);
    connect(m_writer.get(), &SnapshotWriter::finished, this, &Autosave::onWritten);
    connect(project, &Project::contentChanged, this, &Autosave::onContentChanged);
    connect(project, &Project::dirtyChanged, this, &Autosave::onDirtyChanged);
    connect(project, &Project::reset, this, &Autosave::onReset);
    QDir().mkpath(folder);
    takeSlot(QDir(folder).filePath(QUuid::createUuid().toString(QUuid::WithoutBraces)
                                   + ProjectStore::fileSuffix()));
}

Autosave::~Autosave()
{
    flush();
    if (!m_project->isDirty())
        drop();
}

bool Autosave::takeSlot(const QString &file)
{
    auto lock = takeLock(file);
    if (!lock)
        return false;
    m_lock = std::move(lock);
    m_file = file;
    return true;
}

void Autosave::setInterval(int seconds)
{
    m_seconds = seconds;
    m_timer.stop();
    schedule();
}

void Autosave::schedule()
{
    if (m_isWanted && m_seconds > 0 && !m_timer.isActive() && !m_writer->isBusy())
        m_timer.start(m_seconds * 1000);
}

void Autosave::onContentChanged()
{
    m_isWanted = m_project->isDirty();
    schedule();
}

void Autosave::onDirtyChanged(bool dirty)
{
    if (!dirty && !m_isRecovering)
        drop();
}

void Autosave::onReset()
{
    if (!m_isRecovering)
        drop();
}

void Autosave::write()
{
    if (!m_isWanted || m_seconds <= 0 || m_writer->isBusy())
        return;
    m_isWanted = false;
    QDir().mkpath(m_folder);
    ProjectSnapshot snapshot = m_project->snapshot();
    snapshot.origin = m_project->path();
    m_writer->write(snapshot, m_file);
}

void Autosave::onWritten(bool success, const QString &error)
{
    if (!success) {
        m_isWanted = true;
        if (!m_hasFailed)
            Q_EMIT failed(error);
    }
    m_hasFailed = !success;
    schedule();
}

void Autosave::flush()
{
    m_writer->wait();
    m_timer.stop();
    write();
    m_writer->wait();
}

void Autosave::drop()
{
    m_isWanted = false;
    m_timer.stop();
    m_writer->wait();
    m_isWanted = false; // a failure has asked for another one
    m_timer.stop();
    QFile::remove(m_file);
}

bool Autosave::recover(const RecoverableProject &project,
                       QString *error,
                       const SnapshotReading &reading)
{
    auto lock = takeLock(project.file);
    if (!lock) {
        *error = tr("Another ZkStudio has recovered this project meanwhile.");
        return false;
    }
    const QScopedValueRollback<bool> recovering(m_isRecovering, true);
    if (!m_project->recover(project.file, error, reading))
        return false;
    drop();
    m_lock = std::move(lock);
    m_file = project.file;
    return true;
}

} // namespace zk::datamodel
