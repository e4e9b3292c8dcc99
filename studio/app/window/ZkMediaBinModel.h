#pragma once

#include "ZkProjectListModel.h"

namespace zk::datamodel {
struct MediaEntry;
}

namespace zk::app {

// The media bin's files in the order of their import. Rows can be dragged; they carry the numbers of their
// entries.
class MediaBinModel : public ProjectListModel
{
    Q_OBJECT

public:
    MediaBinModel(datamodel::Project *project, QObject *parent);

    static QString mimeType();
    // The numbers of the entries that are dragged; empty when it is something else.
    static QVector<qint64> draggedMedia(const QMimeData *data);

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;

private:
    PictureLoader::Job pictureJob(qint64 id, const QSize &size) const override;
    void follow();
    void reload();
    static QString subtitle(const datamodel::MediaEntry &entry);
    static QString toolTip(const datamodel::MediaEntry &entry);
};

} // namespace zk::app
