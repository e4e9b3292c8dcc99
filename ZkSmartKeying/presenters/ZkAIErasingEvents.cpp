#include "ZkAIErasingEvents.h"

ZkAIErasingClickEvent::ZkAIErasingClickEvent(const QString &buttonName,
                                             const QString &fileType,
                                             quint32 maskCount)
    : ZkTrackEvent(QStringLiteral("smart_mask_bar_btn_click"))
{
    setProperty(QStringLiteral("btn_name"), buttonName);
    if (maskCount != 0)
        setProperty(QStringLiteral("mask_num"), maskCount);
    setProperty(QStringLiteral("file_type"), fileType);
}
