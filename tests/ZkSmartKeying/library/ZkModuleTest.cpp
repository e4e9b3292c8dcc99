// The module as a host has it: the library, not its objects.
#include "ModuleUse.h"

#include <QDir>
#include <QTranslator>

class ZkModuleTest : public QObject
{
    Q_OBJECT

private slots:
    void offersItsClasses()
    {
        QCOMPARE(useModule(),
                 QStringList({"presenter 1, prompt 1",
                              "presets Glow Neon, icon 54",
                              "areas 1, canvas 1",
                              "ZkSmartKeyingPlayerView with 16 buttons, painted",
                              "ZkAIErasingView with 17 buttons, painted"}));
    }

    void bringsItsTranslations()
    {
        for (const QString &language : {QStringLiteral("de"), QStringLiteral("zh_CN")}) {
            QTranslator translator;
            QVERIFY(translator.load(":/ZkTranslations/ZkSmartKeying_" + language + ".qm"));
            QVERIFY(!translator.isEmpty());
        }
    }

    // Of media whose names no eight bit code page has, in folders whose names have dots.
    void readsTheFormatOfEveryPath_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("format");
        const QString letters = QString::fromUtf8("C:/Ünïcode.v2/片段 № 1");
        QTest::newRow("letters") << letters + ".MP4"
                                 << "mp4";
        QTest::newRow("no format") << letters << "";
        QTest::newRow("beyond 16 bits") << QString::fromUtf8("//host/𝄞.v2/🎬.tar.İ.GIF") << "gif";
    }
    void readsTheFormatOfEveryPath()
    {
        QFETCH(QString, path);
        QFETCH(QString, format);
        Workspace workspace;
        for (const QString &spelled : {path, QDir::toNativeSeparators(path)}) {
            workspace.controller->clip.path = spelled;
            QCOMPARE(workspace.presenter->sourceFormat(), format);
        }
    }

    // Compilers spell sources as they were given them; the log does not.
    void namesSourcesAlike()
    {
        QStringList files;
        QDateTime logged;
        const int sink = ZkBaseLog::addSink([&](const ZkLogRecord &record) {
            files += record.file;
            logged = record.time;
        });
        const QDateTime before = QDateTime::currentDateTimeUtc();
        Workspace().presenter.reset();
        ZkBaseLog::removeSink(sink);
        QVERIFY(!files.isEmpty());
        QCOMPARE(files.filter(QRegularExpression("^ZkSmartKeying/Z[A-Za-z]+$")), files);
        QVERIFY2(qAbs(before.msecsTo(logged)) < 60000, "in another time zone");
    }
};

ZK_TEST_MAIN(ZkModuleTest)
#include "ZkModuleTest.moc"
