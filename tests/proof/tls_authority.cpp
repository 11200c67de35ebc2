#include "tests/proof/tls_authority.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace proof {

namespace {

QString stamp(int days)
{
    return QDateTime::currentDateTimeUtc().addDays(days).toString(
        QStringLiteral("yyyyMMddHHmmss'Z'"));
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TlsAuthority::TlsAuthority(const QString& name)
{
    const bool ok = write(QStringLiteral("index"), {})
        && write(QStringLiteral("index.attr"), QStringLiteral("unique_subject = no\n"))
        && makeKey(QStringLiteral("root"))
        && openssl({QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-new"),
                    QStringLiteral("-key"), path(QStringLiteral("root.key")),
                    QStringLiteral("-out"), path(QStringLiteral("root.pem")),
                    QStringLiteral("-days"), QStringLiteral("30"), QStringLiteral("-subj"),
                    QStringLiteral("/CN=") + name, QStringLiteral("-addext"),
                    QStringLiteral("keyUsage=critical,keyCertSign")})
        && QDir().mkpath(trustFolder())
        && QFile::copy(path(QStringLiteral("root.pem")),
                       trustFolder() + QStringLiteral("/root.pem"))
        && openssl({QStringLiteral("rehash"), trustFolder()}) && makeKey(QStringLiteral("between"))
        && sign(QStringLiteral("between"), {}, QStringLiteral("root"), true);
    if (!ok && m_problem.isEmpty())
        m_problem = QStringLiteral("The authority's folder can't be filled.");
}

QString TlsAuthority::path(const QString& name) const
{
    return m_folder.filePath(name);
}

QString TlsAuthority::trustFolder() const
{
    return path(QStringLiteral("trust"));
}

bool TlsAuthority::openssl(const QStringList& arguments)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QStringLiteral("openssl"), arguments);
    if (tool.waitForFinished() && tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0)
        return true;
    m_problem = QStringLiteral("openssl %1: %2 %3")
                    .arg(arguments.join(QLatin1Char(' ')), tool.errorString(),
                         QString::fromUtf8(tool.readAll()));
    return false;
}

bool TlsAuthority::write(const QString& name, const QString& text)
{
    QFile file(path(name));
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate)
        && file.write(text.toUtf8()) == text.toUtf8().size();
}

bool TlsAuthority::makeKey(const QString& name)
{
    return openssl({QStringLiteral("genpkey"), QStringLiteral("-algorithm"), QStringLiteral("EC"),
                    QStringLiteral("-pkeyopt"), QStringLiteral("ec_paramgen_curve:prime256v1"),
                    QStringLiteral("-out"), path(name + QStringLiteral(".key"))});
}

bool TlsAuthority::sign(const QString& name, const Wish& wish, const QString& issuer,
                        bool isAuthority)
{
    const QString extensions = isAuthority
        ? QStringLiteral("basicConstraints=critical,CA:TRUE\nkeyUsage=critical,keyCertSign\n")
        : QStringLiteral("basicConstraints=critical,CA:FALSE\nkeyUsage=critical,digitalSignature\n"
                         "extendedKeyUsage=serverAuth\nsubjectAltName=%1\n")
              .arg(wish.names);
    // Only this command of the tool gives a certificate any dates.
    const QString settings =
        QStringLiteral("[ca]\ndefault_ca=it\n[it]\ndatabase=%1\nnew_certs_dir=%2\nrand_serial=yes\n"
                       "default_md=sha256\npolicy=any\n[any]\ncommonName=supplied\n")
            .arg(path(QStringLiteral("index")), path(QString()));
    const QString request = path(name + QStringLiteral(".csr"));
    return write(name + QStringLiteral(".ext"), extensions)
        && write(name + QStringLiteral(".cnf"), settings)
        && openssl({QStringLiteral("req"), QStringLiteral("-new"), QStringLiteral("-key"),
                    path(name + QStringLiteral(".key")), QStringLiteral("-subj"),
                    QStringLiteral("/CN=") + name, QStringLiteral("-out"), request})
        && openssl({QStringLiteral("ca"), QStringLiteral("-batch"), QStringLiteral("-notext"),
                    QStringLiteral("-config"), path(name + QStringLiteral(".cnf")),
                    QStringLiteral("-cert"), path(issuer + QStringLiteral(".pem")),
                    QStringLiteral("-keyfile"), path(issuer + QStringLiteral(".key")),
                    QStringLiteral("-in"), request, QStringLiteral("-out"),
                    path(name + QStringLiteral(".pem")), QStringLiteral("-extfile"),
                    path(name + QStringLiteral(".ext")), QStringLiteral("-startdate"),
                    stamp(wish.firstDay), QStringLiteral("-enddate"), stamp(wish.lastDay)});
}

QSslKey TlsAuthority::key(const QString& name) const
{
    return QSslKey(contentOf(path(name + QStringLiteral(".key"))), QSsl::Ec);
}

QSslCertificate TlsAuthority::certificate(const QString& name) const
{
    return QSslCertificate(contentOf(path(name + QStringLiteral(".pem"))));
}

QSslCertificate TlsAuthority::between() const
{
    return certificate(QStringLiteral("between"));
}

ServerIdentity TlsAuthority::identity(const Wish& wish)
{
    const QString name = QStringLiteral("server%1").arg(++m_count);
    const QString issuer = wish.isFromBetween ? QStringLiteral("between") : QStringLiteral("root");
    if (!makeKey(name) || !sign(name, wish, issuer, false))
        return {};
    return {{certificate(name)}, key(name)};
}

ServerIdentity TlsAuthority::selfSigned(const QString& names)
{
    const QString name = QStringLiteral("own%1").arg(++m_count);
    if (!makeKey(name)
        || !openssl({QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-new"),
                     QStringLiteral("-key"), path(name + QStringLiteral(".key")),
                     QStringLiteral("-out"), path(name + QStringLiteral(".pem")),
                     QStringLiteral("-days"), QStringLiteral("30"), QStringLiteral("-subj"),
                     QStringLiteral("/CN=") + name, QStringLiteral("-addext"),
                     QStringLiteral("subjectAltName=") + names}))
        return {};
    return {{certificate(name)}, key(name)};
}

} // namespace proof
