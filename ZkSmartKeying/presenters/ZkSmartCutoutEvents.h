// Usage-analytics records of smart cutout; not public.
#pragma once

#include "datamodel/ZkTrackEvent.h"

// What one segmentation is reported with, from its first stroke to its end.
struct ZkSmartCutoutUseRecord
{
    QString functionName = QStringLiteral("cutout_mask");
    QString sourceFormat;
    QString result = QStringLiteral("success");
    QString errorCode;
    QString failReason;
    QString projectId;
    bool isNewProject = false;
    qint64 duration = 0; // ms
};

// What a user does with a preset, as interaction types.
namespace ZkSmartCutoutInteraction {
inline QString downloadStarted()
{
    return QStringLiteral("1");
}
inline QString applied()
{
    return QStringLiteral("2");
}
inline QString saved()
{
    return QStringLiteral("3");
}
} // namespace ZkSmartCutoutInteraction

class ZkSmartCutoutClickEvent : public ZkTrackEvent
{
public:
    ZkSmartCutoutClickEvent(const QString &btnName, const QString &sourceFormat);
};

class ZkSmartCutoutDrawingEvent : public ZkTrackEvent
{
public:
    explicit ZkSmartCutoutDrawingEvent(const ZkSmartCutoutUseRecord &record);
};

class ZkSmartCutoutExposeEvent : public ZkTrackEvent
{
public:
    ZkSmartCutoutExposeEvent(qint64 resId, const QString &resName);
};

class ZkSmartCutoutInteractionEvent : public ZkTrackEvent
{
public:
    ZkSmartCutoutInteractionEvent(const QString &interactionType,
                                  qint64 resId,
                                  const QString &resName);
};
