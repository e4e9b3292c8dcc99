// What the application tells the preset library.
#pragma once

#include <ZkDataModel.h>

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <functional>

namespace zk::datamodel {

// Makes an effect of no clip out of the description of a look. Null, with the reason in *error, when
// the description is wrong.
using EffectFactory =
    std::function<ZkEffectPtr(const QByteArray &lookJson, const QString &slug, QString *error)>;

struct DownloadSettings
{
    int stallTimeoutMs = 15000; // without a single byte
    int retryDelayMs = 500; // before a broken transfer is taken up again
    qint64 maximumBytes = 64 * 1024 * 1024; // of one file
    int maximumParallel = 4;
};

struct LibrarySettings
{
    QString directory; // made when it is missing
    // Base address of a resource server, http or https; empty: none.
    QUrl server;
    DownloadSettings downloads;
    EffectFactory effectFactory;
};

// What IZkMediaItemManagerEventObserver::onDownloadFinishedEvent carries as its error.
enum class DownloadError {
    None = 0,
    Network = 1, // not reachable, stalled, or broken off twice
    HttpStatus = 2, // the server answered, but not with the file
    Checksum = 3, // what came is not what the catalogue promised
    Disk = 4, // it cannot be written or recorded
    Cancelled = 5,
    Refused = 6, // an address, a redirection, a size or a catalogue that is not acceptable
};

} // namespace zk::datamodel

Q_DECLARE_METATYPE(zk::datamodel::DownloadError)
