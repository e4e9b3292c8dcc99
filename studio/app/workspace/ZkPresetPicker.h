#pragma once

#include <QModelIndex>
#include <QPersistentModelIndex>
#include <QSet>
#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class IZkAbstractMediaItem;
class ZkSmartKeyingPresenter;
class ZkStudioMediaLibrary;

namespace zk::app {

class PresetDelegate;
class PresetDownloads;
class PresetListModel;

// Shows the cutout presets and applies the one that is chosen, after downloading it if need be. What is
// applied follows the effect on the clip, also when that is undone.
//
// Presenter and library are not owned. The presenter must have a preset manager.
class PresetPicker : public QWidget
{
    Q_OBJECT

public:
    PresetPicker(ZkSmartKeyingPresenter *presenter,
                 ZkStudioMediaLibrary *library,
                 QWidget *parent = nullptr);
    ~PresetPicker() override;

    bool isDownloading() const;

Q_SIGNALS:
    void downloadingChanged();

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildSearch();
    void buildList();
    void buildNotice();
    void layOut();
    void connectPresenter();
    void connectLibrary();
    void retranslate();

    bool isRunning(const IZkAbstractMediaItem *item) const;
    void choose(const QModelIndex &index);
    void followEffect();
    void followList();
    void followFailure();
    void retry();
    void showNotice();
    bool isServerUnreachable() const;
    void exposeVisible();

    ZkSmartKeyingPresenter *const m_presenter;
    ZkStudioMediaLibrary *const m_library;
    PresetDownloads *m_downloads;
    PresetListModel *m_model;
    QLineEdit *m_search = nullptr;
    QListView *m_list = nullptr;
    PresetDelegate *m_delegate = nullptr;
    QWidget *m_notice = nullptr;
    QLabel *m_noticeText = nullptr;
    QPushButton *m_retryButton = nullptr;
    QPersistentModelIndex m_picked; // of the source
    bool m_hasFailed = false; // to download what was picked
    QSet<QString> m_exposed; // slugs that were reported as seen
    QTimer m_exposeTimer;
};

} // namespace zk::app
