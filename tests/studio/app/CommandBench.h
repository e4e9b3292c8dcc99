// The program as people run it: a process with arguments, files and an exit code.
#pragma once

#include "ZkExitCode.h"
#include "ZkTestMain.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

Q_DECLARE_METATYPE(zk::app::ExitCode)

namespace zk::test {

class CommandBench
{
protected:
    static constexpr int timeoutMs = 100000;

    static void writeFile(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write a test file");
    }
    static QStringList everythingIn(const QString &folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    QString file(const QString &name) const { return m_folder.filePath(name); }

    // In the folder of the files. Negative: it did not end, or not by itself.
    int run(const QStringList &arguments)
    {
        QProcess program;
        program.setWorkingDirectory(m_folder.path());
        program.start(QStringLiteral(ZKSTUDIO_PROGRAM), arguments);
        if (!program.waitForFinished(timeoutMs))
            return -1;
        m_out = program.readAllStandardOutput();
        m_errors = program.readAllStandardError();
        return program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -2;
    }
    // Of a result in the last output, which was JSON.
    double valueOf(const char *name) const
    {
        for (const QByteArray &line : m_out.split('\n')) {
            const QJsonObject object = QJsonDocument::fromJson(line).object();
            if (object.value("name").toString() == QLatin1String(name))
                return object.value("value").toDouble();
        }
        return -1;
    }

    QTemporaryDir m_folder;
    QByteArray m_out;
    QByteArray m_errors;
};

} // namespace zk::test
