// Bars of buttons, and the bar under a player.
#pragma once

#include "ZkBasicWidgets.h"
#include "ZkPlayerControl.h"

#include <QHash>

#include <memory>

class QAbstractButton;
class QButtonGroup;
class QHBoxLayout;
class QSlider;

class ZKWIDGETS_EXPORT ZkToolBar : public ZkWidget
{
    Q_OBJECT

public:
    explicit ZkToolBar(QWidget *parent = nullptr);
    ~ZkToolBar() override;

    // The row of widgets: margins 16, 0, 16, 0 and spacing 16 until somebody sets others.
    QHBoxLayout *mainLayout() const { return m_layout; }
    void addWidget(QWidget *widget);

private:
    QHBoxLayout *m_layout;
};

// A bar whose buttons are addressed by id and sit in one group, which is not exclusive.
class ZKWIDGETS_EXPORT ZkToolButtonBar : public ZkToolBar
{
    Q_OBJECT

public:
    explicit ZkToolButtonBar(QWidget *parent = nullptr);
    ~ZkToolButtonBar() override;

    // Null for an unknown id.
    QAbstractButton *button(int id) const;
    QButtonGroup *buttonGroup() const { return m_group; }

Q_SIGNALS:
    // A button was clicked by the user or by click(); not when its checked state is set.
    void sigButtonClick(int id);

protected:
    // Makes a button with createButton(), names it, gives it the skin's style and appends it to the
    // row. It stays the bar's.
    QAbstractButton *
    addButton(int id, const QString &objectName, const QString &styleKey, bool checkable);
    // The base makes a ZkToolButton.
    virtual QAbstractButton *createButton(int id);

private:
    QButtonGroup *m_group;
};

// The bar under a player: playback buttons and a slider, which drive the player by themselves. Derived
// bars lay them out. The slider and all buttons but FitButton are disabled while there is no player or
// nothing to play. FitButton does nothing by itself.
class ZKWIDGETS_EXPORT ZkPlayerToolBarBase : public ZkWidget, private IZkPlayerControlObserver
{
    Q_OBJECT

public:
    enum ButtonId {
        PlayPauseButton = 1, // a switch button: state 1 play or pause, 2 stops tracking's look
        StopButton = 3, // and back to where playback started
        PreviousFrameButton = 4,
        NextFrameButton = 5,
        FitButton = 10,
    };
    enum SwitchState {
        PlaybackState = 1,
        TrackingState = 2, // the button shows that a tracking run is on
    };

    // Numbers that shortcutText() is asked for.
    enum ShortcutId {
        PlayPauseShortcut = 3000,
        StopShortcut = 3001,
        PreviousFrameShortcut = 3004,
        NextFrameShortcut = 3005,
    };

    // ownButtons: lays out play, stop and steps by itself, before what derived bars add.
    explicit ZkPlayerToolBarBase(QWidget *parent, bool ownButtons = false);
    ~ZkPlayerToolBarBase() override;

    // Not owned. A player that is a QObject may die first, another one must be replaced before it dies.
    void setPlayerPresenter(IZkPlayerControl *player);
    IZkPlayerControl *playerPresenter() const { return m_player; }
    // Made on first use. Null for a number that the base does not know.
    ZkToolButton *baseButton(int id);
    // Made on first use; in frames.
    QSlider *playbackSlider();
    void setSwitchButtonState(int id, int state);
    int switchButtonState(int id) const;

    // The key of a shortcut as text; empty for an unknown id.
    virtual QString shortcutText(int id) const;

Q_SIGNALS:
    void sigBeforeShortcutPlayOrPause();

protected:
    // The clip has that many frames now.
    virtual void durationChanged(int duration);
    virtual void frameChanged(int frame);
    // Sets the tooltips of what a derived bar adds; called when the language changes. The base's buttons
    // have theirs anyway.
    virtual void updateToolTip();
    // "text (key)" with the property WITH_SHORTCUT, or the text alone when the key is empty.
    static void setToolTipWithShortcut(QWidget *widget, const QString &text, const QString &key);
    void changeEvent(QEvent *event) override;

private:
    void playerStateChanged(int state) override;
    void playerFrameChanged(int frame) override;
    void playerDurationChanged(int frames) override;
    void leavePlayer();
    ZkToolButton *makeButton(int id);
    void layOutOwnButtons();
    void clicked(int id);
    void refresh();
    void refreshToolTips();

    IZkPlayerControl *m_player = nullptr;
    QMetaObject::Connection m_playerDies;
    QHash<int, ZkToolButton *> m_buttons;
    QHash<int, int> m_switchStates;
    QSlider *m_slider = nullptr; // made on first use
};
