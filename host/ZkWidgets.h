// Host widget library: the skin, the drawing cursor and the toast.
#pragma once

#include "ZkGlobal.h"

#include <QColor>
#include <QCursor>
#include <QPixmap>
#include <QString>
#include <QWidget>

// Numbers of the skin's palette.
namespace ZKSKIN {
enum ZkColorType {
    KeepStroke = 7, // strokes that keep an area
    PanelBackground = 11, // bars and panels
    RemoveStroke = 116, // strokes that remove or erase an area
};
}

// The look of the application: a palette by number and style sheets by key.
class ZKWIDGETS_EXPORT ZkSkinManager
{
public:
    static ZkSkinManager *instance();

    // The palette's colour, opaque; an invalid colour for a number that the palette lacks.
    QColor color(int type) const;
    // Resolves the key "area/objectName" to the skin's style sheet and sets it on the widget.
    // False, and the widget is left as it was, when the skin has no such key.
    bool applyStyleSheet(QWidget *widget, const QString &key) const;

private:
    ZkSkinManager();
    ~ZkSkinManager();
    Q_DISABLE_COPY(ZkSkinManager)
};

// The round brush cursor.
class ZKWIDGETS_EXPORT ZkDrawingCursor
{
public:
    // A circle of that diameter in widget pixels, at least 2, with its hot spot in the middle. The
    // pressed form is filled with the colour as it stands, the normal form shows the outline with a
    // light fill. The pixmap has the device pixel ratio of the primary screen.
    static QCursor cursor(int diameter, const QColor &color, bool pressed);
};

// A short notice that fades by itself. It deletes itself when it has been shown.
class ZKWIDGETS_EXPORT ZkToast : public QWidget
{
    Q_OBJECT

public:
    // Parent null: the notice stands on the primary screen. The toast is centred horizontally,
    // topMargin pixels below the parent's top edge, until it is moved. Ownership stays with the toast.
    static ZkToast *
    creatToast(const QString &text, QWidget *parent, const QPixmap &icon, int topMargin);

    QString text() const;
    QPixmap icon() const;
    // Shows it for 3000 ms.
    void showToast();

private:
    ZkToast(const QString &text, QWidget *parent, const QPixmap &icon, int topMargin);
    void placeAtTop();

    QString m_text;
    QPixmap m_icon;
    int m_topMargin;
};
