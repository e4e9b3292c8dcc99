// Strokes, the pen and the cursors.

#include "ZkChangePenPixelWidthCommand.h"
#include "ZkSmartKeyingPresenter_p.h"

#include "../ZkSmartKeyingLog.h"

#include "ZkWidgets.h"

#include <QCoreApplication>

void ZkSmartKeyingPresenter::setMask(const QImage &mask)
{
    Q_D(ZkSmartKeyingPresenter);
    if (d->playerPresenter->isPlaying())
        return;
    const qint64 frame = currentFrame();
    if (!d->acceptsMask(mask, frame) || d->segmentProgressShowing)
        return;
    d->maskBusy = true;
    switch (playerEditMode()) {
    case KeepMode:
        d->addMask(mask, frame);
        break;
    case RemoveMode:
        d->editController->subtractMask(frame, mask);
        break;
    case EraseMode:
        if (!d->eraseMask(mask, frame))
            return;
        break;
    default:
        break;
    }
    d->maskBusy = false;
}

bool ZkSmartKeyingPresenterPrivate::acceptsMask(const QImage &mask, qint64 frame)
{
    if (mask.isNull() || mask.width() <= 0 || mask.height() <= 0) {
        ZK_LOG(ZKLOG::Warning,
               "ZkSmartKeyingPresenter",
               "setMask",
               QStringLiteral("setMask failed - invalid mask image (null or empty)"));
        failUseEvent(QStringLiteral("E002"), QStringLiteral("Invalid mask image - null or empty"));
        return false;
    }
    if (frame < 0) {
        ZK_LOG(ZKLOG::Warning,
               "ZkSmartKeyingPresenter",
               "setMask",
               QString::asprintf("setMask failed - invalid current frame: %lld", frame));
        failUseEvent(QStringLiteral("E003"), QStringLiteral("Invalid current frame"));
        return false;
    }
    return true;
}

void ZkSmartKeyingPresenterPrivate::addMask(const QImage &mask, qint64 frame)
{
    hideEffect();
    if (progressEnabled)
        beginProgress();
    if (segmentProgressShowing) {
        emitProgress(10);
        // The engine blocks the thread from here on, so the overlay has to be painted now.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        emitProgress(10);
    }
    editController->addMask(frame, mask);
}

// False when there is nothing to erase from. The mask then stays marked as in flight: the segment change
// that comes next is waited for like the answer to a stroke.
bool ZkSmartKeyingPresenterPrivate::eraseMask(const QImage &mask, qint64 frame)
{
    setProgressShowing(false);
    if (!q->isEraseMaskEnable()) {
        setEditMode(ZkSmartKeyingPresenter::KeepMode);
        emit q->sigPrompt(ZkSmartKeyingPresenter::DrawMaskFirstPrompt);
        return false;
    }
    if (q->isEraseMaskOverlap(mask))
        editController->eraseMask(frame, mask);
    return true;
}

// The user sees the raw frame while the mask is computed. Not a step of its own in the history: undo
// would otherwise take back something that the user never did.
void ZkSmartKeyingPresenterPrivate::hideEffect()
{
    if (!q->isEffectEnabled())
        return;
    ZkDisableUndoRedoCommander notRecorded(q->undoRedoService());
    q->setEffectEnabled(false);
}

// A still image is finished with its one mask and shows its effect again at once; a clip goes on to
// tracking first.
void ZkSmartKeyingPresenterPrivate::restoreStillEffect()
{
    if (!q->isPhotoMode())
        return;
    ZkDisableUndoRedoCommander notRecorded(q->undoRedoService());
    q->setEffectEnabled(true);
}

bool ZkSmartKeyingPresenter::isEraseMaskEnable() const
{
    if (isTrackingMode())
        return false;
    const IZkSmartKeyingService *const service = smartKeyingService();
    return service && service->isEraseEnabled(currentFrame());
}

