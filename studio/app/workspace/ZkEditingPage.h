// What the pages have in common on which one clip is worked on.
#pragma once

#include "ZkEventDepth.h"
#include "ZkPageQuestions.h"
#include "ZkWorkspaceScene.h"

#include "ZkCore.h"

#include <QByteArray>
#include <QPair>
#include <QString>
#include <QVector>
#include <QWidget>

class IZkUndoRedoService;
class QVBoxLayout;
class ZkSmartKeyingPresenter;

namespace zk::app {

// Stands in place of the editor's page while a workspace is open on a clip. What was done reaches the
// clip when the page is left, as one undo step of the clip's own timeline; what that takes is the page's.
//
// Whoever shows it takes it away when closed() comes, and until then switches his own shortcuts off that
// it has, too. Deleting it earlier is safe unless isSegmenting(), when an event loop runs inside of it.
// GUI thread only.
class EditingPage : public QWidget, public ZkUIView
{
    Q_OBJECT

public:
    // Keys and what they do, translated, in the order of a help page.
    using Shortcuts = QVector<QPair<QString, QString>>;

    QWidget *widget() override { return this; }

    // Null when the clip cannot be edited: the page says why and then reports closed(false).
    virtual ZkSmartKeyingPresenter *presenter() const = 0;
    bool isOpen() const { return presenter(); }
    // Something runs that closing would break off: segmentation, tracking, or what else the page does.
    virtual bool isBusy() const;
    // A stroke was finished and waits for its mask.
    bool isSegmenting() const { return m_strokes > 0; }

    // True: closed() follows as soon as nothing runs inside any more, never from inside the call. False:
    // there is work to lose, and the user is asked; closed() follows unless he goes on. Asking again
    // while he is being asked changes nothing.
    bool requestClose();
    // The same without asking; whatever runs is broken off.
    void closeWithoutAsking();

    // The workspace's own history, for an Edit menu; null when it is not open.
    IZkUndoRedoService *undoRedoService() const;
    // With what the focused editor holds taken over first.
    void undo();
    void redo();

    // How the page's space is divided, to be kept between sessions.
    virtual QByteArray saveLayout() const { return {}; }
    virtual bool restoreLayout(const QByteArray &) { return false; }

Q_SIGNALS:
    // The workspace has been taken apart, and the page is empty: it may be deleted. Applied: the clip
    // carries the result.
    void closed(bool applied);
    // Right before the presenter and its edit timeline go. By the user: he has decided what becomes of
    // his work; otherwise the page is deleted while it is open.
    void leaving(bool byUser);
    // The user was asked by requestClose() and goes on.
    void closeRefused();
    void undoRedoChanged();
    void busyChanged(bool busy);

protected:
    // The title is that of its questions.
    EditingPage(const QString &title, QWidget *parent);

    // The steps in which a page builds itself: the bar, then, if it has a presenter, the workspace below
    // it; the last one in any case. The refusal says that nothing can be done with the clip.
    void addBar(QWidget *bar);
    void addWorkspace(QWidget *workspace);
    void finishOpening(const QString &refusal);
    static Shortcuts sharedShortcuts();

    WorkspaceScene *scene() { return &m_scene; }
    PageQuestions *questions() { return &m_questions; }
    bool isTracking() const;
    bool isClosing() const { return m_isClosing; }
    void commitEditors();
    // Brings bar and workspace up to date and reports whether the page is busy.
    void refresh();
    // Where the last run came to another scene and left frames without a mask, as a sentence; empty: nowhere.
    QString sceneCutText() const;
    // Closes the page when everything has returned that runs inside of it. Again: applied counts.
    void leave(bool isApplied);
    // The page's destructor calls it, too.
    void takeApart();

    // What refresh() shows; the page is open.
    virtual void showState() = 0;
    // A run has ended or was stopped, and control is back in the event loop.
    virtual void onTrackingEnded();
    virtual bool hasWorkToLose() const = 0;
    // Ends in leave() or closeRefused().
    virtual void askToClose() = 0;
    // The page is about to be left: nothing is to begin any more, and what can be broken off is.
    virtual void stopWork() = 0;
    // Deletes the views, and then what they show.
    virtual void deleteWorkspace() = 0;

private:
    void connectPresenter();
    void connectStrokes();
    void watchTracking();
    void refuse(const QString &text);
    void endLoops();

    WorkspaceScene m_scene;
    PageQuestions m_questions;
    EventDepth m_depth;
    QVBoxLayout *m_column;
    int m_strokes = 0; // that were finished and wait for their mask
    bool m_wasBusy = false;
    bool m_wasTracking = false;
    bool m_isClosing = false;
    bool m_isClosed = false;
    bool m_isApplied = false;
};

} // namespace zk::app
