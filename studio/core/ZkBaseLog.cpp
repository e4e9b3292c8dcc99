#include "ZkCore.h"

#include "ZkCallGate_p.h"

#include <QHash>
#include <QLoggingCategory>
#include <QThread>
#include <QVector>

#include <atomic>
#include <mutex>

namespace {

const QLatin1String defaultName("zk");

struct RegisteredSink
{
    RegisteredSink(int sinkNumber, ZkBaseLog::Sink sinkFunction)
        : number(sinkNumber)
        , function(std::move(sinkFunction))
    { }

    void write(const ZkLogRecord &record)
    {
        // A sink that logs does not see what it has logged: that would never end.
        if (gate.isInside())
            return;
        const ZkGatePass pass(gate);
        if (pass && function)
            function(record);
    }

    const int number;
    const ZkBaseLog::Sink function;
    ZkCallGate gate;
};

using SinkPointer = std::shared_ptr<RegisteredSink>;

class SinkList
{
public:
    int add(ZkBaseLog::Sink function)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_sinks.append(std::make_shared<RegisteredSink>(++m_lastNumber, std::move(function)));
        return m_lastNumber;
    }

    SinkPointer take(int number)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        for (int i = 0; i < m_sinks.size(); ++i) {
            if (m_sinks.at(i)->number == number)
                return m_sinks.takeAt(i);
        }
        return {};
    }

    QVector<SinkPointer> all() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_sinks;
    }

private:
    mutable std::mutex m_mutex;
    QVector<SinkPointer> m_sinks;
    int m_lastNumber = 0;
};

// Never destroyed, like the loggers: static objects may log while the program ends.
SinkList &sinkList()
{
    static auto *const sinks = new SinkList;
    return *sinks;
}

QByteArray categoryName(const QString &logger)
{
    if (logger == defaultName)
        return QByteArray(defaultName.data());
    return QByteArray(defaultName.data()) + '.' + logger.toUtf8();
}

} // namespace

// The logger's records also go to Qt's logging, in the category "zk" for the default logger and
// "zk.NAME" for the others, so that Qt's filter rules and message handlers apply to them.
class ZkBaseLog::Private
{
public:
    explicit Private(const QString &loggerName)
        : name(loggerName)
        , m_categoryName(::categoryName(loggerName))
        , m_category(m_categoryName.constData())
    { }

    void writeToQt(const ZkLogRecord &record) const
    {
        const QByteArray file = record.file.toUtf8();
        const QByteArray function = record.function.toUtf8();
        const QByteArray text = record.message.toUtf8();
        const QMessageLogger logger(
            file.constData(), record.line, function.constData(), m_category.categoryName());
        if (record.level >= ZKLOG::Error)
            logger.critical(m_category, "%s", text.constData());
        else if (record.level >= ZKLOG::Warning)
            logger.warning(m_category, "%s", text.constData());
        else
            logger.info(m_category, "%s", text.constData());
    }

    const QString name;
    std::atomic<int> minimumLevel {ZKLOG::Info};

private:
    const QByteArray m_categoryName; // the category points at it
    const QLoggingCategory m_category;
};

ZkBaseLog::ZkBaseLog(const QString &name)
    : d(std::make_unique<Private>(name))
{ }

ZkBaseLog::~ZkBaseLog() = default;

ZkBaseLog *ZkBaseLog::defaultLogger()
{
    static ZkBaseLog *const log = logger(defaultName);
    return log;
}

ZkBaseLog *ZkBaseLog::logger(const QString &name)
{
    static std::mutex mutex;
    static auto *const loggers = new QHash<QString, ZkBaseLog *>;
    const std::lock_guard<std::mutex> lock(mutex);
    if (ZkBaseLog *const log = loggers->value(name))
        return log;
    // Copied, since a literal goes with its library when that is unloaded.
    const QString kept(name.constData(), name.size());
    return *loggers->insert(kept, new ZkBaseLog(kept));
}

QString ZkBaseLog::name() const
{
    return d->name;
}

bool ZkBaseLog::isEnabled(int level) const
{
    return level >= d->minimumLevel.load(std::memory_order_relaxed);
}

void ZkBaseLog::setMinimumLevel(int level)
{
    d->minimumLevel.store(level, std::memory_order_relaxed);
}

void ZkBaseLog::write(const ZkLogRecord &record)
{
    ZkLogRecord complete = record;
    if (complete.logger.isEmpty())
        complete.logger = d->name;
    if (!complete.time.isValid())
        complete.time = QDateTime::currentDateTime();
    if (complete.threadId == 0)
        complete.threadId = quint64(quintptr(QThread::currentThreadId()));
    d->writeToQt(complete);
    const auto sinks = sinkList().all();
    for (const SinkPointer &sink : sinks)
        sink->write(complete);
}

int ZkBaseLog::addSink(Sink sink)
{
    return sinkList().add(std::move(sink));
}

void ZkBaseLog::removeSink(int sink)
{
    // Waits for the threads that are writing, so that the caller may destroy what the sink uses.
    if (const SinkPointer removed = sinkList().take(sink))
        removed->gate.close();
}
