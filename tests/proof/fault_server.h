#pragma once

#include "tests/proof/fault_wire.h"

#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <functional>

namespace proof {

/// One request as it came over the wire.
struct WireRequest
{
    QByteArray target; ///< path and query
    QByteArray host;
    QByteArray authorization;
    QByteArray rest; ///< the head as it came, without the line of the authorization
};

/// A server that writes its answers byte by byte, since most of what it is to do is no HTTP.
class FaultServer : public QObject
{
    Q_OBJECT

public:
    using Handler = std::function<WireAnswer(const WireRequest&)>;

    explicit FaultServer(Handler handler);
    /// Listens on an address. \return false if that failed
    /// \param port  0 takes a free one
    bool listen(const QHostAddress& address = QHostAddress::LocalHost, quint16 port = 0);
    /// Whoever comes from now on is refused. The request that is being answered is the last one.
    void goAway();
    /// Listens on the port of before. \return false if that failed
    bool comeBack();

    quint16 port() const { return m_port; }

    bool isListening() const { return m_tcp.isListening(); }

    int connections() const { return m_connections; }

    QList<WireRequest> requests() const { return m_requests; }

    /// Everything that came and was no request.
    QByteArray garbage() const { return m_garbage; }

private:
    friend class FaultConnection;

    Handler m_handler;
    QTcpServer m_tcp;
    QHostAddress m_address;
    quint16 m_port = 0;
    bool m_isAway = false;
    int m_connections = 0;
    QList<WireRequest> m_requests;
    QByteArray m_garbage;
};

/// One connection to a FaultServer.
class FaultConnection : public QObject
{
    Q_OBJECT

public:
    FaultConnection(FaultServer* server, QTcpSocket* socket);

private:
    void read();
    void send(const WireAnswer& answer);
    void sendSlowly();
    void fill();
    void finish(WireAnswer::End end);

    FaultServer* m_server;
    QTcpSocket* m_socket;
    QByteArray m_received;
    WireAnswer m_answer;
    QTimer m_second;
};

} // namespace proof
