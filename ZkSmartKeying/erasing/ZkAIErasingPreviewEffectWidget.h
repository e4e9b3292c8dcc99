// The pill that starts tracking; not public.
#pragma once

#include "ZkWidgets.h"

// A press anywhere on it is a click.
class ZkAIErasingPreviewEffectWidget : public ZkWidget
{
    Q_OBJECT

public:
    explicit ZkAIErasingPreviewEffectWidget(QWidget *parent);
    ~ZkAIErasingPreviewEffectWidget() override;

Q_SIGNALS:
    void sigPreviewEffectBtnClicked();

protected:
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void RetranslateUi() override;

private:
    void setHovered(bool hovered);

    bool m_isHovered = false;
    ZkToolButton *m_iconButton;
    ZkLabel *m_label;
};
