#include "ZkEraseJob.h"

#include "ZkEraseTexts.h"
#include "ZkMaskFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace zk::erasing {

namespace {

const QLatin1String mediaKey("media");
const QLatin1String sizeKey("size");
const QLatin1String modifiedKey("modified");
const QLatin1String inFrameKey("inFrame");
const QLatin1String outputKey("output");
const QLatin1String resultKey("result");
const QLatin1String isPictureKey("isPicture");
const QLatin1String formatKey("format");
const QLatin1String modelKey("model");
const QLatin1String languageKey("language");

QString jobFileIn(const QString &folder)
{
    return QDir(folder).filePath(QStringLiteral("job.json"));
}

QJsonObject toJson(const EraseJob &job, const QString &resultPath)
{
    return {{mediaKey, job.mediaPath},
            {sizeKey, job.fingerprint.size},
            {modifiedKey, job.fingerprint.modified},
            {inFrameKey, job.inFrame},
            {outputKey, job.output.path},
            {resultKey, resultPath},
            {isPictureKey, job.output.isPicture},
            {formatKey, int(job.output.format)},
            {modelKey, job.modelPath},
            {languageKey, job.language}};
}

} // namespace

Fingerprint Fingerprint::of(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        return {};
    return {file.size(), file.lastModified().toMSecsSinceEpoch()};
}

bool EraseOutput::forPath(const QString &path,
                          qint64 frameCount,
                          EraseOutput *output,
                          QString *error)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    const bool isPattern = QFileInfo(path).fileName().contains(QLatin1Char('%'));
    const bool isPicture = suffix == QLatin1String("png") || suffix == QLatin1String("jpg")
        || suffix == QLatin1String("jpeg");
    *output = {path, frameCount == 1 && isPicture && !isPattern, media::OutputFormat::H264Mkv};
    return output->isPicture || media::formatFor(path, &output->format, error);
}

EraseOutput EraseOutput::forEditing(const QString &pathWithoutSuffix,
                                    const media::MediaInfo &source)
{
    if (source.isStill)
        return {pathWithoutSuffix + QStringLiteral(".png"), true, media::OutputFormat::H264Mkv};
    return {pathWithoutSuffix + QStringLiteral(".mkv"),
            false,
            source.hasAlpha ? media::OutputFormat::Ffv1Mkv : media::OutputFormat::H264Mkv};
}

bool saveJob(const EraseJob &job, const QString &resultPath, const QString &folder, QString *error)
{
    QFile file(jobFileIn(folder));
    const QByteArray text = QJsonDocument(toJson(job, resultPath)).toJson();
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush()
        && MaskFile::write(maskFileIn(folder), job.masks))
        return true;
    *error = EraseTexts::cannotWriteBeside(job.output.path);
    return false;
}

bool loadJob(const QString &folder, EraseJob *job, QString *resultPath)
{
    QFile file(jobFileIn(folder));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    job->mediaPath = object.value(mediaKey).toString();
    job->fingerprint.size = qint64(object.value(sizeKey).toDouble());
    job->fingerprint.modified = qint64(object.value(modifiedKey).toDouble());
    job->inFrame = qint64(object.value(inFrameKey).toDouble());
    job->output.path = object.value(outputKey).toString();
    job->output.isPicture = object.value(isPictureKey).toBool();
    job->output.format = media::OutputFormat(object.value(formatKey).toInt());
    job->modelPath = object.value(modelKey).toString();
    job->language = object.value(languageKey).toString();
    *resultPath = object.value(resultKey).toString();
    return !job->mediaPath.isEmpty() && !resultPath->isEmpty();
}

QString maskFileIn(const QString &folder)
{
    return QDir(folder).filePath(QStringLiteral("masks"));
}

QString changeOf(const EraseJob &job)
{
    const Fingerprint now = Fingerprint::of(job.mediaPath);
    if (now == job.fingerprint && !now.isMissing())
        return {};
    return now.isMissing() ? EraseTexts::sourceIsGone(job.mediaPath)
                           : EraseTexts::sourceHasChanged(job.mediaPath);
}

} // namespace zk::erasing
