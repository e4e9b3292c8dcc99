#include "ZkUtility.h"

QRectF ZkUtility::getFitCentralWindowRectByRatio(const QRectF &window, double ratio)
{
    if (window.isEmpty() || !(ratio > 0))
        return {};
    const double width = qMin(window.width(), window.height() * ratio);
    QRectF fitted(0, 0, width, qMin(window.height(), width / ratio));
    fitted.moveCenter(window.center());
    return fitted;
}
