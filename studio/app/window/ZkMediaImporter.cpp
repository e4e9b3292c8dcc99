#include "ZkMediaImporter.h"

#include <QFileInfo>

namespace zk::app {

MediaImporter::MediaImporter(QObject *parent)
    : QObject(parent)
{
    m_pool.setMaxThreadCount(1);
}

MediaImporter::~MediaImporter()
{
    cancel();
    m_pool.clear();
    m_pool.waitForDone();
}

void MediaImporter::cancel()
{
    ++m_epoch;
}

void MediaImporter::start(const ImportRequest &request)
{
    ++m_requests;
    const quint64 epoch = m_epoch;
    m_pool.start([this, request, epoch] {
        const ImportResult result = read(request, epoch);
        QMetaObject::invokeMethod(
            this,
            [this, result] {
                --m_requests;
                Q_EMIT finished(result);
            },
            Qt::QueuedConnection);
    });
}

ImportResult MediaImporter::read(const ImportRequest &request, quint64 epoch)
{
    ImportResult result;
    result.clipIndex = request.clipIndex;
    for (const QString &file : request.files) {
        if (m_epoch != epoch)
            break;
        const QString name = QFileInfo(file).fileName();
        Q_EMIT progress(result.entries.size() + result.failures.size(), request.files.size(), name);
        datamodel::MediaEntry entry;
        QString error;
        if (datamodel::probeMedia(file, &entry, &error))
            result.entries.append(entry);
        else
            result.failures.append(
                error.contains(name) ? error : QStringLiteral("%1: %2").arg(name, error));
    }
    return result;
}

} // namespace zk::app