bool ZkSmartKeyingPresenter::isEraseMaskOverlap(const QImage &mask) const
{
    const IZkSmartKeyingService *const service = smartKeyingService();
    return service && service->overlapsMask(mask, currentFrame());
}

void ZkSmartKeyingPresenter::setEraseMaskDisable()
{
    Q_D(ZkSmartKeyingPresenter);
    if (!isEraseMaskEnable())
        d->setEditMode(KeepMode);
}

int ZkSmartKeyingPresenter::penPixelWidth() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->penPixelWidth;
}

void ZkSmartKeyingPresenter::setPenPixelWidth(int width)
{
    Q_D(ZkSmartKeyingPresenter);
    d->applyPenPixelWidth(width);
}

int ZkSmartKeyingPresenter::penDrawWidth() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->penDrawWidth;
}

void ZkSmartKeyingPresenter::setPenDrawWidth(int width)
{
    Q_D(ZkSmartKeyingPresenter);
    d->penDrawWidth = qMax(width, 2);
    emit sigPenDrawWidthChanged(d->penDrawWidth);
}

ZkRange<int> ZkSmartKeyingPresenter::penPixelWidthRange() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->penRange();
}

int ZkSmartKeyingPresenter::defaultPenPixelWidth() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->defaultPenPixelWidth;
}

void ZkSmartKeyingPresenter::setDefaultPenPixelWidth(int width)
{
    Q_D(ZkSmartKeyingPresenter);
    d->defaultPenPixelWidth = width;
}

void ZkSmartKeyingPresenter::changePenPixelWidth(int width)
{
    undoRedoService()->push(new ZkChangePenPixelWidthCommand(this, width));
}

bool ZkSmartKeyingPresenter::isPenPixelWidthChanging() const
{
    Q_D(const ZkSmartKeyingPresenter);
    return d->penPixelWidthChanging;
}

// The macro's first command remembers the width to go back to, its last one the width to come to;
// what happens in between need not be recorded.
void ZkSmartKeyingPresenter::setPenPixelWidthChanging(bool changing)
{
    Q_D(ZkSmartKeyingPresenter);
    if (d->penPixelWidthChanging == changing)
        return;
    if (changing) {
        beginMacro(tr("Change pen width"));
        changePenPixelWidth(d->penPixelWidth);
        emit sigPenPixelWidthBeginChanged();
    } else {
        changePenPixelWidth(d->penPixelWidth);
        emit sigPenPixelWidthEndChanged();
        endMacro();
    }
    d->penPixelWidthChanging = changing;
}

QColor ZkSmartKeyingPresenter::penColor() const
{
    QColor color;
    switch (playerEditMode()) {
    case KeepMode:
        color = ZkSkinManager::instance()->color(ZKSKIN::KeepStroke);
        break;
    case RemoveMode:
    case EraseMode:
        color = ZkSkinManager::instance()->color(ZKSKIN::RemoveStroke);
        break;
    default:
        break;
    }
    color.setAlpha(128);
    return color;
}

QCursor ZkSmartKeyingPresenter::cursor(bool pressedAllowed) const
{
    Q_D(const ZkSmartKeyingPresenter);
    if (pressedAllowed && d->penPixelWidthChanging)
        return Qt::BlankCursor;
    if (d->frameMoving)
        return Qt::OpenHandCursor;
    if (isDrawingMode())
        return ZkDrawingCursor::cursor(d->penDrawWidth, penColor(), false);
    return playerEditMode() == HandMode ? Qt::OpenHandCursor : Qt::ArrowCursor;
}

QCursor ZkSmartKeyingPresenter::pressedCursor() const
{
    Q_D(const ZkSmartKeyingPresenter);
    if (d->penPixelWidthChanging)
        return Qt::BlankCursor;
    if (d->frameMoving)
        return Qt::OpenHandCursor;
    return ZkDrawingCursor::cursor(d->penDrawWidth, penColor(), true);
}
