#include "ZkFormat.h"

#include <QCoreApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QtMath>

namespace zk::app {

namespace {

struct Format
{
    Q_DECLARE_TR_FUNCTIONS(zk::app::Format)
};

constexpr int secondsPerMinute = 60;
constexpr int secondsPerHour = 3600;

} // namespace

QString sizeText(const QSize &size)
{
    return Format::tr("%1 × %2").arg(size.width()).arg(size.height());
}

QString rateText(const media::MediaInfo &media)
{
    // Two digits tell 23.976 from 24, and whole rates need none.
    const double rate = qRound(media.frameRate() * 100) / 100.0;
    return Format::tr("%1 fps").arg(QLocale().toString(rate, 'g', 5));
}

QString durationText(qint64 frames, double frameRate)
{
    const double seconds = frameRate > 0 ? double(frames) / frameRate : 0;
    const int whole = qFloor(seconds);
    if (whole < secondsPerMinute)
        return Format::tr("%1 s").arg(QLocale().toString(seconds, 'f', 1));
    const QString rest = QStringLiteral("%1:%2")
                             .arg(whole / secondsPerMinute % 60, 2, 10, QLatin1Char('0'))
                             .arg(whole % secondsPerMinute, 2, 10, QLatin1Char('0'));
    return whole < secondsPerHour ? rest
                                  : QStringLiteral("%1:%2").arg(whole / secondsPerHour).arg(rest);
}

QString timeLeftText(qint64 milliseconds)
{
    if (milliseconds < 0)
        return QString();
    const qint64 seconds = (milliseconds + 999) / 1000;
    if (seconds < secondsPerMinute)
        return Format::tr("%1 s left").arg(seconds);
    return Format::tr("%1 min %2 s left")
        .arg(seconds / secondsPerMinute)
        .arg(seconds % secondsPerMinute);
}

QString withoutMnemonic(const QString &text)
{
    QString plain = text;
    // Chinese texts have theirs in brackets at the end.
    plain.remove(QRegularExpression(QStringLiteral("\\(&\\w\\)")));
    plain.remove(QLatin1Char('&'));
    return plain;
}

} // namespace zk::app
