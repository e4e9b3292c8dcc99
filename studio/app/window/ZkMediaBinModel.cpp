#include "ZkMediaBinModel.h"

#include "ZkFormat.h"

#include "ZkMediaReader.h"
#include "project/ZkProject.h"

#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QIODevice>
#include <QMimeData>

namespace zk::app {

using datamodel::MediaEntry;
using datamodel::Project;

namespace {

int markOf(MediaEntry::State state)
{
    switch (state) {
    case MediaEntry::State::Missing:
        return ProjectListModel::MissingMark;
    case MediaEntry::State::Changed:
        return ProjectListModel::ChangedMark;
    case MediaEntry::State::Present:
        break;
    }
    return ProjectListModel::NoMark;
}

QString fileName(const MediaEntry &entry)
{
    return QFileInfo(entry.info.path).fileName();
}

} // namespace

MediaBinModel::MediaBinModel(Project *project, QObject *parent)
    : ProjectListModel(project, parent)
{
    connect(project, &Project::mediaAdded, this, &MediaBinModel::follow);
    connect(project, &Project::mediaRemoved, this, &MediaBinModel::follow);
    connect(project, &Project::mediaChanged, this, &MediaBinModel::touch);
    connect(project, &Project::reset, this, &MediaBinModel::reload);
    follow();
}

QString MediaBinModel::mimeType()
{
    return QStringLiteral("application/x-zkstudio-media");
}

void MediaBinModel::follow()
{
    QVector<qint64> ids;
    for (const MediaEntry &entry : project()->media())
        ids.append(entry.id);
    sync(ids);
}

void MediaBinModel::reload()
{
    // Numbers mean other files in another project.
    sync({});
    follow();
}

QVariant MediaBinModel::data(const QModelIndex &index, int role) const
{
    const MediaEntry *entry = project()->findMedia(idAt(index));
    if (!entry)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return fileName(*entry);
    case Qt::AccessibleTextRole:
        return QStringLiteral("%1, %2").arg(fileName(*entry), subtitle(*entry));
    case Qt::DecorationRole:
        return picture(entry->id);
    case Qt::ToolTipRole:
        return toolTip(*entry);
    case SubtitleRole:
        return subtitle(*entry);
    case MarkRole:
        return markOf(entry->state);
    case IdRole:
        return entry->id;
    default:
        return QVariant();
    }
}

QString MediaBinModel::subtitle(const MediaEntry &entry)
{
    if (entry.isMissing())
        return tr("Missing");
    const QString size = sizeText(entry.info.size);
    return entry.info.isStill
        ? tr("Picture, %1").arg(size)
        : QStringLiteral("%1, %2").arg(durationText(entry.info.frameCount, entry.info.frameRate()),
                                       size);
}

QString MediaBinModel::toolTip(const MediaEntry &entry)
{
    const QString path = QDir::toNativeSeparators(entry.info.path);
    return entry.problem.isEmpty() ? path : path + QLatin1Char('\n') + entry.problem;
}

Qt::ItemFlags MediaBinModel::flags(const QModelIndex &index) const
{
    const MediaEntry *entry = project()->findMedia(idAt(index));
    const Qt::ItemFlags flags = ProjectListModel::flags(index) | Qt::ItemNeverHasChildren;
    return entry && !entry->isMissing() ? flags | Qt::ItemIsDragEnabled : flags;
}

QStringList MediaBinModel::mimeTypes() const
{
    return {mimeType()};
}

QMimeData *MediaBinModel::mimeData(const QModelIndexList &indexes) const
{
    QVector<qint64> ids;
    for (const QModelIndex &index : indexes)
        ids.append(idAt(index));
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << ids;
    auto *data = new QMimeData;
    data->setData(mimeType(), bytes);
    return data;
}

QVector<qint64> MediaBinModel::draggedMedia(const QMimeData *data)
{
    QVector<qint64> ids;
    QDataStream stream(data->data(mimeType()));
    stream >> ids;
    return ids;
}

PictureLoader::Job MediaBinModel::pictureJob(qint64 id, const QSize &size) const
{
    const MediaEntry *entry = project()->findMedia(id);
    if (!entry || entry->isMissing())
        return {};
    return [path = entry->info.path, size] {
        QString error;
        const auto reader = media::MediaReader::open(path, &error);
        const QImage picture = reader ? reader->frameAt(0) : QImage();
        return picture.isNull()
            ? picture
            : picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    };
}

} // namespace zk::app
