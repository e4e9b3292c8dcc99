// The screen that a widget is on.
#pragma once

#include "../ZkGlobal.h"

class QWidget;

class ZKWIDGETS_EXPORT ZkScreen
{
public:
    // Device pixels per widget pixel of the widget's screen; of the primary one without a widget.
    static double devicePixelRatio(const QWidget *widget = nullptr);
};
