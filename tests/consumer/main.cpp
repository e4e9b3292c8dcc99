// Builds and runs against the installed tree: lists an empty preset model with its "None" entry and asks
// areas without a workspace.
#include <QApplication>

#include <ZCutoutPresetItemModel.h>
#include <ZkAIErasingCropSelectorPresenter.h>
#include <ZkAIErasingPresenter.h>
#include <ZkAIErasingView.h>
#include <ZkDataModel.h>
#include <ZkSmartKeyingPlayerView.h>
#include <ZkSmartKeyingPresenter.h>

namespace {

bool knowsSmartKeying()
{
    // Known to the linker, and harmless without a host.
    ZkSmartKeyingPresenter::trackSmartCutoutClickEvent(QStringLiteral("undo"), QString());
    return ZkSmartKeyingPresenter::staticMetaObject.indexOfSignal("sigSmartKeyingSegmentChanged()")
        >= 0
        && ZkSmartKeyingPlayerView::staticMetaObject.inherits(
            &ZkRoundRadiusWidgetView::staticMetaObject)
        && !ZkSmartKeyingPresenter::isSmartKeyingEffect(nullptr);
}

bool knowsErasing()
{
    ZkAIErasingCropSelectorPresenter crops(nullptr);
    return crops.addCropRect(QRect(0, 0, 10, 10)) == -1 && !crops.hasCropRects()
        && ZkAIErasingPresenter::staticMetaObject.inherits(
            &ZkSmartKeyingPresenter::staticMetaObject)
        && ZkAIErasingPresenter::staticMetaObject.indexOfSignal("sigNodeChangedSync(qint64)") >= 0
        && ZkAIErasingView::staticMetaObject.inherits(&ZkWidgetView::staticMetaObject)
        && ZkAIErasingView::staticMetaObject.indexOfSignal("sigStartTask()") >= 0;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    ZCutoutPresetItemModel model(nullptr);
    model.addVirtualNoneItem();
    return model.rowCount() == 1 && knowsSmartKeying() && knowsErasing() ? 0 : 1;
}
