// Keeps the user waiting while objects are tracked; not public.
#pragma once

#include "ZkWidgets.h"

#include <QElapsedTimer>

class ZkAIErasingPresenter;
class ZkAIErasingProgressPanel;

// One tracking run: measures it, tells the presenter how long it took, and is accepted when it ends.
// Whatever closes the dialog before that stops the run and rejects. Built in the middle of a run it
// measures from there.
//
// The presenter is not owned and must outlive it.
class ZkAIErasingProressDialog : public ZkFramelessDialog
{
    Q_OBJECT

public:
    ZkAIErasingProressDialog(ZkAIErasingPresenter *presenter, QWidget *parent);
    ~ZkAIErasingProressDialog() override;

    void reject() override;

protected:
    void changeEvent(QEvent *event) override;

private:
    void setUpBars();
    void followTracking(bool tracking);
    void sendCancelEvent() const;

    ZkAIErasingPresenter *m_presenter;
    ZkAIErasingProgressPanel *m_panel;
    ZkPushButton *m_cancelButton = nullptr;
    QElapsedTimer m_elapsed; // invalid until the run starts
    bool m_isCancelling = false; // the end of the run is not its success
};
