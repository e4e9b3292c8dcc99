#include "ZkTestMain.h"

#include "ZkWidgets.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>

namespace {

QImage onBackground(const QCursor &cursor, const QColor &background)
{
    const QPixmap pixmap = cursor.pixmap();
    QImage image(pixmap.size(), QImage::Format_RGB32);
    image.setDevicePixelRatio(pixmap.devicePixelRatio());
    image.fill(background);
    QPainter painter(&image);
    painter.drawPixmap(0, 0, pixmap);
    return image;
}

// The greatest difference in lightness from the background along the middle row, outside the fill.
int contourContrast(const QCursor &cursor, const QColor &background)
{
    const QImage image = onBackground(cursor, background);
    int contrast = 0;
    for (int x = 0; x < image.width() / 4; ++x) {
        const int lightness = image.pixelColor(x, image.height() / 2).lightness();
        contrast = qMax(contrast, qAbs(lightness - background.lightness()));
    }
    return contrast;
}

// How far the picture is from being the same when it is turned by half a turn.
int asymmetry(const QImage &image)
{
    const QImage turned = image.mirrored(true, true);
    int difference = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = image.pixelColor(x, y).alpha();
            difference = qMax(difference, qAbs(alpha - turned.pixelColor(x, y).alpha()));
        }
    }
    return difference;
}

} // namespace

class ZkDrawingCursorTest : public QObject
{
    Q_OBJECT

private slots:
    void isRoundAndCentred_data();
    void isRoundAndCentred();
    void isVisibleOnAnyBackground();
    void pressedShowsTheColorItself();
};

void ZkDrawingCursorTest::isRoundAndCentred_data()
{
    QTest::addColumn<int>("diameter");
    QTest::addColumn<int>("shown");
    QTest::newRow("negative") << -5 << 2;
    QTest::newRow("smallest") << 2 << 2;
    QTest::newRow("odd") << 13 << 13;
    QTest::newRow("even") << 40 << 40;
    QTest::newRow("large") << 600 << 600;
}

void ZkDrawingCursorTest::isRoundAndCentred()
{
    QFETCH(int, diameter);
    QFETCH(int, shown);
    const QCursor cursor = ZkDrawingCursor::cursor(diameter, Qt::red, true);
    const QPixmap pixmap = cursor.pixmap();
    const double ratio = QGuiApplication::primaryScreen()->devicePixelRatio();
    QCOMPARE(pixmap.devicePixelRatio(), ratio);
    const int side = qRound(pixmap.width() / ratio);
    QCOMPARE(pixmap.width(), pixmap.height());
    QCOMPARE(cursor.hotSpot(), QPoint(side / 2, side / 2));

    const QImage image = pixmap.toImage();
    QVERIFY2(asymmetry(image) < 20, qPrintable(QString::number(asymmetry(image))));
    int opaque = 0;
    for (int x = 0; x < image.width(); ++x)
        opaque += image.pixelColor(x, image.height() / 2).alpha() > 100;
    // The dark contour lies just outside the circle.
    QVERIFY2(qAbs(opaque / ratio - (shown + 2)) <= 1.0, qPrintable(QString::number(opaque)));
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
}

void ZkDrawingCursorTest::isVisibleOnAnyBackground()
{
    for (bool pressed : {false, true}) {
        for (const QColor &color : {QColor(Qt::black), QColor(Qt::white), QColor(128, 128, 128)}) {
            const QCursor cursor = ZkDrawingCursor::cursor(20, color, pressed);
            for (int lightness = 0; lightness <= 255; lightness += 51) {
                const QColor background(lightness, lightness, lightness);
                QVERIFY(contourContrast(cursor, background) > 80);
            }
        }
    }
}

void ZkDrawingCursorTest::pressedShowsTheColorItself()
{
    const auto middle = [](const QColor &color, bool pressed) {
        const QImage image = ZkDrawingCursor::cursor(20, color, pressed).pixmap().toImage();
        return image.pixelColor(image.width() / 2, image.height() / 2);
    };
    const QColor opaque(24, 183, 217);
    QCOMPARE(middle(opaque, true).rgba(), opaque.rgba());
    const int light = middle(opaque, false).alpha();
    QVERIFY(light > 20 && light < 128);
    const QColor translucent(24, 183, 217, 100);
    QVERIFY(qAbs(middle(translucent, true).alpha() - 100) <= 1);
    QVERIFY(middle(translucent, false).alpha() < 50);
    QCOMPARE(middle(QColor(), true).alpha(), 0);
}

ZK_TEST_MAIN(ZkDrawingCursorTest)
#include "ZkDrawingCursorTest.moc"
