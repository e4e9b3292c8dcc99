#include "ZkBrushSection.h"
#include "ZkInputShield.h"
#include "ZkPresetPicker.h"
#include "ZkPropertyPanel.h"
#include "ZkWorkspacePage_p.h"
#include "ZkWorkspaceScene.h"

#include "ZkDataModel.h"
#include "ZkMediaPlayer.h"
#include "ZkSmartKeyingPlayerView.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkStudioTimelineView.h"
#include "ZkWidgets.h"
#include "library/ZkStudioProjectManager.h"
#include "timeline/ZkStudioTimeline.h"

#include <QApplication>
#include <QDataStream>
#include <QFileInfo>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

namespace zk::app {

namespace {

constexpr int panelWidth = 284; // widget pixels: three presets beside each other
constexpr int brushKeyStep = 5; // widget pixels

using Presenter = ZkSmartKeyingPresenter;

} // namespace

WorkspacePage::Private::Private(WorkspacePage *page,
                                ZkStudioClip *editedClip,
                                ZkStudioProjectManager *projectManager)
    : q(page)
    , clip(editedClip)
    , manager(projectManager)
    , scene(std::make_unique<WorkspaceScene>())
    , presenter(std::make_unique<Presenter>(ZKSMARTKEYING::SmartCutout, editedClip))
    , questions(page, tr("Smart Cutout"))
{
    if (!presenter->isInitSuccessful())
        presenter.reset();
}

WorkspacePage::Private::~Private() = default;

void WorkspacePage::Private::build()
{
    bar = new WorkspaceBar(q);
    bar->setTitle(QFileInfo(clip->media().path).fileName());
    auto *const column = new QVBoxLayout(q);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(bar);
    if (!presenter)
        return;
    QObject::connect(
        bar, &WorkspaceBar::triggered, q, [this](WorkspaceBar::Command command) { run(command); });
    buildColumns();
    column->addWidget(columns, 1);
    // Their menus run an event loop, in which the page must not be taken apart.
    for (QScrollBar *const scrollBar : q->findChildren<QScrollBar *>())
        scrollBar->setContextMenuPolicy(Qt::NoContextMenu);
    addShortcuts();
    connectPresenter();
    connectView();
    refresh();
}

// The presenter must know its timeline before the view is made, which asks for it.
void WorkspacePage::Private::buildPlayer()
{
    rows = new QSplitter(Qt::Vertical);
    rows->setObjectName(QStringLiteral("WorkspaceRows"));
    rows->setChildrenCollapsible(false);
    if (!presenter->isPhotoMode()) {
        timelinePresenter = std::make_unique<ZkStudioTimelinePresenter>();
        timelinePresenter->setTimeline(dynamic_cast<ZkStudioTimeline *>(presenter->editTimeline()));
        presenter->setTimelinePresenter(timelinePresenter.get());
    }
    view = new ZkSmartKeyingPlayerView(presenter.get(), q);
    rows->addWidget(view);
    rows->setStretchFactor(0, 1);
    if (!timelinePresenter)
        return;
    timelineView = new ZkStudioTimelineView(timelinePresenter.get(), q);
    rows->addWidget(timelineView);
    rows->setStretchFactor(1, 0);
}

void WorkspacePage::Private::buildColumns()
{
    buildPlayer();
    panel = new PropertyPanel(presenter.get(), manager->studioLibrary(), q);
    panel->setMinimumWidth(panelWidth);
    shield = new InputShield({panel}, q);
    columns = new QSplitter(Qt::Horizontal, q);
    columns->setObjectName(QStringLiteral("WorkspaceColumns"));
    columns->setChildrenCollapsible(false);
    columns->addWidget(rows);
    columns->addWidget(panel);
    columns->setStretchFactor(0, 1);
    columns->setStretchFactor(1, 0);
}

void WorkspacePage::Private::addShortcuts()
{
    const auto addBrushKey = [this](const QString &key, int pixels) {
        auto *const shortcut = new QShortcut(QKeySequence(key), q);
        QObject::connect(shortcut, &QShortcut::activated, q, [this, pixels] {
            if (panel && panel->isEnabled() && !isSegmenting())
                panel->brush()->widen(pixels);
        });
    };
    addBrushKey(QStringLiteral("["), -brushKeyStep);
    addBrushKey(QStringLiteral("]"), brushKeyStep);
}

void WorkspacePage::Private::connectPresenter()
{
    const auto onRefresh = [this] { refresh(); };
    for (const auto signal : {&Presenter::sigUndoRedoChanged,
                              &Presenter::sigSmartKeyingSegmentChanged,
                              &Presenter::sigEffectAdded,
                              &Presenter::sigEffectRemoved,
                              &Presenter::sigEffectPropertyChanged,
                              &Presenter::sigReset})
        QObject::connect(presenter.get(), signal, q, onRefresh);
    QObject::connect(presenter.get(), &Presenter::sigTrackingModeChanged, q, onRefresh);
    QObject::connect(presenter.get(), &Presenter::sigUIControlsEnabledChanged, q, onRefresh);
    QObject::connect(
        presenter.get(), &Presenter::sigUndoRedoChanged, q, &WorkspacePage::undoRedoChanged);
    QObject::connect(
        presenter.get(), &Presenter::sigTrackingProgress, bar, &WorkspaceBar::setPercent);
    QObject::connect(
        presenter.get(), &Presenter::sigSavingProgress, bar, &WorkspaceBar::setPercent);
    QObject::connect(
        presenter.get(), &Presenter::sigSaveFinished, q, [this](bool ok) { onSaveFinished(ok); });
    QObject::connect(presenter.get(), &Presenter::sigSaveCancel, q, [this] { onSaveCancelled(); });
}

// Between the end of a stroke and the signal of the canvas that its mask was taken, the presenter may be
// in an event loop of its own.
void WorkspacePage::Private::connectView()
{
    QObject::connect(presenter.get(),
                     &Presenter::sigUIControlsEnabledChanged,
                     view.data(),
                     &ZkSmartKeyingPlayerView::setDrawingEnabled);
    QObject::connect(presenter.get(),
                     &Presenter::sigUIControlsEnabledChanged,
                     view.data(),
                     &ZkSmartKeyingPlayerView::setHeaderToolBarEnabled);
    QObject::connect(presenter.get(),
                     &Presenter::sigUIControlsEnabledChanged,
                     view.data(),
                     &ZkSmartKeyingPlayerView::setToolBarEnabled);
    QObject::connect(view->findChild<ZkDrawingWidget *>(),
                     &ZkDrawingWidget::sigDrawingFinished,
                     q,
                     [this](const QImage &, bool isFinished) {
                         strokes += isFinished ? 1 : 0;
                         refresh();
                     });
    QObject::connect(presenter.get(), &Presenter::sigDrawingFinished, q, [this] {
        strokes = qMax(0, strokes - 1);
        refresh();
        if (isClosing)
            closeWhenPossible();
    });
    QObject::connect(
        scene.get(), &WorkspaceScene::commitRequested, panel->brush(), &BrushSection::commit);
    QObject::connect(panel->picker(), &PresetPicker::downloadingChanged, q, [this] { refresh(); });
}

bool WorkspacePage::Private::isTracking() const
{
    return presenter && presenter->isTrackingMode();
}

bool WorkspacePage::Private::isBusy() const
{
    return presenter
        && (isSegmenting() || isTracking() || isSaving || panel->picker()->isDownloading());
}

// What is disabled would hand the focus on to whatever comes next, such as Cancel.
void WorkspacePage::Private::takeFocus()
{
    const QWidget *const focus = QApplication::focusWidget();
    if (focus && (panel->isAncestorOf(focus) || bar->isAncestorOf(focus)))
        q->setFocus(Qt::OtherFocusReason);
}

void WorkspacePage::Private::refresh()
{
    if (!presenter)
        return;
    WorkspaceBar::State state;
    state.canTrack = timelinePresenter != nullptr;
    state.isTracking = isTracking();
    state.isSaving = isSaving;
    state.isIdle = presenter->isUIControlsEnabled() && !isTracking() && !isSaving && !isClosing;
    state.canApply = presenter->hasModify();
    state.canReset = state.canApply || presenter->isUsed() || presenter->getEffect();
    state.canCancel = !isClosing && !isSaving;
    if (!state.isIdle)
        takeFocus();
    bar->setState(state);
    panel->setEnabled(state.isIdle);
    shield->setRaised(isSegmenting());
    view->setEnabled(!isSaving && !isClosing);
    if (timelineView)
        timelineView->setEnabled(!isSaving && !isClosing);
    if (wasBusy == isBusy())
        return;
    wasBusy = !wasBusy;
    emit q->busyChanged(wasBusy);
}

void WorkspacePage::Private::commitEditors()
{
    scene->commitFocusedEditor();
}

void WorkspacePage::Private::run(WorkspaceBar::Command command)
{
    const bool needsIdle = command != WorkspaceBar::Stop && command != WorkspaceBar::Cancel;
    if (!presenter || isClosing || (needsIdle && isSegmenting()))
        return;
    commitEditors();
    switch (command) {
    case WorkspaceBar::Stop:
        stop();
        break;
    case WorkspaceBar::Reset:
        askToReset();
        break;
    case WorkspaceBar::Cancel:
        q->requestClose();
        break;
    case WorkspaceBar::Apply:
        apply();
        break;
    default:
        track(command);
        break;
    }
}

void WorkspacePage::Private::track(WorkspaceBar::Command command)
{
    using namespace ZKSMARTKEYING;
    presenter->setClosing(false); // an earlier run may have been stopped
    presenter->setHasStartedTracking(true);
    switch (command) {
    case WorkspaceBar::TrackBackward:
        presenter->beginTrackingMode(TrackBackward, TrackToClipEnd);
        break;
    case WorkspaceBar::TrackForward:
        presenter->beginTrackingMode(TrackForward, TrackToClipEnd);
        break;
    case WorkspaceBar::TrackBoth:
        presenter->beginTrackingMode(TrackBoth, TrackToClipEnd);
        break;
    default:
        presenter->beginTrackingModeForSimpleMode();
        break;
    }
}

void WorkspacePage::Private::stop()
{
    if (isSaving)
        presenter->cancelApply();
    else if (isTracking())
        presenter->stopTrackingMode();
}

WorkspacePage::WorkspacePage(ZkStudioClip *clip, ZkStudioProjectManager *manager, QWidget *parent)
    : EditingPage(parent)
    , d(std::make_unique<Private>(this, clip, manager))
{
    setObjectName(QStringLiteral("WorkspacePage"));
    setViewPresenter(d->scene.get());
    setFocusPolicy(Qt::ClickFocus);
    d->build();
    setFocus(Qt::OtherFocusReason); // and none of the buttons
    if (!d->presenter)
        QMetaObject::invokeMethod(
            this, [this] { d->refuseToOpen(); }, Qt::QueuedConnection);
}

WorkspacePage::~WorkspacePage()
{
    d->takeApart();
}

bool WorkspacePage::isBusy() const
{
    return d->isBusy();
}

bool WorkspacePage::isSegmenting() const
{
    return d->isSegmenting();
}

bool WorkspacePage::requestClose()
{
    if (d->isClosing || !d->presenter || !d->hasWorkToLose()) {
        d->close();
        return true;
    }
    d->askToClose();
    return false;
}

void WorkspacePage::closeWithoutAsking()
{
    d->close();
}

void WorkspacePage::commitEditors()
{
    d->commitEditors();
}

ZkSmartKeyingPresenter *WorkspacePage::presenter() const
{
    return d->presenter.get();
}

QVector<QPair<QString, QString>> WorkspacePage::shortcuts()
{
    using Keys = QVector<QPair<QString, QString>>;
    return WorkspaceBar::shortcuts()
        + Keys {{QStringLiteral("Ctrl+Z"), tr("Undo")},
                {QStringLiteral("Ctrl+Y"), tr("Redo")},
                {QStringLiteral("W"), tr("Mask areas to keep")},
                {QStringLiteral("E"), tr("Eraser")},
                {QStringLiteral("H"), tr("Pan")},
                {QStringLiteral("["), tr("Narrower brush")},
                {QStringLiteral("]"), tr("Wider brush")},
                {QStringLiteral("Ctrl+Shift+F"), tr("Fit the frame")},
                {QStringLiteral("Space"), tr("Play or pause")},
                {QStringLiteral("Ctrl+/"), tr("Stop and return")},
                {QStringLiteral("Left"), tr("One frame back")},
                {QStringLiteral("Right"), tr("One frame forward")},
                {QStringLiteral("Del"), tr("Remove the selected nodes")},
                {QStringLiteral("Ctrl+="), tr("Zoom into the timeline")},
                {QStringLiteral("Ctrl+-"), tr("Zoom out of the timeline")},
                {QStringLiteral("Shift+Z"), tr("Fit the timeline")}};
}

QByteArray WorkspacePage::saveLayout() const
{
    if (!d->presenter)
        return d->layout;
    QByteArray layout;
    QDataStream stream(&layout, QIODevice::WriteOnly);
    stream << d->columns->saveState() << (d->timelineView ? d->rows->saveState() : QByteArray());
    return layout;
}

bool WorkspacePage::restoreLayout(const QByteArray &layout)
{
    QByteArray columns;
    QByteArray rows;
    QDataStream stream(layout);
    stream >> columns >> rows;
    if (!d->presenter || stream.status() != QDataStream::Ok || !d->columns->restoreState(columns))
        return false;
    return !d->timelineView || rows.isEmpty() || d->rows->restoreState(rows);
}

} // namespace zk::app
