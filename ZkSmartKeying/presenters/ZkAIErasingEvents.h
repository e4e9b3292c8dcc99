// Usage-analytics records of the AI erasing presenter; not public.
#pragma once

#include "datamodel/ZkTrackEvent.h"

class ZkAIErasingClickEvent : public ZkTrackEvent
{
public:
    // Without any masks their number is left out.
    ZkAIErasingClickEvent(const QString &buttonName, const QString &fileType, quint32 maskCount);
};
