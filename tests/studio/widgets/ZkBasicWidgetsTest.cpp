#include "ZkTestInput.h"
#include "ZkTestMain.h"

#include "ZkWidgets.h"

#include <QApplication>
#include <QLineEdit>
#include <QScreen>
#include <QToolTip>

namespace {

void show(QWidget &window)
{
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

} // namespace

class ZkBasicWidgetsTest : public QObject
{
    Q_OBJECT

private slots:
    // What the offscreen platform says about windows that are raised or have a fixed size.
    void init()
    {
        m_notice = std::make_unique<zk::test::ExpectedMessage>("^This plugin does not support");
    }
    void cleanup() { m_notice.reset(); }

    void toolButtonSpeaksAndIsClickedByEnter()
    {
        QWidget window;
        ZkToolButton button(&window);
        button.setToolTip("Cut (now) (Ctrl+X)");
        button.setProperty("WITH_SHORTCUT", true);
        QCOMPARE(button.accessibleName(), QString("Cut (now)"));
        QHelpEvent help(QEvent::ToolTip, QPoint(1, 1), window.mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(&button, &help);
        QVERIFY(QToolTip::text().contains("Ctrl+X") && !QToolTip::text().contains("(Ctrl+X)"));
        QToolTip::hideText();
        button.setAccessibleName("Given");
        button.setToolTip("Copy");
        QCOMPARE(button.accessibleName(), QString("Given"));

        show(window);
        QSignalSpy clicks(&button, &QAbstractButton::clicked);
        button.setFocus(Qt::TabFocusReason);
        QTest::keyClick(&button, Qt::Key_Return);
        QCOMPARE(clicks.size(), 1);
    }

    void toolButtonShowsItsStatesAndFocus()
    {
        QWidget window;
        ZkToolButton button(&window);
        button.setCheckable(true);
        ZkSkinManager::instance()->applyStyleSheet(
            &button, "BasicWidget/ZkSmartKeyingHeaderToolBar_PositiveMask_Btn");
        show(window);
        button.resize(button.sizeHint());
        button.clearFocus();
        QCOMPARE(button.iconName(), QString("keep"));
        QVector<QImage> looks {button.grab().toImage()};
        const auto remember = [&] {
            const QImage look = button.grab().toImage();
            const bool isNew = !looks.contains(look);
            looks.append(look);
            return isNew;
        };
        button.setChecked(true);
        QVERIFY(remember());
        button.setFocus(Qt::TabFocusReason);
        QVERIFY(remember());
        button.setEnabled(false);
        QVERIFY(remember());
        button.setChecked(false);
        QVERIFY(remember());
    }

    void colorButtonShowsItsColor()
    {
        ZkColorToolButton button(QColor("#c9727b"));
        button.resize(button.sizeHint());
        const QPoint middle = button.rect().center();
        QCOMPARE(button.grab().toImage().pixelColor(middle), QColor("#c9727b"));
        button.setColor(Qt::green);
        QCOMPARE(button.grab().toImage().pixelColor(middle), QColor(Qt::green));
    }

    void hiddenRowsCanOnlyBeSetByTheProgram()
    {
        ZkComboBox box;
        box.addItems({"Fit", "50%", "100%", "37%", "200%"});
        box.setRowHidden(3, true);
        QVERIFY(box.isRowHidden(3) && !box.isRowHidden(2) && !box.isRowHidden(9));
        box.setCurrentIndex(2);
        QTest::keyClick(&box, Qt::Key_Down);
        QCOMPARE(box.currentIndex(), 4);
        zk::test::turnWheel(&box, box.rect().center(), 120);
        QCOMPARE(box.currentIndex(), 2);
        QTest::keyClicks(&box, "37");
        QVERIFY(box.currentIndex() != 3);

        box.setCurrentIndex(3);
        QCOMPARE(box.currentText(), QString("37%"));
        zk::test::turnWheel(&box, box.rect().center(), 120);
        QTest::keyClick(&box, Qt::Key_Up);
        QCOMPARE(box.currentIndex(), 3); // it has no neighbours
        box.setRowHidden(3, false);
        QTest::keyClick(&box, Qt::Key_Up);
        QCOMPARE(box.currentIndex(), 2);
    }

    void menuReportsNumbersAndStaysOnScreen()
    {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QWidget anchor(nullptr, Qt::ToolTip);
        ZkMenu menu;
        QSignalSpy clicked(&menu, &ZkMenu::sigItemClicked);
        menu.addItem(4, QIcon(), "Grid");
        menu.addItem(2, QIcon(), "Black");
        QCOMPARE(menu.item(2)->text(), QString("Black"));
        QCOMPARE(menu.item(3), nullptr);

        anchor.setGeometry(QRect(screen.topLeft() + QPoint(50, 50), QSize(30, 20)));
        menu.popupBelow(&anchor);
        QCOMPARE(menu.pos(), screen.topLeft() + QPoint(50, 70));
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.item(2)).center());
        QCOMPARE(clicked, (QList<QVariantList> {{2}}));

