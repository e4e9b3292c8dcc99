#include "ZkTestMain.h"

#include "ZkCore.h"

namespace {

QStringList qtRecords;

void keepQtRecord(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    qtRecords.append(QStringLiteral("%1 %2 %3:%4 %5 ")
                         .arg(type)
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

} // namespace

class ZkBaseLogTest : public QObject
{
    Q_OBJECT

private slots:
    void loggersAreKnownByName();
    void writesToQt_data();
    void writesToQt();
    void sinkSeesCompleteRecordsOfAllLoggers();
    void sinkMayLogAndRemoveItself();
};

void ZkBaseLogTest::loggersAreKnownByName()
{
    ZkBaseLog *log = ZkBaseLog::logger(QStringLiteral("levels"));
    QCOMPARE(ZkBaseLog::logger(QStringLiteral("levels")), log);
    QVERIFY(!log->isEnabled(ZKLOG::Detail));
    QVERIFY(log->isEnabled(ZKLOG::Info));
    log->setMinimumLevel(ZKLOG::Error);
    QVERIFY(!log->isEnabled(ZKLOG::Warning));
    QVERIFY(log->isEnabled(ZKLOG::Error));
    QVERIFY(ZkBaseLog::defaultLogger()->isEnabled(ZKLOG::Info));
}

void ZkBaseLogTest::writesToQt_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("type");
    QTest::newRow("debug") << int(ZKLOG::Debug) << int(QtInfoMsg);
    QTest::newRow("info") << int(ZKLOG::Info) << int(QtInfoMsg);
    QTest::newRow("warning") << int(ZKLOG::Warning) << int(QtWarningMsg);
    QTest::newRow("error") << int(ZKLOG::Error) << int(QtCriticalMsg);
}

void ZkBaseLogTest::writesToQt()
{
    QFETCH(int, level);
    QFETCH(int, type);
    ZkLogRecord record = message(QStringLiteral("100 % done: %s \u00e9"), level);
    record.file = QStringLiteral("ZkCore/Test");
    record.line = 12;
    record.function = QStringLiteral("Test::run");
    qtRecords.clear();
    const QtMessageHandler previous = qInstallMessageHandler(keepQtRecord);
    ZkBaseLog::defaultLogger()->write(record);
    ZkBaseLog::logger(QStringLiteral("engine"))->write(record);
    qInstallMessageHandler(previous);
    const QString rest = QStringLiteral(" ZkCore/Test:12 Test::run ") + record.message;
    QCOMPARE(qtRecords.size(), 2);
    QCOMPARE(qtRecords.at(0), QStringLiteral("%1 zk").arg(type) + rest);
    QCOMPARE(qtRecords.at(1), QStringLiteral("%1 zk.engine").arg(type) + rest);
}

void ZkBaseLogTest::sinkSeesCompleteRecordsOfAllLoggers()
{
    QVector<ZkLogRecord> seen;
    const int sink = ZkBaseLog::addSink([&](const ZkLogRecord &record) { seen.append(record); });
    const QDateTime given(QDate(2024, 1, 2), QTime(3, 4), Qt::UTC);
    ZkLogRecord timed = message(QStringLiteral("second"), ZKLOG::Detail);
    timed.time = given;
    timed.threadId = 5;
    const QDateTime before = QDateTime::currentDateTime();
    ZkBaseLog::defaultLogger()->write(message(QStringLiteral("first")));
    ZkBaseLog::logger(QStringLiteral("engine"))->write(timed);
    ZkBaseLog::removeSink(sink);
    ZkBaseLog::removeSink(sink); // no such sink any more
    ZkBaseLog::defaultLogger()->write(message(QStringLiteral("third")));

    QCOMPARE(seen.size(), 2);
    QCOMPARE(seen.at(0).logger, ZkBaseLog::defaultLogger()->name());
    QVERIFY(before <= seen.at(0).time && seen.at(0).time <= QDateTime::currentDateTime());
    QVERIFY(seen.at(0).threadId != 0);
    QCOMPARE(seen.at(1).logger, QStringLiteral("engine"));
    QCOMPARE(seen.at(1).time, given);
    QCOMPARE(seen.at(1).threadId, quint64(5));
}

void ZkBaseLogTest::sinkMayLogAndRemoveItself()
{
    QStringList once;
    QStringList always;
    int own = 0;
    own = ZkBaseLog::addSink([&](const ZkLogRecord &record) {
        once.append(record.message);
        ZkBaseLog::removeSink(own);
        ZkBaseLog::defaultLogger()->write(message(QStringLiteral("about ") + record.message));
    });
    const int other = ZkBaseLog::addSink([&](const ZkLogRecord &record) {
        always.append(record.message);
        ZkBaseLog::defaultLogger()->write(message(QStringLiteral("never seen here")));
    });
    ZkBaseLog::defaultLogger()->write(message(QStringLiteral("a")));
    ZkBaseLog::defaultLogger()->write(message(QStringLiteral("b")));
    ZkBaseLog::removeSink(other);
    QCOMPARE(once, QStringList {QStringLiteral("a")});
    QCOMPARE(always.join(QLatin1Char(',')), QStringLiteral("about a,a,b"));
}

ZK_TEST_CORE_MAIN(ZkBaseLogTest)
#include "ZkBaseLogTest.moc"
