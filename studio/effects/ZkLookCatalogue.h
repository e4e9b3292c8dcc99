// The looks that come with the program.
#pragma once

#include "ZkLook.h"

#include <QSize>
#include <QStringList>

class QImage;

namespace zk::effects {

class ZKEFFECTS_EXPORT LookCatalogue
{
public:
    // Every presets/*.json, by category and name. One that cannot be read, or whose slug another
    // one has, is left out and reported in *errors (may be null) with its file name.
    static QVector<Look> builtin(QStringList *errors = nullptr);
};

// A picture of the look for a picker: the real renderer at work on a small drawn subject.
// size is in device-independent pixels; the picture has twice that and says so in its
// devicePixelRatio. Format_ARGB32_Premultiplied, opaque.
ZKEFFECTS_EXPORT QImage renderThumbnail(const Look &look, const QSize &size = QSize(54, 54));

} // namespace zk::effects
