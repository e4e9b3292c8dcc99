#include "TestHttpServer.h"

#include <QDir>
#include <QDirIterator>
#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

namespace {

QByteArray lengthHeader(qint64 length)
{
    return "Content-Length: " + QByteArray::number(length) + "\r\n";
}

QByteArray headerOf(const QByteArray &request, const QByteArray &name)
{
    for (const QByteArray &line : request.split('\n')) {
        if (line.toLower().startsWith(name.toLower() + ':'))
            return line.mid(name.size() + 1).trimmed();
    }
    return QByteArray();
}

} // namespace

TestHttpServer::TestHttpServer()
{
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, [this] {
        QTcpSocket *socket = nextPendingConnection();
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            const QByteArray request = socket->peek(16384);
            if (request.contains("\r\n\r\n"))
                answer(socket, socket->readAll());
        });
    });
}

QUrl TestHttpServer::url(const QString &path) const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path));
}

void TestHttpServer::serveDirectory(const QString &directory)
{
    const QDir root(directory);
    QDirIterator files(directory, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            setFile(QLatin1Char('/') + root.relativeFilePath(file.fileName()), file.readAll());
    }
}

void TestHttpServer::answer(QTcpSocket *socket, const QByteArray &request)
{
    const QString target = QString::fromLatin1(request.split(' ').value(1));
    const QString path = target.section(QLatin1Char('?'), 0, 0);
    const QByteArray range = headerOf(request, "Range");
    const bool isFirst = !requests.contains(QStringLiteral("GET ") + target);
    requests.append(
        (QStringLiteral("GET ") + target + QLatin1Char(' ') + QString::fromLatin1(range))
            .trimmed());
    Behaviour behaviour = m_behaviours.value(path, Whole);
    if (behaviour == RedirectSameHost && target != path)
        behaviour = Whole;
    if (!m_files.contains(path))
        behaviour = Status404;
    const QByteArray body = m_files.value(path);
    const bool isOnce = behaviour == BreakOnce || behaviour == BreakOnceIgnoreRange
        || behaviour == BreakOnceWrongRange;
    qint64 from = range.isEmpty() ? 0 : range.mid(6).chopped(1).toLongLong();
    if (behaviour == BreakOnceIgnoreRange && !isFirst)
        from = 0;
    if (behaviour == BreakOnceWrongRange && !isFirst)
        from = 1;
    if (behaviour != Whole && !(isOnce && !isFirst))
        return answerBadly(socket, behaviour, path, body, from);
    const QByteArray part = body.mid(int(from));
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
                                 const QString &path,
                                 const QByteArray &body,
                                 qint64 from)
{
    const QByteArray half = body.mid(int(from), (body.size() - int(from)) / 2);
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
        return send(
            socket, found, lengthHeader(0) + "Location: " + path.toLatin1() + "?moved\r\n", {});
    case RedirectForever:
        return send(socket, found, lengthHeader(0) + "Location: " + path.toLatin1() + "\r\n", {});
    case RedirectOtherHost:
        return send(socket, found, "Location: http://localhost.invalid/x\r\n", {});
    case RedirectOtherScheme:
        return send(socket, found, "Location: ftp://127.0.0.1/x\r\n", {});
    case Status404:
        return send(socket, "404 Not Found", lengthHeader(4), "none");
    case Status500:
        return send(socket, "500 Internal Server Error", lengthHeader(body.size()), body);
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

void TestHttpServer::send(QTcpSocket *socket,
                          const QByteArray &status,
                          const QByteArray &headers,
                          const QByteArray &body)
{
    socket->write("HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers + "\r\n" + body);
    socket->disconnectFromHost();
}
