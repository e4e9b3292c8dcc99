#pragma once

#include "project/ZkProject.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <memory>

class QWidget;

namespace zk::app {

// Reads project files in a thread. What takes longer than a moment, as looking into many media does, gets
// a dialog over the window, with a way to cancel. GUI thread only; the destructor waits for the file that
// a cancelled reading is looking into.
class ProjectReading
{
    Q_DECLARE_TR_FUNCTIONS(zk::app::ProjectReading)

public:
    // The window is not owned and must outlive it.
    explicit ProjectReading(QWidget *window);
    ~ProjectReading();

    // Returns when the file was read, or false with an empty error when the user has cancelled; events are
    // processed meanwhile. It must not be called from inside of itself.
    bool read(const QString &path, datamodel::ProjectSnapshot *snapshot, QString *error);
    datamodel::SnapshotReading function();

private:
    Q_DISABLE_COPY(ProjectReading)
    struct Job;

    bool waitWithDialog(const Job &job, const QString &path);

    QWidget *const m_window;
    QThreadPool m_pool;
};

} // namespace zk::app
