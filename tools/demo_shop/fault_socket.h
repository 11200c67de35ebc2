#pragma once

#include "tools/demo_shop/shop_server.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

namespace demo_shop {

/// Server-side socket that can hold an answer back and send it with a fault.
class FaultSocket : public QTcpSocket
{
    Q_OBJECT

public:
    explicit FaultSocket(QObject* parent = nullptr);

    /// Keeps what is written from now on instead of sending it.
    void hold();
    /// Sends what was held, in the way of `fault`, and passes later writes on.
    void release(const Fault& fault);

protected:
    qint64 writeData(const char* data, qint64 size) override;

private:
    void sendAndClose(const QByteArray& bytes);
    void sendPiece();

    bool m_holding = false;
    QByteArray m_held;
    QTimer m_trickle;
    qsizetype m_pieceSize = 1;
};

/// Accepts FaultSockets and counts them.
class FaultTcpServer : public QTcpServer
{
    Q_OBJECT

public:
    using QTcpServer::QTcpServer;

    int connectionCount() const { return m_connections; }

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    int m_connections = 0;
};

/// Gives the head of an answer another announced length.
/// \param head  status line and headers with their empty line
QByteArray withContentLength(const QByteArray& head, qsizetype length);

/// An answer with the body in chunks and without an announced length.
/// \param head  status line and headers with their empty line
QByteArray chunked(const QByteArray& head, const QByteArray& body);

} // namespace demo_shop
