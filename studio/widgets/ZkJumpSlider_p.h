// Not public: the slider of players and of the zoom.
#pragma once

#include <QSlider>

// A horizontal slider whose handle jumps to where the groove is pressed and can be dragged from there.
class ZkJumpSlider : public QSlider
{
    Q_OBJECT

public:
    explicit ZkJumpSlider(QWidget *parent = nullptr);
    ~ZkJumpSlider() override;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
