#include "ZkTestMain.h"

#include "ZkCore.h"

#include <QDir>

namespace {

class View : public ZkUIView
{
public:
    using ZkUIView::ZkUIView;
    QWidget *widget() override { return nullptr; }
};

class Presenter : public ZkPresenter
{
public:
    bool dispatchMessage(ZkMessage *message) override
    {
        received.append(QStringLiteral("%1:%2").arg(message->id()).arg(message->data().toString()));
        return message->id() == ZKMESSAGE::CommitFocusedEditor;
    }

    QStringList received;
};

QByteArray firstLine(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readLine().trimmed() : QByteArray();
}

bool kernelSaysConnected()
{
    const QDir interfaces(QStringLiteral("/sys/class/net"));
    const auto names = interfaces.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return std::any_of(names.begin(), names.end(), [&](const QString &name) {
        const int flags = firstLine(interfaces.filePath(name + "/flags")).toInt(nullptr, 16);
        const QByteArray state = firstLine(interfaces.filePath(name + "/operstate"));
        const bool isUp = flags & 0x1;
        const bool isLoopback = flags & 0x8;
        return isUp && !isLoopback && (state == "up" || state == "unknown");
    });
}

} // namespace

class ZkCoreTest : public QObject
{
    Q_OBJECT

private slots:
    void messageReachesPresenterOfOutermostView();
    void networkAgreesWithTheKernel();
};

void ZkCoreTest::messageReachesPresenterOfOutermostView()
{
    View outer;
    View middle(&outer);
    View inner(&middle);
    Presenter scene;
    Presenter own;
    inner.setViewPresenter(&own);
    ZkMessage message(ZKMESSAGE::CommitFocusedEditor, QStringLiteral("payload"));
    ZkMessage unknown(1);

    QVERIFY(!inner.sendSceneMessage(&message)); // the outermost view has no presenter yet
    outer.setViewPresenter(&scene);
    QVERIFY(!inner.sendSceneMessage(nullptr));
    QVERIFY(inner.sendSceneMessage(&message));
    QVERIFY(!inner.sendSceneMessage(&unknown));
    QVERIFY(own.received.isEmpty());
    QCOMPARE(scene.received.join(QLatin1Char(' ')), QStringLiteral("4102:payload 1:"));
}

void ZkCoreTest::networkAgreesWithTheKernel()
{
    if (!QFile::exists(QStringLiteral("/sys/class/net/lo")))
        QSKIP("only Linux lists its network interfaces as files");
    QCOMPARE(ZkNetwork::IsNetworkConnect(), kernelSaysConnected());
}

ZK_TEST_CORE_MAIN(ZkCoreTest)
#include "ZkCoreTest.moc"
