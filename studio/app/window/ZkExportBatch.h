#pragma once

#include "ZkExporter.h"

#include <QObject>
#include <QVector>

namespace zk::app {

struct ExportItem
{
    datamodel::RenderSnapshot snapshot;
    ExportSettings settings;
};

// Exports clips one after the other in a thread. Ends with the first one that fails. The destructor cancels
// and waits.
class ExportBatch : public QObject
{
    Q_OBJECT

public:
    explicit ExportBatch(QObject *parent = nullptr);

    // Must not be running.
    void start(const QVector<ExportItem> &items);
    bool isRunning() const { return m_isRunning; }
    void cancel();

Q_SIGNALS:
    void progress(int percent, qint64 msLeft); // of all of them, as of ExportTask
    void finished(const zk::app::ExportOutcome &outcome); // written: by all of them

private:
    void startNext();
    void onProgress(int percent, qint64 msLeft);
    void onFinished(const ExportOutcome &outcome);

    ExportTask m_task;
    QVector<ExportItem> m_items;
    int m_next = 0;
    QStringList m_written;
    QElapsedTimer m_clock;
    bool m_isRunning = false;
    bool m_isCancelled = false;
};

} // namespace zk::app