        anchor.move(screen.bottomRight() - QPoint(29, 19));
        menu.popupBelow(&anchor);
        QVERIFY(screen.contains(menu.geometry()));
        QVERIFY(menu.geometry().bottom() < anchor.y());
        menu.close();
    }

    void roundedStripsLieAtTheEdges()
    {
        const QColor panel = ZkSkinManager::instance()->color(ZKSKIN::PanelBackground);
        ZkRoundRadiusWidget widget;
        widget.resize(100, 100);
        const ZkRoundAreaInfo outer =
            widget.buildRoundAreaInfo(20, ZKSKIN::PanelBackground, ZKWIDGET::RoundOuter, 0, 0, 8);
        widget.setRoundAreaInfo(
            outer,
            widget.buildRoundAreaInfo(30, ZKSKIN::PanelBackground, ZKWIDGET::RoundNone, 10, 5, 8));
        QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        const auto isPanel = [&](int x, int y) { return image.pixelColor(x, y) == panel; };
        const auto isEmpty = [&](int x, int y) { return image.pixelColor(x, y).alpha() == 0; };
        QVERIFY(isEmpty(0, 0) && isEmpty(99, 0) && isPanel(50, 0)); // round outside
        QVERIFY(isPanel(0, 19) && isPanel(99, 19) && isEmpty(50, 20)); // square inside
        QVERIFY(isEmpty(50, 99) && isPanel(50, 94) && isPanel(50, 65) && isEmpty(50, 64));
        QVERIFY(isEmpty(9, 80) && isPanel(10, 65) && isPanel(89, 94) && isEmpty(90, 80));
    }

    void colorsAreChosenByMouseKeysAndText()
    {
        ZkColorSelecter dialog;
        QSignalSpy changed(&dialog, &ZkColorSelecter::sigCurrentColorChanged);
        dialog.setCurrentColor(QColor("#c9727b"));
        dialog.setCurrentColor(QColor());
        QCOMPARE(dialog.currentColor(), QColor("#c9727b"));
        QVERIFY(changed.isEmpty());
        const QSize before = dialog.size();
        dialog.show();
        QCOMPARE(dialog.size(), before);

        QWidget *field = dialog.focusWidget();
        QVERIFY(field);
        QTest::mouseClick(field, Qt::LeftButton, {}, QPoint(field->width() - 1, 0));
        QCOMPARE(dialog.currentColor().saturation(), 255);
        QCOMPARE(dialog.currentColor().value(), 255);
        QTest::keyClick(field, Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(dialog.currentColor().value(), 230);
        QCOMPARE(changed.size(), 2);

        auto *hex = dialog.findChild<QLineEdit *>();
        hex->setFocus();
        hex->selectAll();
        QTest::keyClicks(hex, "#00ff00");
        QCOMPARE(dialog.currentColor(), QColor(Qt::green));
        hex->selectAll();
        QTest::keyClicks(hex, "12");
        QTest::keyClick(hex, Qt::Key_Tab);
        QCOMPARE(hex->text(), QString("#00ff00")); // no colour: put back
        QVERIFY(dialog.isVisible());
    }

    void leavingTheColorDialog()
    {
        const QColor before("#c9727b");
        for (const int key :
             {int(Qt::Key_Return), int(Qt::Key_Escape), 0}) { // 0: a click beside it
            ZkColorSelecter dialog;
            dialog.setCurrentColor(before);
            QTimer::singleShot(0, &dialog, [&] {
                auto *swatch = dialog.findChildren<ZkColorToolButton *>().last();
                QTest::mouseClick(swatch, Qt::LeftButton);
                QCOMPARE(dialog.currentColor(), swatch->color());
                if (key)
                    QTest::keyClick(dialog.focusWidget(), Qt::Key(key));
                else
                    QTest::mouseClick(&dialog, Qt::LeftButton, {}, QPoint(-5, 10));
            });
            dialog.exec();
            QCOMPARE(dialog.currentColor() == before, key == Qt::Key_Escape);
        }
    }

private:
    std::unique_ptr<zk::test::ExpectedMessage> m_notice;
};

ZK_TEST_MAIN(ZkBasicWidgetsTest)
#include "ZkBasicWidgetsTest.moc"
