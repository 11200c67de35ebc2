#pragma once

#include "tests/proof/tls_authority.h"

#include <QSslServer>

namespace proof {

/// A server that speaks TLS and hands on what it decrypts to one on the same machine that does not.
class TlsFront : public QObject
{
    Q_OBJECT

public:
    /// \param backPort  where the plain server listens
    TlsFront(const ServerIdentity& identity, quint16 backPort);

    bool isListening() const { return m_server.isListening(); }

    quint16 port() const { return m_server.serverPort(); }

    /// Shows another certificate from now on, and drops the connections that know the old one.
    void setIdentity(const ServerIdentity& identity);

    /// Everything that clients have sent since the certificate was set, decrypted.
    QByteArray received() const { return m_received; }

    /// Connections on which a client began to speak TLS.
    int attempts() const { return m_attempts; }

    /// Connections that a client has accepted.
    int accepted() const { return m_accepted; }

private:
    void takeConnection();

    QSslServer m_server;
    quint16 m_backPort;
    QByteArray m_received;
    int m_attempts = 0;
    int m_accepted = 0;
};

} // namespace proof
