// What an open editor consists of below its windows: the project with its preset library, a clip, and
// the workspace that is open on it.
#pragma once

#include "ZkFrameRenderer.h"

#include <QModelIndex>
#include <QString>

#include <memory>

class ZkAIErasingPresenter;
class ZkSmartKeyingPresenter;
class ZkStudioProjectManager;
class ZkStudioTimeline;

namespace zk::app {

class StudioSession
{
public:
    StudioSession();
    ~StudioSession();

    // An empty folder means the user's library; an empty server that the catalogue is left as it is.
    bool openLibrary(const QString &folder, const QString &server, QString *error);
    bool openClip(const QString &path, QString *error);
    // Opens the smart cutout workspace on the clip. Its preset list begins with "None".
    bool beginSmartCutout(QString *error);
    // Opens the AI erasing workspace on the clip.
    bool beginErasing(QString *error);
    // Closes the workspace; what was applied stays on the clip.
    void endWorkspace();

    // Null while no workspace is open.
    ZkSmartKeyingPresenter *presenter() const { return m_presenter.get(); }
    // Null while no AI erasing workspace is open.
    ZkAIErasingPresenter *erasingPresenter() const { return m_erasing; }
    ZkStudioProjectManager *projectManager() const { return m_project.get(); }

    bool arePresetsLoaded() const { return m_presetsLoaded; }
    // Invalid when the list has no such preset.
    QModelIndex findPreset(const QString &slug) const;
    ZkStudioTimeline *timeline() const { return m_timeline.get(); }
    // The clip of the project as it is now.
    datamodel::RenderSnapshot snapshot() const;

private:
    Q_DISABLE_COPY(StudioSession)
    bool take(std::unique_ptr<ZkSmartKeyingPresenter> presenter, QString *error);

    std::unique_ptr<ZkStudioProjectManager> m_project;
    std::unique_ptr<ZkStudioTimeline> m_timeline;
    std::unique_ptr<ZkSmartKeyingPresenter> m_presenter;
    ZkAIErasingPresenter *m_erasing = nullptr; // the same
    bool m_presetsLoaded = false;
};

} // namespace zk::app
