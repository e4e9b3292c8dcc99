// How the rectangles of the overlay are built anew.
#include "ZkAIErasingCropOverlayWidget.h"

#include "../ZkCallLater.h"
#include "../ZkSmartKeyingLog.h"
#include "../presenters/ZkAIErasingCropSelectorPresenter.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>

// printf-style
#define ZK_OVERLAY_LOG(function, ...)                                                              \
    ZK_LOG(ZKLOG::Warning, "ZkAIErasingCropOverlayWidget", function, QString::asprintf(__VA_ARGS__))

namespace {

const int HoverDelay = 10; // ms, by which the editor has painted what was rebuilt

} // namespace

void ZkAIErasingCropOverlayWidget::syncUIFromBusinessData()
{
    if (!crops())
        return;
    const bool wereBlocked = m_editor->blockSignals(true);
    ++m_rebuilds;
    clearMaps();
    const QList<QRect> rects = crops()->getAllCropRects();
    const QList<int> ids = crops()->getAllCropIds();
    if (rects.size() == ids.size())
        rebuild(rects, ids, crops()->getActiveCropId());
    else
        rebuildWithoutIds(rects, ids);
    m_editor->blockSignals(wereBlocked);
}

void ZkAIErasingCropOverlayWidget::rebuild(const QList<QRect> &rects,
                                           const QList<int> &ids,
                                           int activeId)
{
    if (rects.isEmpty()) {
        m_editor->clearCropRects();
        return;
    }
    m_editor->setCropRectsWithIds(rects, ids, activeId);
    fillMaps(ids);
    m_editor->update();
    hoverAt(pointerPosition());
}

// The rectangles are shown, but nothing that is done to them arrives until the next resync.
void ZkAIErasingCropOverlayWidget::rebuildWithoutIds(const QList<QRect> &rects,
                                                     const QList<int> &ids)
{
    const char *const function = "syncUIFromBusinessData";
    ZK_OVERLAY_LOG(function,
                   "ZkAIErasingCropOverlayWidget::syncUIFromBusinessData - Data inconsistency "
                   "detected - rect count: %d, ID count: %d",
                   rects.size(),
                   ids.size());
    if (!rects.isEmpty()) {
        m_editor->setCropRects(rects);
        ZK_OVERLAY_LOG(function,
                       "ZkAIErasingCropOverlayWidget::syncUIFromBusinessData - Used fallback sync "
                       "without ID mapping due to data mismatch");
    } else {
        m_editor->clearCropRects();
        ZK_OVERLAY_LOG(function,
                       "ZkAIErasingCropOverlayWidget::syncUIFromBusinessData - Cleared UI due to "
                       "inconsistent state (IDs without rects)");
    }
}

void ZkAIErasingCropOverlayWidget::resyncAllCropRects()
{
    if (!crops())
        return;
    const QList<QRect> rects = crops()->getAllCropRects();
    const QList<int> ids = crops()->getAllCropIds();
    ++m_rebuilds;
    if (rects.isEmpty()) {
        clearCrops();
        return;
    }
    const QPointer<ZkAIErasingCropOverlayWidget> alive(this);
    const bool wereBlocked = m_editor->blockSignals(true);
    clearCrops();
    m_editor->update();
    if (rects.size() == ids.size())
        resync(rects, ids, crops()->getActiveCropId());
    else
        m_editor->setCropRects(rects);
    // Events have been processed, among them perhaps the one that closes the workspace.
    if (alive)
        m_editor->blockSignals(wereBlocked);
}

void ZkAIErasingCropOverlayWidget::resync(const QList<QRect> &rects,
                                          const QList<int> &ids,
                                          int activeId)
{
    const QPointer<ZkAIErasingCropOverlayWidget> alive(this);
    const int rebuild = m_rebuilds;
    m_editor->setCropRectsWithIds(rects, ids, ids.contains(activeId) ? activeId : -1);
    m_editor->repaint();
    // What the user does waits: the editor could not report it now.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    // What came in between is newer.
    if (!alive || rebuild != m_rebuilds)
        return;
    fillMaps(ids);
    m_editor->update();
    const QPoint pointer = pointerPosition();
    if (hoverAt(pointer))
        zkCallLater(HoverDelay, this, [this, pointer] { hoverAt(pointer); });
    reportDifferences(rects);
}

void ZkAIErasingCropOverlayWidget::reportDifferences(const QList<QRect> &rects) const
{
    const char *const function = "resyncAllCropRects";
    const QList<QRect> shown = m_editor->getCropRects();
    for (int i = 0; i < qMax(shown.size(), rects.size()); ++i) {
        const QRect data = rects.value(i);
        const QRect ui = shown.value(i);
        if (i >= shown.size())
            ZK_OVERLAY_LOG(function,
                           "INDEX[%d] DataID[%d] - Bottom: (%d,%d,%dx%d) | UI: MISSING - UI sync "
                           "failed!",
                           i,
                           dataId(i),
                           data.x(),
                           data.y(),
                           data.width(),
                           data.height());
        else if (i >= rects.size())
            ZK_OVERLAY_LOG(function,
                           "INDEX[%d] - Bottom: MISSING | UI: (%d,%d,%dx%d) - Extra UI data!",
                           i,
                           ui.x(),
                           ui.y(),
                           ui.width(),
                           ui.height());
        else if (data != ui)
            ZK_OVERLAY_LOG(function,
                           "COORDINATE MISMATCH DETECTED at index %d - This may cause hover/click "
                           "issues!",
                           i);
    }
}

void ZkAIErasingCropOverlayWidget::moveMouse(const QPointF &position)
{
    QMouseEvent move(QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_editor, &move);
}

QPoint ZkAIErasingCropOverlayWidget::pointerPosition() const
{
    return m_editor->mapFromGlobal(QCursor::pos());
}

// The highlight matches what was rebuilt without the user moving the mouse. A drag has the mouse for
// itself, and a move without a button would end it.
bool ZkAIErasingCropOverlayWidget::hoverAt(const QPoint &position)
{
    if (m_editor->isDragging() || !m_editor->rect().contains(position))
        return false;
    moveMouse(position);
    return true;
}

void ZkAIErasingCropOverlayWidget::clearHover()
{
    moveMouse(QPointF(-1.0, -1.0));
}

void ZkAIErasingCropOverlayWidget::setHoverCropId(int cropId)
{
    const char *const function = "setHoverCropId";
    if (!crops()) {
        ZK_OVERLAY_LOG(function,
                       "ZkAIErasingCropOverlayWidget::setHoverCropId: No crop selector presenter");
        return;
    }
    const QList<int> ids = crops()->getAllCropIds();
    const int index = ids.indexOf(cropId);
    if (index < 0) {
        // The number of ids stands for their list, which may be long.
        ZK_OVERLAY_LOG(function,
                       "ZkAIErasingCropOverlayWidget::setHoverCropId: Crop ID %d not found in "
                       "current data (available IDs: %s)",
                       cropId,
                       ids.isEmpty() ? "none" : qPrintable(QString::number(ids.size())));
        return;
    }
    const QList<QRect> rects = crops()->getAllCropRects();
    if (index < rects.size()) {
        moveMouse(rects.at(index).center());
        return;
    }
    ZK_OVERLAY_LOG(function,
                   "ZkAIErasingCropOverlayWidget::setHoverCropId: UI index %d out of bounds for "
                   "crop rects (size: %d)",
                   index,
                   rects.size());
    clearHover();
}
