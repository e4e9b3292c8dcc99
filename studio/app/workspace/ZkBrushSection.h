#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;
class QSlider;
class ZkSmartKeyingPresenter;

namespace zk::app {

// The width of the brush. A drag of the slider is one undo step, and so is a burst of keys or of turns of
// the wheel.
//
// The presenter is not owned.
class BrushSection : public QWidget
{
    Q_OBJECT

public:
    explicit BrushSection(ZkSmartKeyingPresenter *presenter, QWidget *parent = nullptr);

    // Ends the step that is being made.
    void commit();
    // Wider, or narrower, by so many widget pixels.
    void widen(int pixels);

protected:
    void changeEvent(QEvent *event) override;

private:
    void retranslate();
    void followPresenter();
    void change(int width);

    ZkSmartKeyingPresenter *const m_presenter;
    QLabel *m_name;
    QSlider *m_slider;
    QLabel *m_value;
    QTimer m_burstTimer;
    bool m_isChanging = false; // by this slider
};

} // namespace zk::app
