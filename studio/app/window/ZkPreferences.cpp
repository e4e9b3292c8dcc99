#include "ZkPreferences.h"

#include "library/ZkAnalytics.h"
#include "project/ZkAutosave.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace zk::app {

namespace {

const char autosaveKey[] = "autosave/seconds";
const char analyticsKey[] = "analytics/allowed";

QString key(Preferences::Folder folder)
{
    switch (folder) {
    case Preferences::ProjectFolder:
        return QStringLiteral("folders/project");
    case Preferences::MediaFolder:
        return QStringLiteral("folders/media");
    case Preferences::ModelFolder:
        return QStringLiteral("folders/model");
    case Preferences::ExportFolder:
        break;
    }
    return QStringLiteral("folders/export");
}

QString key(engine::EngineRole role)
{
    switch (role) {
    case engine::EngineRole::Segmentation:
        return QStringLiteral("engine/segmentation");
    case engine::EngineRole::Tracking:
        return QStringLiteral("engine/tracking");
    case engine::EngineRole::Inpainting:
        break;
    }
    return QStringLiteral("engine/inpainting");
}

QVariant value(const char *name, const QVariant &standard)
{
    return QSettings().value(QLatin1String(name), standard);
}

} // namespace

int Preferences::autosaveSeconds()
{
    return qMax(0, value(autosaveKey, datamodel::Autosave::defaultSeconds).toInt());
}

void Preferences::setAutosaveSeconds(int seconds)
{
    QSettings().setValue(QLatin1String(autosaveKey), seconds);
}

bool Preferences::areAnalyticsAllowed()
{
    return value(analyticsKey, false).toBool();
}

bool Preferences::allowAnalytics(bool allowed, QString *error)
{
    QSettings().setValue(QLatin1String(analyticsKey), allowed);
    if (!allowed) {
        datamodel::Analytics::switchOff();
        return true;
    }
    QDir().mkpath(QFileInfo(analyticsFile()).path());
    return datamodel::Analytics::switchOn(analyticsFile(), error);
}

QString Preferences::analyticsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
        + QStringLiteral("/analytics.jsonl");
}

QString Preferences::modelFile(engine::EngineRole role)
{
    return QSettings().value(key(role)).toString();
}

void Preferences::setModelFile(engine::EngineRole role, const QString &path)
{
    QSettings().setValue(key(role), path);
}

QString Preferences::folder(Folder folder)
{
    const QString known = QSettings().value(key(folder)).toString();
    if (QFileInfo(known).isDir())
        return known;
    const QString movies = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    return QFileInfo(movies).isDir() ? movies : QDir::homePath();
}

void Preferences::rememberFolderOf(Folder folder, const QString &file)
{
    QSettings().setValue(key(folder), QFileInfo(file).absolutePath());
}

} // namespace zk::app
