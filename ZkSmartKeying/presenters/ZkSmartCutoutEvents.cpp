#include "ZkSmartCutoutEvents.h"

ZkSmartCutoutClickEvent::ZkSmartCutoutClickEvent(const QString &btnName,
                                                 const QString &sourceFormat)
    : ZkTrackEvent(QStringLiteral("smart_cutout_click"))
{
    setProperty(QStringLiteral("btn_name"), btnName);
    setProperty(QStringLiteral("source_format"), sourceFormat);
}

ZkSmartCutoutDrawingEvent::ZkSmartCutoutDrawingEvent(const ZkSmartCutoutUseRecord &record)
    : ZkTrackEvent(QStringLiteral("smart_cutout_use"))
{
    setProperty(QStringLiteral("func_name"), record.functionName);
    setProperty(QStringLiteral("source_format"), record.sourceFormat);
    setProperty(QStringLiteral("result"), record.result);
    setProperty(QStringLiteral("error_code"), record.errorCode);
    setProperty(QStringLiteral("fail_reason"), record.failReason);
    setProperty(QStringLiteral("duration"), record.duration);
    setProperty(QStringLiteral("project_id"), record.projectId);
    setProperty(QStringLiteral("is_newproject"), record.isNewProject);
}

ZkSmartCutoutExposeEvent::ZkSmartCutoutExposeEvent(qint64 resId, const QString &resName)
    : ZkTrackEvent(QStringLiteral("smart_cutout_effects_expose"))
{
    setProperty(QStringLiteral("res_id"), resId);
    setProperty(QStringLiteral("res_name"), resName);
}

ZkSmartCutoutInteractionEvent::ZkSmartCutoutInteractionEvent(const QString &interactionType,
                                                             qint64 resId,
                                                             const QString &resName)
    : ZkTrackEvent(QStringLiteral("smart_cutout_effects_interaction"))
{
    setProperty(QStringLiteral("interaction_type"), interactionType);
    setProperty(QStringLiteral("res_id"), resId);
    setProperty(QStringLiteral("res_name"), resName);
}
