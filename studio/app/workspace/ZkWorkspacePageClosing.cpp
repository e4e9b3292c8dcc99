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
#include <QMessageBox>
#include <QPushButton>

namespace zk::app {

namespace {

constexpr int signSide = 24; // widget pixels

// One of the skin's, as the platform's own do not go with it.
void setSign(QMessageBox *box, const QString &name)
{
    box->setIconPixmap(ZkSkinManager::instance()->icon(name).pixmap(signSide, signSide));
}

} // namespace

void WorkspacePage::Private::refuseToOpen()
{
    tell(tr("\u201c%1\u201d cannot be cut out.").arg(QFileInfo(clip->media().path).fileName()),
         tr("The file has no picture that can be read. It may have been moved, or is damaged."));
    QObject::connect(question.data(), &QDialog::finished, q, [this] { close(); });
}

// Questions are opened, not executed: the page must not be taken apart inside of an event loop, and
// what runs goes on meanwhile.
QMessageBox *WorkspacePage::Private::ask(const QString &text,
                                         const QString &details,
                                         const std::function<void(QMessageBox *)> &answered)
{
    dismissQuestion();
    auto *const box = new QMessageBox(QMessageBox::NoIcon, tr("Smart Cutout"), text, {}, q);
    box->setTextFormat(Qt::PlainText); // names of files are no markup
    setSign(box, QStringLiteral("info"));
    box->setInformativeText(details);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QDialog::finished, q, [answered, box] { answered(box); });
    question = box;
    box->open();
    return box;
}

void WorkspacePage::Private::dismissQuestion()
{
    if (!question)
        return;
    question->disconnect(q);
    question->close();
    question.clear();
}

void WorkspacePage::Private::tell(const QString &text, const QString &details)
{
    QMessageBox *const box = ask(text, details, [](QMessageBox *) {});
    setSign(box, QStringLiteral("warning"));
    box->setStandardButtons(QMessageBox::Ok);
}

void WorkspacePage::Private::askToReset()
{
    QMessageBox *const box =
        ask(tr("Discard everything that was done?"),
            tr("Strokes, tracking results and the effect are taken away. This cannot be undone."),
            [this](QMessageBox *asked) {
                const bool isAgreed =
                    asked->standardButton(asked->clickedButton()) == QMessageBox::Discard;
                if (isAgreed && presenter && !isSegmenting() && !isSaving)
                    presenter->reset();
                refresh();
            });
    box->setStandardButtons(QMessageBox::Discard | QMessageBox::Cancel);
    box->button(QMessageBox::Discard)->setText(tr("Reset"));
    box->button(QMessageBox::Cancel)->setText(tr("Keep"));
    box->setDefaultButton(QMessageBox::Cancel);
}

bool WorkspacePage::Private::hasWorkToLose() const
{
    return isSaving || isSegmenting() || presenter->hasModify();
}

void WorkspacePage::Private::askToClose()
{
    if (question)
        return;
    const bool canApply = !isSaving && !isSegmenting();
    QMessageBox *const box =
        ask(isSaving ? tr("Stop saving and close?") : tr("Apply the cutout before closing?"),
            tr("What has not been applied is lost: strokes, tracking results and the effect."),
            [this](QMessageBox *asked) {
                switch (asked->standardButton(asked->clickedButton())) {
                case QMessageBox::Discard:
                    close();
                    break;
                case QMessageBox::Apply:
                    closesAfterSaving = true;
                    apply();
                    break;
                default:
                    emit q->closeRefused();
                }
            });
    box->setStandardButtons(QMessageBox::Discard | QMessageBox::Cancel);
    if (canApply)
        box->addButton(QMessageBox::Apply)->setText(tr("Apply"));
    box->button(QMessageBox::Discard)->setText(tr("Discard"));
    box->button(QMessageBox::Cancel)->setText(tr("Keep Editing"));
    box->setDefaultButton(canApply ? QMessageBox::Apply : QMessageBox::Cancel);
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
    tell(tr("The cutout could not be saved."),
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
    dismissQuestion();
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
    dismissQuestion();
    if (!presenter)
        return;
    layout = q->saveLayout();
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
