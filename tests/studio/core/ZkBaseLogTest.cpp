#include "ZkTestMain.h"

#include "ZkCore.h"

namespace {

QStringList qtRecords;

void keepQtRecord(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QString format = QStringLiteral("%1 %2 %3:%4 %5 ");
    qtRecords.append(format.arg(type)
                         .arg(QLatin1String(context.category), QLatin1String(context.file))
                         .arg(context.line)
                         .arg(QLatin1String(context.function))
                     + text);
}

ZkLogRecord message(const QString &text, int level = ZKLOG::Info)
{
    ZkLogRecord record;
    record.level = level;
    record.message = text;
    return record;
}

void write(const QString &text)
{
    ZkBaseLog::defaultLogger()->write(message(text));
}

} // namespace

class ZkBaseLogTest : public QObject
{
    Q_OBJECT

private slots:
    void writesToQt()
    {
        const QVector<QPair<int, QtMsgType>> types {{ZKLOG::Debug, QtInfoMsg},
                                                    {ZKLOG::Info, QtInfoMsg},
                                                    {ZKLOG::Warning, QtWarningMsg},
                                                    {ZKLOG::Error, QtCriticalMsg}};
        QStringList expected;
        const QtMessageHandler previous = qInstallMessageHandler(keepQtRecord);
        for (const auto &[level, type] : types) {
            ZkLogRecord record = message(QStringLiteral("100 % done: %s \u00e9"), level);
            record.file = "ZkCore/Test";
            record.line = 12;
            record.function = "Test::run";
            ZkBaseLog::defaultLogger()->write(record);
            ZkBaseLog::logger("engine")->write(record);
            for (const char *category : {"zk", "zk.engine"})
                expected.append(QStringLiteral("%1 %2 ZkCore/Test:12 Test::run ")
                                    .arg(type)
                                    .arg(QLatin1String(category))
                                + record.message);
        }
        qInstallMessageHandler(previous);
        QCOMPARE(qtRecords, expected);
    }

    void sinkSeesCompleteRecordsOfAllLoggers()
    {
        QVector<ZkLogRecord> seen;
        const int sink = ZkBaseLog::addSink([&](const ZkLogRecord &entry) { seen.append(entry); });
        ZkLogRecord timed = message("second", ZKLOG::Detail);
        timed.time = QDateTime(QDate(2024, 1, 2), QTime(3, 4), Qt::UTC);
        timed.threadId = 5;
        const QDateTime before = QDateTime::currentDateTime();
        write("first");
        ZkBaseLog::logger("engine")->write(timed);
        ZkBaseLog::removeSink(sink);
        ZkBaseLog::removeSink(sink); // no such sink any more
        write("third");

        QCOMPARE(seen.size(), 2);
        QVERIFY(before <= seen.at(0).time && seen.at(0).time <= QDateTime::currentDateTime());
        QVERIFY(seen.at(0).threadId != 0);
        QCOMPARE(seen.at(1).logger, QStringLiteral("engine"));
        QCOMPARE(seen.at(1).time, timed.time);
        QCOMPARE(seen.at(1).threadId, timed.threadId);
    }

    void sinkMayLogAndRemoveItself()
    {
        QStringList once;
        QStringList always;
        int own = 0;
        own = ZkBaseLog::addSink([&](const ZkLogRecord &record) {
            once.append(record.message);
            ZkBaseLog::removeSink(own);
            write("about " + record.message);
        });
        const int other = ZkBaseLog::addSink([&](const ZkLogRecord &record) {
            always.append(record.message);
            write("never seen here");
        });
        write("a");
        write("b");
        ZkBaseLog::removeSink(other);
        QCOMPARE(once, QStringList {"a"});
        QCOMPARE(always.join(QLatin1Char(',')), QStringLiteral("about a,a,b"));
    }
};

ZK_TEST_CORE_MAIN(ZkBaseLogTest)
#include "ZkBaseLogTest.moc"
