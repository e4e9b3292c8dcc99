// Private to the data model: saves snapshots of projects in a thread.
#pragma once

#include "ZkProjectSnapshot.h"

#include <QObject>

#include <thread>

namespace zk::datamodel {

// All or nothing; any thread may call it. Paths of media are also kept relative to the folder of the
// project's own file: that of the origin, or else of the path.
bool writeSnapshot(const ProjectSnapshot &snapshot, const QString &path, QString *error);

// GUI thread only. The destructor waits for the worker, without a signal.
class SnapshotWriter : public QObject
{
    Q_OBJECT

public:
    SnapshotWriter() = default;
    ~SnapshotWriter() override;

    // Nothing may be under way.
    void write(const ProjectSnapshot &snapshot, const QString &path);
    // Until finished() has been emitted.
    bool isBusy() const { return m_isBusy; }
    // Emits finished(), if anything is under way, before it returns.
    void wait();

Q_SIGNALS:
    void finished(bool success, const QString &error);

private:
    void conclude(bool success, const QString &error);

    std::thread m_worker;
    bool m_isBusy = false;
};

} // namespace zk::datamodel
