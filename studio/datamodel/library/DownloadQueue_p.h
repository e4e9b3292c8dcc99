// Downloads of the library's files, a few at a time. Not public.
#pragma once

#include "FileDownload_p.h"
#include "ZkPresetRecords.h"

#include <QNetworkAccessManager>
#include <QObject>

#include <deque>

namespace zk::datamodel {

// A file of an item, as the key of a download.
struct ResourceKey
{
    qint64 item;
    storage::ResourceKind kind;

    friend bool operator==(const ResourceKey &a, const ResourceKey &b)
    {
        return a.item == b.item && a.kind == b.kind;
    }
};

// Every download that was added ends with one finished signal, never from inside a call; except
// those that the destruction ends, which leave nothing half-made either.
class DownloadQueue : public QObject
{
    Q_OBJECT

public:
    explicit DownloadQueue(const DownloadSettings &settings, QObject *parent = nullptr);
    ~DownloadQueue() override;

    // No other download of that key may be under way.
    void add(const ResourceKey &key, const DownloadRequest &request);
    bool contains(const ResourceKey &key) const;
    bool containsItem(qint64 item) const;
    // False when there is no such download.
    bool cancel(const ResourceKey &key);

Q_SIGNALS:
    void progressed(const zk::datamodel::ResourceKey &key, int percent);
    void finished(const zk::datamodel::ResourceKey &key,
                  zk::datamodel::DownloadError error,
                  const QString &text);

private:
    struct Job
    {
        ResourceKey key;
        std::unique_ptr<FileDownload> download;
        bool isStarted = false;
    };

    void startLater();
    void startWaiting();
    void end(const ResourceKey &key, DownloadError error, const QString &text);
    std::deque<Job>::const_iterator find(const ResourceKey &key) const;

    const DownloadSettings m_settings;
    QNetworkAccessManager m_network;
    std::deque<Job> m_jobs; // in the order in which they were added
};

} // namespace zk::datamodel
