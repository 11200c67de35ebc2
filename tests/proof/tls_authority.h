#pragma once

#include <QDateTime>
#include <QSslCertificate>
#include <QSslKey>
#include <QString>
#include <QTemporaryDir>

namespace proof {

/// What a server shows: its own certificate first, then those of the authorities in between.
struct ServerIdentity
{
    QList<QSslCertificate> chain;
    QSslKey key;

    bool isValid() const { return !chain.isEmpty() && !chain.first().isNull() && !key.isNull(); }
};

/// A private certificate authority, made anew for each test with the tool of OpenSSL.
class TlsAuthority
{
public:
    struct Wish
    {
        /// Who the certificate is for, as OpenSSL writes it: "IP:127.0.0.1,DNS:localhost".
        QString names;
        int firstDay = -1; ///< days from now
        int lastDay = 30; ///< days from now
        bool isFromBetween = false; ///< signed by an authority that the first one has signed
    };

    /// \param name  folder's and authority's name
    explicit TlsAuthority(const QString& name);

    /// Why it could not be made, empty if it could.
    QString problem() const { return m_problem; }

    /// A folder as systems keep the certificates they trust, with this authority alone.
    QString trustFolder() const;
    ServerIdentity identity(const Wish& wish);
    /// The authority in between, which a server has to send along.
    QSslCertificate between() const;
    /// A certificate that nobody but its owner has signed.
    ServerIdentity selfSigned(const QString& names);

private:
    QString path(const QString& name) const;
    bool openssl(const QStringList& arguments);
    bool write(const QString& name, const QString& text);
    bool makeKey(const QString& name);
    bool sign(const QString& name, const Wish& wish, const QString& issuer, bool isAuthority);
    QSslKey key(const QString& name) const;
    QSslCertificate certificate(const QString& name) const;

    QTemporaryDir m_folder;
    QString m_problem;
    int m_count = 0;
};

} // namespace proof
