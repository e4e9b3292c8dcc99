// Changes one property of several targets as one undoable step.
#pragma once

#include "../ZkCore.h"
#include "ZkUndoRedo.h"

#include <QVector>

#include <functional>

class IZkClip;

// How a target type is spelled in the log.
template<typename Target>
struct ZkTargetTypeName;
template<>
struct ZkTargetTypeName<IZkClip *>
{
    static QString name() { return QStringLiteral("class IZkClip *"); }
};

template<typename Target>
class ZPropertyBatchSetter
{
public:
    // Calls the function for every target in order, as one undo step of that text, and reports all
    // changes together when it is done. False, and nothing is done, without targets. An empty
    // function is a programming error and throws std::bad_function_call.
    static bool set(IZkUndoRedoService *service,
                    const QVector<Target> &targets,
                    const std::function<void(Target)> &function,
                    const QString &text)
    {
        if (targets.isEmpty()) {
            logEmptyTargets();
            return false;
        }
        ZkUndoRedoCommander step(service, text, functionName());
        ZkPauseEventCommander pause(service);
        for (Target target : targets)
            function(target);
        return true;
    }

private:
    static QString functionName()
    {
        return QStringLiteral("ZPropertyBatchSetter<%1>::set")
            .arg(ZkTargetTypeName<Target>::name());
    }
    static void logEmptyTargets()
    {
        ZkBaseLog *log = ZkBaseLog::defaultLogger();
        if (!log->isEnabled(ZKLOG::Warning))
            return;
        ZkLogRecord record;
        record.logger = log->name();
        record.level = ZKLOG::Warning;
        record.file = QStringLiteral("ZCore/IZPropertyEditor");
        record.line = __LINE__;
        record.function = functionName();
        record.message = QStringLiteral("[Property Batch Writer] targets are empty");
        log->write(record);
    }
};
