// Windows that float over a player.
#pragma once

#include "ZkBasicWidgets.h"

#include <QPoint>

#include <memory>

// Ties an overlay, which is a top-level window, to the player widget that it floats over: the overlay
// follows the player's window on the stack, and is on screen only while the player is.
class ZKWIDGETS_EXPORT ZkPlayerWidgetEventHelper : public QObject
{
    Q_OBJECT

public:
    // Owned by its parent. The overlay and the player may die first.
    ZkPlayerWidgetEventHelper(QWidget *overlay, QWidget *playerWidget, QObject *parent);
    ~ZkPlayerWidgetEventHelper() override;

    // The helper of that overlay; null without one.
    static ZkPlayerWidgetEventHelper *of(const QWidget *overlay);

    QWidget *playerWidget() const;
    // Follows the window that the widget belongs to from now on, also when the widget moves to another.
    void updateTopWidget(QWidget *widget);
    // Whether the player can be seen: shown, and its window not minimised.
    bool isPlayerOnScreen() const;
    // Shows the overlay as soon and as long as the player is on screen, or hides it.
    void setOverlayVisible(bool visible);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void sigPlayerResize();
    // The player has another place on the screen; also when its window was moved or shown.
    void sigMove();

private:
    class Private;
    std::unique_ptr<Private> d;
};

// A frameless, translucent window that floats over a player widget and takes no focus.
class ZKWIDGETS_EXPORT ZkPlayerOverlayWidget : public ZkWidget
{
    Q_OBJECT

public:
    // The player is not owned and may die first.
    explicit ZkPlayerOverlayWidget(QWidget *playerWidget, QWidget *parent = nullptr);
    ~ZkPlayerOverlayWidget() override;

    QWidget *playerWidget() const;
    ZkPlayerWidgetEventHelper *eventHelper() const;
    // Whether it shall be on screen while the player is; places it first.
    void setWidVisible(bool visible);
    void setVisible(bool visible) override;
    // Moves to overlayPosition(). Called whenever the player moves or either of them is resized.
    void updatePosition();

protected:
    // Top left in global coordinates; the base puts it on the player's top left.
    virtual QPoint overlayPosition() const;
    void resizeEvent(QResizeEvent *event) override;

private:
    ZkPlayerWidgetEventHelper *m_helper;
};
