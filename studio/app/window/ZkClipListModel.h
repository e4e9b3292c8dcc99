#pragma once

#include "ZkProjectListModel.h"

namespace zk::datamodel {
class ProjectClip;
}

namespace zk::app {

// The clips in their order. Clips can be dragged to another place, and media and files onto the list.
class ClipListModel : public ProjectListModel
{
    Q_OBJECT

public:
    ClipListModel(datamodel::Project *project, QObject *parent);

    datamodel::ProjectClip *clipAt(const QModelIndex &index) const; // null for an invalid index
    QModelIndex indexOfClip(const datamodel::ProjectClip *clip) const;

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    Qt::DropActions supportedDropActions() const override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool dropMimeData(const QMimeData *data,
                      Qt::DropAction action,
                      int row,
                      int column,
                      const QModelIndex &parent) override;

Q_SIGNALS:
    void filesDropped(const QStringList &files, int row);

private:
    PictureLoader::Job pictureJob(qint64 id, const QSize &size) const override;
    void follow();
    void reload();
    bool dropClip(const QMimeData *data, int row);
    bool dropMedia(const QVector<qint64> &media, int row);
};

// The local files among the addresses; empty when there are none.
QStringList droppedFiles(const QMimeData *data);

} // namespace zk::app
