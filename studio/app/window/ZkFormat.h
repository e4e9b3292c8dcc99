// Numbers as texts for the user.
#pragma once

#include "ZkMediaInfo.h"

#include <QString>

namespace zk::app {

// "1920 × 1080"
QString sizeText(const QSize &size);
// "25 fps", "29.97 fps"
QString rateText(const media::MediaInfo &media);
// "02:05" or "1:02:05"; of less than a minute "5.2 s"
QString durationText(qint64 frames, double frameRate);
// "12 s", "3 min 20 s"; empty while it is not known
QString timeLeftText(qint64 milliseconds);
// A command's text without its key: "&Open..." is "Open..."
QString withoutMnemonic(const QString &text);

} // namespace zk::app
