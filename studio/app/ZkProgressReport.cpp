#include "ZkProgressReport.h"

#include <QJsonDocument>
#include <QStringList>

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace zk::app {

namespace {

constexpr int barWidth = 32;

bool isErrorTerminal()
{
#ifdef Q_OS_WIN
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(fileno(stderr)) != 0;
#endif
}

void print(FILE *stream, const QString &text)
{
    std::fputs(text.toUtf8().constData(), stream);
    std::fflush(stream);
}

} // namespace

ProgressReport::ProgressReport(bool json)
    : m_json(json)
    , m_terminal(!json && isErrorTerminal())
{ }

void ProgressReport::beginStage(const QString &name)
{
    endStage();
    m_stage = name;
    m_percent = -1;
    m_timer.start();
    setPercent(0);
}

void ProgressReport::setPercent(int percent)
{
    if (m_stage.isEmpty() || percent <= m_percent)
        return;
    m_percent = percent;
    if (m_json) {
        printJson({{QStringLiteral("event"), QStringLiteral("progress")},
                   {QStringLiteral("stage"), m_stage},
                   {QStringLiteral("percent"), percent}});
    } else if (m_terminal) {
        drawBar(percent);
    }
}

void ProgressReport::endStage()
{
    if (m_stage.isEmpty())
        return;
    const double seconds = m_timer.elapsed() / 1000.0;
    m_stages.append({m_stage, seconds});
    clearBar();
    if (m_json) {
        printJson({{QStringLiteral("event"), QStringLiteral("stage")},
                   {QStringLiteral("stage"), m_stage},
                   {QStringLiteral("seconds"), seconds}});
    }
    m_stage.clear();
}

void ProgressReport::note(const QString &text)
{
    clearBar();
    if (m_json) {
        printJson(
            {{QStringLiteral("event"), QStringLiteral("note")}, {QStringLiteral("message"), text}});
    } else {
        print(stderr, text + QLatin1Char('\n'));
    }
}

void ProgressReport::output(const QString &path)
{
    clearBar();
    if (m_json) {
        printJson(
            {{QStringLiteral("event"), QStringLiteral("output")}, {QStringLiteral("path"), path}});
    } else {
        print(stdout, QStringLiteral("wrote %1\n").arg(path));
    }
}

void ProgressReport::result(const QString &name, double value)
{
    clearBar();
    if (m_json) {
        printJson({{QStringLiteral("event"), QStringLiteral("result")},
                   {QStringLiteral("name"), name},
                   {QStringLiteral("value"), value}});
    } else {
        print(stdout, QStringLiteral("%1 %2\n").arg(name).arg(value, 0, 'f', 4));
    }
}

void ProgressReport::error(ExitCode code, const QString &message)
{
    clearBar();
    m_stage.clear();
    if (m_json) {
        printJson({{QStringLiteral("event"), QStringLiteral("error")},
                   {QStringLiteral("code"), int(code)},
                   {QStringLiteral("message"), message}});
    } else {
        print(stderr, QStringLiteral("zkstudio: %1\n").arg(message));
    }
}

void ProgressReport::summary()
{
    endStage();
    if (m_json) {
        printJson({{QStringLiteral("event"), QStringLiteral("done")}});
        return;
    }
    QStringList texts;
    for (const Stage &stage : qAsConst(m_stages))
        texts.append(QStringLiteral("%1 %2 s").arg(stage.name).arg(stage.seconds, 0, 'f', 1));
    print(stdout, texts.join(QStringLiteral(", ")) + QLatin1Char('\n'));
}

void ProgressReport::printJson(const QJsonObject &object) const
{
    print(stdout,
          QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact))
              + QLatin1Char('\n'));
}

void ProgressReport::drawBar(int percent) const
{
    const int filled = barWidth * qBound(0, percent, 100) / 100;
    print(stderr,
          QStringLiteral("\r%1 [%2%3] %4 %")
              .arg(m_stage, -10)
              .arg(QString(filled, QLatin1Char('#')), QString(barWidth - filled, QLatin1Char('.')))
              .arg(percent, 3));
}

void ProgressReport::clearBar() const
{
    if (m_terminal && m_percent >= 0)
        print(stderr,
              QLatin1Char('\r') + QString(barWidth + 24, QLatin1Char(' ')) + QLatin1Char('\r'));
}

} // namespace zk::app
