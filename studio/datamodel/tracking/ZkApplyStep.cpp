#include "ZkApplyStep.h"

#include "../segmentation/ZkMatteTrack.h"
#include "../segmentation/ZkStudioSmartKeyingService.h"
#include "../timeline/ZkStudioEffect.h"
#include "../timeline/ZkStudioEffectList.h"
#include "../timeline/ZkStudioTimeline.h"
#include "ZkStudioEditController.h"

namespace zk::datamodel {

namespace {

struct AppliedState
{
    Segments segments;
    SegmentSettings settings;
    std::shared_ptr<const MatteTrack> mattes;
};

class ApplyItem : public IZkUndoRedoItem
{
public:
    ApplyItem(ZkStudioClip *clip,
              ZKSMARTKEYING::ZkSmartKeyingBusinessType type,
              const AppliedState &after)
        : m_clip(clip)
        , m_service(clip->studioService(type))
        , m_before {m_service->segments(), m_service->settings(), clip->matteTrack()}
        , m_after(after)
    { }

    void redo() override { restore(m_after); }
    void undo() override { restore(m_before); }

private:
    void restore(const AppliedState &state)
    {
        m_service->setState(state.segments, state.settings);
        m_clip->setMatteTrack(state.mattes);
        m_service->reportChange();
    }

    ZkStudioClip *const m_clip;
    ZkStudioSmartKeyingService *const m_service;
    const AppliedState m_before;
    const AppliedState m_after;
};

void removeCutoutEffects(ZkStudioEffectList *effects)
{
    while (const ZkStudioEffect *effect = effects->cutoutEffect())
        effects->removeById(effect->id());
}

ZkEffectPtr cutoutEffectOf(const ZkStudioClip &edited)
{
    const ZkStudioEffect *effect = edited.studioEffects()->cutoutEffect();
    return effect ? effect->createInstance() : ZkStudioEffect::plainCutout();
}

bool isCutOut(const ZkStudioClip &clip, const ZkStudioSmartKeyingService &service)
{
    return !service.segments().isEmpty() || clip.matteTrack()
        || clip.studioEffects()->cutoutEffect();
}

} // namespace

void applyCutout(ZkStudioClip *clip,
                 const ZkStudioClip &edited,
                 ZKSMARTKEYING::ZkSmartKeyingBusinessType type,
                 const QVector<EncodedMatte> &mattes)
{
    const ZkStudioSmartKeyingService *service = edited.studioService(type);
    const bool hasMasks = !service->segments().isEmpty();
    if (!hasMasks && !isCutOut(*clip, *clip->studioService(type)))
        return;
    AppliedState after {service->segments(), service->settings(), clip->matteTrack()};
    const bool isCutout = type == ZKSMARTKEYING::SmartCutout;
    if (isCutout)
        after.mattes = hasMasks ? std::make_shared<const MatteTrack>(mattes) : nullptr;
    ZkStudioUndoRedoService *undo = clip->studioTimeline()->undoRedoService();
    // The step is closed before the changes are reported.
    const ZkPauseEventCommander pause(undo);
    const ZkUndoRedoCommander step(
        undo, ZkStudioEditController::tr("Smart Cutout"), QStringLiteral("applyCutout"));
    undo->push(new ApplyItem(clip, type, after));
    if (!isCutout)
        return;
    removeCutoutEffects(clip->studioEffects());
    if (hasMasks)
        clip->studioEffects()->add(cutoutEffectOf(edited));
}

void applySelection(ZkStudioClip *clip, const ZkStudioClip &edited, const QString &text)
{
    const auto type = ZKSMARTKEYING::AIErasing;
    const ZkStudioSmartKeyingService *service = edited.studioService(type);
    if (service->segments().isEmpty() && clip->studioService(type)->segments().isEmpty())
        return;
    ZkStudioUndoRedoService *undo = clip->studioTimeline()->undoRedoService();
    // The step is closed before the changes are reported.
    const ZkPauseEventCommander pause(undo);
    const ZkUndoRedoCommander step(undo, text, QStringLiteral("applySelection"));
    undo->push(
        new ApplyItem(clip, type, {service->segments(), service->settings(), clip->matteTrack()}));
}

void removeCutout(ZkStudioClip *clip, const QString &text)
{
    const auto type = ZKSMARTKEYING::SmartCutout;
    const ZkStudioSmartKeyingService *service = clip->studioService(type);
    if (!isCutOut(*clip, *service))
        return;
    ZkStudioUndoRedoService *undo = clip->studioTimeline()->undoRedoService();
    const ZkPauseEventCommander pause(undo);
    const ZkUndoRedoCommander step(undo, text, QStringLiteral("removeCutout"));
    undo->push(new ApplyItem(clip, type, {Segments(), service->settings(), nullptr}));
    removeCutoutEffects(clip->studioEffects());
}

} // namespace zk::datamodel
