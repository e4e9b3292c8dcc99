// How the page is left.
#include "ZkErasingPage_p.h"

#include "ZkSelectionState.h"

#include "ZkAIErasingPresenter.h"
#include "ZkAIErasingView.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioTimeline.h"
#include "tracking/ZkApplyStep.h"

namespace zk::app {

bool ErasingPage::Private::isChanged() const
{
    return !isSameSelection(service()->segments(),
                            clip->studioService(ZKSMARTKEYING::AIErasing)->segments());
}

void ErasingPage::Private::keepSelection()
{
    if (isChanged())
        datamodel::applySelection(clip, *editClip(), tr("Select objects to erase"));
}

bool ErasingPage::hasWorkToLose() const
{
    return isSegmenting() || d->isChanged();
}

void ErasingPage::askToClose()
{
    QVector<PageQuestions::Choice> choices {{QMessageBox::Discard, tr("Discard")},
                                            {QMessageBox::Cancel, tr("Keep Editing")}};
    if (!isSegmenting())
        choices.append({QMessageBox::Save, tr("Keep the Selection")});
    questions()->ask(
        tr("Keep what is selected?"),
        tr("A selection that is kept is there when AI Erase is opened on this clip again. "
           "Nothing has been erased yet."),
        choices,
        [this](QMessageBox::StandardButton answer) {
            if (answer == QMessageBox::Discard) {
                leave(false);
            } else if (answer == QMessageBox::Save) {
                presenter()->stopTrackingMode();
                d->keepSelection();
                leave(true);
            } else {
                emit closeRefused();
            }
        });
}

void ErasingPage::stopWork()
{
    d->startsAfterTracking = false;
    d->view->setEnabled(false);
}

// The presenter joins its workers.
void ErasingPage::deleteWorkspace()
{
    d->presenter->clearView();
    delete d->view;
    d->presenter.reset();
}

} // namespace zk::app
