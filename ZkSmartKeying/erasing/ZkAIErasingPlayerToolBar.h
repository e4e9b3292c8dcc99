// The bar under the player of an AI erasing workspace; not public.
#pragma once

#include "ZkWidgets.h"

class ZkAIErasingPlayerView;
class ZkAIErasingPresenter;

// Playback and the current time; empty for a still image. The presenter is not owned.
class ZkAIErasingPlayerToolBar : public ZkPlayerToolBarBase
{
    Q_OBJECT

public:
    ZkAIErasingPlayerToolBar(ZkAIErasingPresenter *presenter, ZkAIErasingPlayerView *view);
    ~ZkAIErasingPlayerToolBar() override;

protected:
    void durationChanged(int duration) override;
    void frameChanged(int frame) override;
    void updateToolTip() override;

private:
    void buildTimeline();
    void followTracking(bool tracking);

    ZkAIErasingPresenter *m_presenter;
    ZkLabel *m_currentTime = nullptr; // null, like the duration, for a still image
    ZkLabel *m_duration = nullptr;
};
