// The inside of the page; not public.
#pragma once

#include "ZkErasingPage.h"

#include "ZkEventDepth.h"
#include "ZkPageQuestions.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

class ZkAIErasingView;
class ZkStudioSmartKeyingService;

namespace zk::app {

class ErasingBar;
class WorkspaceScene;

class ErasingPage::Private
{
    Q_DECLARE_TR_FUNCTIONS(zk::app::ErasingPage)

public:
    Private(ErasingPage *page, ZkStudioClip *clip, IZkUndoRedoService *history);
    ~Private();

    void build();
    void refuseToOpen();

    bool isTracking() const;
    bool isSegmenting() const { return strokes > 0; }
    void refresh();
    void showSelection();
    void followList();

    void eraseSaved();
    void discardSaved();
    bool mayStart();
    void start();
    void onTrackingMode(bool isTracking);
    void afterTracking();
    void requestErasing();

    bool hasWorkToLose() const;
    void askToClose();
    // What is selected becomes the clip's, as one undo step of the project.
    void keepSelection();
    void close(bool isApplied);
    void takeApart();

    ErasingPage *const q;
    ZkStudioClip *const clip;
    const erasing::Fingerprint fingerprint; // of the clip's file
    const std::unique_ptr<WorkspaceScene> scene;
    std::unique_ptr<ZkAIErasingPresenter> presenter; // null: not open
    EventDepth depth;

    ErasingBar *bar = nullptr;
    QPointer<ZkAIErasingView> view;
    PageQuestions questions;
    QTimer listCheck;

    int strokes = 0; // that were finished and wait for their mask
    bool startsAfterTracking = false;
    bool isClosing = false;
    bool isClosed = false;
    bool isApplied = false;
    bool wasBusy = false;

private:
    void connectBar();
    void connectPresenter();
    void connectView();
    ZkStudioClip *editClip() const;
    ZkStudioSmartKeyingService *service() const;
};

} // namespace zk::app
