// The progress of one segmentation, over the player; not public.
#pragma once

#include "ZkPercentBar.h"

class ZkSmartKeyingProgressOverlayWidget : public ZkPlayerOverlayWidget
{
    Q_OBJECT

public:
    ZkSmartKeyingProgressOverlayWidget(QWidget *playerWidget, QWidget *parent);
    ~ZkSmartKeyingProgressOverlayWidget() override;

    // Percent. 0 starts afresh and is painted at once: what follows may block the thread.
    void setProgress(int percent);

protected:
    QPoint overlayPosition() const override;
    void changeEvent(QEvent *event) override;

private:
    void buildBar();
    void restart();
    void translate();

    ZkPercentBar m_progress;
};
