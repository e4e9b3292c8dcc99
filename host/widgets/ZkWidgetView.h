// A plain widget that is a view.
#pragma once

#include "../ZkCore.h"
#include "ZkBasicWidgets.h"

// Its parent widget is the parent view's.
class ZKWIDGETS_EXPORT ZkWidgetView : public ZkWidget, public ZkUIView
{
    Q_OBJECT

public:
    explicit ZkWidgetView(ZkUIView *parent = nullptr);
    ~ZkWidgetView() override;

    QWidget *widget() override { return this; }
};
