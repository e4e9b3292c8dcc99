// Private to this folder.
#pragma once

#include "segmentation/ZkEncodedMatte.h"

#include <QFile>
#include <QVector>

namespace zk::erasing {

// The masks of a clip, one after another, read one at a time: memory does not grow with the clip.
class MaskFile
{
public:
    static bool write(const QString &path, const QVector<datamodel::EncodedMatte> &masks);

    // False when write() has not written it, or not to its end.
    bool open(const QString &path);
    int count() const { return m_offsets.size(); }
    // Format_Grayscale8; null for "no mask". False when it is damaged.
    bool read(int index, QImage *mask);

private:
    QFile m_file;
    QVector<qint64> m_offsets;
};

} // namespace zk::erasing
