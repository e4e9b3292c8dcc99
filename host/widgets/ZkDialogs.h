// Dialogs without the system's frame.
#pragma once

#include "ZkBasicWidgets.h"
#include "ZkButtons.h"

#include <QDialog>
#include <QMargins>

#include <memory>

// A dialog of a title bar, a work area with one content widget and a bar of push buttons at the right. It
// is dragged by its title bar and has a frame of its own. Esc and the close button reject it.
class ZKWIDGETS_EXPORT ZkFramelessDialog : public QDialog
{
    Q_OBJECT

public:
    enum TitleButton {
        CloseButton = 32,
    };

    explicit ZkFramelessDialog(QWidget *parent = nullptr);
    ~ZkFramelessDialog() override;

    // The window's title and what the title bar shows.
    void setTitle(const QString &title);
    // Flags of TitleButton; normally CloseButton.
    void setTitleButtons(int flags);
    // Null for a button that the bar does not show.
    QAbstractButton *titleButton(int flag) const;
    void setTitleBarHeight(int pixels); // normally 36
    void setButtonBarHeight(
        int pixels); // margins included; normally 56; without buttons there is no bar
    void setButtonBarMargins(const QMargins &margins); // normally 0, 0, 16, 16
    // Appended at the right, left of nothing. The dialog's.
    ZkPushButton *addPushButton(const QString &text,
                                ZkPushButton::ZButtonType type = ZkPushButton::SecondaryType);
    void setWorkAreaMargins(const QMargins &margins); // normally 24, 8, 24, 16
    // The dialog's from now on; the one before is deleted.
    void setContentWidget(QWidget *content);
    QWidget *contentWidget() const;

Q_SIGNALS:
    // The close button rejects the dialog behind this, unless whoever received it has closed it.
    void sigTitleButtonClicked(int flag);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

// Says something and waits.
class ZKWIDGETS_EXPORT ZOldMessageDialog
{
public:
    enum Button {
        NoButton = 0,
        OkButton = 1,
        CancelButton = 2,
        YesButton = 4,
        NoAnswerButton = 8, // "No"
    };

    // Modal to the parent's window; returns when the dialog is closed, with the button that did it. Esc
    // and the close button answer Cancel, else No, else Ok, whichever comes first in the buttons, and
    // NoButton without any. buttons: flags; 0 counts as Ok. The detail stands below the text in a
    // dimmer colour. selectable: the user may select and copy the texts.
    static int Infomation(const QString &text,
                          QWidget *parent,
                          int buttons = OkButton,
                          const QString &title = QString(),
                          const QString &detail = QString(),
                          bool selectable = false);
};
