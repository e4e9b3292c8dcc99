#include "CatalogueRefresh_p.h"

#include <QFile>

namespace zk::datamodel {

namespace {

QUrl catalogueAddress(QUrl server)
{
    if (server.isEmpty())
        return QUrl();
    if (!server.path().endsWith(QLatin1Char('/')))
        server.setPath(server.path() + QLatin1Char('/'));
    return server.resolved(QUrl(QStringLiteral("catalogue.json")));
}

} // namespace

CatalogueRefresh::CatalogueRefresh(const storage::PresetStore &store,
                                   const QUrl &server,
                                   const DownloadSettings &settings)
    : m_store(store)
    , m_address(catalogueAddress(server))
    , m_settings(settings)
{ }

bool CatalogueRefresh::start()
{
    if (m_address.isEmpty() || m_download || !m_store.isOpen())
        return false;
    DownloadRequest request;
    request.url = m_address;
    request.partPath = m_store.incomingPath(QStringLiteral("catalogue.json"));
    request.targetPath = m_file = m_store.incomingPath(QStringLiteral("catalogue.json"));
    m_download = std::make_unique<FileDownload>(m_network, m_settings, request);
    connect(m_download.get(), &FileDownload::finished, this, &CatalogueRefresh::end);
    QMetaObject::invokeMethod(m_download.get(), &FileDownload::start, Qt::QueuedConnection);
    return true;
}

void CatalogueRefresh::end(DownloadError error, const QString &text)
{
    m_download.release()->deleteLater(); // it is the sender
    Catalogue catalogue;
    QString reason = text;
    if (error == DownloadError::None)
        error = read(&catalogue, &reason);
    QFile::remove(m_file);
    if (error != DownloadError::None)
        reason = m_address.toDisplayString() + QStringLiteral(": ") + reason;
    Q_EMIT finished(error, reason, catalogue);
}

DownloadError CatalogueRefresh::read(Catalogue *catalogue, QString *text) const
{
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly)) {
        *text = file.errorString();
        return DownloadError::Disk;
    }
    return Catalogue::fromJson(file.readAll(), m_address, catalogue, text) ? DownloadError::None
                                                                           : DownloadError::Refused;
}

} // namespace zk::datamodel
