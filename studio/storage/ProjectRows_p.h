// A project as rows. Not public.
#pragma once

#include "ProjectDatabase_p.h"
#include "ZkProjectRecords.h"

#include <QHash>

namespace zk::storage {

// Writes everything that a record holds to a new database, in one transaction.
class ProjectWriter
{
public:
    explicit ProjectWriter(ProjectDatabase &database)
        : m_database(database)
    { }

    bool write(const ProjectRecord &project);

private:
    void collect(const ProjectRecord &project);
    void collect(const MatteRecord &matte);
    QVariant idOf(const MatteRecord &matte) const;

    bool writeMattes();
    bool writeMedia(const ProjectRecord &project);
    bool writeClips(const ProjectRecord &project);
    bool writeEffects(const ProjectRecord &project);
    bool writeSegmentations(const ProjectRecord &project);
    bool writeNodes(const ProjectRecord &project);
    bool writeTracked(const ProjectRecord &project);
    bool writeApplied(const ProjectRecord &project);
    bool writeProject(const ProjectRecord &project);

    ProjectDatabase &m_database;
    QVector<MatteRecord> m_mattes; // id - 1
    QHash<QByteArray, qint64> m_ids; // by where the bytes are and what they mean
};

class ProjectReader
{
public:
    explicit ProjectReader(ProjectDatabase &database)
        : m_database(database)
    { }

    // False: what was read is damaged.
    bool read(ProjectRecord *project);
    // What stands outside the lists, and as many empty clips as there are.
    bool readSummary(ProjectRecord *project);

private:
    bool readMattes();
    bool readMedia();
    bool readClips();
    bool readEffects();
    bool readSegmentations();
    bool readNodes();
    bool readTracked();
    bool readApplied();
    bool readProject(bool checksDigest);

    bool findMatte(const QVariant &id, MatteRecord *matte) const;
    ClipRecord *findClip(const QVariant &id);
    SegmentationRecord *findSegmentation(const QVariant &clip, const QVariant &type);

    ProjectDatabase &m_database;
    ProjectRecord m_project;
    QHash<qint64, MatteRecord> m_mattes;
};

} // namespace zk::storage
