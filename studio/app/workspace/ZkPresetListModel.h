#pragma once

#include "ZCutoutPresetItemModel.h"

#include <QPersistentModelIndex>
#include <QSortFilterProxyModel>

namespace zk::app {

class PresetDownloads;

// The presets as a picker shows them: with the names in the user's language, what is on disk, how far a
// download is and which one is applied. A filter is part of a name; "None" passes every filter.
class PresetListModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    enum Role {
        StateRole = 300, // PresetState
        PercentRole, // int, of a download
        AppliedRole, // bool
    };
    enum PresetState {
        OnDisk,
        OnServer,
        Downloading,
        DownloadFailed,
    };
    Q_ENUM(PresetState)

    // Neither is owned.
    PresetListModel(ZCutoutPresetItemModel *presets,
                    PresetDownloads *downloads,
                    QObject *parent = nullptr);

    void setFilter(const QString &text);
    // Of the source model; an invalid one when the effect is of no preset of the list.
    void setApplied(const QModelIndex &preset);
    QModelIndex applied() const { return m_applied; }

    // The list below it has the same rows for every parent.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : QSortFilterProxyModel::rowCount(parent);
    }
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    PresetState stateOf(const QModelIndex &index) const;
    QString nameOf(const QModelIndex &index) const;
    QString described(const QModelIndex &index) const;
    qint64 idOf(const QModelIndex &index) const;
    void refresh(qint64 itemId);
    void refreshIndex(const QModelIndex &source);

    ZCutoutPresetItemModel *const m_presets;
    const PresetDownloads *const m_downloads;
    QString m_filter;
    QPersistentModelIndex m_applied; // of the source
};

} // namespace zk::app
