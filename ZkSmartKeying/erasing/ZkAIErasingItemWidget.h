// One selected object in the list; not public.
#pragma once

#include "ZkWidgets.h"

#include <QImage>
#include <QPushButton>

class ZkAIErasingListWidget;
class ZkAIErasingPresenter;

// The frame of a segment node with its time, and a button that takes the node away. The presenter is
// not owned.
class ZkAIErasingItemWidget : public ZkWidget
{
    Q_OBJECT

public:
    ZkAIErasingItemWidget(ZkAIErasingPresenter *presenter, ZkAIErasingListWidget *list);
    ~ZkAIErasingItemWidget() override;

    qint64 frame() const { return m_frame; }
    // Names the node; its time is shown.
    void setFrame(qint64 frame);
    QString timeText() const;
    QImage thumbnail() const { return m_thumbnail; }
    void setThumbnail(const QImage &thumbnail);
    // Goes to the frame and makes the node the one that is worked on.
    void select();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void RetranslateUi() override;

private:
    void layOut();
    void onDeleteButtonClicked();

    QImage m_thumbnail;
    QLabel *m_timeLabel;
    QPushButton *m_deleteButton;
    qint64 m_frame = -1;
    ZkAIErasingPresenter *m_presenter;
};
