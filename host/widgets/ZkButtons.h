// Buttons with texts.
#pragma once

#include "../ZkGlobal.h"

#include <QAbstractButton>
#include <QPushButton>

#include <memory>

// A button with a picture and a text whose looks are set one by one. A look that a state lacks is taken
// from the next plainer one: on and hovered or pressed from on, on from pressed, all others from normal.
class ZKWIDGETS_EXPORT ZkButton : public QAbstractButton
{
    Q_OBJECT

public:
    enum Style {
        TextOnly = 0,
        ImageOnly = 1,
        TextBesideImage = 2,
    };
    // Flags: an operation that takes several is done for each of them.
    enum State {
        NormalState = 1,
        HoverState = 2,
        PressedState = 4,
        DisabledState = 8,
        OnState = 16,
        OnHoverState = 32,
        OnPressedState = 64,
        AllStates = 127,
    };
    enum Role {
        TextRole = 1,
        BorderRole = 2,
        BackgroundRole = 4,
    };

    ~ZkButton() override;

    // The text is the accessible name, too.
    static ZkButton *
    CreateButton(QWidget *parent, const QString &text, const QString &imagePath, int style);

    void setImage(int states, const QString &path);
    // A number of the skin's palette. Without any a text is Text, a border and a background are nothing.
    void setColor(int roles, int states, int colorType);
    // As large as its content, normally; else the size is left to its owner.
    void setAutoSize(bool on);
    void setImageSize(const QSize &size); // widget pixels, normally 24 x 24
    void setSpace(double pixels); // between image and text
    void setBorderRadius(double pixels);
    void setBorderWidth(double pixels);
    void setElideMode(Qt::TextElideMode mode); // of a text that has no room; normally Qt::ElideNone
    // ZkButton::State of the moment, a single flag.
    int state() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    ZkButton(QWidget *parent, int style);
    class Private;
    std::unique_ptr<Private> d;
};

// The skin's push button. Enter clicks it while it has the focus.
class ZKWIDGETS_EXPORT ZkPushButton : public QPushButton
{
    Q_OBJECT

public:
    enum ZButtonType {
        SecondaryType = 1,
        PrimaryType = 2, // what a window is mostly for
    };
    enum ZButtonSizeKind { // height in widget pixels
        Size24 = 24,
        Size32 = 32,
    };

    explicit ZkPushButton(QWidget *parent = nullptr);
    ~ZkPushButton() override;

    static ZkPushButton *CreateButton(QWidget *parent,
                                      ZkPushButton::ZButtonType type,
                                      ZkPushButton::ZButtonSizeKind size);

protected:
    ZkPushButton(QWidget *parent, ZButtonType type, ZButtonSizeKind size);
    void keyPressEvent(QKeyEvent *event) override;
};

class ZKWIDGETS_EXPORT ZkPrimaryButton : public ZkPushButton
{
    Q_OBJECT

public:
    explicit ZkPrimaryButton(QWidget *parent = nullptr);
    ~ZkPrimaryButton() override;
};

// Starts a task that makes something; "Create" until it is given another text. Paints itself and takes
// at least 120 x 32 pixels.
class ZKWIDGETS_EXPORT ZAIGCCreateButton : public ZkPrimaryButton
{
    Q_OBJECT

public:
    explicit ZAIGCCreateButton(QWidget *parent = nullptr);
    ~ZAIGCCreateButton() override;

    bool isHovered() const { return m_hovered; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_hovered = false;
};
