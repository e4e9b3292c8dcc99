#pragma once

#include <QImage>
#include <QWidget>

namespace zk::app {

// Two pictures of one size on top of each other, the first one to the left of a divider and the second one
// to its right. The divider follows the mouse and the arrow keys; while only the first one is shown there is
// none.
class CompareView : public QWidget
{
    Q_OBJECT

public:
    explicit CompareView(QWidget *parent = nullptr);

    void setPictures(const QImage &before, const QImage &after);
    const QImage &before() const { return m_before; }
    const QImage &after() const { return m_after; }
    // 0 (all of it is after) to 1 (before); initially in the middle.
    double divider() const { return m_divider; }
    void setDivider(double place);
    bool showsBeforeOnly() const { return m_showsBeforeOnly; }
    void setShowsBeforeOnly(bool before);

    QSize sizeHint() const override;

Q_SIGNALS:
    void dividerMoved(double place);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QRectF pictureRect() const;
    void drawPart(QPainter *painter, const QImage &picture, const QRectF &part) const;
    void drawDivider(QPainter *painter, double x) const;
    void drawName(QPainter *painter, const QString &name, bool isLeft) const;
    void follow(const QPoint &point);

    QImage m_before;
    QImage m_after;
    double m_divider = 0.5;
    bool m_showsBeforeOnly = false;
};

} // namespace zk::app
