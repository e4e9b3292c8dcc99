#include "ZkBrushSection.h"
#include "ZkInputShield.h"
#include "ZkPresetPicker.h"
#include "ZkPropertyPanel.h"
#include "ZkWorkspacePage_p.h"

#include "ZkDataModel.h"
#include "ZkMediaPlayer.h"
#include "ZkSmartKeyingPlayerView.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkStudioTimelineView.h"
#include "ZkTimelineRuler.h"
#include "ZkWidgets.h"
#include "library/ZkStudioProjectManager.h"
#include "timeline/ZkStudioTimeline.h"

#include <QApplication>
#include <QDataStream>
#include <QFileInfo>
#include <QShortcut>
#include <QSplitter>

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
    , presenter(std::make_unique<Presenter>(ZKSMARTKEYING::SmartCutout, editedClip))
{
    if (!presenter->isInitSuccessful())
        presenter.reset();
}

WorkspacePage::Private::~Private() = default;

QString WorkspacePage::Private::fileName() const
{
    return QFileInfo(clip->media().path).fileName();
}

void WorkspacePage::Private::build()
{
    bar = new WorkspaceBar(q);
    bar->setTitle(fileName());
    q->addBar(bar);
    if (!presenter)
        return;
    QObject::connect(
        bar, &WorkspaceBar::triggered, q, [this](WorkspaceBar::Command command) { run(command); });
    buildColumns();
    q->addWorkspace(columns);
    addShortcuts();
    connectPresenter();
    connectView();
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
            if (panel && panel->isEnabled() && !q->isSegmenting())
                panel->brush()->widen(pixels);
        });
    };
    addBrushKey(QStringLiteral("["), -brushKeyStep);
    addBrushKey(QStringLiteral("]"), brushKeyStep);
}

void WorkspacePage::Private::connectPresenter()
{
    QObject::connect(
        presenter.get(), &Presenter::sigTrackingProgress, bar, &WorkspaceBar::setPercent);
    QObject::connect(
        presenter.get(), &Presenter::sigSavingProgress, bar, &WorkspaceBar::setPercent);
    QObject::connect(
        presenter.get(), &Presenter::sigSaveFinished, q, [this](bool ok) { onSaveFinished(ok); });
    QObject::connect(presenter.get(), &Presenter::sigSaveCancel, q, [this] { onSaveCancelled(); });
    if (timelinePresenter)
        QObject::connect(timelinePresenter.get(),
                         &ZkStudioTimelinePresenter::sigMarksChanged,
                         q,
                         [this] { q->refresh(); });
}

void WorkspacePage::Private::connectView()
{
    for (const auto setEnabled : {&ZkSmartKeyingPlayerView::setDrawingEnabled,
                                  &ZkSmartKeyingPlayerView::setHeaderToolBarEnabled,
                                  &ZkSmartKeyingPlayerView::setToolBarEnabled})
        QObject::connect(
            presenter.get(), &Presenter::sigUIControlsEnabledChanged, view.data(), setEnabled);
    QObject::connect(
        q->scene(), &WorkspaceScene::commitRequested, panel->brush(), &BrushSection::commit);
    QObject::connect(
        panel->picker(), &PresetPicker::downloadingChanged, q, [this] { q->refresh(); });
}

// What is disabled would hand the focus on to whatever comes next, such as Cancel.
void WorkspacePage::Private::takeFocus()
{
    const QWidget *const focus = QApplication::focusWidget();
    if (focus && (panel->isAncestorOf(focus) || bar->isAncestorOf(focus)))
        q->setFocus(Qt::OtherFocusReason);
}

void WorkspacePage::Private::showState()
{
    const bool isTakingInput = !isSaving && !q->isClosing();
    WorkspaceBar::State state;
    state.canTrack = timelinePresenter != nullptr;
    state.isTracking = q->isTracking();
    state.isSaving = isSaving;
    state.isIdle = presenter->isUIControlsEnabled() && !q->isTracking() && isTakingInput;
    state.canApply = presenter->hasModify();
    state.canReset = state.canApply || presenter->isUsed() || presenter->getEffect();
    state.canCancel = isTakingInput;
    const qint64 doubt = timelinePresenter ? timelinePresenter->frameToCorrect() : -1;
    if (doubt >= 0)
        state.doubt = zk::timeline::timeCode(doubt, timelinePresenter->frameRate());
    if (!state.isIdle)
        takeFocus();
    bar->setState(state);
    panel->setEnabled(state.isIdle);
    shield->setRaised(q->isSegmenting());
    view->setEnabled(isTakingInput);
    if (timelineView)
        timelineView->setEnabled(isTakingInput);
}

void WorkspacePage::Private::run(WorkspaceBar::Command command)
{
    const bool needsIdle = command != WorkspaceBar::Stop && command != WorkspaceBar::Cancel;
    if (!presenter || q->isClosing() || (needsIdle && q->isSegmenting()))
        return;
    q->commitEditors();
    switch (command) {
    case WorkspaceBar::Stop:
        stop();
        break;
    case WorkspaceBar::CheckFrame:
        timelinePresenter->goToFrameToCorrect();
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
    else if (q->isTracking())
        presenter->stopTrackingMode();
}

WorkspacePage::WorkspacePage(ZkStudioClip *clip, ZkStudioProjectManager *manager, QWidget *parent)
    : EditingPage(tr("Smart Cutout"), parent)
    , d(std::make_unique<Private>(this, clip, manager))
{
    setObjectName(QStringLiteral("WorkspacePage"));
    d->build();
    finishOpening(tr("\u201c%1\u201d cannot be cut out.").arg(d->fileName()));
}

WorkspacePage::~WorkspacePage()
{
    takeApart();
}

bool WorkspacePage::isBusy() const
{
    return EditingPage::isBusy()
        || (isOpen() && (d->isSaving || d->panel->picker()->isDownloading()));
}

void WorkspacePage::showState()
{
    d->showState();
}

ZkSmartKeyingPresenter *WorkspacePage::presenter() const
{
    return d->presenter.get();
}

EditingPage::Shortcuts WorkspacePage::shortcuts()
{
    return WorkspaceBar::shortcuts() + sharedShortcuts()
        + Shortcuts {{QStringLiteral("W"), tr("Mask areas to keep")},
                     {QStringLiteral("E"), tr("Eraser")},
                     {QStringLiteral("["), tr("Narrower brush")},
                     {QStringLiteral("]"), tr("Wider brush")},
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
