#pragma once

#include "ZkMediaPlayer.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QStackedLayout;
class ZkMediaPlayerWidget;

namespace zk::datamodel {
class ProjectClip;
}

namespace zk::app {

class PreviewBar;
class WindowActions;

// Plays one clip of the project. Without one it says how to get one.
class PreviewPanel : public QWidget
{
    Q_OBJECT

public:
    explicit PreviewPanel(const WindowActions &actions, QWidget *parent = nullptr);
    ~PreviewPanel() override;

    // Null: nothing. Not owned; it must be taken back before it dies.
    void setClip(const datamodel::ProjectClip *clip);
    ZkMediaPlayerPresenter *player() { return &m_player; }
    PreviewBar *bar() const { return m_bar; }

protected:
    void changeEvent(QEvent *event) override;

private:
    enum Page {
        PlayerPage,
        EmptyPage,
        OfflinePage,
    };

    QWidget *createHint(const QString &name, QLabel **text, QAction *action);
    void retranslate();
    void close();

    ZkMediaPlayerPresenter m_player;
    ZkPlayheadConnector m_playheads;
    QStackedLayout *m_pages;
    ZkMediaPlayerWidget *m_picture;
    PreviewBar *m_bar;
    QLabel *m_emptyText = nullptr;
    QLabel *m_offlineText = nullptr;
    QString m_clipName;
};

} // namespace zk::app
