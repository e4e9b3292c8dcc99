// The page on which one clip is cut out.
#pragma once

#include "ZkEditingPage.h"

#include <memory>

class ZkStudioClip;
class ZkStudioProjectManager;

namespace zk::app {

// The page on which a clip is cut out: the workspace with its timeline, tracking, presets, and Apply,
// Cancel and Reset. What was done reaches the clip through Apply alone.
//
// Clip and project manager are not owned and must outlive the page. Whoever shows it switches his own
// shortcuts off that are among shortcuts(). Busy: segmentation, tracking, a download or saving.
class WorkspacePage : public EditingPage
{
    Q_OBJECT

public:
    WorkspacePage(ZkStudioClip *clip, ZkStudioProjectManager *manager, QWidget *parent = nullptr);
    ~WorkspacePage() override;

    ZkSmartKeyingPresenter *presenter() const override;
    bool isBusy() const override;
    static Shortcuts shortcuts();

    QByteArray saveLayout() const override;
    bool restoreLayout(const QByteArray &layout) override;

protected:
    void showState() override;
    bool hasWorkToLose() const override;
    void askToClose() override;
    void stopWork() override;
    void deleteWorkspace() override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace zk::app
