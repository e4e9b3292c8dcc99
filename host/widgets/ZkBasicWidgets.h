// Labels, buttons, boxes and sliders with the skin's look.
#pragma once

#include "../ZkGlobal.h"

#include <QColor>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QProgressBar>
#include <QSlider>
#include <QToolButton>
#include <QWidget>

#include <memory>

namespace ZKWIDGET {
// Sizes of the widgets that come in several; the dynamic property "SizeKind" tells the skin.
enum ZkSizeKind {
    NormalSize = 1,
    MenuSize = 3,
    MiniSize = 8,
};

// What a label is for; the dynamic property "LabelKind" tells the skin.
enum ZkLabelKind {
    PlainLabel = 0,
    TitleLabel = 2,
    SecondaryLabel = 7, // dimmer, for what explains or accompanies something
};
} // namespace ZKWIDGET

// Marks a widget for automatic tests: the property "AutomationTag".
ZKWIDGETS_EXPORT void zkSetAutomationTag(QWidget *widget, const QString &tag);

// Paints what its style sheet says, backgrounds included.
class ZKWIDGETS_EXPORT ZkWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ZkWidget(QWidget *parent = nullptr);
    ~ZkWidget() override;

protected:
    // Sets the widget's texts anew; called when the language has changed. The base has none.
    virtual void RetranslateUi();
    void changeEvent(QEvent *event) override;
};

// Saves a painter's state and restores it at the end of the scope.
class ZkPainterCaretaker
{
public:
    explicit ZkPainterCaretaker(QPainter *painter)
        : m_painter(painter)
    {
        m_painter->save();
    }
    ~ZkPainterCaretaker() { m_painter->restore(); }

private:
    Q_DISABLE_COPY(ZkPainterCaretaker)
    QPainter *m_painter;
};

class ZKWIDGETS_EXPORT ZkLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ZkLabel(const QString &text, QWidget *parent = nullptr);
    ~ZkLabel() override;

    void setLabelKind(int kind); // ZKWIDGET::ZkLabelKind
    int labelKind() const;
};

// A line between groups of widgets; its colour is the background of its style sheet.
class ZKWIDGETS_EXPORT ZkLineWidget : public ZkWidget
{
    Q_OBJECT

public:
    explicit ZkLineWidget(QWidget *parent = nullptr);
    ~ZkLineWidget() override;
};

class ZKWIDGETS_EXPORT ZkProgressBar : public QProgressBar
{
    Q_OBJECT

public:
    explicit ZkProgressBar(QWidget *parent = nullptr);
    ~ZkProgressBar() override;

    // Thin and without a text.
    static ZkProgressBar *CreateMiniProgressBar(QWidget *parent);
    void setSizeKind(int kind); // ZKWIDGET::ZkSizeKind
};

class ZKWIDGETS_EXPORT ZkComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ZkComboBox(QWidget *parent = nullptr);
    ~ZkComboBox() override;

    // A row that can be current but not be chosen from the list, nor by wheel or key.
    void setRowHidden(int row, bool hidden);
    bool isRowHidden(int row) const;

protected:
    bool event(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

class ZKWIDGETS_EXPORT ZkMenu : public QMenu
{
    Q_OBJECT

public:
    explicit ZkMenu(QWidget *parent = nullptr);
    ~ZkMenu() override;

    // An entry with a number, which sigItemClicked reports.
    QAction *addItem(int id, const QIcon &icon, const QString &text);
    QAction *item(int id) const;
    // Pops it up under the widget, within the screen. Returns at once.
    void popupBelow(QWidget *widget);

Q_SIGNALS:
    void sigItemClicked(int id);
};

// The skin's icon button. Its style sheet names the icon: "qproperty-iconName". Enter clicks it while it
// has the focus, as windows may have other uses for the space bar. What its tooltip says is its
// accessible name, until it is given one.
class ZKWIDGETS_EXPORT ZkToolButton : public QToolButton
{
    Q_OBJECT
    Q_PROPERTY(QString iconName READ iconName WRITE setIconName)

public:
    explicit ZkToolButton(QWidget *parent = nullptr);
    ~ZkToolButton() override;

    QString iconName() const { return m_iconName; }
    // One of the skin's icons (ZkSkinManager::icon()) with its looks for all states.
    void setIconName(const QString &name);
    // The icon and 2 pixels around it.
    QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void followToolTip();

    QString m_iconName;
    QString m_nameFromToolTip;
};

// A button that shows a colour.
class ZKWIDGETS_EXPORT ZkColorToolButton : public ZkToolButton
{
    Q_OBJECT

public:
    explicit ZkColorToolButton(const QColor &color, QWidget *parent = nullptr);
    ~ZkColorToolButton() override;

    QColor color() const { return m_color; }
    void setColor(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
};

// A frameless dialog to choose a colour. A click beside it and Enter close it; Esc does, too, and puts
// the colour back that it was opened with.
class ZKWIDGETS_EXPORT ZkColorSelecter : public QDialog
{
    Q_OBJECT

public:
    explicit ZkColorSelecter(QWidget *parent = nullptr);
    ~ZkColorSelecter() override;

    QColor currentColor() const;
    // Does not report.
    void setCurrentColor(const QColor &color);
    void reject() override;

Q_SIGNALS:
    void sigCurrentColorChanged(const QColor &color); // by the user

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

// Shows and edits a position as hh:mm:ss:ff. Up, Down and the wheel step by a frame. What is typed is
// taken over by Enter or when the focus leaves; a text that is no time is put back, as Esc does. Typing
// may leave out the hours, minutes and seconds, and the colons: "1210" is 12 seconds and 10 frames.
class ZKWIDGETS_EXPORT ZkTimeEditWidget : public ZkWidget
{
    Q_OBJECT

public:
    enum Kind {
        PlayheadTime = 1,
    };

    static ZkTimeEditWidget *CreateTimeEditWidget(QWidget *parent, int kind);
    ~ZkTimeEditWidget() override;

    float frameRate() const;
    void setFrameRate(float framesPerSecond);
    int maximum() const;
    void setMaximum(int frame);
    int value() const;
    // Shows the frame, clamped to 0..maximum. Does not report, and does not disturb typing.
    void setValue(int frame);
    // Takes over what is being typed.
    void commit();

Q_SIGNALS:
    void sigValueChanged(int frame); // by the user

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    ZkTimeEditWidget(QWidget *parent, int kind);
    class Private;
    std::unique_ptr<Private> d;
};

// A slider between a zoom-out and a zoom-in button; values from 0 (all) to 100 (closest).
class ZKWIDGETS_EXPORT ZkZoomSlider : public ZkWidget
{
    Q_OBJECT

public:
    static ZkZoomSlider *CreateZoomSlider(QWidget *parent);
    ~ZkZoomSlider() override;

    int value() const;
    // Does not report.
    void setValue(int value);
    void Add(); // one step in
    void Sub(); // one step out
    ZkToolButton *zoomInButton() const;
    ZkToolButton *zoomOutButton() const;

Q_SIGNALS:
    void sigValueChanged(int value); // by the user, Add() or Sub()

protected:
    void changeEvent(QEvent *event) override;

private:
    explicit ZkZoomSlider(QWidget *parent);
    class Private;
    std::unique_ptr<Private> d;
};
