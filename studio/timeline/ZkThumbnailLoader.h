#pragma once

#include "ZkGlobal.h"
#include "ZkMediaInfo.h"

#include <QImage>
#include <QObject>
#include <QThread>
#include <QVector>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

namespace zk::timeline {

// Decodes small pictures of one file in a worker of low priority. Lives on the GUI thread, which never
// waits for it, except that the destructor waits for the picture that is being decoded.
class ZKTIMELINEVIEW_EXPORT ThumbnailLoader : public QObject
{
    Q_OBJECT

public:
    explicit ThumbnailLoader(QObject *parent = nullptr);
    ~ThumbnailLoader() override;

    // Pictures of that file and size in pixels from now on; what was requested is dropped. An empty path:
    // of no file.
    void setSource(const zk::media::MediaInfo &media, const QSize &size);
    // These frames of the file, in that order, instead of those that were requested and are not done.
    void request(const QVector<qint64> &frames);

Q_SIGNALS:
    // Null when the frame cannot be decoded. Not for a source that is not set any more.
    void sigLoaded(qint64 frame, const QImage &picture);

private:
    struct Source
    {
        zk::media::MediaInfo media;
        QSize size;
        quint64 serial = 0;
    };
    class Worker;

    bool take(quint64 knownSerial, Source *source, qint64 *frame);
    void post(quint64 serial, qint64 frame, const QImage &picture);

    std::mutex m_mutex;
    std::condition_variable m_hasNews;
    Source m_source;
    std::deque<qint64> m_requested;
    bool m_isStopping = false;
    const std::unique_ptr<QThread> m_thread;
};

} // namespace zk::timeline
