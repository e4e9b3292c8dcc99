#pragma once

#include "ZkPictureLoader.h"

#include <QAbstractListModel>
#include <QHash>
#include <QPixmap>
#include <QVector>

namespace zk::datamodel {
class Project;
}

namespace zk::app {

// What lists of things with numbers have in common: rows that follow the project, and pictures of them,
// which come later from a thread.
class ProjectListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        SubtitleRole = Qt::UserRole + 1, // a second line
        MarkRole, // a Mark
        IdRole, // qint64
    };
    enum Mark {
        NoMark,
        CutoutMark,
        MissingMark,
        ChangedMark,
    };

    // Of the pictures in widget pixels.
    static constexpr QSize pictureSize {160, 90};

    ~ProjectListModel() override;

    qint64 idAt(const QModelIndex &index) const; // 0 for an invalid index
    QModelIndex indexOf(qint64 id) const; // invalid: there is no such row

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;

protected:
    ProjectListModel(datamodel::Project *project, QObject *parent);

    datamodel::Project *project() const { return m_project; }
    // Removes, moves and inserts rows until they are these.
    void sync(const QVector<qint64> &ids);
    // Its picture and its texts are out of date.
    void touch(qint64 id);
    QPixmap picture(qint64 id) const; // null while there is none
    void forgetPictures();

private:
    // Fits into the size in pixels, which is pictureSize at the screen's resolution.
    virtual PictureLoader::Job pictureJob(qint64 id, const QSize &size) const = 0;
    void requestPicture(qint64 id);
    void setPicture(qint64 id, const QImage &picture);
    void removeMissing(const QVector<qint64> &ids);
    void place(qint64 id, int row);

    datamodel::Project *const m_project;
    QVector<qint64> m_ids;
    QHash<qint64, QPixmap> m_pictures;
    PictureLoader m_loader;
};

} // namespace zk::app
