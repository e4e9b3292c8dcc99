// Builds and runs against the installed tree: lists an empty preset model with its "None" entry.
#include <QApplication>

#include <ZCutoutPresetItemModel.h>
#include <ZkDataModel.h>
#include <ZkSmartKeyingPlayerView.h>
#include <ZkSmartKeyingPresenter.h>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    ZCutoutPresetItemModel model(nullptr);
    model.addVirtualNoneItem();
    const bool hasPresenter =
        ZkSmartKeyingPresenter::staticMetaObject.indexOfSignal("sigSmartKeyingSegmentChanged()")
        >= 0;
    const bool hasView = ZkSmartKeyingPlayerView::staticMetaObject.inherits(
        &ZkRoundRadiusWidgetView::staticMetaObject);
    // Known to the linker, and harmless without a host.
    ZkSmartKeyingPresenter::trackSmartCutoutClickEvent(QStringLiteral("undo"), QString());
    return model.rowCount() == 1 && hasPresenter && hasView
            && !ZkSmartKeyingPresenter::isSmartKeyingEffect(nullptr)
        ? 0
        : 1;
}
