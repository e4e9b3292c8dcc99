// What the command line tells about its work: a bar for people, JSON lines for programs.
#pragma once

#include "ZkExitCode.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QString>
#include <QVector>

namespace zk::app {

class ProgressReport
{
public:
    // With json every line on standard output is one JSON object with the key "event". Otherwise the
    // results go to standard output, and the bar and messages to standard error; the bar is left
    // out where that is no terminal.
    explicit ProgressReport(bool json);

    void beginStage(const QString &name);
    void setPercent(int percent);
    // Ends the stage that runs, if any, and notes how long it took.
    void endStage();

    void note(const QString &text);
    void output(const QString &path);
    void result(const QString &name, double value);
    void error(ExitCode code, const QString &message);
    // The last line of a run that succeeded: stages with their seconds.
    void summary();

private:
    struct Stage
    {
        QString name;
        double seconds;
    };

    void printJson(const QJsonObject &object) const;
    void drawBar(int percent) const;
    void clearBar() const;

    bool m_json;
    bool m_terminal;
    QString m_stage;
    int m_percent = -1;
    QElapsedTimer m_timer;
    QVector<Stage> m_stages;
};

} // namespace zk::app
