#include "ZkSnapshotWriter.h"

#include "ZkProjectStore.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <exception>
#include <system_error>

namespace zk::datamodel {

bool writeSnapshot(const ProjectSnapshot &snapshot, const QString &path, QString *error)
{
    const QString folder =
        QFileInfo(snapshot.origin.isEmpty() ? path : snapshot.origin).absolutePath();
    try {
        return zk::storage::ProjectStore::save(path, snapshot.toRecord(folder), error);
    } catch (const std::exception &exception) { // out of memory, above all
        *error = QString::fromLocal8Bit(exception.what());
        return false;
    }
}

SnapshotWriter::~SnapshotWriter()
{
    if (m_worker.joinable())
        m_worker.join();
}

void SnapshotWriter::write(const ProjectSnapshot &snapshot, const QString &path)
{
    m_isBusy = true;
    const auto work = [this, snapshot, path] {
        QString error;
        const bool success = writeSnapshot(snapshot, path, &error);
        QMetaObject::invokeMethod(
            this, [=] { conclude(success, error); }, Qt::QueuedConnection);
    };
    try {
        m_worker = std::thread(work);
    } catch (const std::system_error &) { // no more threads
        work();
    }
}

void SnapshotWriter::conclude(bool success, const QString &error)
{
    if (m_worker.joinable())
        m_worker.join();
    m_isBusy = false;
    Q_EMIT finished(success, error);
}

void SnapshotWriter::wait()
{
    if (!m_isBusy)
        return;
    if (m_worker.joinable())
        m_worker.join();
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

} // namespace zk::datamodel
