#pragma once

#include "ZkDataModel.h"
#include "ZkMediaInfo.h"

// A media file and what is known about it.
class ZkStudioMediaSource : public IZkMediaSource
{
public:
    explicit ZkStudioMediaSource(const zk::media::MediaInfo &info)
        : m_info(info)
    { }

    const zk::media::MediaInfo &info() const { return m_info; }
    void setInfo(const zk::media::MediaInfo &info) { m_info = info; }

    QString filePath() const override { return m_info.path; }
    bool isAnimatedGif() const override { return m_info.isAnimatedGif; }

private:
    zk::media::MediaInfo m_info;
};
