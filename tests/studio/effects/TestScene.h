// Frames and mattes that the tests of the effects are built from.
#pragma once

#include "ZkLookRenderer.h"

#include <QPainter>

#include <functional>

namespace zk::effects::test {

// A picture in which every pixel differs from its neighbours, so that a shift by one shows.
inline QImage texturedFrame(const QSize &size)
{
    QImage frame(size, QImage::Format_RGBA8888);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            frame.setPixelColor(
                x, y, QColor(60 + x * 7 % 150, 50 + y * 5 % 160, (x + y) * 3 % 200));
    }
    return frame;
}

inline QImage filledMatte(const QSize &size, int value)
{
    QImage matte(size, QImage::Format_Grayscale8);
    matte.fill(value);
    return matte;
}

inline QImage drawnMatte(const QSize &size, const std::function<void(QPainter &)> &draw)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    draw(painter);
    painter.end();
    return picture.convertToFormat(QImage::Format_Grayscale8);
}

inline QImage discMatte(const QSize &size, const QPointF &middle, double radius)
{
    return drawnMatte(size,
                      [&](QPainter &painter) { painter.drawEllipse(middle, radius, radius); });
}

inline RenderInput inputOf(const QImage &matte, qint64 frameIndex = 0)
{
    RenderInput input;
    input.frame = texturedFrame(matte.size());
    input.matte = matte;
    input.frameIndex = frameIndex;
    return input;
}

inline Look lookOf(const QVector<Layer> &layers)
{
    Look look;
    look.layers = layers;
    return look;
}

inline int alphaAt(const QImage &image, int x, int y)
{
    return qAlpha(image.pixel(x, y));
}

// The largest difference of any channel; alpha-less pixels are 0,0,0,0 and so comparable.
inline int largestDifference(const QImage &a, const QImage &b)
{
    if (a.size() != b.size())
        return 256;
    int largest = 0;
    const QImage p = a.convertToFormat(QImage::Format_RGBA8888);
    const QImage q = b.convertToFormat(QImage::Format_RGBA8888);
    for (int y = 0; y < p.height(); ++y) {
        for (int i = 0; i < 4 * p.width(); ++i)
            largest = qMax(largest, qAbs(p.constScanLine(y)[i] - q.constScanLine(y)[i]));
    }
    return largest;
}

} // namespace zk::effects::test
