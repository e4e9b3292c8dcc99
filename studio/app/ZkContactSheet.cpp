#include "ZkContactSheet.h"

#include <QPainter>
#include <QSaveFile>

namespace zk::app {

namespace {

constexpr int rowCount = 5;
constexpr int cellWidth = 360;
constexpr int gap = 8;
constexpr int headerHeight = 28;
constexpr int labelWidth = 64;
constexpr int squareSize = 12;

void drawGrid(QPainter *painter, const QRect &cell)
{
    painter->save();
    painter->setClipRect(cell);
    painter->fillRect(cell, QColor(0x9a, 0x9a, 0x9a));
    for (int y = 0; y * squareSize < cell.height(); ++y) {
        for (int x = y % 2; x * squareSize < cell.width(); x += 2) {
            painter->fillRect(cell.x() + x * squareSize,
                              cell.y() + y * squareSize,
                              squareSize,
                              squareSize,
                              QColor(0x70, 0x70, 0x70));
        }
    }
    painter->restore();
}

} // namespace

QVector<qint64> ContactSheet::framesOf(qint64 frameCount)
{
    const qint64 count = qMin<qint64>(rowCount, frameCount);
    QVector<qint64> frames;
    for (qint64 i = 0; i < count; ++i)
        frames.append(count > 1 ? i * (frameCount - 1) / (count - 1) : 0);
    return frames;
}

QImage ContactSheet::render() const
{
    if (m_rows.isEmpty())
        return QImage();
    const QSize source = m_rows.constFirst().cells.constFirst().size();
    const int cellHeight = qMax(1, cellWidth * source.height() / qMax(1, source.width()));
    QImage sheet(labelWidth + m_titles.size() * (cellWidth + gap),
                 headerHeight + m_rows.size() * (cellHeight + gap),
                 QImage::Format_RGB32);
    sheet.fill(QColor(0x1e, 0x1f, 0x22));
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setPen(QColor(0xd0, 0xd0, 0xd0));
    for (int column = 0; column < m_titles.size(); ++column) {
        const QRect header(labelWidth + column * (cellWidth + gap), 0, cellWidth, headerHeight);
        painter.drawText(header, Qt::AlignVCenter | Qt::AlignLeft, m_titles.at(column));
    }
    for (int i = 0; i < m_rows.size(); ++i) {
        const Row &row = m_rows.at(i);
        const int top = headerHeight + i * (cellHeight + gap);
        painter.drawText(QRect(gap, top, labelWidth - 2 * gap, cellHeight),
                         Qt::AlignVCenter | Qt::AlignRight,
                         QString::number(row.frame));
        for (int column = 0; column < row.cells.size(); ++column) {
            const QRect cell(labelWidth + column * (cellWidth + gap), top, cellWidth, cellHeight);
            drawGrid(&painter, cell);
            painter.drawImage(cell,
                              row.cells.at(column).scaled(
                                  cell.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        }
    }
    return sheet;
}

bool ContactSheet::save(const QString &path, QString *error) const
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && render().save(&file, "PNG") && file.commit())
        return true;
    *error = QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString());
    return false;
}

} // namespace zk::app
