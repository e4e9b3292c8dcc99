// A small clip of two scenes, with true mattes.
#pragma once

#include "ZkMediaWriter.h"
#include "ZkSampleClip.h"

#include <climits>

namespace zk::test {

// The sample clip up to the cut, and from there on as in another world: upside down, in other colours. With
// an end of the cut the first scene is back there.
class CutClip
{
public:
    CutClip(const QSize &size, int frames, int cut, int end = INT_MAX)
        : m_sample({size, frames, 24})
        , m_cut(cut)
        , m_end(end)
    { }

    QImage frame(int frame) const
    {
        QImage image = m_sample.frame(frame);
        if (isElsewhere(frame)) {
            image = image.mirrored().rgbSwapped();
            image.invertPixels();
        }
        return image;
    }
    QImage matte(int frame) const
    {
        const QImage matte = m_sample.matte(frame);
        return isElsewhere(frame) ? matte.mirrored() : matte;
    }
    // Without loss; the suffix is .mkv.
    void write(const QString &path) const
    {
        media::OutputSettings settings;
        settings.format = media::OutputFormat::Ffv1Mkv;
        settings.size = m_sample.options().size;
        settings.frameRateNum = m_sample.options().frameRate;
        QString error;
        const auto writer = media::MediaWriter::create(path, settings, &error);
        bool isWritten = writer != nullptr;
        for (int i = 0; i < m_sample.options().frames && isWritten; ++i)
            isWritten = writer->write(frame(i), &error);
        if (!isWritten || !writer->finish(&error))
            qFatal("The test clip cannot be written: %s", qPrintable(error));
    }

private:
    bool isElsewhere(int frame) const { return frame >= m_cut && frame < m_end; }

    const media::SampleClip m_sample;
    const int m_cut;
    const int m_end;
};

} // namespace zk::test
