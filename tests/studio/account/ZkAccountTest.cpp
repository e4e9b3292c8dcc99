#include "ZkTestMain.h"

#include "ZkAccount.h"

namespace {

class Memory : public IZkAccountMemory
{
public:
    QString rememberedName() const override { return name; }
    void rememberName(const QString &remembered) override { name = remembered; }

    QString name;
};

} // namespace

class ZkAccountTest : public QObject
{
    Q_OBJECT

private slots:
    void logsInAndOut()
    {
        ZkAccount *account = ZkAccount::instance();
        Memory memory;
        memory.name = QStringLiteral("Ada");
        QSignalSpy changed(account, &ZkAccount::sigAccountChanged);
        QVERIFY(!account->isLoggedIn());
        account->setMemory(&memory);
        QCOMPARE(account->userName(), QStringLiteral("Ada"));
        QCOMPARE(changed.size(), 1);

        QVERIFY(!account->logIn(QStringLiteral(" \t")));
        QVERIFY(account->logIn(QStringLiteral("Ada ")));
        QCOMPARE(changed.size(), 1); // she was logged in already
        QVERIFY(account->logIn(QStringLiteral("Bo")));
        QCOMPARE(memory.name, QStringLiteral("Bo"));
        QCOMPARE(changed.size(), 2);

        account->logOut();
        QVERIFY(!account->isLoggedIn());
        QVERIFY(memory.name.isEmpty());
        account->setMemory(nullptr);
        QVERIFY(account->logIn(QStringLiteral("Cy")));
        QVERIFY(memory.name.isEmpty());
        QCOMPARE(changed.size(), 4);
    }
};

ZK_TEST_CORE_MAIN(ZkAccountTest)
#include "ZkAccountTest.moc"
