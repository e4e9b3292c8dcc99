// A host that loads the module when it is needed and lets go of it afterwards.
#include "ZkTestMain.h"

#include <QFile>
#include <QLibrary>

class ZkModuleUnloadTest : public QObject
{
    Q_OBJECT

private slots:
    // The host has its own libraries before the module and keeps them.
    void initTestCase()
    {
        for (const QString &path : QStringLiteral(ZK_HOST_LIBRARIES).split(QLatin1Char(',')))
            QVERIFY2(QLibrary(path).load(), qPrintable(path));
    }

    void loadsAndUnloadsTwice()
    {
        QVERIFY(!isLoaded());
        const QByteArray first = useAndUnload();
        QVERIFY2(first.count('\n') == 4 && first.count("painted") == 2, first);
        QVERIFY(!isLoaded());
        // Neither the module's type nor a function of it that makes a value of the host's type is left.
        QCOMPARE(QMetaType::type("PromptType"), 0);
        QCOMPARE(QMetaType::type("ZkSmartKeyingPresenter::PromptType"), 0);
        const int mediaType = QMetaType::type("IZkAbstractMedia*");
        QVERIFY(mediaType != 0);
        QMetaType::destroy(mediaType, QMetaType::create(mediaType));
        QCOMPARE(useAndUnload(), first);
        QVERIFY(!isLoaded());
    }

private:
    // The module's resources come and go with it.
    static bool isLoaded()
    {
        return QFile::exists(QStringLiteral(":/Resource/DefaultMask/icon54_mask-none.png"));
    }
    static QByteArray useAndUnload()
    {
        QLibrary library(QStringLiteral(ZK_MODULE_USER));
        const auto use = reinterpret_cast<void (*)(QByteArray *)>(library.resolve("zkUseModule"));
        if (!use)
            return library.errorString().toUtf8();
        QByteArray seen;
        use(&seen);
        if (!isLoaded() || QMetaType::type("PromptType") == 0)
            return "not loaded";
        return library.unload() ? seen : library.errorString().toUtf8();
    }
};

ZK_TEST_MAIN(ZkModuleUnloadTest)
#include "ZkModuleUnloadTest.moc"
