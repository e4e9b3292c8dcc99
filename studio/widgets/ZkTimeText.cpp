#include "ZkTimeText_p.h"

#include "ZkUtility.h"

#include <QRegularExpression>
#include <QVector>

namespace {

constexpr int fieldCount = 4;
constexpr int longestText = 16; // keeps every sum far from the ends of qint64

int countedRate(float framesPerSecond)
{
    return framesPerSecond > 0 ? qMax(1, qRound(framesPerSecond)) : 25;
}

QString withSeparators(QString digits)
{
    for (int i = digits.size() - 2; i > 0 && digits.count(QLatin1Char(':')) < fieldCount - 1;
         i -= 2)
        digits.insert(i, QLatin1Char(':'));
    return digits;
}

} // namespace

QString zkTimeText(int frame, float framesPerSecond)
{
    return ZkConvertUtility::frame2String(frame, float(countedRate(framesPerSecond)));
}

qint64 zkFrameOfText(const QString &text, float framesPerSecond)
{
    static const QRegularExpression time(QStringLiteral("\\A[0-9]+([:;.][0-9]+){0,3}\\z"));
    static const QRegularExpression separator(QStringLiteral("[:;.]"));
    QString fields = text.trimmed();
    if (fields.size() > longestText || !time.match(fields).hasMatch())
        return -1;
    if (!fields.contains(separator))
        fields = withSeparators(fields);
    QStringList parts = fields.split(separator);
    while (parts.size() < fieldCount)
        parts.prepend(QStringLiteral("0"));
    const qint64 minutes = parts.at(0).toLongLong() * 60 + parts.at(1).toLongLong();
    const qint64 seconds = minutes * 60 + parts.at(2).toLongLong();
    return seconds * countedRate(framesPerSecond) + parts.at(3).toLongLong();
}
