// What the workspace reports about its use.

#include "ZkSmartKeyingPresenter_p.h"

#include "../presets/ZCutoutPresetItemModel.h"

void ZkSmartKeyingPresenter::trackSmartCutoutClickEvent(const QString &btnName,
                                                        const QString &sourceFormat)
{
    ZkSmartCutoutClickEvent(btnName, sourceFormat).sendEvent();
}

void ZkSmartKeyingPresenter::trackEffectSaveEvent()
{
    trackEffectEvent(findPresetIndexByEffect(getEffect()), ZkSmartCutoutInteraction::saved());
}

void ZkSmartKeyingPresenter::trackEffectEvent(const QModelIndex &preset,
                                              const QString &interactionType)
{
    if (!preset.isValid())
        return;
    ZkSmartCutoutInteractionEvent(interactionType,
                                  preset.data(ZCutoutPresetItemModel::MediaIdRole).toLongLong(),
                                  preset.data(ZCutoutPresetItemModel::NameRole).toString())
        .sendEvent();
}

void ZkSmartKeyingPresenter::trackPresetAtIndex(const QModelIndex &preset)
{
    if (!preset.isValid())
        return;
    ZkSmartCutoutExposeEvent(preset.data(ZCutoutPresetItemModel::MediaIdRole).toLongLong(),
                             preset.data(ZCutoutPresetItemModel::NameRole).toString())
        .sendEvent();
}

void ZkSmartKeyingPresenterPrivate::startUseEvent()
{
    useTimer.start();
    useEventStarted = true;
    useEvent.sourceFormat = q->sourceFormat();
    if (const IZkProjectManager *const project = IZkProjectManager::getInstance()) {
        useEvent.projectId = project->projectId();
        useEvent.isNewProject = project->isNewProject();
    }
}

void ZkSmartKeyingPresenterPrivate::failUseEvent(const QString &errorCode, const QString &reason)
{
    if (!useEventStarted)
        return;
    useEvent.result = QStringLiteral("failed");
    useEvent.errorCode = errorCode;
    useEvent.failReason = reason;
}

void ZkSmartKeyingPresenterPrivate::finishUseEvent()
{
    if (!useEventStarted)
        return;
    useEvent.duration = useTimer.elapsed();
    if (useEvent.result != QLatin1String("failed")) {
        useEvent.result = QStringLiteral("success");
        useEvent.errorCode.clear();
        useEvent.failReason.clear();
    }
    ZkSmartCutoutDrawingEvent(useEvent).sendEvent();
    useEvent = ZkSmartCutoutUseRecord();
    useTimer.invalidate();
    useEventStarted = false;
}
