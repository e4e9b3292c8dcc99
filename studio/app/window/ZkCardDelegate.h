#pragma once

#include <QStyledItemDelegate>

namespace zk::app {

// Paints rows of a ProjectListModel: as a card, with the texts under the picture, or as a line, with the
// texts beside it.
class CardDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    enum class Shape {
        Card,
        Line,
    };

    CardDelegate(Shape shape, QObject *parent);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter,
               const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    QRect pictureRect(const QStyleOptionViewItem &option) const;
    QRect textRect(const QStyleOptionViewItem &option) const;
    void paintFrame(QPainter *painter, const QStyleOptionViewItem &option) const;
    void paintPicture(QPainter *painter, const QRect &rect, const QModelIndex &index) const;
    void paintTexts(QPainter *painter,
                    const QStyleOptionViewItem &option,
                    const QModelIndex &index) const;
    static void paintMark(QPainter *painter, const QRect &picture, int mark);

    const Shape m_shape;
};

} // namespace zk::app
