#include "ZkStudioProjectManager.h"

#include "ZkLook.h"
#include "ZkLookCatalogue.h"
#include "ZkStudioMediaLibrary.h"

#include <QLoggingCategory>
#include <QUuid>

namespace {

Q_LOGGING_CATEGORY(log, "zk.studio.library")

IZkProjectManager *instance = nullptr;

QVector<zk::effects::Look> builtinLooks()
{
    QStringList errors;
    const QVector<zk::effects::Look> looks = zk::effects::LookCatalogue::builtin(&errors);
    for (const QString &error : qAsConst(errors))
        qCWarning(log).noquote() << "a preset of the program is left out:" << error;
    return looks;
}

} // namespace

IZkProjectManager::~IZkProjectManager() = default;

IZkProjectManager *IZkProjectManager::getInstance()
{
    return instance;
}

ZkStudioProjectManager::ZkStudioProjectManager(const zk::datamodel::LibrarySettings &settings)
    : m_library(std::make_unique<ZkStudioMediaLibrary>(settings))
{
    startProject();
    if (m_library->open(&m_libraryError) && !m_library->importLooks(builtinLooks()))
        m_libraryError = QStringLiteral("the presets of the program are not complete");
    if (instance)
        qCCritical(log) << "there is a project manager already";
    else
        instance = this;
}

ZkStudioProjectManager::~ZkStudioProjectManager()
{
    if (instance == this)
        instance = nullptr;
}

IZkMediaLibrary *ZkStudioProjectManager::mediaLibrary() const
{
    return m_library.get();
}

ZkStudioMediaLibrary *ZkStudioProjectManager::studioLibrary() const
{
    return m_library.get();
}

QString ZkStudioProjectManager::libraryError() const
{
    return m_libraryError;
}

QString ZkStudioProjectManager::projectId() const
{
    return m_projectId;
}

bool ZkStudioProjectManager::isNewProject() const
{
    return m_isNewProject;
}

void ZkStudioProjectManager::startProject()
{
    startProject(QUuid::createUuid().toString(QUuid::WithoutBraces));
}

void ZkStudioProjectManager::startProject(const QString &id)
{
    m_projectId = id;
    m_isNewProject = true;
}

void ZkStudioProjectManager::setOpenedProject(const QString &id)
{
    m_projectId = id;
    m_isNewProject = false;
}

void ZkStudioProjectManager::setProjectSaved()
{
    m_isNewProject = false;
}
