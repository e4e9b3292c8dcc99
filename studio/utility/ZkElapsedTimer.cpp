#include "ZkUtility.h"

#include "ZkCore.h"

ZkElapsedTimer::ZkElapsedTimer(const QString &name)
    : m_name(name)
{
    m_timer.start();
}

ZkElapsedTimer::~ZkElapsedTimer()
{
    ZkBaseLog *log = ZkBaseLog::defaultLogger();
    if (!log->isEnabled(ZKLOG::Detail))
        return;
    ZkLogRecord record;
    record.logger = log->name();
    record.level = ZKLOG::Detail;
    record.file = QStringLiteral("ZkUtility/ZkElapsedTimer");
    record.line = __LINE__;
    record.function = QStringLiteral("ZkElapsedTimer::~ZkElapsedTimer");
    record.message = m_name + QStringLiteral(": %1 ms").arg(m_timer.elapsed());
    log->write(record);
}
