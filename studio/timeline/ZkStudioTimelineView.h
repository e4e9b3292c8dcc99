#pragma once

#include "ZkStudioTimelinePresenter.h"

#include <QWidget>

class QScrollBar;

// A timeline on screen: ruler, segment nodes, filmstrip, tracked range and a scroll bar. The presenter is
// not owned and must outlive the view.
class ZKTIMELINEVIEW_EXPORT ZkStudioTimelineView : public QWidget, public ZkUIView
{
    Q_OBJECT

public:
    ZkStudioTimelineView(ZkStudioTimelinePresenter *presenter, ZkUIView *parentView);
    ~ZkStudioTimelineView() override;

    QWidget *widget() override { return this; }
    // What has the focus for keys.
    QWidget *canvas() const { return m_canvas; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void retranslate();
    void updateScrollBar();

    ZkStudioTimelinePresenter *const m_presenter;
    QWidget *m_canvas;
    QScrollBar *m_scrollBar;
};
