// What the progress dialog shows; not public.
#pragma once

#include "../workspace/ZkPercentBar.h"

class ZkAIErasingPresenter;

// Follows the presenter's tracking progress. The presenter is not owned.
class ZkAIErasingProgressPanel : public ZkWidget
{
    Q_OBJECT

public:
    ZkAIErasingProgressPanel(ZkAIErasingPresenter *presenter, QWidget *parent);
    ~ZkAIErasingProgressPanel() override;

protected:
    void RetranslateUi() override;

private:
    void layOut();

    ZkLabel *m_titleLabel;
    ZkLabel *m_statusLabel;
    ZkPercentBar m_progress;
};
