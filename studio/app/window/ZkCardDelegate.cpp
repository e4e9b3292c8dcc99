#include "ZkCardDelegate.h"

#include "ZkProjectListModel.h"
#include "ZkWidgets.h"

#include <QPainter>

namespace zk::app {

namespace {

// Widget pixels.
constexpr int margin = 4; // around the frame
constexpr int padding = 5; // between the frame and what is in it
constexpr int gap = 6; // between picture and texts
constexpr QSize cardPicture(112, 63);
constexpr QSize linePicture(80, 45);
constexpr int markSize = 24;
constexpr int markMargin = 3;
constexpr qreal radius = 5;

QColor color(int type)
{
    return ZkSkinManager::instance()->color(type);
}

QString markIcon(int mark)
{
    switch (mark) {
    case ProjectListModel::CutoutMark:
        return QStringLiteral("cutout");
    case ProjectListModel::MissingMark:
        return QStringLiteral("error");
    case ProjectListModel::ChangedMark:
        return QStringLiteral("warning");
    default:
        return QString();
    }
}

int textHeight(const QStyleOptionViewItem &option)
{
    return 2 * option.fontMetrics.lineSpacing();
}

} // namespace

CardDelegate::CardDelegate(Shape shape, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_shape(shape)
{ }

QSize CardDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    const int border = 2 * (margin + padding);
    if (m_shape == Shape::Card)
        return {cardPicture.width() + border,
                cardPicture.height() + gap + textHeight(option) + border};
    return {linePicture.width() + 2 * gap + border,
            qMax(linePicture.height(), textHeight(option)) + border};
}

QRect CardDelegate::pictureRect(const QStyleOptionViewItem &option) const
{
    const QRect inside = option.rect.adjusted(
        margin + padding, margin + padding, -margin - padding, -margin - padding);
    if (m_shape == Shape::Card)
        return {inside.topLeft(), QSize(inside.width(), cardPicture.height())};
    return {QPoint(inside.left(), inside.center().y() - linePicture.height() / 2), linePicture};
}

QRect CardDelegate::textRect(const QStyleOptionViewItem &option) const
{
    const QRect picture = pictureRect(option);
    const int height = textHeight(option);
    if (m_shape == Shape::Card)
        return {picture.left(), picture.bottom() + gap, picture.width(), height};
    const int left = picture.right() + gap + padding;
    return {left,
            option.rect.center().y() - height / 2,
            option.rect.right() - margin - padding - left,
            height};
}

void CardDelegate::paint(QPainter *painter,
                         const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    const ZkPainterCaretaker caretaker(painter);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    // A list from left to right makes its items as high as it is itself.
    QStyleOptionViewItem own = option;
    own.rect.setHeight(qMin(option.rect.height(), sizeHint(option, index).height()));
    paintFrame(painter, own);
    paintPicture(painter, pictureRect(own), index);
    paintTexts(painter, own, index);
}

void CardDelegate::paintFrame(QPainter *painter, const QStyleOptionViewItem &option) const
{
    const bool isSelected = option.state & QStyle::State_Selected;
    const bool isHovered = option.state & QStyle::State_MouseOver;
    const bool hasFocus = option.state & QStyle::State_HasFocus;
    const QRectF frame =
        QRectF(option.rect).adjusted(margin - 0.5, margin - 0.5, -margin + 0.5, -margin + 0.5);
    painter->setPen(isSelected || hasFocus ? QPen(color(ZKSKIN::Accent), hasFocus ? 2 : 1)
                                           : QPen(Qt::NoPen));
    painter->setBrush(isSelected      ? color(ZKSKIN::RaisedHover)
                          : isHovered ? color(ZKSKIN::Raised)
                                      : QColor(Qt::transparent));
    painter->drawRoundedRect(frame, radius, radius);
}

void CardDelegate::paintPicture(QPainter *painter,
                                const QRect &rect,
                                const QModelIndex &index) const
{
    painter->fillRect(rect, color(ZKSKIN::Canvas));
    const auto picture = index.data(Qt::DecorationRole).value<QPixmap>();
    const int mark = index.data(ProjectListModel::MarkRole).toInt();
    if (!picture.isNull()) {
        QRect target(QPoint(), picture.size().scaled(rect.size(), Qt::KeepAspectRatio));
        target.moveCenter(rect.center());
        painter->setOpacity(mark == ProjectListModel::MissingMark ? 0.4 : 1.0);
        painter->drawPixmap(target, picture);
        painter->setOpacity(1.0);
    } else {
        QRect target(0, 0, markSize, markSize);
        target.moveCenter(rect.center());
        ZkSkinManager::instance()
            ->icon(QStringLiteral("clip"))
            .paint(painter, target, Qt::AlignCenter, QIcon::Disabled);
    }
    paintMark(painter, rect, mark);
}

void CardDelegate::paintMark(QPainter *painter, const QRect &picture, int mark)
{
    const QIcon icon = ZkSkinManager::instance()->icon(markIcon(mark));
    if (icon.isNull())
        return;
    const QRect badge(picture.right() - markSize - markMargin + 1,
                      picture.top() + markMargin,
                      markSize,
                      markSize);
    QColor shade = color(ZKSKIN::Canvas);
    shade.setAlphaF(0.75); // so that the mark is seen on any picture
    painter->setPen(Qt::NoPen);
    painter->setBrush(shade);
    painter->drawRoundedRect(badge, radius, radius);
    icon.paint(painter, badge.adjusted(2, 2, -2, -2));
}

void CardDelegate::paintTexts(QPainter *painter,
                              const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    const QRect rect = textRect(option);
    const int line = option.fontMetrics.lineSpacing();
    const QRect first(rect.left(), rect.top(), rect.width(), line);
    painter->setFont(option.font);
    painter->setPen(color(ZKSKIN::Text));
    painter->drawText(
        first,
        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        option.fontMetrics.elidedText(index.data().toString(), Qt::ElideMiddle, rect.width()));
    const bool isMissing = index.data(ProjectListModel::MarkRole) == ProjectListModel::MissingMark;
    painter->setPen(color(isMissing ? ZKSKIN::RemoveStroke : ZKSKIN::DimText));
    painter->drawText(
        first.translated(0, line),
        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        option.fontMetrics.elidedText(
            index.data(ProjectListModel::SubtitleRole).toString(), Qt::ElideRight, rect.width()));
}

} // namespace zk::app
