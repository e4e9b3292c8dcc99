#include "ZkTestInput.h"
#include "ZkTestMain.h"

#include "ZkWidgets.h"

#include <QApplication>
#include <QLineEdit>
#include <QShortcut>

class ZkTimeEditWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_window = std::make_unique<QWidget>();
        m_time =
            ZkTimeEditWidget::CreateTimeEditWidget(m_window.get(), ZkTimeEditWidget::PlayheadTime);
        m_time->setFixedSize(88, 24);
        m_time->setFrameRate(29.97F);
        m_time->setMaximum(100000);
        m_edit = m_time->findChild<QLineEdit *>();
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup() { m_window.reset(); }

    void showsFrames()
    {
        QSignalSpy changed(m_time, &ZkTimeEditWidget::sigValueChanged);
        m_time->setValue(3600 * 2 + 61 * 30 + 7);
        QCOMPARE(m_edit->text(), QString("00:05:01:07"));
        m_time->setFrameRate(25);
        QCOMPARE(m_edit->text(), QString("00:06:01:12"));
        m_time->setMaximum(10);
        QCOMPARE(m_time->value(), 10);
        m_time->setValue(-5);
        QCOMPARE(m_time->value(), 0);
        QVERIFY(changed.isEmpty());
        // As wide as bars make it, nothing is cut off.
        QVERIFY(m_edit->fontMetrics().horizontalAdvance("00:00:00:00") <= m_edit->width() - 6);
    }

    void takesOverWhatIsTyped_data()
    {
        QTest::addColumn<int>("frame");
        QTest::newRow("00:00:02:05") << 65;
        QTest::newRow("2:05") << 65;
        QTest::newRow("2;5") << 65;
        QTest::newRow("1210") << 370;
        QTest::newRow("1:00:00") << 1800;
        QTest::newRow(" 75 ") << 75; // more frames than the second has
        QTest::newRow("99:00:00:00") << 100000;
        QTest::newRow("9999999999999999") << 100000;
        for (const char *text : {"", "abc", "1:2:3:4:5", "1::2", "-5", "99999999999999999999"})
            QTest::newRow(text) << 42;
    }

    void takesOverWhatIsTyped()
    {
        QFETCH(int, frame);
        m_time->setValue(42);
        QSignalSpy changed(m_time, &ZkTimeEditWidget::sigValueChanged);
        QTest::mouseClick(m_edit, Qt::LeftButton);
        m_edit->selectAll();
        QTest::keyClick(m_edit, Qt::Key_Delete);
        const QString text = QString::fromLatin1(QTest::currentDataTag());
        QTest::keyClicks(m_edit, text);
        if (!text.isEmpty())
            m_time->setValue(50); // playback goes on
        QCOMPARE(m_edit->text(), text);
        m_time->setValue(42);
        QTest::keyClick(m_edit, Qt::Key_Return);
        QCOMPARE(m_time->value(), frame);
        QCOMPARE(changed.size(), frame == 42 ? 0 : 1);
        QCOMPARE(m_edit->text().size(), 11);
        QVERIFY(!m_edit->hasFocus());
    }

    void stepsAndLeaves()
    {
        QWidget other(m_window.get());
        m_time->setValue(10);
        QSignalSpy changed(m_time, &ZkTimeEditWidget::sigValueChanged);
        m_time->setFocus();
        QVERIFY(m_edit->hasFocus());
        QTest::keyClick(m_edit, Qt::Key_Up);
        QTest::keyClick(m_edit, Qt::Key_Down);
        QTest::keyClick(m_edit, Qt::Key_Down);
        for (int turn = 0; turn < 2; ++turn) // half a step each
            zk::test::turnWheel(m_edit, m_edit->rect().center(), 60);
        QCOMPARE(changed, (QList<QVariantList> {{11}, {10}, {9}, {10}}));
        QTest::keyClick(m_edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(m_edit, "15");
        m_edit->clearFocus();
        QCOMPARE(m_time->value(), 15);
        m_time->setFocus();
        QTest::keyClicks(m_edit, "3");
        QTest::keyClick(m_edit, Qt::Key_Escape);
        QCOMPARE(m_time->value(), 15);
        QCOMPARE(m_edit->text(), QString("00:00:00:15"));
    }

    void keepsItsKeysFromShortcuts()
    {
        QShortcut left(QKeySequence(Qt::Key_Left), m_window.get());
        QShortcut three(QKeySequence(Qt::Key_3), m_window.get());
        QSignalSpy activated(&left, &QShortcut::activated);
        QSignalSpy typed(&three, &QShortcut::activated);
        m_time->setFocus();
        QTest::keyClick(m_edit, Qt::Key_Left);
        QTest::keyClick(m_edit, Qt::Key_3);
        QVERIFY(activated.isEmpty() && typed.isEmpty());
        QTest::keyClick(m_edit, Qt::Key_Return);
        QTest::keyClick(m_window.get(), Qt::Key_Left);
        QCOMPARE(activated.size(), 1);
    }

private:
    std::unique_ptr<QWidget> m_window;
    ZkTimeEditWidget *m_time = nullptr;
    QLineEdit *m_edit = nullptr;
};

ZK_TEST_MAIN(ZkTimeEditWidgetTest)
#include "ZkTimeEditWidgetTest.moc"
