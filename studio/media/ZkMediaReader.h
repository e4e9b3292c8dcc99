#pragma once

#include "ZkMediaGlobal.h"
#include "ZkMediaInfo.h"

#include <QImage>

#include <memory>

namespace zk::media {

// How a still picture becomes a clip. Files that carry time of their own ignore it.
struct StillOptions
{
    qint64 frameCount = 125;
    int frameRateNum = 25;
    int frameRateDen = 1;
};

// Decodes one file. Reading frames in order is the fast path; any other order is exact, too, but costs
// a seek. Not thread-safe: a reader belongs to one thread at a time, any thread will do, and any number
// of readers may work side by side.
class ZKMEDIA_EXPORT MediaReader
{
public:
    // Null when the file is missing, is no picture or video, or breaks off before its end; error then
    // holds one sentence for the user.
    static std::unique_ptr<MediaReader>
    open(const QString &path, QString *error, const StillOptions &still = {});
    virtual ~MediaReader();
    MediaReader(const MediaReader &) = delete;
    MediaReader &operator=(const MediaReader &) = delete;

    const MediaInfo &info() const { return m_info; }

    // Format_RGBA8888 (straight alpha) of info().size. Null when the frame is outside
    // [0, info().frameCount) or cannot be decoded.
    QImage frameAt(qint64 frame);

    // Keeps the pictures that were decoded last, and those on the way to them, up to so many bytes:
    // going back and forth among them costs no decoding. Initially 0.
    virtual void keepPictures(qint64 maxBytes) { Q_UNUSED(maxBytes) }

protected:
    explicit MediaReader(MediaInfo info);

private:
    virtual QImage decode(qint64 frame) = 0;

    MediaInfo m_info;
};

} // namespace zk::media
