#include "ZkEditingPage.h"

#include "ZkDataModel.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkTimelineRuler.h"
#include "ZkWidgets.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioTimeline.h"

#include <QApplication>
#include <QDialog>
#include <QLocale>
#include <QScrollBar>
#include <QVBoxLayout>

namespace zk::app {

using Presenter = ZkSmartKeyingPresenter;

EditingPage::EditingPage(const QString &title, QWidget *parent)
    : QWidget(parent)
    , m_questions(this, title)
    , m_column(new QVBoxLayout(this))
{
    setViewPresenter(&m_scene);
    setFocusPolicy(Qt::ClickFocus);
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(0);
}

void EditingPage::addBar(QWidget *bar)
{
    m_column->addWidget(bar);
}

void EditingPage::addWorkspace(QWidget *workspace)
{
    m_column->addWidget(workspace, 1);
    // Their menus run an event loop, in which the page must not be deleted.
    for (QScrollBar *const scrollBar : findChildren<QScrollBar *>())
        scrollBar->setContextMenuPolicy(Qt::NoContextMenu);
    connectPresenter();
    connectStrokes();
}

void EditingPage::finishOpening(const QString &refusal)
{
    refresh();
    setFocus(Qt::OtherFocusReason); // and none of the buttons
    if (!isOpen())
        QMetaObject::invokeMethod(
            this, [this, refusal] { refuse(refusal); }, Qt::QueuedConnection);
}

void EditingPage::refuse(const QString &text)
{
    QMessageBox *const box = m_questions.tell(
        text,
        tr("The file has no picture that can be read. It may have been moved, or is damaged."));
    connect(box, &QDialog::finished, this, [this] { leave(false); });
}

void EditingPage::connectPresenter()
{
    const Presenter *const source = presenter();
    for (const auto signal : {&Presenter::sigUndoRedoChanged,
                              &Presenter::sigSmartKeyingSegmentChanged,
                              &Presenter::sigEffectAdded,
                              &Presenter::sigEffectRemoved,
                              &Presenter::sigEffectPropertyChanged,
                              &Presenter::sigReset})
        connect(source, signal, this, &EditingPage::refresh);
    connect(source, &Presenter::sigTrackingModeChanged, this, &EditingPage::refresh);
    connect(source, &Presenter::sigUIControlsEnabledChanged, this, &EditingPage::refresh);
    connect(source, &Presenter::sigUndoRedoChanged, this, &EditingPage::undoRedoChanged);
}

// Between the end of a stroke and the presenter's word that its mask was taken, the presenter may be in an
// event loop of its own.
void EditingPage::connectStrokes()
{
    connect(findChild<ZkDrawingWidget *>(),
            &ZkDrawingWidget::sigDrawingFinished,
            this,
            [this](const QImage &, bool isFinished) {
                m_strokes += isFinished ? 1 : 0;
                refresh();
            });
    connect(presenter(), &Presenter::sigDrawingFinished, this, [this] {
        m_strokes = qMax(0, m_strokes - 1);
        refresh();
    });
}

bool EditingPage::isTracking() const
{
    return isOpen() && presenter()->isTrackingMode();
}

bool EditingPage::isBusy() const
{
    return isOpen() && (isSegmenting() || isTracking());
}

void EditingPage::refresh()
{
    if (!isOpen())
        return;
    showState();
    watchTracking();
    if (m_wasBusy == isBusy())
        return;
    m_wasBusy = !m_wasBusy;
    emit busyChanged(m_wasBusy);
}

void EditingPage::watchTracking()
{
    const bool hasEnded = m_wasTracking && !isTracking();
    m_wasTracking = isTracking();
    const auto tell = [this] {
        if (isOpen() && !m_isClosing && !isTracking())
            onTrackingEnded();
    };
    if (hasEnded)
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void EditingPage::onTrackingEnded()
{
    const QString text = sceneCutText();
    if (!text.isEmpty() && !presenter()->isClosing())
        m_questions.tell(text, tr("Tracking stopped there. Paint on the new scene to go on."));
}

QString EditingPage::sceneCutText() const
{
    const auto *const timeline = static_cast<ZkStudioTimeline *>(presenter()->editTimeline());
    QStringList times;
    for (const qint64 frame : timeline->shownService()->sceneCuts())
        times.append(zk::timeline::timeCode(frame, timeline->frameRate()));
    return times.isEmpty()
        ? QString()
        : tr("The scene changes at %1.").arg(QLocale().createSeparatedList(times));
}

bool EditingPage::requestClose()
{
    if (m_isClosing || !isOpen() || !hasWorkToLose()) {
        leave(false);
        return true;
    }
    if (!m_questions.isAsking())
        askToClose();
    return false;
}

void EditingPage::closeWithoutAsking()
{
    leave(false);
}

void EditingPage::leave(bool isApplied)
{
    m_isApplied = m_isApplied || isApplied;
    if (m_isClosing || m_isClosed)
        return;
    m_isClosing = true;
    m_questions.dismiss();
    if (isOpen()) {
        presenter()->setClosing(true);
        stopWork();
        refresh();
        endLoops();
    }
    m_depth.whenIdle([this] {
        takeApart();
        emit closed(m_isApplied);
    });
}

// Dialogs and menus; strokes end by themselves.
void EditingPage::endLoops()
{
    for (QDialog *const dialog : findChildren<QDialog *>())
        dialog->reject();
    while (QWidget *const popup = QApplication::activePopupWidget()) {
        if (!popup->close())
            break;
    }
}

void EditingPage::takeApart()
{
    if (m_isClosed)
        return;
    m_isClosed = true;
    m_questions.dismiss();
    if (!isOpen())
        return;
    emit leaving(m_isClosing);
    presenter()->setClosing(true);
    presenter()->disconnect(this);
    deleteWorkspace();
}

IZkUndoRedoService *EditingPage::undoRedoService() const
{
    return isOpen() ? presenter()->undoRedoService() : nullptr;
}

void EditingPage::commitEditors()
{
    m_scene.commitFocusedEditor();
}

void EditingPage::undo()
{
    commitEditors();
    if (IZkUndoRedoService *const service = undoRedoService())
        service->undo();
}

void EditingPage::redo()
{
    commitEditors();
    if (IZkUndoRedoService *const service = undoRedoService())
        service->redo();
}

EditingPage::Shortcuts EditingPage::sharedShortcuts()
{
    return {{QStringLiteral("Ctrl+Z"), tr("Undo")},
            {QStringLiteral("Ctrl+Y"), tr("Redo")},
            {QStringLiteral("H"), tr("Pan")},
            {QStringLiteral("Ctrl+Shift+F"), tr("Fit the frame")},
            {QStringLiteral("Space"), tr("Play or pause")},
            {QStringLiteral("Ctrl+/"), tr("Stop and return")}};
}

} // namespace zk::app
