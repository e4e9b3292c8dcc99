#include "ZkExportBatch.h"

namespace zk::app {

ExportBatch::ExportBatch(QObject *parent)
    : QObject(parent)
{
    connect(&m_task, &ExportTask::progress, this, &ExportBatch::onProgress);
    connect(&m_task, &ExportTask::finished, this, &ExportBatch::onFinished);
}

void ExportBatch::start(const QVector<ExportItem> &items)
{
    m_items = items;
    m_next = 0;
    m_written.clear();
    m_isRunning = true;
    m_isCancelled = false;
    m_clock.start();
    startNext();
}

void ExportBatch::cancel()
{
    m_isCancelled = true;
    m_task.cancel();
}

void ExportBatch::startNext()
{
    const ExportItem &item = m_items.at(m_next++);
    m_task.start(item.snapshot, item.settings);
}

void ExportBatch::onProgress(int percent, qint64 msLeft)
{
    const int done = ((m_next - 1) * 100 + percent) / m_items.size();
    // Clips differ in length, so what all of them took so far is the better guide for several.
    if (m_items.size() > 1)
        msLeft = done > 0 ? m_clock.elapsed() * (100 - done) / done : -1;
    Q_EMIT progress(done, msLeft);
}

void ExportBatch::onFinished(const ExportOutcome &outcome)
{
    m_written += outcome.written;
    const bool goesOn =
        outcome.code == ExitCode::Success && m_next < m_items.size() && !m_isCancelled;
    if (goesOn) {
        startNext();
        return;
    }
    m_isRunning = false;
    ExportOutcome all = outcome;
    all.written = m_written;
    if (m_isCancelled && m_next < m_items.size())
        all.code = ExitCode::Interrupted;
    Q_EMIT finished(all);
}

} // namespace zk::app
