#include "ZkClipListModel.h"

#include "ZkFormat.h"
#include "ZkMediaBinModel.h"

#include "ZkFrameRenderer.h"
#include "project/ZkProject.h"
#include "timeline/ZkStudioTimeline.h"

#include <QMimeData>
#include <QUrl>

namespace zk::app {

using datamodel::Project;
using datamodel::ProjectClip;

namespace {

QString clipMimeType()
{
    return QStringLiteral("application/x-zkstudio-clip");
}

QString uriMimeType()
{
    return QStringLiteral("text/uri-list");
}

QString durationOf(const ProjectClip &clip)
{
    return durationText(clip.clip()->frameCount(), clip.timeline()->frameRate());
}

} // namespace

QStringList droppedFiles(const QMimeData *data)
{
    QStringList files;
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    return files;
}

ClipListModel::ClipListModel(Project *project, QObject *parent)
    : ProjectListModel(project, parent)
{
    connect(project, &Project::clipAdded, this, &ClipListModel::follow);
    connect(project, &Project::clipRemoved, this, &ClipListModel::follow);
    connect(project, &Project::clipMoved, this, &ClipListModel::follow);
    connect(project, &Project::reset, this, &ClipListModel::reload);
    connect(project, &Project::clipChanged, this, [this](ProjectClip *clip) { touch(clip->id()); });
    follow();
}

void ClipListModel::follow()
{
    QVector<qint64> ids;
    for (int i = 0; i < project()->clipCount(); ++i)
        ids.append(project()->clipAt(i)->id());
    sync(ids);
}

void ClipListModel::reload()
{
    sync({});
    follow();
}

ProjectClip *ClipListModel::clipAt(const QModelIndex &index) const
{
    return project()->findClip(idAt(index));
}

QModelIndex ClipListModel::indexOfClip(const ProjectClip *clip) const
{
    return clip ? indexOf(clip->id()) : QModelIndex();
}

QVariant ClipListModel::data(const QModelIndex &index, int role) const
{
    const ProjectClip *clip = clipAt(index);
    if (!clip)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return clip->name();
    case Qt::AccessibleTextRole:
        return clip->isCutOut() ? tr("%1, %2, cut out").arg(clip->name(), durationOf(*clip))
                                : QStringLiteral("%1, %2").arg(clip->name(), durationOf(*clip));
    case Qt::DecorationRole:
        return picture(clip->id());
    case SubtitleRole:
        return clip->isOffline() ? tr("Missing") : durationOf(*clip);
    case MarkRole:
        return clip->isOffline() ? MissingMark : clip->isCutOut() ? CutoutMark : NoMark;
    case IdRole:
        return clip->id();
    default:
        return QVariant();
    }
}

Qt::ItemFlags ClipListModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = ProjectListModel::flags(index) | Qt::ItemNeverHasChildren;
    return flags | (index.isValid() ? Qt::ItemIsDragEnabled : Qt::ItemIsDropEnabled);
}

Qt::DropActions ClipListModel::supportedDropActions() const
{
    return Qt::CopyAction | Qt::MoveAction;
}

QStringList ClipListModel::mimeTypes() const
{
    return {clipMimeType(), uriMimeType(), MediaBinModel::mimeType()};
}

QMimeData *ClipListModel::mimeData(const QModelIndexList &indexes) const
{
    auto *data = new QMimeData;
    data->setData(clipMimeType(), QByteArray::number(idAt(indexes.value(0))));
    return data;
}

bool ClipListModel::dropMimeData(
    const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent)
{
    Q_UNUSED(column)
    if (action == Qt::IgnoreAction)
        return true;
    const int place = row >= 0 ? row : parent.isValid() ? parent.row() : rowCount();
    if (data->hasFormat(clipMimeType()))
        return dropClip(data, place);
    const QVector<qint64> media = MediaBinModel::draggedMedia(data);
    if (!media.isEmpty())
        return dropMedia(media, place);
    const QStringList files = droppedFiles(data);
    if (!files.isEmpty())
        Q_EMIT filesDropped(files, place);
    return !files.isEmpty();
}

bool ClipListModel::dropClip(const QMimeData *data, int row)
{
    const int from = indexOf(data->data(clipMimeType()).toLongLong()).row();
    // Without the clip itself, what comes after it is one place further to the left.
    const int to = row > from ? row - 1 : row;
    return from >= 0 && from != to && project()->moveClip(from, to);
}

bool ClipListModel::dropMedia(const QVector<qint64> &media, int row)
{
    bool added = false;
    for (const qint64 id : media)
        added = project()->addClip(id, added ? ++row : row) || added;
    return added;
}

PictureLoader::Job ClipListModel::pictureJob(qint64 id, const QSize &size) const
{
    const ProjectClip *clip = project()->findClip(id);
    if (!clip || clip->isOffline())
        return {};
    return [snapshot = datamodel::RenderSnapshot(*clip->timeline()), size] {
        const QImage picture = datamodel::FrameRenderer().preview(snapshot, 0);
        return picture.isNull()
            ? picture
            : picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    };
}

} // namespace zk::app
