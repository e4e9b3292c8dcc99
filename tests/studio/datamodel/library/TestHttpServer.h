// A small real HTTP server on the loopback that answers well or badly, as it is told.
#pragma once

#include "ZkLook.h"

#include <QHash>
#include <QStringList>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QUrl>

class QTcpSocket;

class TestHttpServer : public QTcpServer
{
    Q_OBJECT

public:
    enum Behaviour {
        Whole,
        Slow, // in small pieces
        BreakOnce, // the first transfer ends in the middle; ranges are honoured
        BreakOnceIgnoreRange, // and then the whole file comes again
        BreakOnceWrongRange, // and then another part than the asked one comes
        BreakAlways,
        Truncated, // half of it, without a length, and then a regular end
        Corrupt, // the right length, other bytes
        TooLong,
        HugeLength, // announces 10 GB
        Stall, // half of it, and then nothing at all
        RedirectSameHost, // to the same path with "?moved", which is answered well
        RedirectOtherHost,
        RedirectOtherScheme,
        RedirectForever,
        Status404,
    };

    TestHttpServer();

    QUrl url(const QString &path = QStringLiteral("/")) const;
    void setFile(const QString &path, const QByteArray &body) { m_files[path] = body; }
    void setBehaviour(const QString &path, Behaviour behaviour) { m_behaviours[path] = behaviour; }
    // A catalogue of these and their files, which lie in the directory.
    bool serve(const QVector<zk::effects::Look> &looks);

    QTemporaryDir directory;
    // "GET /path" or "GET /path bytes=5-", in the order in which they came.
    QStringList requests;

private:
    void answer(QTcpSocket *socket, const QString &request);
    void answerBadly(QTcpSocket *socket,
                     Behaviour behaviour,
                     const QByteArray &path,
                     const QByteArray &body,
                     int from);
    void sendSlowly(QTcpSocket *socket, const QByteArray &rest);

    QHash<QString, QByteArray> m_files;
    QHash<QString, Behaviour> m_behaviours;
};
