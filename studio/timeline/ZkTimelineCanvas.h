#pragma once

#include "ZkFilmstrip.h"
#include "ZkTimelinePainter.h"

#include <QBasicTimer>
#include <QWidget>

class ZkStudioTimelinePresenter;

namespace zk::timeline {

// Paints a timeline and turns mouse, wheel and keys into calls of its presenter, which it does not own.
// To assistive technology it is a slider whose value is the frame.
//
// Keys that the window has a shortcut for are left to it.
class TimelineCanvas : public QWidget
{
    Q_OBJECT

public:
    explicit TimelineCanvas(ZkStudioTimelinePresenter *presenter, QWidget *parent = nullptr);

    ZkStudioTimelinePresenter *presenter() const { return m_presenter; }
    QString positionText() const; // a time code
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void connectPresenter();
    void retranslate();
    void onTimelineChanged();
    void onPlayheadMoved(qint64 from, qint64 to);
    void onFrameTracked(qint64 frame);
    void prepareFilmstrip();
    void updateColumn(const QRectF &area);
    void scrub(double x);
    void endScrub();
    void setHovered(qint64 node, bool isDoubt);
    qint64 nodeAt(const QPointF &position) const; // -1: none
    QRect nodeArea(qint64 frame) const;
    bool isOnDoubt(const QPointF &position) const;
    bool showTip(const QPoint &position, const QPoint &globalPosition);
    bool handleKey(const QKeyEvent *event);

    ZkStudioTimelinePresenter *const m_presenter;
    Filmstrip m_filmstrip;
    const CanvasColors m_colors;
    CanvasLook m_look;
    bool m_isScrubbing = false;
    bool m_wasTracking = false; // when it was painted last
    double m_scrubX = 0; // beyond an edge the view scrolls
    QBasicTimer m_edgeTimer;
};

} // namespace zk::timeline
