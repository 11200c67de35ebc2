#include "tests/proof/tls_front.h"

#include <QSslConfiguration>
#include <QSslSocket>
#include <QTcpSocket>

namespace proof {

TlsFront::TlsFront(const ServerIdentity& identity, quint16 backPort)
    : m_backPort(backPort)
{
    setIdentity(identity);
    connect(&m_server, &QSslServer::startedEncryptionHandshake, this, [this] { ++m_attempts; });
    connect(&m_server, &QTcpServer::pendingConnectionAvailable, this, &TlsFront::takeConnection);
    m_server.listen(QHostAddress::LocalHost);
}

void TlsFront::setIdentity(const ServerIdentity& identity)
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificateChain(identity.chain);
    configuration.setPrivateKey(identity.key);
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    m_server.setSslConfiguration(configuration);
    const auto sockets = m_server.findChildren<QSslSocket*>();
    for (QSslSocket* socket : sockets)
        socket->abort();
    m_received.clear();
}

void TlsFront::takeConnection()
{
    while (auto* client = qobject_cast<QSslSocket*>(m_server.nextPendingConnection())) {
        ++m_accepted;
        auto* back = new QTcpSocket(client);
        const auto forward = [this, client, back] {
            const QByteArray bytes = client->readAll();
            m_received += bytes;
            back->write(bytes);
        };
        connect(client, &QSslSocket::readyRead, back, forward);
        connect(back, &QTcpSocket::readyRead, client,
                [client, back] { client->write(back->readAll()); });
        connect(back, &QTcpSocket::disconnected, client, &QSslSocket::disconnectFromHost);
        connect(client, &QSslSocket::disconnected, back, &QTcpSocket::disconnectFromHost);
        connect(client, &QSslSocket::disconnected, client, &QObject::deleteLater);
        back->connectToHost(QHostAddress(QHostAddress::LocalHost), m_backPort);
        if (client->bytesAvailable() > 0)
            forward();
    }
}

} // namespace proof
