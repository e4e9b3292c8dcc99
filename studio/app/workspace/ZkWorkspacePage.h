// The page on which one clip is cut out.
#pragma once

#include "ZkCore.h"

#include <QByteArray>
#include <QPair>
#include <QString>
#include <QVector>
#include <QWidget>

#include <memory>

class IZkUndoRedoService;
class ZkSmartKeyingPresenter;
class ZkStudioClip;
class ZkStudioProjectManager;

namespace zk::app {

// Stands in place of the editor's page while a clip is being cut out: the workspace with its timeline,
// tracking, presets, and Apply, Cancel and Reset. What was done reaches the clip through Apply alone, as
// one undo step of the clip's own timeline.
//
// Clip and project manager are not owned and must outlive the page. Whoever shows it takes it away when
// closed() comes, and until then switches his own shortcuts off that are among shortcuts(). Deleting it
// earlier is safe unless isSegmenting(), when an event loop runs inside of it. GUI thread only.
class WorkspacePage : public QWidget, public ZkUIView
{
    Q_OBJECT

public:
    WorkspacePage(ZkStudioClip *clip, ZkStudioProjectManager *manager, QWidget *parent = nullptr);
    ~WorkspacePage() override;

    QWidget *widget() override { return this; }

    // False when the clip cannot be edited: the page says why and then reports closed(false).
    bool isOpen() const;
    // Something runs that closing would break off: segmentation, tracking, a download or saving.
    bool isBusy() const;
    bool isSegmenting() const;

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

    // Keys and what they do, translated, in the order of a help page.
    static QVector<QPair<QString, QString>> shortcuts();

    // How the page's space is divided, to be kept between sessions.
    QByteArray saveLayout() const;
    bool restoreLayout(const QByteArray &layout);

    // Null when the clip cannot be edited.
    ZkSmartKeyingPresenter *presenter() const;

Q_SIGNALS:
    // The workspace has been taken apart, and the page is empty: it may be deleted. Applied: the clip
    // carries the result.
    void closed(bool applied);
    // Right before the presenter and its edit timeline go. By the user: with Apply or Cancel; otherwise the
    // page is deleted while it is open.
    void leaving(bool byUser);
    // The user was asked by requestClose() and goes on.
    void closeRefused();
    void undoRedoChanged();
    void busyChanged(bool busy);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace zk::app
