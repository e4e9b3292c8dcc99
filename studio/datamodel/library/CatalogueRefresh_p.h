// Fetches the catalogue of the resource server. Not public.
#pragma once

#include "FileDownload_p.h"
#include "ZkCatalogue.h"
#include "ZkPresetStore.h"

#include <QNetworkAccessManager>

namespace zk::datamodel {

class CatalogueRefresh : public QObject
{
    Q_OBJECT

public:
    // The store must outlive it.
    CatalogueRefresh(const storage::PresetStore &store,
                     const QUrl &server,
                     const DownloadSettings &settings);

    // False when there is no server, or one is under way. Otherwise finished follows, never from
    // inside the call.
    bool start();

Q_SIGNALS:
    // The catalogue is meaningful when error is None.
    void finished(zk::datamodel::DownloadError error,
                  const QString &text,
                  const zk::datamodel::Catalogue &catalogue);

private:
    void end(DownloadError error, const QString &text);
    DownloadError read(Catalogue *catalogue, QString *text) const;

    const storage::PresetStore &m_store;
    const QUrl m_address; // of the catalogue
    const DownloadSettings m_settings;
    QNetworkAccessManager m_network;
    std::unique_ptr<FileDownload> m_download;
    QString m_file;
};

} // namespace zk::datamodel
