// An AI erasing presenter on a fake host.
#pragma once

#include "Workspace.h"

#include "presenters/ZkAIErasingCropSelectorPresenter.h"
#include "presenters/ZkAIErasingPresenter.h"

class ErasingWorkspace : public Workspace
{
public:
    explicit ErasingWorkspace(bool readable = true)
        : Workspace([](IZkClip *edited) { return std::make_unique<ZkAIErasingPresenter>(edited); },
                    readable)
        , erasing(static_cast<ZkAIErasingPresenter *>(presenter.get()))
        , crops(erasing->cropSelectorPresenter())
        , service(&controller->clip.erasing)
        , undo(&controller->clip.line.undo)
    { }
    ~ErasingWorkspace() { presenter.reset(); } // before what it counts in

    // As strokes on these frames would leave them, in an empty history.
    void segment(const QVector<qint64> &frames)
    {
        for (const qint64 frame : frames)
            service->nodes.insert(frame, ZkSegmentResultPtr(new SegmentResult(&results)));
        service->report(ZKTIMELINE::SegmentData);
    }
    // Three areas in a row, 240 wide and 540 high on the canvas, with the service ids 10, 20 and 30; none
    // is active.
    void select()
    {
        for (int i = 0; i < 3; ++i)
            crops->addCropRect(QRect(i * 480, 0, 240, 540));
        crops->setActiveCropId(-1);
        undo->clearHistory();
    }
    void record()
    {
        QCoreApplication::processEvents();
        m_cropRecorder = std::make_unique<SignalJournal>(crops);
        Workspace::record();
    }

    int results = 0; // alive
    ZkAIErasingPresenter *erasing;
    ZkAIErasingCropSelectorPresenter *crops;
    SmartKeyingService *service;
    UndoRedoService *undo;

private:
    std::unique_ptr<SignalJournal> m_cropRecorder;
};
