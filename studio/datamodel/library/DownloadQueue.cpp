#include "DownloadQueue_p.h"

#include <QLoggingCategory>

#include <algorithm>

namespace zk::datamodel {

namespace {

Q_LOGGING_CATEGORY(log, "zk.studio.download")

}

DownloadQueue::DownloadQueue(const DownloadSettings &settings, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
{ }

DownloadQueue::~DownloadQueue() = default;

void DownloadQueue::add(const ResourceKey &key, const DownloadRequest &request)
{
    Job job {key, std::make_unique<FileDownload>(m_network, m_settings, request)};
    FileDownload *download = job.download.get();
    connect(download, &FileDownload::progressed, this, [this, key](int percent) {
        Q_EMIT progressed(key, percent);
    });
    const QString address = request.url.toDisplayString();
    connect(download,
            &FileDownload::finished,
            this,
            [this, key, address](DownloadError error, const QString &text) {
                if (error == DownloadError::None || error == DownloadError::Cancelled)
                    qCInfo(log).noquote()
                        << address << (text.isEmpty() ? QStringLiteral("complete") : text);
                else
                    qCWarning(log).noquote() << address << "failed:" << text;
                end(key, error, text);
            });
    m_jobs.push_back(std::move(job));
    startLater();
}

bool DownloadQueue::contains(const ResourceKey &key) const
{
    return find(key) != m_jobs.end();
}

bool DownloadQueue::containsItem(qint64 item) const
{
    return std::any_of(
        m_jobs.begin(), m_jobs.end(), [item](const Job &job) { return job.key.item == item; });
}

bool DownloadQueue::cancel(const ResourceKey &key)
{
    if (!contains(key))
        return false;
    QMetaObject::invokeMethod(
        this,
        [this, key] {
            const auto job = find(key);
            if (job != m_jobs.end())
                job->download->cancel();
        },
        Qt::QueuedConnection);
    return true;
}

void DownloadQueue::startLater()
{
    QMetaObject::invokeMethod(this, &DownloadQueue::startWaiting, Qt::QueuedConnection);
}

void DownloadQueue::startWaiting()
{
    int running = int(
        std::count_if(m_jobs.begin(), m_jobs.end(), [](const Job &job) { return job.isStarted; }));
    for (Job &job : m_jobs) {
        if (job.isStarted || running >= m_settings.maximumParallel)
            continue;
        job.isStarted = true;
        ++running;
        // May end at once, which changes the list.
        FileDownload *download = job.download.get();
        QMetaObject::invokeMethod(download, &FileDownload::start, Qt::QueuedConnection);
    }
}

void DownloadQueue::end(const ResourceKey &key, DownloadError error, const QString &text)
{
    const auto job = std::find_if(m_jobs.begin(), m_jobs.end(), [&key](const Job &candidate) {
        return candidate.key == key;
    });
    if (job == m_jobs.end())
        return;
    job->download.release()->deleteLater(); // it is the sender
    m_jobs.erase(job);
    startLater();
    Q_EMIT finished(key, error, text);
}

std::deque<DownloadQueue::Job>::const_iterator DownloadQueue::find(const ResourceKey &key) const
{
    return std::find_if(
        m_jobs.begin(), m_jobs.end(), [&key](const Job &job) { return job.key == key; });
}

} // namespace zk::datamodel
