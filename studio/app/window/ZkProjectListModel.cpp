#include "ZkProjectListModel.h"

#include "project/ZkProject.h"

#include <QGuiApplication>

namespace zk::app {

ProjectListModel::ProjectListModel(datamodel::Project *project, QObject *parent)
    : QAbstractListModel(parent)
    , m_project(project)
{
    connect(&m_loader, &PictureLoader::loaded, this, &ProjectListModel::setPicture);
}

ProjectListModel::~ProjectListModel() = default;

qint64 ProjectListModel::idAt(const QModelIndex &index) const
{
    return index.isValid() && index.model() == this ? m_ids.value(index.row()) : 0;
}

QModelIndex ProjectListModel::indexOf(qint64 id) const
{
    const int row = m_ids.indexOf(id);
    return row < 0 ? QModelIndex() : index(row);
}

int ProjectListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_ids.size();
}

void ProjectListModel::sync(const QVector<qint64> &ids)
{
    removeMissing(ids);
    for (int row = 0; row < ids.size(); ++row)
        place(ids.at(row), row);
}

void ProjectListModel::removeMissing(const QVector<qint64> &ids)
{
    for (int row = m_ids.size() - 1; row >= 0; --row) {
        const qint64 id = m_ids.at(row);
        if (ids.contains(id))
            continue;
        beginRemoveRows(QModelIndex(), row, row);
        m_ids.remove(row);
        m_pictures.remove(id);
        m_loader.forget(id);
        endRemoveRows();
    }
}

void ProjectListModel::place(qint64 id, int row)
{
    const int from = m_ids.indexOf(id);
    if (from == row)
        return;
    if (from > row) {
        beginMoveRows(QModelIndex(), from, from, QModelIndex(), row);
        m_ids.move(from, row);
        endMoveRows();
        return;
    }
    beginInsertRows(QModelIndex(), row, row);
    m_ids.insert(row, id);
    endInsertRows();
    requestPicture(id);
}

void ProjectListModel::touch(qint64 id)
{
    const QModelIndex changed = indexOf(id);
    if (!changed.isValid())
        return;
    requestPicture(id);
    Q_EMIT dataChanged(changed, changed);
}

QPixmap ProjectListModel::picture(qint64 id) const
{
    return m_pictures.value(id);
}

void ProjectListModel::forgetPictures()
{
    m_pictures.clear();
}

void ProjectListModel::requestPicture(qint64 id)
{
    const QSize size = pictureSize * qGuiApp->devicePixelRatio();
    if (PictureLoader::Job job = pictureJob(id, size))
        m_loader.request(id, std::move(job));
}

void ProjectListModel::setPicture(qint64 id, const QImage &picture)
{
    const QModelIndex changed = indexOf(id);
    if (!changed.isValid())
        return;
    QPixmap pixmap = QPixmap::fromImage(picture);
    pixmap.setDevicePixelRatio(qGuiApp->devicePixelRatio());
    m_pictures.insert(id, pixmap);
    Q_EMIT dataChanged(changed, changed, {Qt::DecorationRole});
}

} // namespace zk::app
