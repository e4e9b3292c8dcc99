// Not public: the fields of the colour dialog.
#pragma once

#include <QImage>
#include <QWidget>

// A field that is dragged over with the mouse, or moved over with the arrow keys (Shift: ten times as
// far). Positions go from 0 to 1 on either axis, from the left and from the bottom.
class ZkColorField : public QWidget
{
    Q_OBJECT

public:
    explicit ZkColorField(QWidget *parent = nullptr);
    ~ZkColorField() override;

    QPointF position() const { return m_position; }
    // Does not report.
    void setPosition(const QPointF &position);

Q_SIGNALS:
    void sigMoved(); // by the user

protected:
    // The colours under the marker; asked for again after a change of size or forgetPicture().
    virtual QImage makePicture(const QSize &deviceSize) const = 0;
    virtual void paintMarker(QPainter &painter, const QRectF &field) const = 0;
    void forgetPicture();

    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QRectF field() const;
    void follow(const QPointF &point);
    void moveTo(const QPointF &position);

    QPointF m_position;
    QImage m_picture;
};

// Saturation to the right, value upwards, of one hue.
class ZkSaturationValueField : public ZkColorField
{
    Q_OBJECT

public:
    explicit ZkSaturationValueField(QWidget *parent = nullptr);

    double hue() const { return m_hue; }
    void setHue(double hue); // 0..1

protected:
    QImage makePicture(const QSize &deviceSize) const override;
    void paintMarker(QPainter &painter, const QRectF &field) const override;

private:
    double m_hue = 0;
};

// A band of all hues from left to right.
class ZkHueBand : public ZkColorField
{
    Q_OBJECT

public:
    explicit ZkHueBand(QWidget *parent = nullptr);

protected:
    QImage makePicture(const QSize &deviceSize) const override;
    void paintMarker(QPainter &painter, const QRectF &field) const override;
};
