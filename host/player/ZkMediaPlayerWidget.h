// A player on screen.
#pragma once

#include "../ZkMediaPlayer.h"
#include "../widgets/ZkBasicWidgets.h"

// The picture of a player: letterboxed, zoomed and panned as the zoomer says. The wheel and a pinch
// zoom about the pointer.
class ZKMEDIAPLAYER_EXPORT ZkVblPlayerWidget : public ZkWidget
{
    Q_OBJECT

public:
    explicit ZkVblPlayerWidget(QWidget *parent = nullptr);
    ~ZkVblPlayerWidget() override;

    void setPresenter(ZkMediaPlayerPresenter *presenter);
    // Whether zooming sticks to the fitted view and to 100 % when it comes close. Initially on.
    void setZoomAdsorbEnabled(bool enabled);
    bool isZoomAdsorbEnabled() const;
    // Zooms by the pinch of a QGestureEvent; leaves other events alone.
    void dealGestureEvent(QEvent *event);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

// A player on screen: its picture fills the widget and lets mouse presses through to it. Tells the
// drawing widgets among its children how large the source is.
class ZKMEDIAPLAYER_EXPORT ZkMediaPlayerWidget : public ZkWidget
{
    Q_OBJECT

public:
    explicit ZkMediaPlayerWidget(QWidget *parent = nullptr);
    ~ZkMediaPlayerWidget() override;

    // Not owned; the widget lets go of it when the presenter dies first. One widget per presenter.
    void setPresenter(ZkMediaPlayerPresenter *presenter);
    ZkMediaPlayerPresenter *playerPresenter() const;
    ZkVblPlayerWidget *vblPlayerWidget() const;

protected:
    void childEvent(QChildEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};
