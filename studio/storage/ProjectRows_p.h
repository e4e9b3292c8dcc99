// A project as rows. Not public.
#pragma once

#include "ProjectDatabase_p.h"
#include "ZkProjectRecords.h"

#include <QHash>

namespace zk::storage {

// What a clip carries, or its drafts.
using Effects = QVector<EffectRecord> ClipRecord::*;
using Segmentations = QVector<SegmentationRecord> ClipRecord::*;

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
    void collect(const SegmentationRecord &segmentation);
    void collect(const MatteRecord &matte);
    QVariant idOf(const MatteRecord &matte) const;

    bool writeMattes();
    bool writeMedia(const ProjectRecord &project);
    bool writeClips(const ProjectRecord &project);
    bool writeEffects(const ProjectRecord &project, ProjectTable table, Effects effects);
    bool writeSegmentations(const ProjectRecord &project, ProjectTable table, Segmentations which);
    bool writeNodes(const ProjectRecord &project, ProjectTable table, Segmentations which);
    bool writeTracked(const ProjectRecord &project, ProjectTable table, Segmentations which);
    bool writeApplied(const ProjectRecord &project);
    bool writeProject(const ProjectRecord &project);
    bool writeDrafts(const ProjectRecord &project);
    bool writeErasing(const ProjectRecord &project);
    bool writeErasing(const ClipRecord &clip, Segmentations which);

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
    bool readEffects(ProjectTable table, Effects effects);
    bool readSegmentations(ProjectTable table, Segmentations which);
    bool readNodes(ProjectTable table, Segmentations which);
    bool readTracked(ProjectTable table, Segmentations which);
    bool readApplied();
    bool readProject(bool checksDigest);
    bool readDrafts();
    bool readErasing();
    // Whether the file has tables of which the names begin so.
    bool hasTables(const QString &prefix, bool *hasThem);
    bool readSeal(ProjectTable table);

    bool findMatte(const QVariant &id, MatteRecord *matte) const;
    ClipRecord *findClip(const QVariant &id);
    SegmentationRecord *
    findSegmentation(const QVariant &clip, const QVariant &type, Segmentations which);

    ProjectDatabase &m_database;
    ProjectRecord m_project;
    QHash<qint64, MatteRecord> m_mattes;
};

} // namespace zk::storage
