// The list of selected objects; not public.
#pragma once

#include "ZkWidgets.h"

class ZkAIErasingItemWidget;
class ZkAIErasingPresenter;

// A row for each segment node, in the order of the frames. The presenter is not owned.
class ZkAIErasingListWidget : public ZkListWidget
{
    Q_OBJECT

public:
    ZkAIErasingListWidget(ZkAIErasingPresenter *presenter, QWidget *settingView);
    ~ZkAIErasingListWidget() override;

    ZkAIErasingItemWidget *rowWidget(int row) const;

protected:
    void changeEvent(QEvent *event) override;

private:
    void connectPresenter();
    void translate();
    void reload();
    // The node of that frame has changed, came or went.
    void updateNode(qint64 frame);
    void showNode(qint64 frame);
    void goToFrame(qint64 frame);
    int rowOf(qint64 frame) const; // -1 for none
    void insertRow(int row);
    void fillRow(int row, int index, qint64 frame);

    ZkAIErasingPresenter *m_presenter;
    bool m_isUpdating = false;
};
