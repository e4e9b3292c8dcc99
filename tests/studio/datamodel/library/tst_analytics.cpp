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

    QTemporaryDir m_directory;

    QString path() const { return m_directory.filePath("events.jsonl"); }
    QList<QByteArray> lines() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
    }

private Q_SLOTS:
    void cleanup() { Analytics::switchOff(); }

    void writesWhatIsAllowed()
    {
        ZkTrackEvent event("cutout \"x\"");
        event.setProperty("z", 1);
        event.setProperty("a", qint64(12));
        event.setProperty("z", QStringLiteral("line\nbreak, ä")); // keeps its place
        event.sendEvent();
        QVERIFY(!QFile::exists(path()));

        QVERIFY(Analytics::switchOn(path()));
        event.sendEvent();
        Analytics::switchOff();
        event.sendEvent();
        QVERIFY(Analytics::switchOn(path())); // appends
        ZkTrackEvent("bare").sendEvent();

        QCOMPARE(lines().size(), 3);
        const QByteArray first = lines().first();
        const QByteArray tail = "\"event\":\"cutout \\\"x\\\"\",\"properties\":"
                                "{\"z\":\"line\\nbreak, \xc3\xa4\",\"a\":12}}";
        QVERIFY2(first.endsWith(tail), first.constData());
        const QString time = QJsonDocument::fromJson(first).object().value("time").toString();
        const QDateTime written = QDateTime::fromString(time, Qt::ISODateWithMs);
        QVERIFY(time.endsWith(QLatin1Char('Z')));
        QVERIFY(qAbs(written.msecsTo(QDateTime::currentDateTimeUtc())) < 60000);
        QVERIFY(lines().at(1).endsWith("\"event\":\"bare\",\"properties\":{}}"));
    }

    void linesOfThreadsDoNotMix()
    {
        QVERIFY(QFile::remove(path()));
        QVERIFY(Analytics::switchOn(path()));
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([thread] {
                ZkTrackEvent event(QString::number(thread));
                event.setProperty("n", QString(200, QLatin1Char('x')));
                for (int i = 0; i < 200; ++i)
                    event.sendEvent();
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(lines().size(), 801);
        for (const QByteArray &line : lines().mid(0, 800))
            QVERIFY(QJsonDocument::fromJson(line).isObject());
    }

    void unwritableFileIsAnError()
    {
        QVERIFY(Analytics::switchOn(path()));
        QString error;
        QVERIFY(!Analytics::switchOn(m_directory.filePath("no/such/folder"), &error));
        QVERIFY(!error.isEmpty() && !Analytics::isOn());
        ZkTrackEvent("lost").sendEvent();
    }
};

ZK_TEST_CORE_MAIN(TestAnalytics)
#include "tst_analytics.moc"
