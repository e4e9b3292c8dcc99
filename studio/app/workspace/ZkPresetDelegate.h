#pragma once

#include <QCache>
#include <QPixmap>
#include <QStyledItemDelegate>

namespace zk::app {

// Paints a preset: its thumbnail with a badge for what is not on disk, the progress of a download, a
// frame round the one that is applied, and the name below.
class PresetDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit PresetDelegate(QObject *parent = nullptr);

    static QSize cellSize(); // widget pixels
    // Thumbnails may be other ones now.
    void forgetThumbnails() { m_thumbnails.clear(); }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter,
               const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    QPixmap thumbnail(const QString &path) const;
    void paintThumbnail(QPainter *painter, const QRect &place, const QModelIndex &index) const;
    void paintState(QPainter *painter, const QRect &place, const QModelIndex &index) const;
    void paintDownload(QPainter *painter, const QRect &place, int percent) const;
    void paintFrame(QPainter *painter,
                    const QRect &place,
                    const QStyleOptionViewItem &option,
                    bool isApplied) const;
    void paintName(QPainter *painter,
                   const QStyleOptionViewItem &option,
                   const QRect &place,
                   const QModelIndex &index) const;

    mutable QCache<QString, QPixmap> m_thumbnails; // by path; those that could be read
};

} // namespace zk::app
