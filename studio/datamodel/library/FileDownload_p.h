// One file over HTTP, from an address to its place on disk. Not public.
#pragma once

#include "ZkLibrarySettings.h"

#include <QCryptographicHash>
#include <QFile>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

class QNetworkAccessManager;
class QThread;

namespace zk::datamodel {

struct DownloadRequest
{
    QUrl url;
    QString partPath; // written while it arrives; gone when the download is over
    QString targetPath; // appears complete, checked and flushed to disk, or not at all
    QByteArray sha256; // lower-case hex; empty: not known
    qint64 size = -1; // bytes; -1: not known
};

// A transfer that breaks off or stalls is taken up once where it ended, when the checksum will tell
// whether the pieces fit, and from the start otherwise.
class FileDownload : public QObject
{
    Q_OBJECT

public:
    // Neither the network nor the settings are owned; both must outlive it.
    FileDownload(QNetworkAccessManager &network,
                 const DownloadSettings &settings,
                 DownloadRequest request,
                 QObject *parent = nullptr);
    ~FileDownload() override;

    // Once. Either of these may emit finished from inside the call.
    void start();
    // Too late, and without effect, once the whole file has arrived.
    void cancel();

Q_SIGNALS:
    void progressed(int percent); // rises; none when the size is not known
    void finished(zk::datamodel::DownloadError error, const QString &text); // once

private:
    void send();
    void readReply();
    bool takesBody();
    bool takesResumedBody();
    bool rewind();
    void store(const QByteArray &bytes);
    void followRedirect(const QUrl &target);
    void endReply();
    void judgeReply(const QNetworkReply &reply);
    void breakOff(const QString &text);
    void verify();
    void moveIntoPlace();
    void endMove();
    // Records the first failure; the reply under way is ended soon.
    void fail(DownloadError error, const QString &text);
    void finish(DownloadError error, const QString &text);

    QNetworkAccessManager &m_network;
    const DownloadSettings &m_settings;
    const DownloadRequest m_request;
    QUrl m_url; // where the redirections have led
    QFile m_part;
    QCryptographicHash m_hash {QCryptographicHash::Sha256};
    QNetworkReply *m_reply = nullptr;
    QTimer m_stallTimer;
    std::unique_ptr<QThread> m_mover; // flushing a file can take long
    QString m_moveError; // written by the mover, read after its end

    enum Body { Unknown, Taken, Ignored };
    Body m_body = Unknown; // of the reply under way
    qint64 m_received = 0;
    int m_percent = -1;
    int m_redirects = 0; // since the start or the retry
    int m_retries = 1;
    bool m_isDone = false;
    DownloadError m_error = DownloadError::None;
    QString m_errorText;
};

} // namespace zk::datamodel
