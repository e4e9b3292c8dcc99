#include "ZkPictureQueue_p.h"

#include <QPointer>

#include <utility>

namespace zk::player {

PictureQueue::PictureQueue(Prepare prepare, QObject *parent)
    : QObject(parent)
    , m_prepare(std::move(prepare))
{
    m_thread.setObjectName(QStringLiteral("ZkPlayer"));
    m_worker.moveToThread(&m_thread);
    m_thread.start();
}

PictureQueue::~PictureQueue()
{
    m_thread.quit();
    m_thread.wait();
}

void PictureQueue::request(Request kind)
{
    ++m_newest;
    if (kind == Awaited)
        ++m_awaited;
    if (kind != Passing)
        m_settlesAt = m_newest;
    startNext();
}

void PictureQueue::discard()
{
    QMetaObject::invokeMethod(
        &m_worker, [] {}, Qt::BlockingQueuedConnection);
    m_discarded = m_newest;
    if (m_awaited > 0)
        request(Repaint);
}

void PictureQueue::startNext()
{
    if (m_isBusy || m_finished == m_newest)
        return;
    m_isBusy = true;
    m_running = m_newest;
    Job job = m_prepare();
    // Even when there is nothing to do the answer is posted: who asks connects afterwards.
    if (!job.render) {
        QMetaObject::invokeMethod(
            this, [this] { finish(Picture()); }, Qt::QueuedConnection);
        return;
    }
    QMetaObject::invokeMethod(
        &m_worker,
        [this, job = std::move(job)] {
            const Picture picture = job.render();
            QMetaObject::invokeMethod(
                this, [this, picture] { finish(picture); }, Qt::QueuedConnection);
            if (job.readAhead)
                job.readAhead();
        },
        Qt::QueuedConnection);
}

void PictureQueue::finish(const Picture &picture)
{
    const QPointer<PictureQueue> self(this);
    m_isBusy = false;
    m_finished = m_running;
    if (m_finished > m_discarded)
        Q_EMIT rendered(picture);
    if (self && m_awaited > 0 && m_finished >= m_settlesAt)
        settle();
    if (self)
        startNext();
}

// A receiver may ask for the next picture, and even wait for it in an event loop of its own. The count
// is taken first, so that such a request is settled by its own picture and never by this one.
void PictureQueue::settle()
{
    const QPointer<PictureQueue> self(this);
    for (int left = std::exchange(m_awaited, 0); left > 0 && self; --left)
        Q_EMIT settled();
}

} // namespace zk::player
