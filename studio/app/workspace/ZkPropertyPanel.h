#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QSlider;
class QVBoxLayout;
class ZkSmartKeyingPresenter;
class ZkStudioMediaLibrary;

namespace zk::app {

class BrushSection;
class PresetPicker;

// What can be set beside the picture: the brush, how the overlay looks, the effect and its preset.
//
// Presenter and library are not owned.
class PropertyPanel : public QWidget
{
    Q_OBJECT

public:
    PropertyPanel(ZkSmartKeyingPresenter *presenter,
                  ZkStudioMediaLibrary *library,
                  QWidget *parent = nullptr);

    BrushSection *brush() const { return m_brush; }
    PresetPicker *picker() const { return m_picker; }

protected:
    void changeEvent(QEvent *event) override;

private:
    QLabel *addTitle(QVBoxLayout *column);
    void addOpacity(QVBoxLayout *column);
    void addEffect(QVBoxLayout *column);
    void connectPresenter();
    void retranslate();
    void setOpacity(int percent);
    void followOpacity();
    bool showsEffects() const;
    void followEffect();

    ZkSmartKeyingPresenter *const m_presenter;
    QLabel *m_brushTitle = nullptr;
    BrushSection *m_brush = nullptr;
    QLabel *m_opacityName = nullptr;
    QSlider *m_opacity = nullptr;
    QLabel *m_opacityText = nullptr;
    QLabel *m_effectTitle = nullptr;
    QCheckBox *m_effectSwitch = nullptr;
    QLabel *m_effectHint = nullptr; // while the preview mode leaves effects out
    PresetPicker *m_picker = nullptr;
};

} // namespace zk::app
