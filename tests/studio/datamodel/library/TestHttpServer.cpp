#include "TestHttpServer.h"

#include "ZkResourceServerFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTcpSocket>
#include <QTimer>

namespace {

QByteArray lengthHeader(qint64 length)
{
    return "Content-Length: " + QByteArray::number(length) + "\r\n";
}

void send(QTcpSocket *socket,
          const QByteArray &status,
          const QByteArray &headers,
          const QByteArray &body = {})
{
    socket->write("HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers + "\r\n" + body);
    socket->disconnectFromHost();
}

} // namespace

TestHttpServer::TestHttpServer()
{
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, [this] {
        QTcpSocket *socket = nextPendingConnection();
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            if (socket->peek(16384).contains("\r\n\r\n"))
                answer(socket, QString::fromLatin1(socket->readAll()));
        });
    });
}

QUrl TestHttpServer::url(const QString &path) const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path));
}

bool TestHttpServer::serve(const QVector<zk::effects::Look> &looks)
{
    if (!zk::datamodel::writeResourceServerFiles(looks, directory.path()))
        return false;
    QDirIterator files(directory.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            setFile(file.fileName().mid(directory.path().size()), file.readAll());
    }
    return true;
}

void TestHttpServer::answer(QTcpSocket *socket, const QString &request)
{
    const QString target = request.section(QLatin1Char(' '), 1, 1);
    const QString path = target.section(QLatin1Char('?'), 0, 0);
    const QRegularExpression pattern(QStringLiteral("\nRange: (bytes=(\\d+)-)"));
    const QRegularExpressionMatch range = pattern.match(request);
    const bool isFirst = !requests.contains(QStringLiteral("GET ") + target);
    requests.append(QStringLiteral("GET %1 %2").arg(target, range.captured(1)).trimmed());
    const Behaviour behaviour =
        m_files.contains(path) ? m_behaviours.value(path, Whole) : Status404;
    const bool isOnce = behaviour >= BreakOnce && behaviour <= BreakOnceWrongRange;
    const bool isMoved = behaviour == RedirectSameHost && target != path;
    const QByteArray body = m_files.value(path);
    int from = range.captured(2).toInt();
    if (behaviour != Whole && !(isOnce && !isFirst) && !isMoved)
        return answerBadly(socket, behaviour, path.toLatin1(), body, from);
    if (isOnce && behaviour != BreakOnce)
        from = behaviour == BreakOnceWrongRange ? 1 : 0;
    const QByteArray part = body.mid(from);
    if (from == 0)
        return send(socket, "200 OK", lengthHeader(part.size()), part);
    send(socket,
         "206 Partial Content",
         lengthHeader(part.size()) + "Content-Range: bytes " + QByteArray::number(from) + '-'
             + QByteArray::number(body.size() - 1) + '/' + QByteArray::number(body.size()) + "\r\n",
         part);
}

void TestHttpServer::answerBadly(QTcpSocket *socket,
                                 Behaviour behaviour,
                                 const QByteArray &path,
                                 const QByteArray &body,
                                 int from)
{
    const QByteArray half = body.mid(from, (body.size() - from) / 2);
    const QByteArray whole = lengthHeader(body.size() - from);
    const QByteArray found = "302 Found";
    switch (behaviour) {
    case Slow:
        socket->write("HTTP/1.1 200 OK\r\n" + whole + "\r\n");
        return sendSlowly(socket, body);
    case Truncated:
        return send(socket, "200 OK", QByteArray(), half);
    case Corrupt:
        return send(socket, "200 OK", whole, QByteArray(body.size(), 'x'));
    case TooLong:
        return send(socket, "200 OK", lengthHeader(body.size() + 1), body + 'x');
    case HugeLength:
        return send(socket, "200 OK", lengthHeader(10'000'000'000), half);
    case Stall:
        socket->write("HTTP/1.1 200 OK\r\n" + whole + "\r\n" + half);
        return;
    case RedirectSameHost:
        return send(socket, found, lengthHeader(0) + "Location: " + path + "?moved\r\n");
    case RedirectForever:
        return send(socket, found, lengthHeader(0) + "Location: " + path + "\r\n");
    case RedirectOtherHost:
        return send(socket, found, "Location: http://localhost.invalid/x\r\n");
    case RedirectOtherScheme:
        return send(socket, found, "Location: ftp://127.0.0.1/x\r\n");
    case Status404:
        return send(socket, "404 Not Found", lengthHeader(body.size()), body);
    default: // the ones that break off
        return send(socket, "200 OK", whole, half);
    }
}

void TestHttpServer::sendSlowly(QTcpSocket *socket, const QByteArray &rest)
{
    socket->write(rest.left(200));
    socket->flush();
    if (rest.size() <= 200)
        return socket->disconnectFromHost();
    QTimer::singleShot(5, socket, [this, socket, rest] { sendSlowly(socket, rest.mid(200)); });
}
