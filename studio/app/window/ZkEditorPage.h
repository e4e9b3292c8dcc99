#pragma once

#include <QWidget>

class QSplitter;
class ZkUIView;

namespace zk::datamodel {
class Project;
}

namespace zk::app {

class ClipList;
class MediaBin;
class PreviewPanel;
class ClipProperties;
class TimelinePanel;
class WindowActions;

// The panels of the editor: media, preview and properties above, clips and timeline below. Preview and
// timeline show the project's current clip.
class EditorPage : public QWidget
{
    Q_OBJECT

public:
    EditorPage(datamodel::Project *project,
               const WindowActions &actions,
               ZkUIView *scene,
               QWidget *parent = nullptr);
    ~EditorPage() override;

    MediaBin *mediaBin() const { return m_media; }
    ClipList *clipList() const { return m_clips; }
    PreviewPanel *preview() const { return m_preview; }
    TimelinePanel *timeline() const { return m_timeline; }

    QByteArray saveLayout() const;
    void restoreLayout(const QByteArray &layout);
    void resetLayout();

private:
    void setUpSplitters();
    void connectViews();
    void connectPlayback();
    void showCurrent();
    void letGo();

    datamodel::Project *const m_project;
    const WindowActions &m_actions;
    QSplitter *m_rows;
    QSplitter *m_columns;
    MediaBin *m_media;
    PreviewPanel *m_preview;
    ClipProperties *m_properties;
    ClipList *m_clips;
    TimelinePanel *m_timeline;
    QString m_shownFile; // of the current clip
};

} // namespace zk::app
