#include "ZkStrokesFile.h"

#include "ZkJsonLocator.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>

#include <cmath>

namespace zk::app {

namespace {

constexpr double maxWidth = 10000;

// Reads one stroke; the first problem is kept with the field that has it.
class StrokeReader
{
public:
    StrokeReader(const QJsonObject &object, const QString &path)
        : m_object(object)
        , m_path(path)
    { }

    bool read(Stroke *stroke)
    {
        return readKeys() && readFrame(&stroke->frame) && readMode(&stroke->mode)
            && readWidth(&stroke->width) && readPoints(&stroke->points);
    }

    QString field() const { return m_field; }
    QString problem() const { return m_problem; }

private:
    bool fail(const QString &field, const QString &problem)
    {
        m_field = m_path + QLatin1Char('.') + field;
        m_problem = problem;
        return false;
    }

    bool readKeys()
    {
        const QStringList known {QStringLiteral("frame"),
                                 QStringLiteral("mode"),
                                 QStringLiteral("width"),
                                 QStringLiteral("points")};
        const QStringList keys = m_object.keys();
        for (const QString &key : keys) {
            if (!known.contains(key))
                return fail(
                    key,
                    QStringLiteral("unknown field, allowed are frame, mode, width and points"));
        }
        for (const QString &key : known) {
            if (!m_object.contains(key))
                return fail(key, QStringLiteral("is missing"));
        }
        return true;
    }

    bool readFrame(qint64 *frame)
    {
        const double value = m_object.value(QStringLiteral("frame")).toDouble(-1);
        if (value < 0 || value != std::floor(value) || value > 1e15)
            return fail(QStringLiteral("frame"), QStringLiteral("must be a whole number from 0"));
        *frame = qint64(value);
        return true;
    }

    bool readMode(Stroke::Mode *mode)
    {
        const QString text = m_object.value(QStringLiteral("mode")).toString();
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
        *width = m_object.value(QStringLiteral("width")).toDouble(-1);
        if (*width <= 0 || *width > maxWidth)
            return fail(
                QStringLiteral("width"),
                QStringLiteral("must be a number of pixels above 0, at most %1").arg(maxWidth));
        return true;
    }

    bool readPoints(QVector<QPointF> *points)
    {
        const QJsonValue value = m_object.value(QStringLiteral("points"));
        const QJsonArray array = value.toArray();
        if (!value.isArray() || array.isEmpty())
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

    QJsonObject m_object;
    QString m_path;
    QString m_field;
    QString m_problem;
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
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: cannot be read: %2").arg(path, file.errorString());
        return false;
    }
    m_path = path;
    m_text = file.readAll();
    m_strokes.clear();
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(m_text, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error = QStringLiteral("%1:%2: is not valid JSON: %3")
                     .arg(path)
                     .arg(jsonLineAt(m_text, parseError.offset))
                     .arg(parseError.errorString());
        return false;
    }
    const QJsonValue list = document.object().value(QStringLiteral("strokes"));
    if (!list.isArray() || list.toArray().isEmpty()) {
        *error = errorAt(QStringLiteral("strokes"),
                         QStringLiteral("must be a list of at least one stroke"));
        return false;
    }
    QVector<Stroke> strokes;
    const QJsonArray array = list.toArray();
    for (int i = 0; i < array.size(); ++i) {
        const QString field = QStringLiteral("strokes[%1]").arg(i);
        if (!array.at(i).isObject()) {
            *error = errorAt(field, QStringLiteral("must be an object"));
            return false;
        }
        Stroke stroke;
        StrokeReader reader(array.at(i).toObject(), field);
        if (!reader.read(&stroke)) {
            *error = errorAt(reader.field(), reader.problem());
            return false;
        }
        strokes.append(stroke);
    }
    m_strokes = strokes;
    return true;
}

void StrokesFile::setCentred(const QSize &sourceSize)
{
    const QPointF middle(sourceSize.width() / 2.0, sourceSize.height() / 2.0);
    const QPointF reach(0, sourceSize.height() / 10.0);
    Stroke stroke;
    stroke.width = qMax(1.0, sourceSize.height() / 20.0);
    stroke.points = {middle - reach, middle, middle + reach};
    m_path.clear();
    m_text.clear();
    m_strokes = {stroke};
}

bool StrokesFile::fits(const QSize &sourceSize, qint64 frameCount, QString *error) const
{
    for (int i = 0; i < m_strokes.size(); ++i) {
        const Stroke &stroke = m_strokes.at(i);
        const QString field = QStringLiteral("strokes[%1]").arg(i);
        if (stroke.frame >= frameCount) {
            *error = errorAt(field + QStringLiteral(".frame"),
                             QStringLiteral("frame %1 is past the end, the clip has frames 0 to %2")
                                 .arg(stroke.frame)
                                 .arg(frameCount - 1));
            return false;
        }
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

QString StrokesFile::errorAt(const QString &path, const QString &message) const
{
    return QStringLiteral("%1:%2: %3: %4")
        .arg(m_path)
        .arg(jsonLineOf(m_text, path))
        .arg(path, message);
}

} // namespace zk::app
