// Tips that point at a function the first few times it is met.
#pragma once

#include "../ZkGlobal.h"

#include <QPoint>
#include <QString>

class QWidget;

// Keeps how often each tip was shown. GUI thread only.
class ZK_INTERFACE IZkFunctionTipCounts
{
public:
    virtual ~IZkFunctionTipCounts() = default;
    virtual int shownTimes(int tip) const = 0;
    virtual void setShownTimes(int tip, int times) = 0;
};

// GUI thread only.
class ZKWIDGETS_EXPORT ZkFunctionTips
{
public:
    enum Tip {
        EraseByBox = 127,
    };

    // Whether the tip exists and was shown fewer times than it may be: EraseByBox 3 times.
    static bool canShowTip(int tip);
    // Shows it below that point, its arrow pointing there, within the parent's window, until it is
    // clicked, hidden or 8000 ms have passed; counts it. False, and nothing happens, when it may not be
    // shown or is on screen already. It goes with its parent.
    static bool showTip(int tip, const QPoint &globalPosition, QWidget *parent);
    static void hideVisibleTip(int tip);
    // The tip on screen; null without it.
    static QWidget *visibleTip(int tip);
    static QString text(int tip);
    // Not owned, must outlive the tips or be taken away. Null, which it is at first: kept in memory.
    static void setCounts(IZkFunctionTipCounts *counts);
};
