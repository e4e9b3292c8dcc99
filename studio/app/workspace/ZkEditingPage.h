// What the pages have in common on which one clip is worked on.
#pragma once

#include "ZkCore.h"

#include <QByteArray>
#include <QWidget>

class IZkUndoRedoService;
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
    explicit EditingPage(QWidget *parent = nullptr);

    QWidget *widget() override { return this; }

    // Null when the clip cannot be edited: the page says why and then reports closed(false).
    virtual ZkSmartKeyingPresenter *presenter() const = 0;
    bool isOpen() const { return presenter(); }
    // Something runs that closing would break off.
    virtual bool isBusy() const = 0;
    virtual bool isSegmenting() const = 0;

    // True: closed() follows as soon as nothing runs inside any more, never from inside the call. False:
    // there is work to lose, and the user is asked; closed() follows unless he goes on. Asking again
    // while he is being asked changes nothing.
    virtual bool requestClose() = 0;
    // The same without asking; whatever runs is broken off.
    virtual void closeWithoutAsking() = 0;

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
    virtual void commitEditors() = 0;
};

} // namespace zk::app
