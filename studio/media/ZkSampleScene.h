// Private to this folder.
#pragma once

#include <QImage>
#include <QPainterPath>
#include <QPolygonF>
#include <QTransform>
#include <QVector>

namespace zk::media {

// Everything there is to see in the sample clip, as layers. Lengths are in units of the picture's
// height, times in seconds; the constructor draws what does not change.
class SampleScene
{
public:
    SampleScene(const QSize &size, double duration);

    // Opaque, as a camera with an open shutter of half a frame sees it at that time.
    QImage background(double time, double shutter) const;
    // Premultiplied; its alpha is the balloon's matte where nothing is in front of it.
    QImage balloon(double time, double shutter) const;
    // Premultiplied: the post in the foreground.
    QImage post(double time, double shutter) const;
    // The grain of the sensor, -1 to 1, the same for the same frame and pixel.
    static double grain(int frame, int x, int y, int channel);

    // Pen paths in pixels: over the envelope, over the basket, and around both.
    QPolygonF envelopeStroke(double time) const;
    QPolygonF basketStroke(double time) const;
    QPolygonF backgroundStroke(double time) const;

private:
    QImage blank() const;
    QTransform pose(double time) const;
    void drawBackground(QPainter &painter, double time) const;
    void drawBalloon(QPainter &painter, double time) const;
    void drawEnvelope(QPainter &painter, double time) const;
    void drawPost(QPainter &painter, double time) const;
    double progress(double time) const;

    QSize m_size;
    double m_duration;
    QImage m_sky;
    QImage m_hills;
    QImage m_field;
};

// A smooth random surface in 0 to 1, made of several sizes of bumps.
double valueNoise(double x, double y, int octaves, quint32 seed);

} // namespace zk::media
