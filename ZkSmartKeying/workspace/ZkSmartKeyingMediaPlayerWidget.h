// The workspace's player; not public.
#pragma once

#include "../presenters/ZkSmartKeyingPresenter.h"

#include "player/ZkMediaPlayerWidget.h"

#include <QPoint>

class ZkSmartKeyingDrawingWidget;

// The player of an editing context with the canvas that floats over it. Pans the frame by itself while
// the canvas is hidden, and shows the presenter's prompts. The presenter is not owned.
class ZkSmartKeyingMediaPlayerWidget : public ZkMediaPlayerWidget
{
    Q_OBJECT

public:
    ZkSmartKeyingMediaPlayerWidget(ZkSmartKeyingPresenter *presenter, QWidget *parent);
    ~ZkSmartKeyingMediaPlayerWidget() override;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void connectPresenter();
    void followCanvas();
    void followPenWidth(int width);
    void showPrompt(ZkSmartKeyingPresenter::PromptType type);
    void refreshCursor();
    QWidget *topmost();

    ZkSmartKeyingPresenter *m_presenter;
    ZkSmartKeyingDrawingWidget *m_drawingWidget;
    bool m_mousePressed = false; // any button but the right one
    QPoint m_pressPos; // where the frame was taken hold of
};
