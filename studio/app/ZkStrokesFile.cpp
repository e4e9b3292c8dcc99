#include "ZkStrokesFile.h"

#include <QJsonArray>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>

namespace zk::app {

namespace {

constexpr double maxWidth = 10000;

class StrokeReader : public MarkReader
{
public:
    using MarkReader::MarkReader;

    bool read(Stroke *stroke)
    {
        return readKeys({QStringLiteral("frame"),
                         QStringLiteral("mode"),
                         QStringLiteral("width"),
                         QStringLiteral("points")})
            && readFrame(&stroke->frame) && readMode(&stroke->mode) && readWidth(&stroke->width)
            && readPoints(&stroke->points);
    }

private:
    bool readMode(Stroke::Mode *mode)
    {
        const QString text = value("mode").toString();
        if (text == QLatin1String("keep"))
            *mode = Stroke::Mode::Keep;
        else if (text == QLatin1String("remove"))
            *mode = Stroke::Mode::Remove;
        else if (text == QLatin1String("erase"))
            *mode = Stroke::Mode::Erase;
        else
            return fail(QStringLiteral("mode"),
                        QStringLiteral("must be \"keep\", \"remove\" or \"erase\""));
        return true;
    }

    bool readWidth(double *width)
    {
        *width = value("width").toDouble(-1);
        if (*width <= 0 || *width > maxWidth)
            return fail(
                QStringLiteral("width"),
                QStringLiteral("must be a number of pixels above 0, at most %1").arg(maxWidth));
        return true;
    }

    bool readPoints(QVector<QPointF> *points)
    {
        const QJsonArray array = value("points").toArray();
        if (array.isEmpty())
            return fail(QStringLiteral("points"), QStringLiteral("must be a list of [x, y] pairs"));
        for (int i = 0; i < array.size(); ++i) {
            const QJsonArray pair = array.at(i).toArray();
            if (pair.size() != 2 || !pair.at(0).isDouble() || !pair.at(1).isDouble())
                return fail(QStringLiteral("points[%1]").arg(i),
                            QStringLiteral("must be two numbers, [x, y]"));
            points->append(QPointF(pair.at(0).toDouble(), pair.at(1).toDouble()));
        }
        return true;
    }
};

QRectF boundsOf(const Stroke &stroke)
{
    QRectF bounds(stroke.points.first(), QSizeF(0, 0));
    for (const QPointF &point : stroke.points) {
        bounds.setLeft(qMin(bounds.left(), point.x()));
        bounds.setRight(qMax(bounds.right(), point.x()));
        bounds.setTop(qMin(bounds.top(), point.y()));
        bounds.setBottom(qMax(bounds.bottom(), point.y()));
    }
    const double radius = stroke.width / 2;
    return bounds.adjusted(-radius, -radius, radius, radius);
}

} // namespace

QImage Stroke::paint(const QSize &sourceSize, const QSize &canvasSize) const
{
    QImage image(canvasSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(double(canvasSize.width()) / sourceSize.width(),
                  double(canvasSize.height()) / sourceSize.height());
    painter.setPen(QPen(Qt::white, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath path(points.first());
    // A stroke of one point is a dot: a line of no length has round caps only when it has a line.
    path.lineTo(points.first() + QPointF(0.001, 0));
    for (const QPointF &point : points)
        path.lineTo(point);
    painter.drawPath(path);
    return image;
}

bool StrokesFile::load(const QString &path, QString *error)
{
    return loadMarks<StrokeReader>(
        path, QStringLiteral("strokes"), QStringLiteral("stroke"), &m_strokes, error);
}

void StrokesFile::setCentred(const QSize &sourceSize)
{
    const QPointF middle(sourceSize.width() / 2.0, sourceSize.height() / 2.0);
    const QPointF reach(0, sourceSize.height() / 10.0);
    Stroke stroke;
    stroke.width = qMax(1.0, sourceSize.height() / 20.0);
    stroke.points = {middle - reach, middle, middle + reach};
    forgetFile();
    m_strokes = {stroke};
}

bool StrokesFile::fits(const QSize &sourceSize, qint64 frameCount, QString *error) const
{
    for (int i = 0; i < m_strokes.size(); ++i) {
        const Stroke &stroke = m_strokes.at(i);
        const QString field = QStringLiteral("strokes[%1]").arg(i);
        if (!hasFrame(field, stroke.frame, frameCount, error))
            return false;
        if (!boundsOf(stroke).intersects(QRectF(QPointF(0, 0), sourceSize))) {
            *error = errorAt(field + QStringLiteral(".points"),
                             QStringLiteral("the stroke lies outside the %1x%2 frame")
                                 .arg(sourceSize.width())
                                 .arg(sourceSize.height()));
            return false;
        }
    }
    return true;
}

} // namespace zk::app
