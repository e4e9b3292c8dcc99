// Boxes around objects, as files hold them: {"boxes":[{"frame":0,"rect":[x,y,width,height]}]} in pixels of
// the source frame.
#pragma once

#include "ZkMarksFile.h"

#include <QRectF>
#include <QSize>
#include <QVector>

namespace zk::app {

struct Box
{
    qint64 frame = 0;
    QRectF rect; // may reach over the frame's border
};

class BoxesFile : private MarksFile
{
public:
    // False with an error "FILE:LINE: FIELD: what is wrong" when the file cannot be read or a field
    // is missing, unknown or of the wrong kind; then nothing is loaded.
    bool load(const QString &path, QString *error);
    // False when a box lies on a frame that the clip lacks, or outside the frame.
    bool fits(const QSize &sourceSize, qint64 frameCount, QString *error) const;

    const QVector<Box> &boxes() const { return m_boxes; }

private:
    QVector<Box> m_boxes;
};

} // namespace zk::app
