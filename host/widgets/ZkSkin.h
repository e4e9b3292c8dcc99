// The look of the application.
#pragma once

#include "../ZkGlobal.h"

#include <QColor>
#include <QIcon>
#include <QString>
#include <QWidget>

// Numbers of the skin's palette.
namespace ZKSKIN {
enum ZkColorType {
    Canvas = 1, // behind pictures and between panels
    Field = 2, // what one types or chooses in
    Raised = 3, // buttons
    RaisedHover = 4,
    Border = 5,
    Text = 6,
    KeepStroke = 7, // strokes that keep an area
    DimText = 8,
    DisabledText = 9,
    Accent = 10, // what is chosen, on or has the focus
    PanelBackground = 11, // bars and panels
    AccentHover = 12,
    AccentPressed = 13,
    OnAccent = 14, // text on the accent colour
    ToolHover = 26, // behind a tool with a text that the mouse is over
    ToolOn = 28, // behind a tool with a text that is pressed or on
    StrongText = 56, // on a tool that is on or that the mouse is over
    ToolText = 57, // on a tool
    ToolDisabledText = 60,
    RemoveStroke = 116, // strokes that remove or erase an area
    TimelinePlayhead = 201,
    TimelineNode = 202, // frames with strokes
    TimelineTracked = 203, // frames that tracking came by
};
}

// A palette by number and style sheets by key.
class ZKWIDGETS_EXPORT ZkSkinManager
{
public:
    static ZkSkinManager *instance();

    // The palette's colour, opaque; an invalid colour for a number that the palette lacks.
    QColor color(int type) const;
    // The same by the palette's name for it, or by six hexadecimal digits ("333333"), which stand for
    // the palette's entry of that key and, without one, for themselves.
    QColor color(const QString &key) const;
    // Resolves the key "area/objectName" to the skin's style sheet and sets it on the widget.
    // False, and the widget is left as it was, when the skin has no such key.
    bool applyStyleSheet(QWidget *widget, const QString &key) const;
    // The icon of that name, as large as 24 widget pixels, with its looks when it is disabled and, for
    // buttons that are on, when it is checked. A null icon when the skin lacks it.
    QIcon icon(const QString &name) const;

private:
    ZkSkinManager();
    ~ZkSkinManager();
    Q_DISABLE_COPY(ZkSkinManager)
};
