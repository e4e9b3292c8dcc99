#include "ZkApplyRun.h"

#include "ZkLookRenderer.h"

#include <QMetaObject>

#include <exception>
#include <system_error>

namespace zk::datamodel {

ApplyRun::ApplyRun(const ApplyTask &task, QObject *context, const Receiver &receiver)
    : m_task(task)
    , m_context(context)
    , m_receiver(receiver)
    , m_serial(Segments::nextRevision())
{
    try {
        m_worker = std::thread([this] { work(); });
    } catch (const std::system_error &) { // no more threads
        postFinished({});
    }
}

ApplyRun::~ApplyRun()
{
    cancel();
    if (m_worker.joinable())
        m_worker.join();
}

void ApplyRun::work()
{
    ApplyResult result;
    try {
        result = render();
    } catch (const std::exception &) { // out of memory, above all
        result = ApplyResult();
    }
    if (!m_isCancelled)
        postFinished(result);
    m_isDone = true;
}

void ApplyRun::postFinished(const ApplyResult &result)
{
    QMetaObject::invokeMethod(
        m_context,
        [serial = m_serial, receive = m_receiver.finished, result] { receive(serial, result); },
        Qt::QueuedConnection);
}

ApplyResult ApplyRun::render()
{
    ApplyResult result;
    int shown = -1;
    for (qint64 frame = 0; frame < m_task.frameCount && !m_isCancelled; ++frame) {
        const int percent = int(frame * 100 / m_task.frameCount);
        if (percent != shown)
            postProgress(shown = percent);
        const EncodedMatte matte = finalMatte(frame);
        if (matte.isNull())
            return {};
        result.mattes.append(matte);
        result.framesWithoutMask += m_task.segments.hasMask(frame) ? 0 : 1;
    }
    postProgress(100);
    return result;
}

// Null when the stored mask is damaged. A mask that stays as it is keeps its bytes, so that the clip and
// the undo history share them.
EncodedMatte ApplyRun::finalMatte(qint64 frame)
{
    if (!m_task.segments.hasMask(frame))
        return emptyMatte();
    const QImage matte = m_task.segments.matteAt(frame);
    if (matte.size() != m_task.frameSize)
        return {};
    const EncodedMatte stored = m_task.segments.storedAt(frame);
    if (m_task.invert)
        return EncodedMatte(zk::effects::invertedMatte(matte));
    return stored.isNull() ? EncodedMatte(matte) : stored;
}

EncodedMatte ApplyRun::emptyMatte()
{
    if (m_emptyMatte.isNull()) {
        QImage matte(m_task.frameSize, QImage::Format_Grayscale8);
        matte.fill(m_task.invert ? 255 : 0);
        m_emptyMatte = EncodedMatte(matte);
    }
    return m_emptyMatte;
}

void ApplyRun::postProgress(int percent)
{
    QMetaObject::invokeMethod(
        m_context,
        [serial = m_serial, receive = m_receiver.progress, percent] { receive(serial, percent); },
        Qt::QueuedConnection);
}

} // namespace zk::datamodel
