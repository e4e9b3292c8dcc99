// Log lines of the module; not public.
#pragma once

#include "ZkCore.h"

inline void zkWriteSmartKeyingLog(ZkBaseLog *log,
                                  int level,
                                  int line,
                                  const char *className,
                                  const char *function,
                                  const QString &message)
{
    const QLatin1String name(className);
    ZkLogRecord record;
    record.logger = log->name();
    record.level = level;
    record.file = QLatin1String("ZkSmartKeying/") + name;
    record.line = line;
    record.function = name + QLatin1String("::") + QLatin1String(function);
    record.message = message;
    log->write(record);
}

// The message is built only when the logger takes the level. Class and function are named by hand
// because compilers spell them differently, and not at all inside a lambda.
#define ZK_LOG_TO(logger, level, className, function, message)                                     \
    do {                                                                                           \
        ZkBaseLog *const zkLog = (logger);                                                         \
        if (zkLog->isEnabled(level))                                                               \
            zkWriteSmartKeyingLog(zkLog, level, __LINE__, className, function, message);           \
    } while (false)

#define ZK_LOG(level, className, function, message)                                                \
    ZK_LOG_TO(ZkBaseLog::defaultLogger(), level, className, function, message)

// Everything about fetching resources goes to one logger across the application.
inline ZkBaseLog *zkResourceLog()
{
    return ZkBaseLog::logger(QStringLiteral("APP@RES"));
}
