#include "ZkPresetDelegate.h"

#include "ZkPresetListModel.h"

#include "ZkWidgets.h"

#include <QPainter>
#include <QPainterPath>
#include <QTextLayout>

namespace zk::app {

namespace {

// Widget pixels.
constexpr int thumbnailSide = 54;
constexpr int cellWidth = 80;
constexpr int cellHeight = 100; // two lines of a name
constexpr int topMargin = 6;
constexpr int nameGap = 4;
constexpr int badgeSide = 20;
constexpr int barHeight = 4;
constexpr qreal radius = 5;

constexpr int cachedThumbnails = 300;

QColor skinColor(ZKSKIN::ZkColorType type)
{
    return ZkSkinManager::instance()->color(type);
}

// Characters of the text that fit on one line, up to the end of a word.
int firstLineLength(const QString &text, const QFont &font, int width)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(width);
    layout.endLayout();
    return line.textLength();
}

QRect thumbnailPlace(const QRect &cell)
{
    return {cell.left() + (cell.width() - thumbnailSide) / 2,
            cell.top() + topMargin,
            thumbnailSide,
            thumbnailSide};
}

} // namespace

PresetDelegate::PresetDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
    , m_thumbnails(cachedThumbnails)
{ }

QSize PresetDelegate::cellSize()
{
    return {cellWidth, cellHeight};
}

QSize PresetDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return cellSize();
}

QPixmap PresetDelegate::thumbnail(const QString &path) const
{
    if (const QPixmap *const known = m_thumbnails.object(path))
        return *known;
    const QPixmap pixmap(path);
    if (!pixmap.isNull())
        m_thumbnails.insert(path, new QPixmap(pixmap));
    return pixmap;
}

void PresetDelegate::paint(QPainter *painter,
                           const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    ZkPainterCaretaker caretaker(painter);
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRect place = thumbnailPlace(option.rect);
    if (!(option.state & QStyle::State_Enabled))
        painter->setOpacity(0.45);
    paintThumbnail(painter, place, index);
    paintState(painter, place, index);
    paintFrame(painter, place, option, index.data(PresetListModel::AppliedRole).toBool());
    paintName(painter, option, place, index);
}

void PresetDelegate::paintThumbnail(QPainter *painter,
                                    const QRect &place,
                                    const QModelIndex &index) const
{
    ZkPainterCaretaker caretaker(painter);
    QPainterPath outline;
    outline.addRoundedRect(place, radius, radius);
    painter->fillPath(outline, skinColor(ZKSKIN::Field));
    const QString path = index.data(ZCutoutPresetItemModel::ThumbnailPathRole).toString();
    const QPixmap pixmap = path.isEmpty() ? QPixmap() : thumbnail(path);
    painter->setClipPath(outline);
    if (!pixmap.isNull())
        painter->drawPixmap(place, pixmap);
}

void PresetDelegate::paintState(QPainter *painter,
                                const QRect &place,
                                const QModelIndex &index) const
{
    QString icon;
    switch (index.data(PresetListModel::StateRole).toInt()) {
    case PresetListModel::Downloading:
        paintDownload(painter, place, index.data(PresetListModel::PercentRole).toInt());
        return;
    case PresetListModel::OnServer:
        icon = QStringLiteral("download");
        break;
    case PresetListModel::DownloadFailed:
        icon = QStringLiteral("error");
        break;
    default:
        return;
    }
    const QRect badge(place.right() + 1 - badgeSide + 4,
                      place.bottom() + 1 - badgeSide + 4,
                      badgeSide,
                      badgeSide);
    painter->setPen(Qt::NoPen);
    painter->setBrush(skinColor(ZKSKIN::PanelBackground));
    painter->drawEllipse(badge);
    ZkSkinManager::instance()->icon(icon).paint(painter, badge.adjusted(2, 2, -2, -2));
}

void PresetDelegate::paintDownload(QPainter *painter, const QRect &place, int percent) const
{
    QColor veil = skinColor(ZKSKIN::Canvas);
    veil.setAlpha(170);
    painter->setPen(Qt::NoPen);
    painter->setBrush(veil);
    painter->drawRoundedRect(place, radius, radius);
    painter->setPen(skinColor(ZKSKIN::Text));
    painter->drawText(place, Qt::AlignCenter, QStringLiteral("%1%").arg(percent));

    QRectF bar(place.left() + 4, place.bottom() - 3 - barHeight, place.width() - 8, barHeight);
    painter->setPen(Qt::NoPen);
    painter->setBrush(skinColor(ZKSKIN::Field));
    painter->drawRoundedRect(bar, barHeight / 2.0, barHeight / 2.0);
    bar.setWidth(bar.width() * percent / 100);
    painter->setBrush(skinColor(ZKSKIN::Accent));
    painter->drawRoundedRect(bar, barHeight / 2.0, barHeight / 2.0);
}

// The keyboard's focus is a thin line round the whole cell, so that it does not look like the frame
// of what is applied.
void PresetDelegate::paintFrame(QPainter *painter,
                                const QRect &place,
                                const QStyleOptionViewItem &option,
                                bool isApplied) const
{
    painter->setBrush(Qt::NoBrush);
    const QRectF edge = QRectF(place);
    if (isApplied) {
        painter->setPen(QPen(skinColor(ZKSKIN::Accent), 2));
        painter->drawRoundedRect(edge.adjusted(-2, -2, 2, 2), radius + 2, radius + 2);
    } else if (option.state & QStyle::State_MouseOver) {
        painter->setPen(QPen(skinColor(ZKSKIN::DimText), 1));
        painter->drawRoundedRect(edge.adjusted(-0.5, -0.5, 0.5, 0.5), radius, radius);
    }
    if (option.state & QStyle::State_HasFocus) {
        painter->setPen(QPen(skinColor(ZKSKIN::AccentHover), 1));
        const QRectF cell = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
        painter->drawRoundedRect(cell, radius, radius);
    }
}

void PresetDelegate::paintName(QPainter *painter,
                               const QStyleOptionViewItem &option,
                               const QRect &place,
                               const QModelIndex &index) const
{
    const QRect line(option.rect.left() + 2,
                     place.bottom() + nameGap,
                     option.rect.width() - 4,
                     option.rect.bottom() - place.bottom() - nameGap);
    const bool isApplied = index.data(PresetListModel::AppliedRole).toBool();
    QFont font = option.font;
    font.setPointSizeF(font.pointSizeF() * 0.88);
    painter->setFont(font);
    painter->setPen(skinColor(isApplied ? ZKSKIN::Text : ZKSKIN::DimText));
    // The second line takes what is left, if need be with dots.
    const QString name = index.data().toString();
    const QFontMetrics metrics(font);
    const int split = firstLineLength(name, font, line.width());
    const QString lines[] = {name.left(split).trimmed(), name.mid(split)};
    for (int i = 0; i < 2; ++i) {
        painter->drawText(line.adjusted(0, i * metrics.lineSpacing(), 0, 0),
                          Qt::AlignHCenter | Qt::AlignTop,
                          metrics.elidedText(lines[i], Qt::ElideRight, line.width()));
    }
}

} // namespace zk::app
