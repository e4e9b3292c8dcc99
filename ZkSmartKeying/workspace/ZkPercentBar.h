// A thin progress bar and the percentage beside it; not public.
#pragma once

#include "ZkWidgets.h"

// Both are the parent's; whoever makes them lays them out.
struct ZkPercentBar
{
    explicit ZkPercentBar(QWidget *parent);

    void setPercent(int percent);

    ZkProgressBar *bar;
    ZkLabel *label;
};
