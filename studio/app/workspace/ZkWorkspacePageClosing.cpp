// Questions, saving, and how the page is left.
#include "ZkPropertyPanel.h"
#include "ZkWorkspacePage_p.h"
#include "ZkWorkspaceScene.h"

#include "ZkSmartKeyingPlayerView.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkStudioTimelineView.h"
#include "ZkWidgets.h"
#include "timeline/ZkStudioClip.h"

#include <QFileInfo>

namespace zk::app {

void WorkspacePage::Private::refuseToOpen()
{
    QMessageBox *const box = questions.tell(
        tr("\u201c%1\u201d cannot be cut out.").arg(QFileInfo(clip->media().path).fileName()),
        tr("The file has no picture that can be read. It may have been moved, or is damaged."));
    QObject::connect(box, &QDialog::finished, q, [this] { close(); });
}

void WorkspacePage::Private::askToReset()
{
    questions.ask(
        tr("Discard everything that was done?"),
        tr("Strokes, tracking results and the effect are taken away. This cannot be undone."),
        {{QMessageBox::Discard, tr("Reset")}, {QMessageBox::Cancel, tr("Keep")}},
        [this](QMessageBox::StandardButton answer) {
            if (answer == QMessageBox::Discard && presenter && !isSegmenting() && !isSaving)
                presenter->reset();
            refresh();
        });
}

bool WorkspacePage::Private::hasWorkToLose() const
{
    return isSaving || isSegmenting() || presenter->hasModify();
}

void WorkspacePage::Private::askToClose()
{
    if (questions.isAsking())
        return;
    QVector<PageQuestions::Choice> choices {{QMessageBox::Discard, tr("Discard")},
                                            {QMessageBox::Cancel, tr("Keep Editing")}};
    if (!isSaving && !isSegmenting())
        choices.append({QMessageBox::Apply, tr("Apply")});
    questions.ask(
        isSaving ? tr("Stop saving and close?") : tr("Apply the cutout before closing?"),
        tr("What has not been applied is lost: strokes, tracking results and the effect."),
        choices,
        [this](QMessageBox::StandardButton answer) {
            if (answer == QMessageBox::Discard) {
                close();
            } else if (answer == QMessageBox::Apply) {
                closesAfterSaving = true;
                apply();
            } else {
                emit q->closeRefused();
            }
        });
}

void WorkspacePage::Private::apply()
{
    if (!presenter || isSaving || isClosing)
        return;
    isSaving = true;
    view->setDrawingEnabled(false);
    refresh();
    presenter->applyModify();
}

// Comes from inside the edit controller, which closing would delete.
void WorkspacePage::Private::onSaveFinished(bool isSaved)
{
    isSaving = false;
    if (isSaved) {
        isApplied = true;
        close();
        return;
    }
    onSaveCancelled();
    questions.tell(
        tr("The cutout could not be saved."),
        tr("The clip is as it was. What you have done here is kept; try again, or paint the "
           "frames anew that look wrong."));
}

void WorkspacePage::Private::onSaveCancelled()
{
    isSaving = false;
    presenter->setClosing(false);
    if (isClosing)
        return;
    view->setDrawingEnabled(true);
    refresh();
    if (closesAfterSaving)
        emit q->closeRefused();
    closesAfterSaving = false;
}

void WorkspacePage::Private::close()
{
    if (isClosing || isClosed)
        return;
    isClosing = true;
    questions.dismiss();
    if (presenter) {
        presenter->setClosing(true);
        if (isSaving)
            presenter->cancelApply();
        view->setDrawingEnabled(false);
        refresh();
    }
    closeWhenPossible();
}

// A stroke that is being segmented and a colour that is being chosen have event loops of their own,
// which must have ended first.
void WorkspacePage::Private::closeWhenPossible()
{
    if (isSegmenting())
        return; // the end of the stroke comes back here
    if (auto *const dialog = view ? view->findChild<ZkColorSelecter *>() : nullptr) {
        QObject::connect(dialog, &QObject::destroyed, q, [this] { closeWhenPossible(); });
        dialog->reject();
        return;
    }
    QMetaObject::invokeMethod(
        q,
        [this] {
            if (isClosed)
                return;
            takeApart();
            emit q->closed(isApplied);
        },
        Qt::QueuedConnection);
}

// Views go before what they show, and the presenter joins its workers.
void WorkspacePage::Private::takeApart()
{
    isClosed = true;
    questions.dismiss();
    if (!presenter)
        return;
    layout = q->saveLayout();
    emit q->leaving(isClosing);
    presenter->setClosing(true);
    presenter->disconnect(q);
    presenter->disconnect(bar);
    delete panel;
    presenter->clearView();
    delete view;
    presenter->setTimelinePresenter(nullptr);
    if (timelinePresenter) {
        timelinePresenter->setTimeline(nullptr);
        timelinePresenter->clearView();
        delete timelineView;
    }
    presenter.reset();
    timelinePresenter.reset();
}

} // namespace zk::app
