#pragma once

#include "project/ZkMediaEntry.h"

#include <QObject>
#include <QStringList>
#include <QThreadPool>
#include <QVector>

#include <atomic>

namespace zk::app {

struct ImportRequest
{
    static constexpr int noClips = -2;
    static constexpr int atEnd = -1;

    QStringList files;
    int clipIndex = noClips; // where the files become clips, too
};

struct ImportResult
{
    QVector<datamodel::MediaEntry> entries; // in the order of the files
    QStringList failures; // sentences that name the file
    int clipIndex = ImportRequest::noClips;
};

// Looks into files in a thread, as that means decoding them. GUI thread only; the destructor cancels and
// waits for the file that is being read.
class MediaImporter : public QObject
{
    Q_OBJECT

public:
    explicit MediaImporter(QObject *parent = nullptr);
    ~MediaImporter() override;

    // finished() follows for each request, in their order, never from inside the call.
    void start(const ImportRequest &request);
    bool isRunning() const { return m_requests > 0; }
    // The requests that are under way finish with what they have.
    void cancel();

Q_SIGNALS:
    void progress(int done, int count, const QString &file); // of the request that is at it
    void finished(const zk::app::ImportResult &result);

private:
    ImportResult read(const ImportRequest &request, quint64 epoch);

    QThreadPool m_pool;
    std::atomic<quint64> m_epoch {0}; // cancelling begins another one
    int m_requests = 0;
};

} // namespace zk::app
