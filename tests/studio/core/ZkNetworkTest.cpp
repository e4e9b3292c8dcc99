#include "ZkTestMain.h"

#include "ZkCore.h"

#include <QDir>
#include <QFile>

namespace {

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

class ZkNetworkTest : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithTheKernel();
};

void ZkNetworkTest::agreesWithTheKernel()
{
    if (!QFile::exists(QStringLiteral("/sys/class/net/lo")))
        QSKIP("only Linux lists its network interfaces as files");
    QCOMPARE(ZkNetwork::IsNetworkConnect(), kernelSaysConnected());
}

ZK_TEST_CORE_MAIN(ZkNetworkTest)
#include "ZkNetworkTest.moc"
