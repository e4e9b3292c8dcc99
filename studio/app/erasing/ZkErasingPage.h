// The page on which objects are selected that are to be erased from one clip.
#pragma once

#include "ZkEditingPage.h"
#include "ZkEraseTasks.h"

#include <memory>

class ZkAIErasingPresenter;
class ZkStudioClip;

namespace zk::app {

// The AI erasing workspace with a bar of its own. Create hands over what is to be erased and leaves; so does
// Erase of the saved selections. What is selected stays with the clip then, and when the user keeps it.
//
// Clip and history are not owned and must outlive the page.
class ErasingPage : public EditingPage
{
    Q_OBJECT

public:
    // The history is the project's.
    ErasingPage(ZkStudioClip *clip, IZkUndoRedoService *history, QWidget *parent = nullptr);
    ~ErasingPage() override;

    ZkSmartKeyingPresenter *presenter() const override;
    static Shortcuts shortcuts();

Q_SIGNALS:
    // closed(true) follows. The request's clip is not filled in.
    void eraseRequested(const zk::app::EraseRequest &request);

protected:
    void showState() override;
    void onTrackingEnded() override;
    bool hasWorkToLose() const override;
    void askToClose() override;
    void stopWork() override;
    void deleteWorkspace() override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace zk::app
