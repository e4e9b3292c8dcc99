#include "ZkTestMain.h"

#include "ZkWidgets.h"

#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>

class ZkToastTest : public QObject
{
    Q_OBJECT

private slots:
    void isPlacedUnderTheTopEdge()
    {
        QWidget parent;
        parent.resize(900, 500);
        auto *toast = ZkToast::creatToast("Saved", &parent, QPixmap(24, 24), 30);
        parent.show();
        QVERIFY(!toast->isVisible());
        QCOMPARE(toast->y(), 30);
        QVERIFY(qAbs(toast->geometry().center().x() - parent.rect().center().x()) <= 1);
        toast->move(5, 6);
        toast->showToast();
        QVERIFY(toast->isVisible());
        QCOMPARE(toast->pos(), QPoint(5, 6));
        QCOMPARE(parent.childAt(toast->geometry().center()), nullptr); // the mouse goes through it

        const QImage image = parent.grab(toast->geometry()).toImage();
        QCOMPARE(image.pixelColor(image.width() / 2, 3), QColor(0x34, 0x37, 0x3d));
        const QColor around = parent.palette().color(QPalette::Window);
        QCOMPARE(image.pixelColor(0, 0), around); // a round corner
    }

    void breaksLongTexts()
    {
        const QString text = QStringLiteral("mmm ").repeated(100);
        QWidget parent;
        for (int width : {1600, 300}) {
            parent.resize(width, 2000);
            const auto *line = ZkToast::creatToast("m", &parent, QPixmap(), 0);
            const auto *paragraph = ZkToast::creatToast(text, &parent, QPixmap(), 0);
            QVERIFY(paragraph->height() > 3 * line->height());
            QVERIFY(paragraph->width() < qMin(width, 600));
            QVERIFY(parent.rect().contains(paragraph->geometry()));
        }
    }

    void isShownForThreeSeconds()
    {
        QWidget window;
        QLineEdit editor(&window);
        window.show();
        editor.setFocus();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));

        const QPointer<ZkToast> inside = ZkToast::creatToast("Ended", &window, QPixmap(), 20);
        const QPointer<ZkToast> onScreen = ZkToast::creatToast("Ended", nullptr, QPixmap(), 20);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QCOMPARE(onScreen->y(), screen.y() + 20);
        QVERIFY(qAbs(onScreen->geometry().center().x() - screen.center().x()) <= 1);
        if (QGuiApplication::platformName() == QLatin1String("offscreen"))
            QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
        QElapsedTimer elapsed;
        elapsed.start();
        inside->showToast();
        onScreen->showToast();
        QTest::qWait(2700);
        QVERIFY(inside && inside->isVisible() && onScreen && onScreen->isVisible());
        QVERIFY(editor.hasFocus());
        QCOMPARE(QApplication::activeWindow(), &window);
        QTRY_VERIFY_WITH_TIMEOUT(!inside && !onScreen, 3000);
        QVERIFY(elapsed.elapsed() >= 2950);
    }
};

ZK_TEST_MAIN(ZkToastTest)
#include "ZkToastTest.moc"
