// Questions, and how the page is left.
#include "ZkErasingPage_p.h"

#include "ZkErasingBar.h"
#include "ZkSelectionState.h"
#include "ZkWorkspaceScene.h"

#include "ZkAIErasingCropSelectorPresenter.h"
#include "ZkAIErasingPresenter.h"
#include "ZkAIErasingView.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioTimeline.h"
#include "tracking/ZkApplyStep.h"

#include <QApplication>
#include <QDialog>
#include <QFileInfo>

namespace zk::app {

void ErasingPage::Private::refuseToOpen()
{
    QMessageBox *const box = questions.tell(
        tr("Nothing can be erased from \u201c%1\u201d.")
            .arg(QFileInfo(clip->media().path).fileName()),
        tr("The file has no picture that can be read. It may have been moved, or is damaged."));
    QObject::connect(box, &QDialog::finished, q, [this] { close(false); });
}

bool ErasingPage::Private::hasWorkToLose() const
{
    return isSegmenting()
        || !isSameSelection(service()->segments(),
                            clip->studioService(ZKSMARTKEYING::AIErasing)->segments());
}

void ErasingPage::Private::askToClose()
{
    if (questions.isAsking())
        return;
    QVector<PageQuestions::Choice> choices {{QMessageBox::Discard, tr("Discard")},
                                            {QMessageBox::Cancel, tr("Keep Editing")}};
    if (!isSegmenting())
        choices.append({QMessageBox::Save, tr("Keep the Selection")});
    questions.ask(
        tr("Keep what is selected?"),
        tr("A selection that is kept is there when AI Erase is opened on this clip again. "
           "Nothing has been erased yet."),
        choices,
        [this](QMessageBox::StandardButton answer) {
            if (answer == QMessageBox::Discard) {
                close(false);
            } else if (answer == QMessageBox::Save) {
                presenter->stopTrackingMode();
                keepSelection();
                close(true);
            } else {
                emit q->closeRefused();
            }
        });
}

void ErasingPage::Private::keepSelection()
{
    if (hasWorkToLose())
        datamodel::applySelection(clip, *editClip(), tr("Select objects to erase"));
}

// What is in an event loop of its own is told to come to its end: dialogs and menus.
void ErasingPage::Private::close(bool applied)
{
    if (isClosing || isClosed)
        return;
    isClosing = true;
    isApplied = applied;
    startsAfterTracking = false;
    questions.dismiss();
    if (presenter) {
        presenter->setClosing(true);
        view->setEnabled(false);
        refresh();
        for (QDialog *const dialog : q->findChildren<QDialog *>())
            dialog->reject();
        while (QWidget *const popup = QApplication::activePopupWidget()) {
            if (!popup->close())
                break;
        }
    }
    depth.whenIdle([this] {
        takeApart();
        emit q->closed(isApplied);
    });
}

// The view goes before what it shows, and the presenter joins its workers.
void ErasingPage::Private::takeApart()
{
    if (isClosed)
        return;
    isClosed = true;
    questions.dismiss();
    if (!presenter)
        return;
    emit q->leaving(isClosing);
    presenter->setClosing(true);
    presenter->disconnect(q);
    listCheck.stop();
    // The player that goes changes the canvas, and rebuilding the rectangles would process events.
    presenter->cropSelectorPresenter()->disconnect();
    presenter->clearView();
    delete view;
    presenter.reset();
}

bool ErasingPage::requestClose()
{
    if (d->isClosing || !d->presenter || !d->hasWorkToLose()) {
        d->close(false);
        return true;
    }
    d->askToClose();
    return false;
}

void ErasingPage::closeWithoutAsking()
{
    d->close(false);
}

} // namespace zk::app
