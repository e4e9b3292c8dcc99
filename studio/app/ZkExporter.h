// Writes what a timeline shows, or its mattes, to video files and picture sequences.
#pragma once

#include "ZkExitCode.h"
#include "ZkExportSettings.h"
#include "ZkFrameRenderer.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace zk::app {

struct ExportOutcome
{
    ExitCode code = ExitCode::Success; // Interrupted: it was cancelled
    QString message; // for the user; empty on success
    QStringList written; // outputs that are complete
};

// Those of an output of that format with everything that the snapshot has, sound included.
media::OutputSettings outputSettings(const datamodel::RenderSnapshot &snapshot,
                                     media::OutputFormat format);

// Exports one timeline in the calling thread, whichever that is; use it once. Outputs that are not
// complete at the end are absent.
class Exporter
{
public:
    struct Frame
    {
        qint64 index;
        QImage matte;
        QImage cutout; // null when only the matte was asked for
    };
    struct Hooks
    {
        std::function<void(qint64 done, qint64 count)> progress; // frames
        std::function<bool()> isCancelled; // asked before every frame
        // Sees every frame; an outcome other than Success ends the export with it.
        std::function<ExportOutcome(const Frame &, datamodel::FrameRenderer &)> frame;
        bool wantsCutout = false; // also when only the matte is written
    };

    Exporter(const ExportSettings &settings, const Hooks &hooks);
    ~Exporter();

    ExportOutcome run(const datamodel::RenderSnapshot &snapshot);

private:
    Q_DISABLE_COPY(Exporter)
    struct Output
    {
        QString path;
        bool hasAlpha;
        std::unique_ptr<media::MediaWriter> writer;
    };

    ExportOutcome open(const datamodel::RenderSnapshot &snapshot);
    ExportOutcome writeFrame(const datamodel::RenderSnapshot &snapshot, qint64 frame);
    ExportOutcome finish();
    QImage pictureFor(const Output &output, const Frame &frame) const;

    bool isCancelled() const { return m_hooks.isCancelled && m_hooks.isCancelled(); }

    const ExportSettings m_settings;
    const Hooks m_hooks;
    datamodel::FrameRenderer m_renderer;
    QImage m_background;
    std::vector<Output> m_outputs;
};

// An export in a thread, for a dialog. Signals come in the thread of the object, never from inside a
// call. The destructor cancels and waits.
class ExportTask : public QObject
{
    Q_OBJECT

public:
    explicit ExportTask(QObject *parent = nullptr);
    ~ExportTask() override;

    // False while one is under way.
    bool start(const datamodel::RenderSnapshot &snapshot, const ExportSettings &settings);
    bool isRunning() const { return m_isRunning; }
    // finished() follows with ExitCode::Interrupted, unless everything was complete by then.
    void cancel() { m_isCancelled = true; }

Q_SIGNALS:
    // Percent 0..100, rising; the time left is an estimate in ms, -1: not known yet.
    void progress(int percent, qint64 msLeft);
    void finished(const zk::app::ExportOutcome &outcome);

private:
    ExportOutcome work(const datamodel::RenderSnapshot &snapshot, const ExportSettings &settings);
    void report(qint64 done, qint64 count);
    void conclude(const ExportOutcome &outcome);

    std::thread m_worker;
    std::atomic<bool> m_isCancelled {false};
    bool m_isRunning = false;
    QElapsedTimer m_clock;
    int m_percent = -1; // the worker's
};

} // namespace zk::app

Q_DECLARE_METATYPE(zk::app::ExportOutcome)
