#include "ZkSmartKeyingPresenter_p.h"

#include "../ZkSmartKeyingLog.h"

#include <QFileInfo>
#include <QMetaType>

namespace {

// PromptType, by the names that signals and variants know it by, for as long as the module is loaded: what
// Qt keeps of a type are functions of the library that has registered it, and it would not forget a type
// that qRegisterMetaType() has registered.
class PromptTypeRegistration
{
    using Type = ZkSmartKeyingPresenter::PromptType;
    using Functions = QtMetaTypePrivate::QMetaTypeFunctionHelper<Type>;

public:
    PromptTypeRegistration()
        : m_id(QMetaType::registerNormalizedType(
            QByteArrayLiteral("ZkSmartKeyingPresenter::PromptType"),
            Functions::Destruct,
            Functions::Construct,
            int(sizeof(Type)),
            QMetaType::TypeFlags(QtPrivate::QMetaTypeTypeFlags<Type>::Flags),
            &ZkSmartKeyingPresenter::staticMetaObject))
    {
        QMetaType::registerNormalizedTypedef(QByteArrayLiteral("PromptType"), m_id);
    }
    ~PromptTypeRegistration() { QMetaType::unregisterType(m_id); }

private:
    Q_DISABLE_COPY(PromptTypeRegistration)
    const int m_id;
};

} // namespace

ZkSmartKeyingPresenter::ZkSmartKeyingPresenter(ZKSMARTKEYING::ZkSmartKeyingBusinessType type,
                                               IZkClip *clip,
                                               QObject *parent)
    : ZkPresenter(parent)
    , d_ptr(std::make_unique<ZkSmartKeyingPresenterPrivate>(this, clip))
{
    Q_D(ZkSmartKeyingPresenter);
    d->setUp(type, clip);
    ZK_LOG(ZKLOG::Info,
           "ZkSmartKeyingPresenter",
           "ZkSmartKeyingPresenter",
           QStringLiteral("ZkSmartKeyingPresenter new"));
    static const PromptTypeRegistration registration;
    d->connectPlayer();
    d->listenToModelLoad();
}

ZkSmartKeyingPresenter::~ZkSmartKeyingPresenter()
{
    Q_D(ZkSmartKeyingPresenter);
    ZK_LOG(ZKLOG::Info,
           "ZkSmartKeyingPresenter",
           "~ZkSmartKeyingPresenter",
           QStringLiteral("delloc ZkSmartKeyingPresenter"));
    // Taking the player apart stops it; nobody here, a derived presenter least of all, may follow that.
    d->playerPresenter->disconnect(this);
    // While the private object is still reachable: what the host reports meanwhile may be followed.
    d->tearDown();
    d_ptr.reset();
}

bool ZkSmartKeyingPresenter::dispatchMessage(ZkMessage *)
{
    return true;
}

void ZkSmartKeyingPresenter::openEditTimeline()
{
    Q_D(ZkSmartKeyingPresenter);
    ZkMediaPlayerOpenParam param;
    param.handle = editTimeline()->handle();
    param.kind = ZKPLAYER::OpenTimeline;
    param.startFrame = d->initialFrame;
    param.endFrame = 0;
    param.autoPlay = false;
    param.showFirstFrame = true;
    param.followChanges = true;
    param.keepZoom = true;
    d->playerPresenter->mediaPlayer()->open(param);
}

void ZkSmartKeyingPresenter::reset()
{
    Q_D(ZkSmartKeyingPresenter);
    stopTrackingMode();
    d->setEditMode(KeepMode);
    zoomFrame(0, QPointF(0, 0));
    d->applyPenPixelWidth(d->defaultPenPixelWidth);
    smartKeyingService()->reset();
    removeEffects();
    d->closing = false;
    emit sigReset();
}

IZkSmartKeyingEditController *ZkSmartKeyingPresenter::editController() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->editController;
}

IZkClip *ZkSmartKeyingPresenter::editClip() const
{
    return editController()->editClip();
}

IZkTimeline *ZkSmartKeyingPresenter::editTimeline() const
{
    return editController()->editTimeline();
}

IZkUndoRedoService *ZkSmartKeyingPresenter::undoRedoService() const
{
    const IZkTimeline *const timeline = editTimeline();
    return timeline ? timeline->undoRedoService() : nullptr;
}

IZkSmartKeyingService *ZkSmartKeyingPresenter::smartKeyingService() const
{
    Q_D(const ZkSmartKeyingPresenter);
    const IZkClip *const clip = editClip();
    return clip ? clip->smartKeyingService(d->businessType) : nullptr;
}

ZkMediaPlayerPresenter *ZkSmartKeyingPresenter::playerPresenter() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->playerPresenter;
}

ZCutoutPresetItemManager *ZkSmartKeyingPresenter::presetManager() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->presetManager;
}

ZTimelinePresenter *ZkSmartKeyingPresenter::timelinePresenter() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->timelinePresenter;
}

void ZkSmartKeyingPresenter::setTimelinePresenter(ZTimelinePresenter *presenter)
{
    Q_D(ZkSmartKeyingPresenter);
    d->timelinePresenter = presenter;
}

