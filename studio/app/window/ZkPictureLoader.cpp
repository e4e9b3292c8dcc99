#include "ZkPictureLoader.h"

namespace zk::app {

PictureLoader::PictureLoader(QObject *parent)
    : QObject(parent)
{
    m_pool.setMaxThreadCount(1);
}

PictureLoader::~PictureLoader()
{
    m_pool.clear();
    m_pool.waitForDone();
}

void PictureLoader::request(qint64 key, Job job)
{
    const quint64 serial = ++m_lastSerial;
    m_wanted.insert(key, serial);
    m_pool.start([this, key, serial, job = std::move(job)] {
        const QImage picture = job();
        // The destructor waits for this thread, and what is posted dies with the object.
        QMetaObject::invokeMethod(
            this,
            [this, key, serial, picture] { finish(key, serial, picture); },
            Qt::QueuedConnection);
    });
}

void PictureLoader::forget(qint64 key)
{
    m_wanted.remove(key);
}

void PictureLoader::finish(qint64 key, quint64 serial, const QImage &picture)
{
    if (m_wanted.value(key) != serial)
        return;
    m_wanted.remove(key);
    Q_EMIT loaded(key, picture);
}

} // namespace zk::app
