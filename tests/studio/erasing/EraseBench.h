// What the tests of erase tasks share: a clip with sound, the true masks of its object, and a task that
// runs the real program.
#pragma once

#include "ZkEraseTask.h"
#include "ZkMediaReader.h"
#include "ZkSampleClip.h"
#include "ZkTestClips.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace zk::test {

constexpr int patienceMs = 60000;

class EraseBench
{
protected:
    using Task = zk::erasing::EraseTask;
    using Job = zk::erasing::EraseJob;

    QTemporaryDir m_folder;
    QString m_error;
    QString m_reason; // of the last run
    int m_lastPercent = -1;

    QString path(const QString &name) const { return m_folder.filePath(name); }
    // Of a folder in which nothing else is.
    QStringList filesIn(const QString &folder) const
    {
        return QDir(path(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<media::SampleClip>
    writeSample(const QString &name, const QSize &size, int frames)
    {
        auto sample = std::make_unique<media::SampleClip>(media::SampleOptions {size, frames, 24});
        if (!sample->write(path(name), QString(), &m_error, true))
            qFatal("%s", qPrintable(m_error));
        return sample;
    }

    Job jobFor(const QString &clip, const media::SampleClip &sample, const QString &output)
    {
        Job job;
        job.mediaPath = path(clip);
        job.fingerprint = erasing::Fingerprint::of(job.mediaPath);
        for (int i = 0; i < sample.options().frames; ++i)
            job.masks.append(datamodel::EncodedMatte(sample.matte(i)));
        const QString target = path(output);
        QDir().mkpath(QFileInfo(target).path());
        erasing::EraseOutput::forPath(target, job.masks.size(), &job.output, &m_error);
        return job;
    }

    std::unique_ptr<Task> taskFor(const Job &job)
    {
        auto task = std::make_unique<Task>(job);
        task->setProgram(QStringLiteral(ZKSTUDIO_PROGRAM));
        return task;
    }

    Task::Result run(Task *task)
    {
        QSignalSpy finished(task, &Task::finished);
        task->start();
        return await(task, &finished);
    }
    Task::Result run(const Job &job) { return run(taskFor(job).get()); }

    // Of a task whose signal is being spied on.
    Task::Result await(Task *task, QSignalSpy *finished)
    {
        if (!task->isFinished())
            finished->wait(patienceMs);
        if (finished->count() != 1)
            qFatal("a task is not finished, or more than once");
        m_reason = finished->first().at(1).toString();
        m_lastPercent = task->percent();
        return finished->first().at(0).value<Task::Result>();
    }

    // Starts it and waits until it erases.
    static bool startErasing(Task *task)
    {
        QSignalSpy progress(task, &Task::progress);
        task->start();
        return QTest::qWaitFor([&] { return task->percent() > 2 || task->isFinished(); },
                               patienceMs)
            && !task->isFinished();
    }
};

// Signal-to-noise ratio in dB between two pictures where the mask is not 0 (or everywhere but there).
inline double psnr(const QImage &a, const QImage &b, const QImage &mask, bool isInside)
{
    double sum = 0;
    qint64 count = 0;
    for (int y = 0; y < mask.height(); ++y) {
        for (int x = 0; x < mask.width(); ++x) {
            if ((mask.constScanLine(y)[x] > 0) != isInside)
                continue;
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            const int red = qRed(p) - qRed(q);
            const int green = qGreen(p) - qGreen(q);
            const int blue = qBlue(p) - qBlue(q);
            sum += red * red + green * green + blue * blue;
            count += 3;
        }
    }
    return count == 0 ? 99 : 10 * std::log10(255.0 * 255 * count / qMax(sum, 1e-6));
}

} // namespace zk::test
