#include "ZkAnalytics.h"

#include "ZkTestMain.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <thread>
#include <vector>

using zk::datamodel::Analytics;

class TestAnalytics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { Analytics::switchOff(); }
    void propertiesKeepTheirPlaces();
    void writesWhatIsAllowed();
    void linesOfThreadsDoNotMix();
    void unwritableFileIsAnError();

private:
    QTemporaryDir m_directory;

    QString path() const { return m_directory.filePath(QStringLiteral("events.jsonl")); }
    QList<QByteArray> lines() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
    }
};

void TestAnalytics::propertiesKeepTheirPlaces()
{
    ZkTrackEvent event(QStringLiteral("name"));
    event.setProperty(QStringLiteral("z"), 1);
    event.setProperty(QStringLiteral("a"), 2);
    event.setProperty(QStringLiteral("z"), 3);
    const QVector<QPair<QString, QVariant>> expected {{QStringLiteral("z"), 3},
                                                      {QStringLiteral("a"), 2}};
    QCOMPARE(event.properties(), expected);
}

void TestAnalytics::writesWhatIsAllowed()
{
    QVERIFY(!Analytics::isOn());
    ZkTrackEvent event(QStringLiteral("cutout \"x\""));
    event.setProperty(QStringLiteral("z"), QStringLiteral("line\nbreak, ä"));
    event.setProperty(QStringLiteral("a"), qint64(12));
    event.setProperty(QStringLiteral("b"), true);
    event.sendEvent();
    QVERIFY(!QFile::exists(path()));

    QVERIFY(Analytics::switchOn(path()));
    QVERIFY(Analytics::isOn());
    event.sendEvent();
    Analytics::switchOff();
    event.sendEvent();
    QVERIFY(Analytics::switchOn(path())); // appends
    ZkTrackEvent(QStringLiteral("bare")).sendEvent();

    QCOMPARE(lines().size(), 3);
    const QByteArray first = lines().first();
    const QByteArray tail = "\"event\":\"cutout \\\"x\\\"\",\"properties\":"
                            "{\"z\":\"line\\nbreak, \xc3\xa4\",\"a\":12,\"b\":true}}";
    QVERIFY2(first.endsWith(tail), first.constData());
    const QString time =
        QJsonDocument::fromJson(first).object().value(QStringLiteral("time")).toString();
    const QDateTime written = QDateTime::fromString(time, Qt::ISODateWithMs);
    QVERIFY(time.endsWith(QLatin1Char('Z')));
    QVERIFY(qAbs(written.msecsTo(QDateTime::currentDateTimeUtc())) < 60000);
    QVERIFY(lines().at(1).endsWith("\"event\":\"bare\",\"properties\":{}}"));
    QVERIFY(lines().last().isEmpty());
}

void TestAnalytics::linesOfThreadsDoNotMix()
{
    QVERIFY(QFile::remove(path()));
    QVERIFY(Analytics::switchOn(path()));
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([thread] {
            for (int i = 0; i < 200; ++i) {
                ZkTrackEvent event(QString::number(thread));
                event.setProperty(QStringLiteral("n"), QString(200, QLatin1Char('x')));
                event.sendEvent();
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(lines().size(), 801);
    const QList<QByteArray> all = lines().mid(0, 800);
    for (const QByteArray &line : all)
        QVERIFY(QJsonDocument::fromJson(line).isObject());
}

void TestAnalytics::unwritableFileIsAnError()
{
    QVERIFY(Analytics::switchOn(path()));
    QString error;
    QVERIFY(!Analytics::switchOn(m_directory.filePath(QStringLiteral("no/such/folder")), &error));
    QVERIFY(!error.isEmpty());
    QVERIFY(!Analytics::isOn());
    ZkTrackEvent(QStringLiteral("lost")).sendEvent();
}

ZK_TEST_CORE_MAIN(TestAnalytics)
#include "tst_analytics.moc"
