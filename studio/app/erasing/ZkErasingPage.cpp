#include "ZkErasingPage_p.h"

#include "ZkErasingBar.h"
#include "ZkSelectionState.h"

#include "ZkAIErasingPresenter.h"
#include "ZkAIErasingView.h"
#include "ZkAccount.h"
#include "ZkDataModel.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioTimeline.h"

#include <QFileInfo>

#include <utility>

namespace zk::app {

namespace {

constexpr double secondUs = 1e6;

using Presenter = ZkAIErasingPresenter;

} // namespace

ErasingPage::Private::Private(ErasingPage *page,
                              ZkStudioClip *editedClip,
                              IZkUndoRedoService *history)
    : q(page)
    , clip(editedClip)
    , fingerprint(erasing::Fingerprint::of(editedClip->media().path))
    , presenter(std::make_unique<Presenter>(editedClip))
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

QString ErasingPage::Private::fileName() const
{
    return QFileInfo(clip->media().path).fileName();
}

void ErasingPage::Private::build()
{
    bar = new ErasingBar(q);
    bar->setTitle(fileName());
    q->addBar(bar);
    if (!presenter)
        return;
    connectBar();
    view = new ZkAIErasingView(presenter.get(), q);
    q->addWorkspace(view);
    // An earlier run may have been stopped.
    QObject::connect(presenter.get(), &Presenter::sigTrackingModeChanged, q, [this](bool isOn) {
        if (isOn && !q->isClosing())
            presenter->setClosing(false);
    });
    QObject::connect(view.data(), &ZkAIErasingView::sigStartTask, q, [this] { start(); });
    // What the clip, or a draft, brings along is there by then. The list of the workspace shows it when
    // it is told to reload; news of every node would show the node's frame, too, and the workspace is to
    // open where the playhead is.
    QMetaObject::invokeMethod(
        presenter.get(), &Presenter::sigNeedReloadAllData, Qt::QueuedConnection);
}

void ErasingPage::Private::connectBar()
{
    QObject::connect(bar, &ErasingBar::closeClicked, q, [this] { q->requestClose(); });
    QObject::connect(bar, &ErasingBar::eraseClicked, q, [this] { eraseSaved(); });
    QObject::connect(bar, &ErasingBar::discardClicked, q, [this] { discardSaved(); });
}

void ErasingPage::Private::showState()
{
    bar->setSavedSelections(service()->savedSelectionCount());
    bar->setIdle(presenter->isUIControlsEnabled() && !q->isBusy() && !q->isClosing());
    bar->setClosable(!q->isClosing());
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
    q->questions()->tell(
        tr("Erasing is not available now."),
        tr("The service that erases cannot be reached. Check the connection or the "
           "installation, and try again. Your selection is kept."));
    return false;
}

void ErasingPage::Private::eraseSaved()
{
    if (presenter && !q->isClosing() && mayStart())
        start();
}

void ErasingPage::Private::discardSaved()
{
    if (!presenter || q->isClosing())
        return;
    service()->discardSavedSelections();
    q->refresh();
}

// What is marked on single frames has to be followed through the clip before it can be erased.
void ErasingPage::Private::start()
{
    if (q->isClosing() || q->isSegmenting() || q->isTracking())
        return;
    if (isFullyTracked(service()->segments(), clip->frameCount())) {
        requestErasing();
        return;
    }
    startsAfterTracking = true;
    presenter->beginTracking();
    startsAfterTracking = q->isTracking(); // else a prompt has said why
}

void ErasingPage::Private::afterTracking()
{
    if (presenter->isClosing())
        return; // the user has stopped it
    const QString scenes = q->sceneCutText();
    if (reachesEveryFrame(service()->segments(), clip->frameCount()))
        requestErasing();
    else if (!scenes.isEmpty())
        askAboutScenes(scenes);
    else
        q->questions()->tell(
            tr("The objects could not be followed through the whole clip."),
            tr("Go to the frame where the preview ends, select them there once more, "
               "and press Create again."));
}

// What is selected may well be in one scene only.
void ErasingPage::Private::askAboutScenes(const QString &text)
{
    q->questions()->ask(
        text,
        tr("The objects were followed up to there. If they are in the other scene, too, select "
           "them there first."),
        {{QMessageBox::Cancel, tr("Select More")}, {QMessageBox::Apply, tr("Erase Now")}},
        [this](QMessageBox::StandardButton answer) {
            if (answer == QMessageBox::Apply && presenter && !q->isClosing() && !q->isBusy())
                requestErasing();
        });
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
    q->leave(true);
}

ErasingPage::ErasingPage(ZkStudioClip *clip, IZkUndoRedoService *history, QWidget *parent)
    : EditingPage(tr("AI Erase"), parent)
    , d(std::make_unique<Private>(this, clip, history))
{
    setObjectName(QStringLiteral("ErasingPage"));
    d->build();
    finishOpening(tr("Nothing can be erased from \u201c%1\u201d.").arg(d->fileName()));
}

ErasingPage::~ErasingPage()
{
    takeApart();
}

ZkSmartKeyingPresenter *ErasingPage::presenter() const
{
    return d->presenter.get();
}

void ErasingPage::showState()
{
    d->showState();
}

void ErasingPage::onTrackingEnded()
{
    if (std::exchange(d->startsAfterTracking, false))
        d->afterTracking();
    else
        EditingPage::onTrackingEnded();
}

EditingPage::Shortcuts ErasingPage::shortcuts()
{
    return ErasingBar::shortcuts() + sharedShortcuts()
        + Shortcuts {{QStringLiteral("Del"), tr("Remove the active box")}};
}

} // namespace zk::app
