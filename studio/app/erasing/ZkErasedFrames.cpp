#include "ZkErasedFrames.h"

#include "ZkMediaReader.h"

#include <utility>

namespace zk::app {

class ErasedFrames::Reader
{
public:
    explicit Reader(const Source &source)
        : m_source(source)
    { }

    QImage frameAt(qint64 frame)
    {
        if (!std::exchange(m_isOpened, true)) {
            QString error;
            m_reader = media::MediaReader::open(m_source.path, &error);
        }
        return m_reader ? m_reader->frameAt(m_source.inFrame + frame) : QImage();
    }

private:
    const Source m_source;
    bool m_isOpened = false;
    std::unique_ptr<media::MediaReader> m_reader;
};

ErasedFrames::ErasedFrames(const Source &before, const Source &after, QObject *parent)
    : QObject(parent)
    , m_before(std::make_shared<Reader>(before))
    , m_after(std::make_shared<Reader>(after))
{
    m_pool.setMaxThreadCount(1);
}

ErasedFrames::~ErasedFrames()
{
    m_pool.clear();
    m_pool.waitForDone();
}

void ErasedFrames::request(qint64 frame)
{
    if (m_isReading)
        m_wanted = frame;
    else
        read(frame);
}

void ErasedFrames::read(qint64 frame)
{
    m_isReading = true;
    m_pool.start([this, frame] {
        const QImage before = m_before->frameAt(frame);
        const QImage after = m_after->frameAt(frame);
        QMetaObject::invokeMethod(
            this,
            [this, frame, before, after] { finish(frame, before, after); },
            Qt::QueuedConnection);
    });
}

void ErasedFrames::finish(qint64 frame, const QImage &before, const QImage &after)
{
    m_isReading = false;
    const qint64 next = std::exchange(m_wanted, -1);
    if (next >= 0)
        read(next);
    else
        emit loaded(frame, before, after);
}

} // namespace zk::app
