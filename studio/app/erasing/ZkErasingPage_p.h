// The inside of the page; not public.
#pragma once

#include "ZkErasingPage.h"

#include <QCoreApplication>
#include <QPointer>

class ZkAIErasingView;
class ZkStudioSmartKeyingService;

namespace zk::app {

class ErasingBar;

class ErasingPage::Private
{
    Q_DECLARE_TR_FUNCTIONS(zk::app::ErasingPage)

public:
    Private(ErasingPage *page, ZkStudioClip *clip, IZkUndoRedoService *history);
    ~Private();

    QString fileName() const;
    void build();
    void showState();

    void eraseSaved();
    void discardSaved();
    bool mayStart();
    void start();
    // The run was started in order to erase.
    void afterTracking();
    void askAboutScenes(const QString &text);
    void requestErasing();

    bool isChanged() const; // what is selected
    // What is selected becomes the clip's, as one undo step of the project.
    void keepSelection();

    ErasingPage *const q;
    ZkStudioClip *const clip;
    const erasing::Fingerprint fingerprint; // of the clip's file
    std::unique_ptr<ZkAIErasingPresenter> presenter; // null: not open

    ErasingBar *bar = nullptr;
    QPointer<ZkAIErasingView> view;
    bool startsAfterTracking = false;

private:
    void connectBar();
    ZkStudioClip *editClip() const;
    ZkStudioSmartKeyingService *service() const;
};

} // namespace zk::app