qint64 ZkSmartKeyingPresenter::currentFrame() const
{
    return playerPresenter()->currentFrame();
}

bool ZkSmartKeyingPresenter::isInitSuccessful() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->initSuccessful;
}

bool ZkSmartKeyingPresenter::isSmartCutout() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->businessType == ZKSMARTKEYING::SmartCutout;
}

bool ZkSmartKeyingPresenter::isPhotoMode() const
{
    const IZkClip *const clip = editClip();
    return clip && clip->type() == ZKTIMELINE::ImageClip;
}

bool ZkSmartKeyingPresenter::isGifMode() const
{
    const IZkClip *const clip = editClip();
    const IZkMediaSource *const source = clip ? clip->source() : nullptr;
    return source && source->isAnimatedGif();
}

QString ZkSmartKeyingPresenter::sourceFormat() const
{
    const IZkClip *const clip = editClip();
    const IZkMediaSource *const source = clip ? clip->source() : nullptr;
    return source ? QFileInfo(source->filePath()).suffix().toLower() : QString();
}

bool ZkSmartKeyingPresenter::isTrackingMode() const
{
    const IZkSmartKeyingService *const service = smartKeyingService();
    return service && service->workMode() == ZKSMARTKEYING::TrackingMode;
}

void ZkSmartKeyingPresenter::switchWorkMode(ZKSMARTKEYING::ZkSegmentWorkMode mode)
{
    editController()->switchWorkMode(mode);
    emit sigTrackingModeChanged(isTrackingMode());
}

ZkSmartKeyingPresenter::PlayerEditMode ZkSmartKeyingPresenter::playerEditMode() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return isTrackingMode() ? TrackingEditMode : static_cast<PlayerEditMode>(d->playerEditMode);
}

void ZkSmartKeyingPresenter::setPlayerEditMode(PlayerEditMode mode)
{
    Q_D(ZkSmartKeyingPresenter);
    if (mode == EraseMode && !isEraseMaskEnable())
        return;
    d->setEditMode(mode);
    if (mode != KeepMode)
        d->setProgressShowing(false);
}

bool ZkSmartKeyingPresenter::isDrawingMode() const
{
    const PlayerEditMode mode = playerEditMode();
    return mode == KeepMode || mode == RemoveMode || mode == EraseMode;
}

bool ZkSmartKeyingPresenter::isSelectRectMode() const
{
    return playerEditMode() == SelectRectMode;
}

bool ZkSmartKeyingPresenter::isUIControlsEnabled() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->uiControlsEnabled;
}

void ZkSmartKeyingPresenter::setUIControlsEnabled(bool enabled)
{
    Q_D(ZkSmartKeyingPresenter);
    if (d->uiControlsEnabled == enabled)
        return;
    d->uiControlsEnabled = enabled;
    emit sigUIControlsEnabledChanged(enabled);
}

bool ZkSmartKeyingPresenter::isProgressEnabled() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->progressEnabled;
}

void ZkSmartKeyingPresenter::setProgressEnabled(bool enabled)
{
    Q_D(ZkSmartKeyingPresenter);
    if (d->progressEnabled == enabled)
        return;
    d->progressEnabled = enabled;
    if (!enabled)
        d->abandonProgress();
}

void ZkSmartKeyingPresenter::forceHideProgress()
{
    Q_D(ZkSmartKeyingPresenter);
    if (!d->segmentProgressShowing)
        return;
    d->segmentProgress = 0;
    d->abandonProgress();
}

bool ZkSmartKeyingPresenter::canShowSegmentProgress() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return playerEditMode() == KeepMode && d->segmentProgressShowing;
}

int ZkSmartKeyingPresenter::segmentProgress() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->segmentProgress;
}

bool ZkSmartKeyingPresenter::isClosing() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->closing;
}

void ZkSmartKeyingPresenter::setClosing(bool closing)
{
    Q_D(ZkSmartKeyingPresenter);
    d->closing = closing;
}

bool ZkSmartKeyingPresenter::hasStartedTracking() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->startedTracking;
}

void ZkSmartKeyingPresenter::setHasStartedTracking(bool started)
{
    Q_D(ZkSmartKeyingPresenter);
    d->startedTracking = started;
}

bool ZkSmartKeyingPresenter::hasModify() const
{
    Q_D(const ZkSmartKeyingPresenter);
    const IZkUndoRedoService *const service = undoRedoService();
    return (service && service->undoStepCount() > 0) || d->modified;
}

bool ZkSmartKeyingPresenter::isUsed() const
{
    const IZkSmartKeyingService *const service = smartKeyingService();
    return service && (service->maskItemCount() > 0 || service->isTracked());
}

void ZkSmartKeyingPresenter::beginMacro(const QString &text)
{
    if (IZkUndoRedoService *const service = undoRedoService())
        service->beginMacro(text);
}

void ZkSmartKeyingPresenter::endMacro()
{
    if (IZkUndoRedoService *const service = undoRedoService())
        service->endMacro();
}

void ZkSmartKeyingPresenter::applyModify()
{
    trackEffectSaveEvent();
    stopTrackingMode();
    editController()->apply();
}

void ZkSmartKeyingPresenter::cancelApply()
{
    editController()->cancelApply();
}
