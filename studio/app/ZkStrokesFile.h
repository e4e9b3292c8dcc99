// Strokes on frames, as files hold them:
// {"strokes":[{"frame":0,"mode":"keep|remove|erase","width":30,"points":[[x,y],...]}]}
// in pixels of the source frame.
#pragma once

#include "ZkMarksFile.h"

#include <QImage>
#include <QPointF>
#include <QSize>
#include <QString>
#include <QVector>

namespace zk::app {

struct Stroke
{
    enum class Mode { Keep, Remove, Erase };

    qint64 frame = 0;
    Mode mode = Mode::Keep;
    double width = 0; // diameter of the round pen, in source pixels
    QVector<QPointF> points; // centres of source pixels have .5

    // The stroke in opaque white on a transparent picture of the canvas, which shows the whole
    // source frame.
    QImage paint(const QSize &sourceSize, const QSize &canvasSize) const;
};

class StrokesFile : private MarksFile
{
public:
    // False with an error "FILE:LINE: FIELD: what is wrong" when the file cannot be read or a field
    // is missing, unknown or of the wrong kind; then nothing is loaded.
    bool load(const QString &path, QString *error);
    // One keep stroke on what is in the middle of frame 0.
    void setCentred(const QSize &sourceSize);
    // False when a stroke lies on a frame that the clip lacks or paints nothing of the frame.
    bool fits(const QSize &sourceSize, qint64 frameCount, QString *error) const;

    const QVector<Stroke> &strokes() const { return m_strokes; }

private:
    QVector<Stroke> m_strokes;
};

} // namespace zk::app
