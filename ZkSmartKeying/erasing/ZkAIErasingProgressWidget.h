// How far tracking has come, with a way out; not public.
#pragma once

#include "../workspace/ZkPercentBar.h"

class ZkAIErasingProgressWidget : public ZkWidget
{
    Q_OBJECT

public:
    explicit ZkAIErasingProgressWidget(QWidget *parent);
    ~ZkAIErasingProgressWidget() override;

    void setProgress(int percent);

Q_SIGNALS:
    void sigCancelBtnClicked();

protected:
    void RetranslateUi() override;

private:
    void layOut();

    ZkPercentBar m_progress;
    ZkToolButton *m_cancelButton;
};
