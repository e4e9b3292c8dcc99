// Not public: how widgets that paint themselves show the keyboard focus.
#pragma once

class QWidget;

// Paints a frame along the widget's edge while it has the focus. For paint events.
void zkPaintFocusFrame(QWidget *widget);
