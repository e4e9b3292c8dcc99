#include "ZkTestInput.h"
#include "ZkTestMain.h"

#include "widgets/ZkSpinBoxSlider.h"

#include <QApplication>
#include <QDoubleSpinBox>

namespace {

class Field : public ZkSpinBoxSlider
{
public:
    Field()
    {
        resize(300, 32);
        setRange(1, 100);
        setDefaultValue(20);
        setValue(20);
        connect(this, &ZkSpinBoxSlider::sigValueChangedBegin, this, [this] { journal += "("; });
        connect(this, &ZkSpinBoxSlider::sigValueChangedEnd, this, [this] { journal += ")"; });
        connect(this, &ZkSpinBoxSlider::sigValueChanged, this, [this](double value) {
            journal += QString::number(value) + " ";
        });
        show();
    }

    QString taken() { return std::exchange(journal, {}); }

private:
    QString journal;
};

} // namespace

class ZkSpinBoxSliderTest : public QObject
{
    Q_OBJECT

private slots:
    // What the offscreen platform says about windows that have a fixed size.
    void init()
    {
        m_notice = std::make_unique<zk::test::ExpectedMessage>("^This plugin does not support");
    }
    void cleanup() { m_notice.reset(); }

    void reportsADragAsOne()
    {
        Field field;
        QSlider *slider = field.slider();
        const QPoint middle = slider->rect().center();
        QTest::mousePress(slider, Qt::LeftButton, {}, middle);
        zk::test::drag(slider, middle + QPoint(20, 0));
        zk::test::drag(slider, {slider->width() + 50, middle.y()});
        QTest::mouseRelease(slider, Qt::LeftButton);
        const QString journal = field.taken();
        QVERIFY2(QRegularExpression("^\\((\\d+ ){2}100 \\)$").match(journal).hasMatch(),
                 qPrintable(journal));
        QCOMPARE(field.spinBox()->value(), 100.0);

        QTest::mousePress(slider, Qt::LeftButton, {}, middle);
        field.hide();
        QVERIFY(field.taken().endsWith(")")); // its release will not come
    }

    void reportsKeysWheelAndTyping()
    {
        Field field;
        QTest::keyClick(field.slider(), Qt::Key_Right);
        QCOMPARE(field.taken(), QStringLiteral("(21 )"));
        zk::test::turnWheel(field.spinBox(), {5, 5}, -120);
        QCOMPARE(field.taken(), QStringLiteral("(20 )"));
        QTest::keyClick(field.spinBox(), Qt::Key_Up);
        QCOMPARE(field.taken(), QStringLiteral("(21 )"));
        field.spinBox()->selectAll();
        QTest::keyClicks(field.spinBox(), "55");
        QVERIFY(field.taken().isEmpty());
        QTest::keyClick(field.spinBox(), Qt::Key_Return);
        QCOMPARE(field.taken(), QStringLiteral("(55 )"));
        QCOMPARE(field.slider()->value(), 55);
        field.restoreDefaultValue();
        field.restoreDefaultValue();
        QCOMPARE(field.taken(), QStringLiteral("(20 )"));
    }

    void keepsRangeAndDecimals()
    {
        Field field;
        QVERIFY(field.isDefaultValue());
        field.setValue(30.4);
        field.setValue(29.6);
        field.setValue(31, false);
        QCOMPARE(field.taken(), QStringLiteral("30 "));
        QVERIFY(!field.isDefaultValue());
        QVERIFY(!field.setRange(9, 8));
        QVERIFY(field.setRange(1, 10));
        QCOMPARE(field.taken(), QStringLiteral("10 "));
        QVERIFY(field.isDefaultValue()); // as near as the range lets it
        field.setDecimals(2);
        field.setValue(2.346);
        QCOMPARE(field.value(), 2.35);
        QCOMPARE(field.slider()->value(), 235);
    }

private:
    std::unique_ptr<zk::test::ExpectedMessage> m_notice;
};

ZK_TEST_MAIN(ZkSpinBoxSliderTest)
#include "ZkSpinBoxSliderTest.moc"
