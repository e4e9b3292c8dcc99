// Looks at what erasing has made.
#pragma once

#include "ZkExporter.h"

#include "ZkEraseJob.h"
#include "ZkMediaReader.h"

#include <memory>

namespace zk::app {

// Against what is behind the object, in dB, where the object is; the higher the better.
struct ErasePsnr
{
    double erased = 0;
    double unerased = 0;
};

// Reads the source and the result of a job that has succeeded.
class EraseComparison
{
public:
    explicit EraseComparison(const erasing::EraseJob &job);

    // The folder has the pictures backgrounds/%05d.png and mattes/%05d.png, one for every frame.
    ExportOutcome measure(const QString &folder, ErasePsnr *psnr);
    // Before, selection and after.
    ExportOutcome saveSheet(const QString &path);

private:
    bool open();
    QImage before(int frame);
    QImage after(int frame);

    const erasing::EraseJob &m_job;
    std::unique_ptr<media::MediaReader> m_source;
    std::unique_ptr<media::MediaReader> m_result; // null: pictures
    QString m_error;
};

} // namespace zk::app
