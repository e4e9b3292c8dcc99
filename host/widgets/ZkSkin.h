// The look of the application.
#pragma once

#include "../ZkGlobal.h"

#include <QColor>
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

// A palette by number and style sheets by key.
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
