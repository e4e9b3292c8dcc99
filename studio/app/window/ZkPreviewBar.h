#pragma once

#include "ZkWidgets.h"

class ZkMediaPlayerZoomerPresenter;

namespace zk::app {

// The bar under the preview: position, playback, length, and how large the picture is shown.
class PreviewBar : public ZkPlayerToolBarBase
{
    Q_OBJECT

public:
    PreviewBar(ZkMediaPlayerZoomerPresenter *zoomer, QWidget *parent = nullptr);

    QString shortcutText(int id) const override;

protected:
    void durationChanged(int duration) override;
    void frameChanged(int frame) override;
    void updateToolTip() override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setUpZoomBox();
    void showZoom();
    void chooseZoom(int row);

    ZkMediaPlayerZoomerPresenter *const m_zoomer;
    ZkTimeEditWidget *m_position;
    QLabel *m_length;
    ZkComboBox *m_zoomBox;
};

} // namespace zk::app
