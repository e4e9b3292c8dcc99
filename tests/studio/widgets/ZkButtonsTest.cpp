#include "ZkTestInput.h"
#include "ZkTestMain.h"

#include "ZkWidgets.h"

#include <QApplication>

#include <cmath>

namespace {

QColor pixel(QWidget *widget, const QPoint &at)
{
    return widget->grab().toImage().pixelColor(at);
}

} // namespace

class ZkButtonsTest : public QObject
{
    Q_OBJECT

private slots:
    // What a look lacks comes from a plainer one.
    void buttonPaintsItsState()
    {
        const std::unique_ptr<ZkButton> button(
            ZkButton::CreateButton(nullptr, "Smart Brush", ":/ZkSkin/icons/icon24_keep.png", 2));
        button->setCheckable(true);
        button->setFixedSize(123, 24);
        button->setColor(ZkButton::BackgroundRole, ZkButton::HoverState, ZKSKIN::ToolHover);
        button->setColor(ZkButton::BackgroundRole, ZkButton::PressedState, ZKSKIN::ToolOn);
        button->setColor(ZkButton::BackgroundRole, ZkButton::OnHoverState, ZKSKIN::Accent);
        const auto background = [&] { return pixel(button.get(), {60, 1}); };
        const auto skin = [](int type) { return ZkSkinManager::instance()->color(type); };

        const QColor plain = background();
        QTest::mousePress(button.get(), Qt::LeftButton);
        QCOMPARE(button->state(), int(ZkButton::PressedState));
        QCOMPARE(background(), skin(ZKSKIN::ToolOn));
        QTest::mouseRelease(button.get(), Qt::LeftButton);
        QCOMPARE(button->state(), int(ZkButton::OnState));
        QCOMPARE(background(), skin(ZKSKIN::ToolOn));
        button->setAttribute(Qt::WA_UnderMouse);
        QCOMPARE(background(), skin(ZKSKIN::Accent));
        button->setChecked(false);
        QCOMPARE(background(), skin(ZKSKIN::ToolHover));
        button->setEnabled(false);
        QCOMPARE(button->state(), int(ZkButton::DisabledState));
        QCOMPARE(background(), plain);
    }

    void buttonTakesItsContentsRoom()
    {
        const std::unique_ptr<ZkButton> button(ZkButton::CreateButton(nullptr, "Eraser", {}, 2));
        button->setContentsMargins(10, 2, 10, 2);
        button->setSpace(4.0);
        const double advance = QFontMetricsF(button->font()).horizontalAdvance("Eraser");
        const int text = int(std::ceil(advance));
        QCOMPARE(button->sizeHint().width(), 10 + 24 + 4 + text + 10);
        QCOMPARE(button->minimumSizeHint(), button->sizeHint());
        button->setElideMode(Qt::ElideRight);
        QCOMPARE(button->minimumSizeHint().width(), 10 + 24 + 10);
    }

    void enterAndSpaceClick()
    {
        ZkPushButton push;
        ZAIGCCreateButton create;
        const std::unique_ptr<ZkButton> tool(ZkButton::CreateButton(nullptr, "Eraser", {}, 0));
        for (QAbstractButton *button :
             std::initializer_list<QAbstractButton *> {&push, &create, tool.get()}) {
            QSignalSpy clicked(button, &QAbstractButton::clicked);
            for (int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
                QTest::keyClick(button, Qt::Key(key));
            QCOMPARE(clicked.size(), 3);
        }
    }

    void createButtonHovers()
    {
        ZAIGCCreateButton button;
        button.resize(button.sizeHint());
        QVERIFY(button.width() >= 120 && button.height() == 32);
        const QImage idle = button.grab().toImage();
        QEvent enter(QEvent::Enter);
        QCoreApplication::sendEvent(&button, &enter);
        QVERIFY(button.isHovered());
        QVERIFY(button.grab().toImage() != idle);
        button.setEnabled(false);
        QVERIFY(!button.isHovered());
    }

    void labelsHaveKinds()
    {
        ZkLabel label("Selected");
        label.setLabelKind(ZKWIDGET::TitleLabel);
        const QSize title = label.sizeHint();
        label.setLabelKind(ZKWIDGET::SecondaryLabel);
        QVERIFY(label.sizeHint().height() < title.height());
        QCOMPARE(label.palette().color(QPalette::WindowText),
                 ZkSkinManager::instance()->color(ZKSKIN::DimText));
    }
};

ZK_TEST_MAIN(ZkButtonsTest)
#include "ZkButtonsTest.moc"
