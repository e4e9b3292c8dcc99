#include "ZkBoxesFile.h"

#include <QJsonArray>

#include <algorithm>

namespace zk::app {

namespace {

constexpr double farthest = 100000; // pixels: no frame is larger

class BoxReader : public MarkReader
{
public:
    using MarkReader::MarkReader;

    bool read(Box *box)
    {
        return readKeys({QStringLiteral("frame"), QStringLiteral("rect")}) && readFrame(&box->frame)
            && readRect(&box->rect);
    }

private:
    bool readRect(QRectF *rect)
    {
        const QString name = QStringLiteral("rect");
        const QJsonArray array = value("rect").toArray();
        const auto isNumber = [](const QJsonValue &one) {
            return one.isDouble() && qAbs(one.toDouble()) <= farthest;
        };
        if (array.size() != 4 || !std::all_of(array.begin(), array.end(), isNumber))
            return fail(name, QStringLiteral("must be four numbers, [x, y, width, height]"));
        *rect = QRectF(array.at(0).toDouble(),
                       array.at(1).toDouble(),
                       array.at(2).toDouble(),
                       array.at(3).toDouble());
        return rect->width() >= 1 && rect->height() >= 1
            ? true
            : fail(name, QStringLiteral("must be at least 1 pixel wide and high"));
    }
};

} // namespace

bool BoxesFile::load(const QString &path, QString *error)
{
    return loadMarks<BoxReader>(
        path, QStringLiteral("boxes"), QStringLiteral("box"), &m_boxes, error);
}

bool BoxesFile::fits(const QSize &sourceSize, qint64 frameCount, QString *error) const
{
    for (int i = 0; i < m_boxes.size(); ++i) {
        const QString field = QStringLiteral("boxes[%1]").arg(i);
        if (!hasFrame(field, m_boxes.at(i).frame, frameCount, error))
            return false;
        const QRectF inside = m_boxes.at(i).rect & QRectF(QPointF(0, 0), sourceSize);
        if (inside.width() < 1 || inside.height() < 1) {
            *error = errorAt(field + QStringLiteral(".rect"),
                             QStringLiteral("the box lies outside the %1x%2 frame")
                                 .arg(sourceSize.width())
                                 .arg(sourceSize.height()));
            return false;
        }
    }
    return true;
}

} // namespace zk::app
