// An AI erasing workspace on the sample clip, in a window.
#pragma once

#include "../workspace/WorkspaceBench.h"

#include "ZkErasingPage.h"

#include "ZkAIErasingPresenter.h"
#include "ZkAccount.h"
#include "ZkServiceState.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "undo/ZkStudioUndoRedoService.h"

namespace zk::test {

// In widget pixels of whoever draws on the picture: a box around the balloon of the sample clip.
inline QVector<QPoint> boxAround(const QRect &picture)
{
    const auto at = [&picture](double x, double y) {
        return picture.topLeft() + QPoint(int(picture.width() * x), int(picture.height() * y));
    };
    return {at(0.15, 0.12), at(0.3, 0.4), at(0.45, 0.62)};
}

class ErasingBench : public WorkspaceBench
{
public:
    using WorkspaceBench::WorkspaceBench;
    ~ErasingBench() override
    {
        delete page;
        page = nullptr;
        ZkAccount::instance()->logOut();
        core::setServiceState({});
    }

    app::EditingPage *createPage() override
    {
        core::setServiceState([this] { return isOnline; });
        auto *const page = new app::ErasingPage(timeline->clip(), timeline->undoRedoService());
        QObject::connect(page,
                         &app::ErasingPage::eraseRequested,
                         &window,
                         [this](const app::EraseRequest &request) { requests.append(request); });
        return page;
    }
    QWidget *paper() const override { return editor(); }
    // While the areas are rebuilt what the user does waits in the queue.
    bool takesInput() const override { return !editor() || !editor()->signalsBlocked(); }

    ZkMultiCropWidget *editor() const { return page->findChild<ZkMultiCropWidget *>(); }
    ZkAIErasingPresenter *erasing() const
    {
        return static_cast<ZkAIErasingPresenter *>(presenter());
    }
    ZkStudioSmartKeyingService *masks() const
    {
        return static_cast<ZkStudioSmartKeyingService *>(service());
    }
    ZkListWidget *list() const { return page->findChild<ZkListWidget *>(); }
    QAbstractButton *create() const { return page->findChild<ZAIGCCreateButton *>(); }
    // The one with that text that can be seen.
    QAbstractButton *button(const QString &text) const
    {
        for (QAbstractButton *const button : page->findChildren<QAbstractButton *>()) {
            if (button->text() == text && button->isVisible())
                return button;
        }
        return nullptr;
    }
    bool drawBox()
    {
        const int before = masks()->segmentCount();
        drag(editor(), boxAround(presenter()->canvasRect()));
        return QTest::qWaitFor([=] { return masks()->segmentCount() > before; }, 10000);
    }
    // The tracking dialog is on screen while its modal loop runs.
    void clickCreate() const { clickThroughWindow(create()); }

    QVector<app::EraseRequest> requests;
    bool isOnline = true;

private:
    // What the workspace says of every change of its size.
    const ExpectedMessage m_resized {QStringLiteral("sigCanvasRectChanged received")};
};

} // namespace zk::test
