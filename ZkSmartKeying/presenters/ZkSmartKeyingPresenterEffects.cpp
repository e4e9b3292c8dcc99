// The cutout effect on the edit clip and the presets that make it.

#include "ZkSmartKeyingPresenter_p.h"

#include "../ZkSmartKeyingLog.h"
#include "../presets/ZCutoutPresetItemManager.h"
#include "../presets/ZCutoutPresetItemModel.h"

using ClipSetter = ZPropertyBatchSetter<IZkClip *>;

IZkEffect *ZkSmartKeyingPresenter::getEffect() const
{
    const IZkClip *const clip = editClip();
    const IZkEffectList *const effects = clip ? clip->effects() : nullptr;
    for (int i = 0; effects && i < effects->count(); ++i) {
        if (isSmartKeyingEffect(effects->effectAt(i)))
            return effects->effectAt(i);
    }
    return nullptr;
}

bool ZkSmartKeyingPresenter::isSmartKeyingEffect(IZkEffect *effect)
{
    const IZkEffectDescriptor *const descriptor = effect ? effect->descriptor() : nullptr;
    return descriptor && descriptor->type() == ZKTIMELINE::SmartKeyingEffect;
}

bool ZkSmartKeyingPresenter::isEffectEnabled() const
{
    const IZkEffect *const effect = getEffect();
    return effect && effect->isEnabled();
}

bool ZkSmartKeyingPresenter::setEffectEnabled(bool enabled)
{
    IZkEffect *const effect = getEffect();
    if (!effect)
        return false;
    if (effect->isEnabled() != enabled)
        effect->setEnabled(enabled);
    playerPresenter()->update();
    return true;
}

void ZkSmartKeyingPresenter::removeEffects()
{
    const IZkClip *const clip = editClip();
    IZkEffectList *const effects = clip ? clip->effects() : nullptr;
    if (!effects)
        return;
    for (int i = effects->count() - 1; i >= 0; --i) {
        if (isSmartKeyingEffect(effects->effectAt(i)))
            effects->removeById(effects->effectAt(i)->id());
    }
}

void ZkSmartKeyingPresenter::applyNonePreset()
{
    ClipSetter::set(
        undoRedoService(),
        {editClip()},
        [this](IZkClip *) { removeEffects(); },
        QStringLiteral("cutout_add_border:Apply None effect"));
}

void ZkSmartKeyingPresenter::applyPreset(IZkAbstractMediaItem *item)
{
    const auto logError = [](const QString &text) {
        ZK_LOG(ZKLOG::Error, "ZkSmartKeyingPresenter", "applyPreset", text);
    };
    if (!item) {
        logError(QStringLiteral("cutout_add_border:preset media item is null"));
        return;
    }
    const auto *const effectItem = dynamic_cast<IZkEffectMediaItem *>(item);
    if (!effectItem)
        return;
    const ZkEffectPtr preset = effectItem->effect();
    if (!preset) {
        logError(QStringLiteral("cutout_add_border:Create effect failed"));
        return;
    }
    const QString text = QStringLiteral("cutout_add_border:Apply effect, slug(%1)")
                             .arg(item->slug(), 0, QLatin1Char(' '));
    const auto replaceEffects = [this, preset](IZkClip *clip) {
        // The preset's own effect belongs to the library, so the clip gets a copy.
        const ZkEffectPtr effect = preset->createInstance();
        if (!effect || !clip->effects())
            return;
        removeEffects();
        clip->effects()->add(effect);
        if (!effect->isEnabled())
            effect->setEnabled(true);
    };
    ClipSetter::set(undoRedoService(), {editClip()}, replaceEffects, text);
}

void ZkSmartKeyingPresenter::selectPresetAtIndex(const QModelIndex &index)
{
    Q_D(ZkSmartKeyingPresenter);
    if (!index.isValid())
        return;
    if (index.row() == 0) {
        applyNonePreset();
        return;
    }
    IZkAbstractMediaItem *const item = ZCutoutPresetItemModel::mediaItemFromIndex(index);
    if (!item)
        return;
    if (item->needsDownload()) {
        d->downloadPreset(index);
        return;
    }
    trackEffectEvent(index, ZkSmartCutoutInteraction::applied());
    applyPreset(item);
}

void ZkSmartKeyingPresenterPrivate::downloadPreset(const QModelIndex &index)
{
    q->trackEffectEvent(index, ZkSmartCutoutInteraction::downloadStarted());
    const int row = index.row();
    presetManager->downloadItem(index, [this, row](bool success, IZkAbstractMediaItem *item) {
        if (success) {
            // The list may have been reloaded since.
            q->trackEffectEvent(indexOfItem(item), ZkSmartCutoutInteraction::applied());
            q->applyPreset(item);
            return;
        }
        ZK_LOG_TO(
            zkResourceLog(),
            ZKLOG::Warning,
            "ZkSmartKeyingPresenter",
            "selectPresetAtIndex",
            QString::asprintf("cutout_add_border:Cutout preset download failed index: %d", row));
        emit q->sigEffectPresetItemDownloadFailed();
    });
}

QModelIndex ZkSmartKeyingPresenterPrivate::indexOfItem(const IZkAbstractMediaItem *item) const
{
    const QVector<QModelIndex> indexes = presetManager->itemModel()->getAllIndexes();
    for (const QModelIndex &index : indexes) {
        if (ZCutoutPresetItemModel::mediaItemFromIndex(index) == item)
            return index;
    }
    return QModelIndex();
}

QModelIndex ZkSmartKeyingPresenter::findPresetIndexByEffect(IZkEffect *effect) const
{
    const ZCutoutPresetItemManager *const manager = presetManager();
    const IZkEffectDescriptor *const descriptor = effect ? effect->descriptor() : nullptr;
    const QString slug = descriptor ? descriptor->slug() : QString();
    if (!manager || slug.isEmpty())
        return QModelIndex();
    const QVector<QModelIndex> indexes = manager->itemModel()->getAllIndexes();
    for (const QModelIndex &index : indexes) {
        if (index.data(ZCutoutPresetItemModel::SlugRole).toString() == slug)
            return index;
    }
    return QModelIndex();
}

void ZkSmartKeyingPresenter::notifyEffectMediaItemsLoaded()
{
    emit sigEffectMediaItemsLoaded();
}
