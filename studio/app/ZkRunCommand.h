// How commands with options and a job begin and end.
#pragma once

#include "ZkInterrupt.h"
#include "ZkProgressReport.h"

#include <QStringList>

#include <cstdio>

namespace zk::app {

// The arguments come without the program's and the command's name.
template<typename Options, typename Job>
ExitCode runCommand(const QStringList &arguments)
{
    Options options;
    QString message;
    const ExitCode parsed = options.parse(arguments, &message);
    if (options.isHelp) {
        std::fputs(message.toUtf8().constData(), stdout);
        return ExitCode::Success;
    }
    ProgressReport report(options.json);
    if (parsed != ExitCode::Success) {
        report.error(parsed, message);
        return parsed;
    }
    catchInterrupts();
    return Job(options, &report).run();
}

} // namespace zk::app
