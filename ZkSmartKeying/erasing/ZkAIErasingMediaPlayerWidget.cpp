#include "ZkAIErasingMediaPlayerWidget.h"

ZkAIErasingMediaPlayerWidget::~ZkAIErasingMediaPlayerWidget() = default;
