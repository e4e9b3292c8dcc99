#pragma once

#include "ZkEncodedMatte.h"

#include <QVector>

#include <memory>

namespace zk::datamodel {

class MatteCache;

// The finished mattes of a clip, one for every frame; immutable, for any thread. What an applied cutout
// leaves on the project's clip.
class ZKDATAMODEL_EXPORT MatteTrack
{
public:
    explicit MatteTrack(const QVector<EncodedMatte> &mattes);
    ~MatteTrack();

    qint64 frameCount() const { return m_mattes.size(); }
    const QVector<EncodedMatte> &mattes() const { return m_mattes; } // frame by frame
    // Format_Grayscale8; null outside the track.
    QImage matteAt(qint64 frame) const;
    qint64 byteCount() const; // compressed

private:
    Q_DISABLE_COPY(MatteTrack)

    const QVector<EncodedMatte> m_mattes;
    const std::unique_ptr<MatteCache> m_cache;
};

} // namespace zk::datamodel
