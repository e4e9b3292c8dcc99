// Not public: frames as text.
#pragma once

#include <QString>

// "hh:mm:ss:ff" of a frame that is not negative. A rate such as 29.97 counts 30 frames a second, without
// dropping any. Rates that are not positive count 25.
QString zkTimeText(int frame, float framesPerSecond);
// The frame that the text means, which may be larger than any clip; -1 for a text that is no time.
// Fields may be left out from the left and may be larger than their clock allows. Without separators,
// digits are taken in pairs from the right.
qint64 zkFrameOfText(const QString &text, float framesPerSecond);
