// The open project and the media library of ZkStudio.
#pragma once

#include "ZkLibrarySettings.h"

#include <memory>

class ZkStudioMediaLibrary;

// IZkProjectManager::getInstance() answers with it while it lives. One at a time; a second one is an
// error that is logged, and stays unknown. GUI thread only.
class ZKDATAMODEL_EXPORT ZkStudioProjectManager : public IZkProjectManager
{
public:
    // Opens the library and brings in the presets of the program. Never fails: what is wrong with
    // the library is logged and told by libraryError().
    explicit ZkStudioProjectManager(const zk::datamodel::LibrarySettings &settings);
    ~ZkStudioProjectManager() override;

    IZkMediaLibrary *mediaLibrary() const override;
    ZkStudioMediaLibrary *studioLibrary() const;
    // Empty when the library is well.
    QString libraryError() const;

    QString projectId() const override; // a UUID without braces
    bool isNewProject() const override;

    // A project with a fresh id that has never been saved. The one at the start is such.
    void startProject();
    // The same, with an id that it had before (a recovered project).
    void startProject(const QString &id);
    // The project with that id was read from a file.
    void setOpenedProject(const QString &id);
    void setProjectSaved();

private:
    Q_DISABLE_COPY(ZkStudioProjectManager)
    std::unique_ptr<ZkStudioMediaLibrary> m_library;
    QString m_libraryError;
    QString m_projectId;
    bool m_isNewProject = true;
};
