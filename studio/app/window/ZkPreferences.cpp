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
    case Preferences::ExportFolder:
        break;
    }
    return QStringLiteral("folders/export");
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
