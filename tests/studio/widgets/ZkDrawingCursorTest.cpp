#include "ZkTestMain.h"

#include "ZkWidgets.h"

#include <QApplication>
#include <QBitmap>
#include <QPainter>
#include <QScreen>

namespace {

// The greatest difference in lightness from the background along the left part of the middle row,
// where the contours are.
int contourContrast(const QPixmap &pixmap, int background)
{
    QImage image(pixmap.size(), QImage::Format_RGB32);
    image.setDevicePixelRatio(pixmap.devicePixelRatio());
    image.fill(qRgb(background, background, background));
    QPainter(&image).drawPixmap(0, 0, pixmap);
    int contrast = 0;
    for (int x = 0; x < image.width() / 4; ++x) {
        const int lightness = image.pixelColor(x, image.height() / 2).lightness();
        contrast = qMax(contrast, qAbs(lightness - background));
    }
    return contrast;
}

} // namespace

class ZkDrawingCursorTest : public QObject
{
    Q_OBJECT

private slots:
    void isRoundAndCentred()
    {
        const double ratio = QGuiApplication::primaryScreen()->devicePixelRatio();
        for (const int diameter : {-5, 2, 13, 40, 600}) {
            const QCursor cursor = ZkDrawingCursor::cursor(diameter, Qt::red, true);
            const QPixmap pixmap = cursor.pixmap();
            QCOMPARE(pixmap.devicePixelRatio(), ratio);
            const int side = qRound(pixmap.width() / ratio);
            QCOMPARE(cursor.hotSpot(), QPoint(side / 2, side / 2));

            // The dark contour lies just outside the circle.
            const QImage visible = pixmap.toImage().createAlphaMask(Qt::ThresholdDither);
            const QRect bounds = QRegion(QBitmap::fromImage(visible)).boundingRect();
            QCOMPARE(bounds.center(), pixmap.rect().center());
            QCOMPARE(bounds.width(), bounds.height());
            QVERIFY2(qAbs(bounds.width() / ratio - (qMax(2, diameter) + 2)) <= 1.0,
                     qPrintable(QString::number(bounds.width())));
            QCOMPARE(pixmap.toImage().pixelColor(0, 0).alpha(), 0);
        }
    }

    void isVisibleOnAnyBackground()
    {
        for (const QColor &color : {QColor(Qt::black), QColor(Qt::white), QColor(128, 128, 128)}) {
            const QPixmap pixmap = ZkDrawingCursor::cursor(20, color, false).pixmap();
            for (int background = 0; background <= 255; background += 51)
                QVERIFY(contourContrast(pixmap, background) > 80);
        }
    }

    void pressedShowsTheColorItself()
    {
        const auto middle = [](const QColor &color, bool pressed) {
            const QImage image = ZkDrawingCursor::cursor(20, color, pressed).pixmap().toImage();
            return image.pixelColor(image.width() / 2, image.height() / 2);
        };
        const QColor opaque(24, 183, 217);
        QCOMPARE(middle(opaque, true).rgba(), opaque.rgba());
        const int light = middle(opaque, false).alpha();
        QVERIFY(light > 20 && light < 128);
        QVERIFY(qAbs(middle(QColor(24, 183, 217, 100), true).alpha() - 100) <= 1);
        QCOMPARE(middle(QColor(), true).alpha(), 0);
    }
};

ZK_TEST_MAIN(ZkDrawingCursorTest)
#include "ZkDrawingCursorTest.moc"
