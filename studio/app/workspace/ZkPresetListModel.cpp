#include "ZkPresetListModel.h"

#include "ZkPresetDownloads.h"
#include "ZkPresetNames.h"

namespace zk::app {

PresetListModel::PresetListModel(ZCutoutPresetItemModel *presets,
                                 PresetDownloads *downloads,
                                 QObject *parent)
    : QSortFilterProxyModel(parent)
    , m_presets(presets)
    , m_downloads(downloads)
{
    setSourceModel(presets);
    connect(downloads, &PresetDownloads::changed, this, &PresetListModel::refresh);
}

void PresetListModel::setFilter(const QString &text)
{
    m_filter = text.trimmed();
    invalidateFilter();
}

void PresetListModel::setApplied(const QModelIndex &preset)
{
    if (m_applied == preset)
        return;
    const QModelIndex before = m_applied;
    m_applied = preset;
    refreshIndex(before);
    refreshIndex(preset);
}

void PresetListModel::refreshIndex(const QModelIndex &source)
{
    const QModelIndex index = mapFromSource(source);
    if (index.isValid())
        emit dataChanged(index, index);
}

void PresetListModel::refresh(qint64 itemId)
{
    for (int row = 0; row < rowCount(); ++row) {
        if (idOf(index(row, 0)) == itemId)
            emit dataChanged(index(row, 0), index(row, 0));
    }
}

qint64 PresetListModel::idOf(const QModelIndex &index) const
{
    return index.data(ZCutoutPresetItemModel::MediaIdRole).toLongLong();
}

bool PresetListModel::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    const QModelIndex source = m_presets->index(row, 0, parent);
    return row == 0 || m_filter.isEmpty()
        || presetName(source.data().toString()).contains(m_filter, Qt::CaseInsensitive);
}

PresetListModel::PresetState PresetListModel::stateOf(const QModelIndex &index) const
{
    const IZkAbstractMediaItem *const item = ZCutoutPresetItemModel::mediaItemFromIndex(index);
    if (!item)
        return OnDisk;
    switch (m_downloads->state(item->id())) {
    case PresetDownloads::State::Running:
        return Downloading;
    case PresetDownloads::State::Failed:
        return DownloadFailed;
    case PresetDownloads::State::Idle:
        break;
    }
    return item->needsDownload() ? OnServer : OnDisk;
}

QString PresetListModel::nameOf(const QModelIndex &index) const
{
    return presetName(index.data(ZCutoutPresetItemModel::NameRole).toString());
}

// The name with what the picture shows beside it.
QString PresetListModel::described(const QModelIndex &index) const
{
    const QString name = nameOf(index);
    if (index.data(AppliedRole).toBool())
        return tr("%1, applied").arg(name);
    switch (stateOf(index)) {
    case OnServer:
        return tr("%1, will be downloaded").arg(name);
    case Downloading:
        return tr("%1, downloading, %2%").arg(name).arg(index.data(PercentRole).toInt());
    case DownloadFailed:
        return tr("%1, download failed").arg(name);
    case OnDisk:
        break;
    }
    return name;
}

QVariant PresetListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return nameOf(index);
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return described(index);
    case StateRole:
        return stateOf(index);
    case PercentRole:
        return m_downloads->percent(idOf(index));
    case AppliedRole:
        return m_applied.isValid() && mapToSource(index) == m_applied;
    default:
        return QSortFilterProxyModel::data(index, role);
    }
}

} // namespace zk::app
