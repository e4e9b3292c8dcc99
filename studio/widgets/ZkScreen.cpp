#include "widgets/ZkScreen.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

double ZkScreen::devicePixelRatio(const QWidget *widget)
{
    if (widget)
        return widget->devicePixelRatioF();
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() : 1.0;
}
