#include "ZkTestInput.h"
#include "ZkTestMain.h"

#include "ZkWidgets.h"

#include <QApplication>
#include <QTimer>

namespace {

// What is done to the message as soon as it is there.
int answer(int buttons, const std::function<void(QWidget *)> &act)
{
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, qApp, [&] {
        if (QWidget *dialog = QApplication::activeModalWidget())
            act(dialog);
    });
    poll.start(10);
    return ZOldMessageDialog::Infomation("Network error.", nullptr, buttons, {}, "Why", true);
}

class Counts : public IZkFunctionTipCounts
{
public:
    int shownTimes(int) const override { return times; }
    void setShownTimes(int tip, int shown) override { times = tip == 127 ? shown : -1; }

    int times = 1;
};

} // namespace

class ZkDialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_notice = std::make_unique<zk::test::ExpectedMessage>("^This plugin does not support");
    }
    void cleanup() { m_notice.reset(); }

    void closesByEscAndButton()
    {
        ZkFramelessDialog dialog;
        dialog.setTitleBarHeight(28);
        dialog.setContentWidget(new QWidget);
        QSignalSpy rejected(&dialog, &QDialog::rejected);
        QSignalSpy buttons(&dialog, &ZkFramelessDialog::sigTitleButtonClicked);
        dialog.show();
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QCOMPARE(rejected.size(), 1);
        QVERIFY(buttons.isEmpty());
        dialog.show();
        QTest::mouseClick(dialog.titleButton(ZkFramelessDialog::CloseButton), Qt::LeftButton);
        QCOMPARE(buttons.first().first().toInt(), 32);
        QCOMPARE(rejected.size(), 2);
        connect(&dialog, &ZkFramelessDialog::sigTitleButtonClicked, &dialog, &QDialog::accept);
        dialog.show();
        QTest::mouseClick(dialog.titleButton(ZkFramelessDialog::CloseButton), Qt::LeftButton);
        QCOMPARE(dialog.result(), int(QDialog::Accepted)); // whoever listened had its way
        QCOMPARE(rejected.size(), 2);
        dialog.setTitleButtons(0);
        QVERIFY(!dialog.titleButton(ZkFramelessDialog::CloseButton));
    }

    void isDraggedByItsTitle()
    {
        ZkFramelessDialog dialog;
        dialog.setFixedSize(480, 188);
        dialog.show();
        const QPoint before = dialog.pos();
        QWidget *title = dialog.childAt(100, 14);
        QTest::mousePress(title, Qt::LeftButton, {}, {100, 10});
        zk::test::drag(title, {130, 25});
        QTest::mouseRelease(title, Qt::LeftButton, {}, {100, 10});
        zk::test::drag(title, {300, 100});
        QCOMPARE(dialog.pos() - before, QPoint(30, 15));
    }

    void messageAnswers_data()
    {
        QTest::addColumn<int>("buttons");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("expected");
        QTest::newRow("nothing asked for") << 0 << int(Qt::Key_Return) << 1;
        QTest::newRow("Enter agrees") << (4 | 8) << int(Qt::Key_Return) << 4;
        QTest::newRow("Esc cancels") << (1 | 2) << int(Qt::Key_Escape) << 2;
        QTest::newRow("Esc says no") << (4 | 8) << int(Qt::Key_Escape) << 8;
    }
    void messageAnswers()
    {
        QFETCH(int, buttons);
        QFETCH(int, key);
        QFETCH(int, expected);
        const int given = answer(buttons, [key](QWidget *dialog) {
            QWidget *focus = dialog->focusWidget();
            QTest::keyClick(focus ? focus : dialog, Qt::Key(key));
        });
        QCOMPARE(given, expected);
    }

    void tipIsShownThreeTimes()
    {
        Counts counts;
        ZkFunctionTips::setCounts(&counts);
        QWidget window;
        window.resize(400, 300);
        QWidget panel(&window);
        window.show();
        const QPoint anchor = window.mapToGlobal({390, 40});
        QVERIFY(!ZkFunctionTips::showTip(126, anchor, &panel));
        QVERIFY(ZkFunctionTips::showTip(127, anchor, &panel));
        QVERIFY(!ZkFunctionTips::showTip(127, anchor, &panel)); // it is there
        QWidget *tip = ZkFunctionTips::visibleTip(127);
        QVERIFY(window.rect().contains(tip->geometry()));
        QCOMPARE(tip->y(), 40);
        QTest::mouseClick(&panel, Qt::LeftButton); // whoever presses anything goes on
        QVERIFY(!ZkFunctionTips::visibleTip(127));
        QVERIFY(ZkFunctionTips::showTip(127, anchor, &panel));
        ZkFunctionTips::hideVisibleTip(127);
        QVERIFY(!ZkFunctionTips::visibleTip(127));
        QCOMPARE(counts.times, 3);
        QVERIFY(!ZkFunctionTips::canShowTip(127));
        ZkFunctionTips::setCounts(nullptr);
        QVERIFY(ZkFunctionTips::canShowTip(127));
    }

private:
    std::unique_ptr<zk::test::ExpectedMessage> m_notice;
};

ZK_TEST_MAIN(ZkDialogsTest)
#include "ZkDialogsTest.moc"
