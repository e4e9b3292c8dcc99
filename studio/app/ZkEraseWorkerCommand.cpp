#include "ZkEraseWorkerCommand.h"

#include "ZkEraseWorker.h"
#include "ZkLanguage.h"

#include <QSettings>
#include <QTemporaryDir>

#include <csignal>

namespace zk::app {

namespace {

// For the rest of the process, whose settings are not to be touched.
void selectLanguage(const QString &code)
{
    static const QTemporaryDir folder;
    static QSettings settings(folder.filePath(QStringLiteral("worker.ini")), QSettings::IniFormat);
    static Language language(&settings);
    language.choose(code);
}

} // namespace

int runEraseWorkerCommand(const QStringList &arguments)
{
    // Ctrl+C reaches this process, too: what becomes of it is for the one that started it to say.
    std::signal(SIGINT, SIG_IGN);
    return erasing::runEraseWorker(arguments.value(0), selectLanguage);
}

} // namespace zk::app
