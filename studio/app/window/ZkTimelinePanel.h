#pragma once

#include "ZkStudioTimelinePresenter.h"

#include <QWidget>

class QLabel;
class ZkStudioTimelineView;
class ZkToolButton;
class ZkUIView;
class ZkZoomSlider;

namespace zk::datamodel {
class ProjectClip;
}

namespace zk::app {

class WindowActions;

// The timeline of one clip of the project.
class TimelinePanel : public QWidget
{
    Q_OBJECT

public:
    TimelinePanel(const WindowActions &actions, ZkUIView *scene, QWidget *parent = nullptr);
    ~TimelinePanel() override;

    // Null: nothing. Not owned; it must be taken back before it dies.
    void setClip(const datamodel::ProjectClip *clip);
    ZkStudioTimelinePresenter *presenter() { return &m_presenter; }
    ZkZoomSlider *zoomSlider() const { return m_zoom; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void retranslate();

    ZkStudioTimelinePresenter m_presenter;
    ZkStudioTimelineView *m_view; // this panel's child, so it dies before the presenter
    QLabel *m_title;
    ZkZoomSlider *m_zoom;
    QString m_clipName;
};

} // namespace zk::app
