// Usage-analytics records of AI erasing.
#pragma once

#include "ZkTrackEvent.h"

// A stroke has been painted. The tool is "brush" or "eraser", the file type "image" or "video".
class ZkSmartMaskUseEvent : public ZkTrackEvent
{
public:
    ZkSmartMaskUseEvent(const QString &tool, const QString &fileType)
        : ZkTrackEvent(QStringLiteral("smart_mask_use"))
    {
        setProperty(QStringLiteral("tool"), tool);
        setProperty(QStringLiteral("file_type"), fileType);
    }
};

// A button has been clicked. The number of masks is left out when it is 0.
class ZkSmartMaskBarBtnClickEvent : public ZkTrackEvent
{
public:
    ZkSmartMaskBarBtnClickEvent(const QString &button, const QString &fileType)
        : ZkSmartMaskBarBtnClickEvent(button, 0, fileType)
    { }
    ZkSmartMaskBarBtnClickEvent(const QString &button, uint maskCount, const QString &fileType)
        : ZkTrackEvent(QStringLiteral("smart_mask_bar_btn_click"))
    {
        setProperty(QStringLiteral("btn_name"), button);
        if (maskCount > 0)
            setProperty(QStringLiteral("mask_num"), maskCount);
        setProperty(QStringLiteral("file_type"), fileType);
    }
};

// What became of one erasing.
struct ZkSmartMaskRemoveRecord
{
    QString result; // "success", "fail" or "cancel"
    int maskCount = 0; // segment nodes
    int duration = 0; // whole seconds
    QString reason; // of a failure, such as "network_unavailable"
    QString errorCode;
};

class ZkSmartMaskRemoveEvent : public ZkTrackEvent
{
public:
    explicit ZkSmartMaskRemoveEvent(const ZkSmartMaskRemoveRecord &record)
        : ZkTrackEvent(QStringLiteral("smart_mask_remove"))
    {
        setProperty(QStringLiteral("result"), record.result);
        setProperty(QStringLiteral("mask_num"), record.maskCount);
        setProperty(QStringLiteral("duration"), record.duration);
        setProperty(QStringLiteral("fail_reason"), record.reason);
        setProperty(QStringLiteral("error_code"), record.errorCode);
    }
};
