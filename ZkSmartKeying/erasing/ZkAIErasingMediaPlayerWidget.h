// The player of an AI erasing workspace; not public.
#pragma once

#include "../workspace/ZkSmartKeyingMediaPlayerWidget.h"

// Behaves as the smart keying player, under its own name.
class ZkAIErasingMediaPlayerWidget : public ZkSmartKeyingMediaPlayerWidget
{
    Q_OBJECT

public:
    using ZkSmartKeyingMediaPlayerWidget::ZkSmartKeyingMediaPlayerWidget;
    ~ZkAIErasingMediaPlayerWidget() override;
};
