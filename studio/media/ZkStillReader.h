// Private to this folder.
#pragma once

#include "ZkMediaReader.h"

namespace zk::media {

// One picture, shown on every frame.
class StillReader : public MediaReader
{
public:
    // Reads a picture file with Qt, turned upright. Null with an empty error when Qt does not know the
    // format or the file is an animation; null with a sentence for the user when the file is damaged.
    static std::unique_ptr<MediaReader>
    open(const QString &path, const StillOptions &still, QString *error);
    // Null, with a sentence for the user, when there is no image.
    static std::unique_ptr<MediaReader>
    create(MediaInfo info, const QImage &image, const StillOptions &still, QString *error);

private:
    StillReader(MediaInfo info, QImage image);
    QImage decode(qint64 frame) override;

    QImage m_image;
};

} // namespace zk::media
