// Questions, saving, and how the page is left.
#include "ZkPropertyPanel.h"
#include "ZkWorkspacePage_p.h"

#include "ZkSmartKeyingPlayerView.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkStudioTimelineView.h"
#include "timeline/ZkStudioClip.h"

namespace zk::app {

void WorkspacePage::Private::askToReset()
{
    q->questions()->ask(
        tr("Discard everything that was done?"),
        tr("Strokes, tracking results and the effect are taken away. This cannot be undone."),
        {{QMessageBox::Discard, tr("Reset")}, {QMessageBox::Cancel, tr("Keep")}},
        [this](QMessageBox::StandardButton answer) {
            if (answer == QMessageBox::Discard && presenter && !q->isSegmenting() && !isSaving)
                presenter->reset();
            q->refresh();
        });
}

bool WorkspacePage::hasWorkToLose() const
{
    return d->isSaving || isSegmenting() || presenter()->hasModify();
}

void WorkspacePage::askToClose()
{
    QVector<PageQuestions::Choice> choices {{QMessageBox::Discard, tr("Discard")},
                                            {QMessageBox::Cancel, tr("Keep Editing")}};
    if (!d->isSaving && !isSegmenting())
        choices.append({QMessageBox::Apply, tr("Apply")});
    questions()->ask(
        d->isSaving ? tr("Stop saving and close?") : tr("Apply the cutout before closing?"),
        tr("What has not been applied is lost: strokes, tracking results and the effect."),
        choices,
        [this](QMessageBox::StandardButton answer) {
            if (answer == QMessageBox::Discard) {
                leave(false);
            } else if (answer == QMessageBox::Apply) {
                d->closesAfterSaving = true;
                d->apply();
            } else {
                emit closeRefused();
            }
        });
}

void WorkspacePage::Private::apply()
{
    if (!presenter || isSaving || q->isClosing())
        return;
    isSaving = true;
    view->setDrawingEnabled(false);
    q->refresh();
    presenter->applyModify();
}

// Comes from inside the edit controller, which closing would delete.
void WorkspacePage::Private::onSaveFinished(bool isSaved)
{
    isSaving = false;
    if (isSaved) {
        q->leave(true);
        return;
    }
    onSaveCancelled();
    q->questions()->tell(
        tr("The cutout could not be saved."),
        tr("The clip is as it was. What you have done here is kept; try again, or paint the "
           "frames anew that look wrong."));
}

void WorkspacePage::Private::onSaveCancelled()
{
    isSaving = false;
    presenter->setClosing(false);
    if (q->isClosing())
        return;
    view->setDrawingEnabled(true);
    q->refresh();
    if (closesAfterSaving)
        emit q->closeRefused();
    closesAfterSaving = false;
}

void WorkspacePage::stopWork()
{
    if (d->isSaving)
        presenter()->cancelApply();
    d->view->setDrawingEnabled(false);
}

// The presenter joins its workers.
void WorkspacePage::deleteWorkspace()
{
    d->layout = saveLayout();
    presenter()->disconnect(d->bar);
    delete d->panel;
    presenter()->clearView();
    delete d->view;
    presenter()->setTimelinePresenter(nullptr);
    if (d->timelinePresenter) {
        d->timelinePresenter->setTimeline(nullptr);
        d->timelinePresenter->clearView();
        delete d->timelineView;
    }
    d->presenter.reset();
    d->timelinePresenter.reset();
}

} // namespace zk::app
