#include "ZkErasingPage_p.h"

#include "ZkErasingBar.h"
#include "ZkSelectionState.h"
#include "ZkWorkspaceScene.h"

#include "ZkAIErasingPresenter.h"
#include "ZkAIErasingView.h"
#include "ZkAccount.h"
#include "ZkDataModel.h"
#include "ZkWidgets.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioTimeline.h"

#include <QFileInfo>
#include <QScrollBar>
#include <QVBoxLayout>

namespace zk::app {

namespace {

constexpr double secondUs = 1e6;
constexpr int listCheckDelay = 50; // ms, by which the list has heard of the change itself

using Presenter = ZkAIErasingPresenter;

} // namespace

ErasingPage::Private::Private(ErasingPage *page,
                              ZkStudioClip *editedClip,
                              IZkUndoRedoService *history)
    : q(page)
    , clip(editedClip)
    , fingerprint(erasing::Fingerprint::of(editedClip->media().path))
    , scene(std::make_unique<WorkspaceScene>())
    , presenter(std::make_unique<Presenter>(editedClip))
    , questions(page, tr("AI Erase"))
{
    if (!presenter->isInitSuccessful()) {
        presenter.reset();
        return;
    }
    const double frameUs = secondUs / editedClip->media().frameRate();
    presenter->registerEditTime(
        qRound64(double(editedClip->inFrame()) * frameUs),
        qRound64(double(editedClip->inFrame() + editedClip->frameCount()) * frameUs));
    presenter->setUndoManager(presenter->undoRedoService(), history);
}

ErasingPage::Private::~Private() = default;

ZkStudioClip *ErasingPage::Private::editClip() const
{
    return static_cast<ZkStudioTimeline *>(presenter->editTimeline())->clip();
}

ZkStudioSmartKeyingService *ErasingPage::Private::service() const
{
    return editClip()->studioService(ZKSMARTKEYING::AIErasing);
}

void ErasingPage::Private::build()
{
    bar = new ErasingBar(q);
    bar->setTitle(QFileInfo(clip->media().path).fileName());
    auto *const column = new QVBoxLayout(q);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(bar);
    if (!presenter)
        return;
    connectBar();
    view = new ZkAIErasingView(presenter.get(), q);
    column->addWidget(view, 1);
    // Their menus run an event loop.
    for (QScrollBar *const scrollBar : q->findChildren<QScrollBar *>())
        scrollBar->setContextMenuPolicy(Qt::NoContextMenu);
    connectPresenter();
    connectView();
    refresh();
    // What the clip, or a draft, brings along is there by then.
    QMetaObject::invokeMethod(
        q, [this] { showSelection(); }, Qt::QueuedConnection);
}

void ErasingPage::Private::connectBar()
{
    QObject::connect(bar, &ErasingBar::closeClicked, q, [this] { q->requestClose(); });
    QObject::connect(bar, &ErasingBar::eraseClicked, q, [this] { eraseSaved(); });
    QObject::connect(bar, &ErasingBar::discardClicked, q, [this] { discardSaved(); });
}

void ErasingPage::Private::connectPresenter()
{
    const auto onRefresh = [this] { refresh(); };
    QObject::connect(presenter.get(), &Presenter::sigUndoRedoChanged, q, onRefresh);
    QObject::connect(presenter.get(), &Presenter::sigSmartKeyingSegmentChanged, q, onRefresh);
    QObject::connect(presenter.get(), &Presenter::sigUIControlsEnabledChanged, q, onRefresh);
    QObject::connect(
        presenter.get(), &Presenter::sigUndoRedoChanged, q, &ErasingPage::undoRedoChanged);
    QObject::connect(presenter.get(), &Presenter::sigTrackingModeChanged, q, [this](bool on) {
        onTrackingMode(on);
    });
    listCheck.setSingleShot(true);
    listCheck.setInterval(listCheckDelay);
    QObject::connect(&listCheck, &QTimer::timeout, q, [this] { followList(); });
    QObject::connect(presenter.get(),
                     &Presenter::sigSmartKeyingSegmentChanged,
                     &listCheck,
                     QOverload<>::of(&QTimer::start));
}

// Between the end of a stroke and the signal of the canvas that its mask was taken, the presenter may be
// in an event loop of its own.
void ErasingPage::Private::connectView()
{
    QObject::connect(view.data(), &ZkAIErasingView::sigStartTask, q, [this] { start(); });
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
    });
}

bool ErasingPage::Private::isTracking() const
{
    return presenter && presenter->isTrackingMode();
}

void ErasingPage::Private::refresh()
{
    if (!presenter)
        return;
    bar->setSavedSelections(service()->savedSelectionCount());
    bar->setIdle(presenter->isUIControlsEnabled() && !q->isBusy() && !isClosing);
    bar->setClosable(!isClosing);
    if (wasBusy == q->isBusy())
        return;
    wasBusy = !wasBusy;
    emit q->busyChanged(wasBusy);
}

