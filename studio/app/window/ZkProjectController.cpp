#include "ZkProjectController.h"

#include "ZkBusyCursor.h"
#include "ZkPreferences.h"
#include "ZkPrompts.h"
#include "ZkRecoveryDialog.h"

#include "project/ZkProject.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QScopedValueRollback>

namespace zk::app {

using datamodel::Autosave;
using datamodel::MediaEntry;
using datamodel::Project;

namespace {

QString withSuffix(const QString &path)
{
    return path.endsWith(projectSuffix(), Qt::CaseInsensitive) ? path : path + projectSuffix();
}

QString autosaveFolderOf(const QString &folder)
{
    return folder.isEmpty() ? Autosave::defaultFolder() : folder;
}

} // namespace

QString projectSuffix()
{
    return QStringLiteral(".zkproj");
}

ProjectController::ProjectController(Project *project,
                                     const QString &autosaveFolder,
                                     QWidget *window)
    : m_project(project)
    , m_window(window)
    , m_autosaveFolder(autosaveFolderOf(autosaveFolder))
    , m_autosave(project, m_autosaveFolder)
    , m_reading(window)
{
    connect(project, &Project::pathChanged, this, &ProjectController::titleChanged);
    connect(project, &Project::dirtyChanged, this, &ProjectController::titleChanged);
    connect(project, &Project::savingFinished, this, &ProjectController::onSaved);
    connect(&m_autosave, &Autosave::failed, this, [this](const QString &error) {
        Q_EMIT notice(tr("Autosave failed: %1").arg(error));
    });
    connect(&m_recent, &RecentFiles::chosen, this, [this](const QString &path) {
        Q_EMIT openRequested(path);
    });
    readPreferences();
}

ProjectController::~ProjectController() = default;

void ProjectController::readPreferences()
{
    m_autosave.setInterval(Preferences::autosaveSeconds());
}

QString ProjectController::title() const
{
    return QStringLiteral("%1[*] – ZkStudio").arg(m_project->displayName());
}

bool ProjectController::mayLeave()
{
    // The window may be closed again while the question is on screen.
    if (m_isAsking)
        return false;
    const QScopedValueRollback<bool> asking(m_isAsking, true);
    m_project->waitForSaving();
    if (!m_project->isDirty())
        return true;
    switch (askToSave(m_window, m_project->displayName())) {
    case SaveChoice::Save:
        return saveNow();
    case SaveChoice::Discard:
        // Until another project is there, nothing is lost; then the autosave goes by itself.
        return true;
    case SaveChoice::Cancel:
        break;
    }
    return false;
}

bool ProjectController::mayClose()
{
    if (!mayLeave())
        return false;
    m_autosave.drop();
    return true;
}

bool ProjectController::saveNow()
{
    const QString path = m_project->path().isEmpty() ? askForPath() : m_project->path();
    if (path.isEmpty())
        return false;
    QString error;
    bool saved = false;
    {
        const BusyCursor busy;
        saved = m_project->save(path, &error);
    }
    if (saved)
        m_recent.add(path);
    else
        warnUser(m_window, tr("The project could not be saved"), error);
    return saved;
}

bool ProjectController::startNew()
{
    if (!mayLeave())
        return false;
    m_project->startNew();
    return true;
}

bool ProjectController::open()
{
    if (!mayLeave())
        return false;
    const QString path =
        QFileDialog::getOpenFileName(m_window,
                                     tr("Open Project"),
                                     Preferences::folder(Preferences::ProjectFolder),
                                     tr("ZkStudio projects (*%1)").arg(projectSuffix()));
    return !path.isEmpty() && openNow(path);
}

bool ProjectController::open(const QString &path)
{
    return mayLeave() && openNow(path);
}

bool ProjectController::openNow(const QString &path)
{
    QString error;
    const QScopedValueRollback<bool> asking(m_isAsking, true);
    if (!m_project->open(path, &error, m_reading.function())) {
        if (!error.isEmpty())
            warnUser(m_window, tr("The project could not be opened"), error);
        return false;
    }
    m_recent.add(path);
    Preferences::rememberFolderOf(Preferences::ProjectFolder, path);
    Q_EMIT notice(unfinishedWork());
    reportMissingMedia();
    return true;
}

QString ProjectController::unfinishedWork() const
{
    QStringList names;
    const QVector<datamodel::ProjectClip *> clips = m_project->clipsWithDrafts();
    for (const datamodel::ProjectClip *clip : clips)
        names.append(clip->name());
    return names.isEmpty()
        ? QString()
        : tr("There is unfinished work on %1.").arg(names.join(QLatin1String(", ")));
}

void ProjectController::reportMissingMedia()
{
    QStringList missing;
    const QVector<qint64> ids = m_project->missingMedia();
    for (const qint64 id : ids) {
        const MediaEntry *entry = m_project->findMedia(id);
        missing.append(entry->problem.isEmpty() ? QDir::toNativeSeparators(entry->info.path)
                                                : entry->problem);
    }
    if (!missing.isEmpty())
        warnUser(m_window,
                 tr("Some files of the project are missing"),
                 tr("Their clips are kept. Choose \"Relink\" on one to show where its file is."),
                 missing);
}

bool ProjectController::save()
{
    return m_project->path().isEmpty() ? saveAs() : startSaving(m_project->path());
}

bool ProjectController::saveAs()
{
    const QString path = askForPath();
    return !path.isEmpty() && startSaving(path);
}

QString ProjectController::askForPath()
{
    const QString known = m_project->path();
    const QString proposal = known.isEmpty()
        ? QDir(Preferences::folder(Preferences::ProjectFolder))
              .filePath(m_project->displayName() + projectSuffix())
        : known;
    const QString path = QFileDialog::getSaveFileName(
        m_window, tr("Save Project"), proposal, tr("ZkStudio projects (*%1)").arg(projectSuffix()));
    if (path.isEmpty())
        return QString();
    Preferences::rememberFolderOf(Preferences::ProjectFolder, path);
    return withSuffix(path);
}

bool ProjectController::startSaving(const QString &path)
{
    m_project->waitForSaving();
    m_savingTo = path;
    if (m_project->startSaving(path))
        Q_EMIT notice(tr("Saving..."));
    return true;
}

void ProjectController::onSaved(bool success, const QString &error)
{
    const QString path = std::exchange(m_savingTo, QString());
    if (path.isEmpty())
        return; // saveNow() has told already
    if (success) {
        m_recent.add(path);
        Q_EMIT notice(tr("Saved"));
        return;
    }
    Q_EMIT notice(QString());
    warnUser(m_window, tr("The project could not be saved"), error);
}

void ProjectController::offerRecovery()
{
    const QVector<datamodel::RecoverableProject> found = Autosave::recoverable(m_autosaveFolder);
    if (found.isEmpty())
        return;
    RecoveryDialog dialog(found, m_window);
    connect(&dialog, &RecoveryDialog::discarded, this, [](const auto &project) {
        Autosave::discard(project);
    });
    if (dialog.exec() == QDialog::Accepted)
        recover(dialog.chosen());
}

void ProjectController::recover(const datamodel::RecoverableProject &project)
{
    QString error;
    const QScopedValueRollback<bool> asking(m_isAsking, true);
    if (!m_autosave.recover(project, &error, m_reading.function())) {
        if (!error.isEmpty())
            warnUser(m_window, tr("The project could not be recovered"), error);
        return;
    }
    const QString recovered = tr("Recovered. Save the project to keep it.");
    Q_EMIT notice((recovered + QLatin1Char(' ') + unfinishedWork()).trimmed());
    reportMissingMedia();
}

} // namespace zk::app
