#include "FileDownload_p.h"

#include "ZkDurableFile.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QThread>

namespace zk::datamodel {

namespace {

constexpr int maximumRedirects = 5;

bool isHttp(const QUrl &url)
{
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

// A server may send us elsewhere on its own host, or to its encrypted side: never to other people's
// machines, which a catalogue could otherwise make us call.
bool isAllowedRedirect(const QUrl &from, const QUrl &to)
{
    const bool isSafe = to.scheme() == from.scheme() || to.scheme() == QLatin1String("https");
    return isHttp(to) && isSafe && to.host().compare(from.host(), Qt::CaseInsensitive) == 0;
}

int statusOf(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

} // namespace

FileDownload::FileDownload(QNetworkAccessManager &network,
                           const DownloadSettings &settings,
                           DownloadRequest request,
                           QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_settings(settings)
    , m_request(std::move(request))
    , m_url(m_request.url)
    , m_part(m_request.partPath)
{
    m_stallTimer.setSingleShot(true);
    m_stallTimer.setInterval(settings.stallTimeoutMs);
    connect(&m_stallTimer, &QTimer::timeout, this, [this] {
        fail(DownloadError::Network,
             QStringLiteral("nothing came for %1 s").arg(m_settings.stallTimeoutMs / 1000.0));
    });
}

FileDownload::~FileDownload()
{
    if (m_mover)
        m_mover->wait();
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
        m_reply->deleteLater();
    }
    m_part.remove();
}

void FileDownload::start()
{
    if (m_isDone) // cancelled before its turn came
        return;
    if (!m_request.url.isValid() || !isHttp(m_request.url)) {
        finish(DownloadError::Refused, QStringLiteral("this is no HTTP address"));
    } else if (m_request.size > m_settings.maximumBytes) {
        finish(DownloadError::Refused, QStringLiteral("the file is too large"));
    } else if (!m_part.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        finish(DownloadError::Disk, m_part.errorString());
    } else {
        send();
    }
}

void FileDownload::cancel()
{
    if (!m_mover)
        fail(DownloadError::Cancelled, QStringLiteral("cancelled"));
}

void FileDownload::send()
{
    if (m_isDone)
        return;
    QNetworkRequest request(m_url);
    // We follow by ourselves: Qt gives up, with no error, when a server closes the connection after
    // each of several redirections.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    // The checksum and a resumed range are those of the plain file.
    request.setRawHeader("Accept-Encoding", "identity");
    if (m_received > 0)
        request.setRawHeader("Range", "bytes=" + QByteArray::number(m_received) + '-');
    m_body = Unknown;
    m_reply = m_network.get(request);
    connect(m_reply, &QNetworkReply::readyRead, this, &FileDownload::readReply);
    connect(m_reply, &QNetworkReply::finished, this, &FileDownload::endReply);
    m_stallTimer.start();
}

void FileDownload::followRedirect(const QUrl &target)
{
    const QUrl url = m_url.resolved(target);
    if (!isAllowedRedirect(m_request.url, url)) {
        finish(DownloadError::Refused,
               QStringLiteral("a redirection to %1 is not acceptable").arg(url.toDisplayString()));
    } else if (++m_redirects > maximumRedirects) {
        finish(DownloadError::Refused, QStringLiteral("there are too many redirections"));
    } else {
        m_url = url;
        send();
    }
}

void FileDownload::readReply()
{
    m_stallTimer.start();
    if (m_body == Unknown)
        m_body = takesBody() ? Taken : Ignored;
    const QByteArray bytes = m_reply->readAll();
    if (m_body == Taken && m_error == DownloadError::None)
        store(bytes);
}

bool FileDownload::takesBody()
{
    const qint64 length = m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (length > m_settings.maximumBytes) {
        fail(DownloadError::Refused, QStringLiteral("the file is too large"));
        return false;
    }
    switch (statusOf(*m_reply)) {
    case 200: // from the start, whatever was asked for
        return rewind();
    case 206:
        return takesResumedBody();
    default:
        return false;
    }
}

bool FileDownload::takesResumedBody()
{
    const QByteArray expected = "bytes " + QByteArray::number(m_received) + '-';
    if (m_reply->rawHeader("Content-Range").startsWith(expected))
        return true;
    fail(DownloadError::HttpStatus, QStringLiteral("the server sent another part of the file"));
    return false;
}

bool FileDownload::rewind()
{
    m_hash.reset();
    m_received = 0;
    if (m_part.resize(0) && m_part.seek(0))
        return true;
    fail(DownloadError::Disk, m_part.errorString());
    return false;
}

void FileDownload::store(const QByteArray &bytes)
{
    m_received += bytes.size();
    if (m_received > m_settings.maximumBytes)
        return fail(DownloadError::Refused, QStringLiteral("the file is too large"));
    if (m_request.size >= 0 && m_received > m_request.size)
        return fail(DownloadError::Checksum, QStringLiteral("the file is longer than announced"));
    if (m_part.write(bytes) != bytes.size())
        return fail(DownloadError::Disk, m_part.errorString());
    m_hash.addData(bytes);
    const int percent = m_request.size > 0 ? int(m_received * 100 / m_request.size) : -1;
    if (percent > m_percent) {
        m_percent = percent;
        Q_EMIT progressed(percent);
    }
}

void FileDownload::endReply()
{
    if (m_error == DownloadError::None)
        readReply();
    m_stallTimer.stop();
    QNetworkReply *reply = m_reply;
    m_reply = nullptr;
    reply->deleteLater();
    judgeReply(*reply);
}

void FileDownload::judgeReply(const QNetworkReply &reply)
{
    if (m_error == DownloadError::Network)
        return breakOff(m_errorText);
    if (m_error != DownloadError::None)
        return finish(m_error, m_errorText);
    const QVariant target = reply.attribute(QNetworkRequest::RedirectionTargetAttribute);
    if (target.isValid())
        return followRedirect(target.toUrl());
    if (statusOf(reply) >= 200 && m_body != Taken)
        return finish(DownloadError::HttpStatus,
                      QStringLiteral("the server answered with status %1").arg(statusOf(reply)));
    if (reply.error() != QNetworkReply::NoError)
        return breakOff(reply.errorString());
    if (m_body != Taken) // Qt reports no error when a connection ends before the answer's head
        return breakOff(QStringLiteral("the server ended the connection without an answer"));
    if (m_received < m_request.size)
        return breakOff(
            QStringLiteral("the server sent %1 of %2 bytes").arg(m_received).arg(m_request.size));
    verify();
}

void FileDownload::breakOff(const QString &text)
{
    if (m_retries == 0)
        return finish(DownloadError::Network, text);
    --m_retries;
    m_error = DownloadError::None;
    m_url = m_request.url;
    m_redirects = 0;
    if (m_request.sha256.isEmpty() && !rewind())
        return;
    QTimer::singleShot(m_settings.retryDelayMs, this, &FileDownload::send);
}

void FileDownload::verify()
{
    if (!m_request.sha256.isEmpty() && m_hash.result().toHex() != m_request.sha256)
        return finish(DownloadError::Checksum, QStringLiteral("the checksum is wrong"));
    const bool isWritten = m_part.flush();
    m_part.close();
    if (!isWritten)
        return finish(DownloadError::Disk, m_part.errorString());
    moveIntoPlace();
}

void FileDownload::moveIntoPlace()
{
    m_mover.reset(QThread::create([this] {
        QString error;
        if (!storage::moveIntoPlace(m_request.partPath, m_request.targetPath, &error))
            m_moveError = error;
    }));
    connect(m_mover.get(), &QThread::finished, this, &FileDownload::endMove);
    m_mover->start();
}

void FileDownload::endMove()
{
    m_mover->wait();
    const bool isThere = m_moveError.isEmpty();
    finish(isThere ? DownloadError::None : DownloadError::Disk, m_moveError);
}

void FileDownload::fail(DownloadError error, const QString &text)
{
    if (m_isDone || m_error != DownloadError::None)
        return;
    m_error = error;
    m_errorText = text;
    if (!m_reply)
        return finish(error, text);
    // Later, because this may be a callback of the reply. Its end comes back through endReply().
    const QPointer<QNetworkReply> reply = m_reply;
    QMetaObject::invokeMethod(
        this,
        [this, reply] {
            if (reply && reply == m_reply)
                reply->abort();
        },
        Qt::QueuedConnection);
}

void FileDownload::finish(DownloadError error, const QString &text)
{
    if (m_isDone)
        return;
    m_isDone = true;
    if (error != DownloadError::None)
        m_part.remove();
    Q_EMIT finished(error, text);
}

} // namespace zk::datamodel