// The workspace looks at its selection when it changes, and not when it opens.
void ErasingPage::Private::showSelection()
{
    if (!presenter || isClosing || service()->segments().isEmpty())
        return;
    emit presenter->sigSmartKeyingSegmentChanged();
    emit presenter->sigNeedReloadAllData();
}

// Not every change of the nodes is reported one by one, such as the return of unfinished work.
void ErasingPage::Private::followList()
{
    const auto *const list = view ? view->findChild<ZkListWidget *>() : nullptr;
    if (list && presenter && !isClosing && list->count() != service()->segmentCount())
        emit presenter->sigNeedReloadAllData();
}

// The checks that the workspace's own button makes.
bool ErasingPage::Private::mayStart()
{
    if (!ZkAccount::instance()->isLoggedIn()) {
        ZkCustomEventManager::instance()->postEvent(QStringLiteral("NotifyLogin"));
        return false;
    }
    if (presenter->checkNetworkConnection())
        return true;
    questions.tell(tr("Erasing is not available now."),
                   tr("The service that erases cannot be reached. Check the connection or the "
                      "installation, and try again. Your selection is kept."));
    return false;
}

void ErasingPage::Private::eraseSaved()
{
    if (presenter && !isClosing && mayStart())
        start();
}

void ErasingPage::Private::discardSaved()
{
    if (!presenter || isClosing)
        return;
    service()->discardSavedSelections();
    refresh();
}

// What is marked on single frames has to be followed through the clip before it can be erased.
void ErasingPage::Private::start()
{
    if (isClosing || isSegmenting() || isTracking())
        return;
    if (isFullyTracked(service()->segments(), clip->frameCount())) {
        requestErasing();
        return;
    }
    startsAfterTracking = true;
    presenter->beginTracking();
    startsAfterTracking = isTracking(); // else a prompt has said why
}

void ErasingPage::Private::onTrackingMode(bool isOn)
{
    if (isOn && !isClosing)
        presenter->setClosing(false); // an earlier run may have been stopped
    refresh();
    if (!isOn && startsAfterTracking && !isTracking())
        QMetaObject::invokeMethod(
            q, [this] { afterTracking(); }, Qt::QueuedConnection);
}

void ErasingPage::Private::afterTracking()
{
    if (!startsAfterTracking || !presenter || isClosing || isTracking())
        return;
    startsAfterTracking = false;
    if (presenter->isClosing())
        return; // the user has stopped it
    if (reachesEveryFrame(service()->segments(), clip->frameCount()))
        requestErasing();
    else
        questions.tell(tr("The objects could not be followed through the whole clip."),
                       tr("Go to the frame where the preview ends, select them there once more, "
                          "and press Create again."));
}

void ErasingPage::Private::requestErasing()
{
    EraseRequest request;
    request.media = clip->media();
    request.fingerprint = fingerprint;
    request.inFrame = clip->inFrame();
    request.frameCount = clip->frameCount();
    request.masks = service()->eraseMasks();
    request.maskCount = service()->segmentCount();
    if (request.masks.isEmpty())
        return;
    keepSelection();
    emit q->eraseRequested(request);
    close(true);
}

ErasingPage::ErasingPage(ZkStudioClip *clip, IZkUndoRedoService *history, QWidget *parent)
    : EditingPage(parent)
    , d(std::make_unique<Private>(this, clip, history))
{
    setObjectName(QStringLiteral("ErasingPage"));
    setViewPresenter(d->scene.get());
    setFocusPolicy(Qt::ClickFocus);
    d->build();
    setFocus(Qt::OtherFocusReason); // and none of the buttons
    if (!d->presenter)
        QMetaObject::invokeMethod(
            this, [this] { d->refuseToOpen(); }, Qt::QueuedConnection);
}

ErasingPage::~ErasingPage()
{
    d->takeApart();
}

ZkSmartKeyingPresenter *ErasingPage::presenter() const
{
    return d->presenter.get();
}

bool ErasingPage::isBusy() const
{
    return d->presenter && (d->isSegmenting() || d->isTracking());
}

bool ErasingPage::isSegmenting() const
{
    return d->isSegmenting();
}

void ErasingPage::commitEditors()
{
    d->scene->commitFocusedEditor();
}

QVector<QPair<QString, QString>> ErasingPage::shortcuts()
{
    using Keys = QVector<QPair<QString, QString>>;
    return ErasingBar::shortcuts()
        + Keys {{QStringLiteral("Ctrl+Z"), tr("Undo")},
                {QStringLiteral("Ctrl+Y"), tr("Redo")},
                {QStringLiteral("H"), tr("Pan")},
                {QStringLiteral("Ctrl+Shift+F"), tr("Fit the frame")},
                {QStringLiteral("Space"), tr("Play or pause")},
                {QStringLiteral("Ctrl+/"), tr("Stop and return")},
                {QStringLiteral("Del"), tr("Remove the active box")}};
}

} // namespace zk::app
