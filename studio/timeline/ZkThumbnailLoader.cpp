#include "ZkThumbnailLoader.h"

#include "ZkMediaReader.h"

#include <QLoggingCategory>

#include <exception>

Q_LOGGING_CATEGORY(lcThumbnails, "zk.timeline.thumbnails")

namespace zk::timeline {

// What the worker thread knows.
class ThumbnailLoader::Worker
{
public:
    explicit Worker(ThumbnailLoader *loader)
        : m_loader(loader)
    { }

    void run()
    {
        Source source;
        qint64 frame = -1;
        while (m_loader->take(m_serial, &source, &frame)) {
            open(source);
            if (frame >= 0)
                m_loader->post(m_serial, frame, picture(frame, source.size));
        }
    }

private:
    void open(const Source &source);
    QImage picture(qint64 frame, const QSize &size);

    ThumbnailLoader *const m_loader;
    std::unique_ptr<zk::media::MediaReader> m_reader;
    quint64 m_serial = 0;
};

// The file stays open while nothing else is shown; a file that the view has left is let go.
void ThumbnailLoader::Worker::open(const Source &source)
{
    if (source.serial == m_serial)
        return;
    m_serial = source.serial;
    const zk::media::MediaInfo &media = source.media;
    if (m_reader && m_reader->info().path == media.path)
        return;
    m_reader.reset();
    if (media.path.isEmpty())
        return;
    QString error;
    m_reader = zk::media::MediaReader::open(
        media.path, &error, {media.frameCount, media.frameRateNum, media.frameRateDen});
    if (!m_reader)
        qCInfo(lcThumbnails) << "No thumbnails:" << error;
}

QImage ThumbnailLoader::Worker::picture(qint64 frame, const QSize &size)
{
    try {
        const QImage picture = m_reader ? m_reader->frameAt(frame) : QImage();
        // The format that is painted without conversion.
        return picture.isNull()
            ? QImage()
            : picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                  .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    } catch (const std::exception &exception) { // out of memory, above all
        qCInfo(lcThumbnails) << "No thumbnail of frame" << frame << exception.what();
        return {};
    }
}

ThumbnailLoader::ThumbnailLoader(QObject *parent)
    : QObject(parent)
    , m_thread(QThread::create([this] { Worker(this).run(); }))
{
    m_thread->setObjectName(QStringLiteral("thumbnails"));
    m_thread->start(QThread::LowPriority);
}

ThumbnailLoader::~ThumbnailLoader()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isStopping = true;
    }
    m_hasNews.notify_all();
    m_thread->wait();
}

void ThumbnailLoader::setSource(const zk::media::MediaInfo &media, const QSize &size)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_source = {media, size, m_source.serial + 1};
        m_requested.clear();
    }
    m_hasNews.notify_all();
}

void ThumbnailLoader::request(const QVector<qint64> &frames)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_requested.assign(frames.constData(), frames.constData() + frames.size());
    }
    m_hasNews.notify_all();
}

// Waits for something to do: another source, of which -1 is the frame, or a frame. False: it is over.
bool ThumbnailLoader::take(quint64 knownSerial, Source *source, qint64 *frame)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_hasNews.wait(lock, [&] {
        return m_isStopping || m_source.serial != knownSerial || !m_requested.empty();
    });
    if (m_isStopping)
        return false;
    *source = m_source;
    *frame = -1;
    if (!m_requested.empty()) {
        *frame = m_requested.front();
        m_requested.pop_front();
    }
    return true;
}

void ThumbnailLoader::post(quint64 serial, qint64 frame, const QImage &picture)
{
    QMetaObject::invokeMethod(
        this,
        [=] {
            // Only this thread changes the source.
            if (serial == m_source.serial)
                Q_EMIT sigLoaded(frame, picture);
        },
        Qt::QueuedConnection);
}

} // namespace zk::timeline
