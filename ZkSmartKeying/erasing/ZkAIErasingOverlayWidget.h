// The bar that floats over the player of an AI erasing workspace; not public.
#pragma once

#include "ZkWidgets.h"

class QStackedWidget;
class ZkAIErasingPresenter;
class ZkAIErasingPreviewEffectWidget;
class ZkAIErasingProgressWidget;

// Starts tracking, shows how far it has come, and lets its result be saved or discarded: one page for
// each. Hidden for a still image, whatever happens. Follows the presenter's tracking by itself; what
// the selection means for it is the player view's.
//
// The presenter is not owned and must outlive it.
class ZkAIErasingOverlayWidget : public ZkPlayerOverlayWidget
{
    Q_OBJECT

public:
    enum WidgetType {
        NoWidget = 0, // hidden
        PreviewEffectWidget = 1,
        TrackingProgressWidget = 2,
        SaveOrDiscardWidget = 3,
    };
    Q_ENUM(WidgetType)

    ZkAIErasingOverlayWidget(ZkAIErasingPresenter *presenter,
                             QWidget *playerWidget,
                             QWidget *parent);
    ~ZkAIErasingOverlayWidget() override;

    WidgetType type() const { return m_type; }
    // Ignored for a still image. The bar is placed and its page shown when the event loop runs again.
    void setType(WidgetType type);

Q_SIGNALS:
    void sigTypeChanged(ZkAIErasingOverlayWidget::WidgetType type);

public Q_SLOTS:
    void slotBtnSaveClicked();
    void slotBtnDiscardClicked();

protected:
    QPoint overlayPosition() const override;
    void RetranslateUi() override;

private:
    QWidget *createButtonBar();
    void layOut();
    void connectPages();
    void connectPresenter();
    QWidget *page() const; // of the type; the progress page's without one
    void reposition();
    void beginTracking();
    void cancelTracking();
    void followTracking(bool tracking);

    ZkAIErasingPresenter *m_presenter;
    ZkToolButton *m_discardButton = nullptr;
    ZkToolButton *m_saveButton = nullptr;
    ZkAIErasingPreviewEffectWidget *m_previewPage = nullptr;
    ZkAIErasingProgressWidget *m_progressPage = nullptr;
    QWidget *m_buttonPage = nullptr;
    WidgetType m_type = NoWidget;
    QStackedWidget *m_stack = nullptr;
};
