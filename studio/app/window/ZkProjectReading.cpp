#include "ZkProjectReading.h"

#include "ZkBusyCursor.h"

#include "ZkWidgets.h"

#include <QFileInfo>
#include <QLabel>
#include <QProgressDialog>
#include <QSemaphore>
#include <QTimer>

#include <atomic>
#include <exception>

namespace zk::app {

namespace {

constexpr int patienceMs = 300; // that a user does not take for a freeze
constexpr int lookMs = 40;
constexpr int dialogWidth = 380; // widget pixels

} // namespace

// Shared by the thread and whoever waits for it, who may have gone when it ends.
struct ProjectReading::Job
{
    datamodel::ProjectSnapshot snapshot;
    QString error;
    bool succeeded = false;
    std::atomic<int> filesSeen {0};
    std::atomic<int> fileCount {0}; // 0: not known yet
    std::atomic<bool> isDone {false};
    std::atomic<bool> isCancelled {false};
    QSemaphore done;

    void run(const QString &path)
    {
        const auto note = [this](int done, int count) {
            filesSeen = done;
            fileCount = count;
            return !isCancelled;
        };
        try {
            succeeded = datamodel::readSnapshot(path, &snapshot, &error, note);
        } catch (const std::exception &exception) { // out of memory, above all
            error = QString::fromLocal8Bit(exception.what());
        }
        isDone = true;
        done.release();
    }
};

ProjectReading::ProjectReading(QWidget *window)
    : m_window(window)
{ }

ProjectReading::~ProjectReading()
{
    m_pool.waitForDone();
}

datamodel::SnapshotReading ProjectReading::function()
{
    return [this](const QString &path, datamodel::ProjectSnapshot *snapshot, QString *error) {
        return read(path, snapshot, error);
    };
}

bool ProjectReading::read(const QString &path, datamodel::ProjectSnapshot *snapshot, QString *error)
{
    const auto job = std::make_shared<Job>();
    m_pool.start([job, path] { job->run(path); });
    bool isDone = false;
    {
        const BusyCursor busy;
        isDone = job->done.tryAcquire(1, patienceMs);
    }
    if (!isDone && !waitWithDialog(*job, path)) {
        job->isCancelled = true;
        error->clear();
        return false;
    }
    *error = job->error;
    *snapshot = job->snapshot;
    return job->succeeded;
}

// False: the user has cancelled.
bool ProjectReading::waitWithDialog(const Job &job, const QString &path)
{
    QProgressDialog dialog(m_window);
    dialog.setObjectName(QStringLiteral("OpeningDialog"));
    dialog.setWindowTitle(tr("Open Project"));
    dialog.setMinimumWidth(dialogWidth);
    auto *const text = new QLabel(tr("Opening %1...").arg(QFileInfo(path).fileName()), &dialog);
    text->setTextFormat(Qt::PlainText); // names of files are no markup
    dialog.setLabel(text);
    dialog.setBar(new ZkProgressBar(&dialog));
    dialog.setCancelButtonText(tr("Cancel"));
    dialog.setRange(0, 0); // until the files are looked for
    dialog.setAutoClose(false);
    dialog.setAutoReset(false);
    dialog.setWindowModality(Qt::WindowModal);
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &dialog, [&] {
        if (job.isDone) {
            dialog.accept();
            return;
        }
        dialog.setMaximum(job.fileCount);
        dialog.setValue(job.filesSeen);
    });
    timer.start(lookMs);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace zk::app
