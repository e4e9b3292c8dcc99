// Private to this folder.
#pragma once

#include "ZkEraseJob.h"

#include <QImage>

#include <memory>

namespace zk::erasing {

// Writes what a job makes: a video, a sequence, or one picture. What is not finished is gone.
class ResultWriter
{
public:
    // The job's output, but at that path. Null, with a sentence for the user, when it cannot be made.
    static std::unique_ptr<ResultWriter> create(const EraseJob &job,
                                                const media::MediaInfo &source,
                                                qint64 frameCount,
                                                const QString &path,
                                                QString *error);

    bool write(const QImage &rgba, QString *error);
    bool finish(QString *error);

private:
    ResultWriter(const EraseJob &job, const QString &path)
        : m_target(job.output.path)
        , m_path(path)
    { }
    bool savePicture(QString *error) const;

    const QString m_target; // where the user wants it
    const QString m_path;
    std::unique_ptr<media::MediaWriter> m_writer; // null: the output is one picture
    QImage m_picture;
};

} // namespace zk::erasing
